#include "library/file_move_plan.h"

#include "library/file_survey.h"
#include "library/library_database.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/runtime_error.h"

#include <QHash>
#include <QSet>

#include <optional>

namespace velmo {

namespace {

// The entries of a library by their definition files, to find those that share a base name.
class Definitions {
public:
    explicit Definitions(const GlobalState& state) : root_(state.LibRoot) {
        Database database(state.LibraryDb, Database::Access::Read);
        for (RecordSet rows = AllEntries(database); !rows.Eof(); rows.MoveNext()) {
            const Entry entry = ReadEntry(rows);
            const QString base = BaseName(entry.file).toCaseFolded();
            if (!base.isEmpty())
                byBaseName_[base].push_back(entry);
        }
    }

    // The name of an entry with a definition file of this base name that is none of those that move; empty
    // when there is none.
    QString AnotherOf(const QString& base, const QSet<QString>& moving) const {
        for (const Entry& entry : byBaseName_.value(base.toCaseFolded())) {
            if (!moving.contains(entry.file.toCaseFolded()) && FileExists(root_ + entry.file))
                return entry.name;
        }
        return {};
    }

private:
    const QString& root_;
    QHash<QString, QList<Entry>> byBaseName_;
};

class Planner {
public:
    Planner(const GlobalState& state, const FileMoveCallbacks& callbacks,
            const std::vector<Candidate>& candidates)
        : state_(state), callbacks_(callbacks), candidates_(candidates) {
        for (const Candidate& candidate : candidates_)
            moving_.insert(candidate.name.toCaseFolded());
    }

    std::vector<PlannedMove> Plan() {
        for (size_t at = 0; at < candidates_.size();) {
            const size_t definition = at++;
            const size_t planned = plan_.size();
            Add(candidates_[definition]);
            const bool isPlanned = plan_.size() > planned;
            size_t end = at;
            while (end < candidates_.size() && candidates_[end].goesAlong)
                ++end;
            if (isPlanned && MayGoAlong(candidates_[definition], at, end)) {
                for (size_t belonging = at; belonging < end; ++belonging)
                    Add(candidates_[belonging]);
            }
            at = end;
        }
        return std::move(plan_);
    }

private:
    void Add(const Candidate& candidate) {
        const auto& [entry, field, name, source, destination, isInPlace, isOutside, goesAlong] = candidate;
        if (isOutside) {
            callbacks_.inform(
                QStringLiteral(
                    "「%1」のファイル %2 は、ライブラリのフォルダの外を指しているため移動できません。")
                    .arg(entry, name));
            return;
        }
        if (!WillExist(source)) {
            if (!goesAlong)
                callbacks_.inform(source.path + QStringLiteral("が見つかりません"));
            return;
        }
        if (isInPlace)
            return;
        PlannedMove move{{source.path, destination.path, IfThere::Refuse},
                         ChangeOf(field, source.path, destination.path),
                         goesAlong};
        RequireUsable(move);
        if (WillExist(destination)) {
            const QString shown = WithBackslash(state_.PickedDir) + PathToFnam(destination.path);
            if (!callbacks_.ask(shown + QStringLiteral("はすでに存在します\r上書きしてよろしいですか")))
                return;
            move.file.ifThere = IfThere::Overwrite;
        }
        taken_.insert(source.place);
        made_.insert(destination.foldedPlace);
        plan_.push_back(std::move(move));
    }

    // False when another symbol needs what belongs to this one, and the user lets it stay there.
    bool MayGoAlong(const Candidate& definition, size_t begin, size_t end) {
        QString files;
        for (size_t at = begin; at < end; ++at) {
            if (WillExist(candidates_[at].source))
                files += candidates_[at].source.path + u'\n';
        }
        if (files.isEmpty())
            return true;
        if (!definitions_)
            definitions_.emplace(state_);
        const QString other = definitions_->AnotherOf(BaseName(definition.name), moving_);
        return other.isEmpty() ||
               callbacks_.ask(
                   QStringLiteral(
                       "%1\nこのファイルは「%2」も使用しています。一緒に移動すると「%2」から使用でき"
                       "なくなります。移動してよろしいですか")
                       .arg(files, other));
    }

    // As if what is planned had been done.
    bool WillExist(const FoundFile& file) const {
        return (file.exists && !taken_.contains(file.place)) || made_.contains(file.foldedPlace);
    }

    // Both names lose as many characters as the root has, below which both are.
    NameChange ChangeOf(const QString& field, const QString& source, const QString& destination) const {
        const qsizetype root = state_.LibRoot.size();
        return {field, source.mid(root), destination.mid(root)};
    }

    static void RequireUsable(const PlannedMove& move) {
        const QString& name = move.change.newName;
        if (name.size() > LongestText)
            throw RuntimeError(ErrorNumber::TextTooLong)
                .InFile(move.file.destination)
                .InField(move.change.field);
        if (move.change.field != PdfField || FirstForeignCharacter(move.change.oldName))
            return;
        if (const std::optional<QString> foreign = FirstForeignCharacter(name))
            throw RuntimeError(
                ErrorNumber::InvalidArgument,
                QStringLiteral("文字「%1」は CAD に渡せません (コードページ 932 にない文字です)。")
                    .arg(*foreign))
                .InFile(move.file.destination);
    }

    const GlobalState& state_;
    const FileMoveCallbacks& callbacks_;
    const std::vector<Candidate>& candidates_;
    std::vector<PlannedMove> plan_;
    // The names, without regard to case, of all that may move.
    QSet<QString> moving_;
    std::optional<Definitions> definitions_;
    // What earlier moves take away and bring, by place.
    QSet<QString> taken_;
    QSet<QString> made_;
};

} // namespace

std::vector<PlannedMove> PlanFileMoves(const GlobalState& state, const std::vector<ContentRow>& selected,
                                       const FileMoveCallbacks& callbacks) {
    const std::optional<std::vector<Candidate>> candidates = SurveyFiles(state, selected, callbacks);
    return candidates ? Planner(state, callbacks, *candidates).Plan() : std::vector<PlannedMove>();
}

QString PathToFnam(const QString& path) {
    return path.sliced(path.lastIndexOf(u'\\') + 1);
}

} // namespace velmo
