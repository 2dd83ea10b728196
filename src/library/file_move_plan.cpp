#include "library/file_move_plan.h"

#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/record_set.h"
#include "platform/runtime_error.h"

#include <QFileInfo>
#include <QSet>

#include <optional>

namespace velmo {

namespace {

// Names between two reports of progress.
constexpr qint64 NamesPerReport = 64;

QString WithBackslash(const QString& folder) {
    return folder.endsWith(u'\\') ? folder : folder + u'\\';
}

// The folder that is meant by PickedDir, which spells the root in upper case: spelled as LibRoot it is no
// other folder whose name differs only in case.
QString TargetFolder(const GlobalState& state) {
    const QString picked = WithBackslash(state.PickedDir);
    const QString& root = state.LibRoot;
    return picked.startsWith(root, Qt::CaseInsensitive) ? root + picked.sliced(root.size()) : picked;
}

// A file, existing or not, as it was found on the disk.
struct FoundFile {
    QString path;
    QString place;
    // Without regard to case: the file system of the CAD side has none.
    QString foldedPlace;
    bool exists;
};

// A file that may move.
struct Candidate {
    QString field;
    FoundFile source;
    FoundFile destination;
    bool isInPlace;
};

// Looks at files before the first question, so that nothing is read between two.
class Survey {
public:
    explicit Survey(const GlobalState& state) : root_(state.LibRoot), target_(TargetFolder(state)) {}

    Candidate Look(const QString& field, const QString& name) {
        const QString source = root_ + name;
        const QString destination = target_ + PathToFnam(name);
        const QString from = paths_.Find(source);
        const QString to = paths_.Find(destination);
        Candidate found{field, At(source, from), At(destination, to), false};
        found.isInPlace = IsSameFile(from, to) || found.source.foldedPlace == found.destination.foldedPlace;
        return found;
    }

private:
    static FoundFile At(const QString& path, const QString& native) {
        const QString place = PlaceOf(native);
        return {path, place, place.toCaseFolded(), QFileInfo(native).isFile()};
    }

    const QString& root_;
    QString target_;
    NativePaths paths_;
};

// Nothing when progress is told to stop. The last report closes what the user sees of it: questions follow.
std::optional<std::vector<Candidate>> LookAtAll(const GlobalState& state,
                                                const std::vector<ContentRow>& selected,
                                                const FileMoveCallbacks& callbacks) {
    Survey survey(state);
    std::vector<Candidate> candidates;
    const qint64 total = 2 * qint64(selected.size());
    const bool isReported = callbacks.progress && total > NamesPerReport;
    for (qint64 done = 0; done < total; ++done) {
        if (isReported && done % NamesPerReport == 0 && !callbacks.progress(done, total))
            return std::nullopt;
        const ContentRow& row = selected[size_t(done / 2)];
        const bool isPdf = done % 2 == 0;
        const QString& name = isPdf ? row.pdf : row.slide;
        if (!name.isEmpty())
            candidates.push_back(survey.Look(isPdf ? PdfField : SlideField, name));
    }
    if (isReported && !callbacks.progress(total, total))
        return std::nullopt;
    return candidates;
}

class Planner {
public:
    Planner(const GlobalState& state, const FileMoveCallbacks& callbacks)
        : state_(state), callbacks_(callbacks) {}

    void Add(const Candidate& candidate) {
        const auto& [field, source, destination, isInPlace] = candidate;
        if (!WillExist(source)) {
            callbacks_.inform(source.path + QStringLiteral("が見つかりません"));
            return;
        }
        if (isInPlace)
            return;
        PlannedMove move{source.path, destination.path, IfThere::Refuse,
                         ChangeOf(field, source.path, destination.path)};
        RequireUsable(move);
        if (WillExist(destination)) {
            const QString shown = WithBackslash(state_.PickedDir) + PathToFnam(destination.path);
            if (!callbacks_.ask(shown + QStringLiteral("はすでに存在します\r上書きしてよろしいですか")))
                return;
            move.ifThere = IfThere::Overwrite;
        }
        taken_.insert(source.place);
        made_.insert(destination.foldedPlace);
        plan_.push_back(std::move(move));
    }

    std::vector<PlannedMove> Take() { return std::move(plan_); }

private:
    // As if what is planned had been done.
    bool WillExist(const FoundFile& file) const {
        return (file.exists && !taken_.contains(file.place)) || made_.contains(file.foldedPlace);
    }

    // Both names lose as many characters as the root has; nobody asks whether the destination lies below it.
    NameChange ChangeOf(const QString& field, const QString& source, const QString& destination) const {
        const qsizetype root = state_.LibRoot.size();
        return {field, source.mid(root), destination.mid(root)};
    }

    void RequireUsable(const PlannedMove& move) const {
        const QString& name = move.change.newName;
        if (name.size() > LongestText)
            throw RuntimeError(ErrorNumber::TextTooLong).InFile(move.destination).InField(move.change.field);
        if (move.change.field != PdfField || FirstForeignCharacter(move.change.oldName))
            return;
        if (const std::optional<QString> foreign = FirstForeignCharacter(name))
            throw RuntimeError(
                ErrorNumber::InvalidArgument,
                QStringLiteral("文字「%1」は CAD に渡せません (コードページ 932 にない文字です)。")
                    .arg(*foreign))
                .InFile(move.destination);
    }

    const GlobalState& state_;
    const FileMoveCallbacks& callbacks_;
    std::vector<PlannedMove> plan_;
    // What earlier moves take away and bring, by place.
    QSet<QString> taken_;
    QSet<QString> made_;
};

} // namespace

std::vector<PlannedMove> PlanFileMoves(const GlobalState& state, const std::vector<ContentRow>& selected,
                                       const FileMoveCallbacks& callbacks) {
    const std::optional<std::vector<Candidate>> candidates = LookAtAll(state, selected, callbacks);
    if (!candidates)
        return {};
    Planner planner(state, callbacks);
    for (const Candidate& candidate : *candidates)
        planner.Add(candidate);
    return planner.Take();
}

QString PathToFnam(const QString& path) {
    return path.sliced(path.lastIndexOf(u'\\') + 1);
}

} // namespace velmo
