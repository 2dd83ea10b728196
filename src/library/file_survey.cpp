#include "library/file_survey.h"

#include "library/move_note.h"
#include "platform/file_move.h"
#include "platform/files.h"
#include "platform/runtime_error.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <map>

namespace velmo {

namespace {

// Names between two reports of progress.
constexpr qint64 NamesPerReport = 64;

// The characters of a definition file's ending with its point, whatever they are.
constexpr qsizetype EndingSize = 4;

const QString SlideEnding = QStringLiteral(".SLD");
// Of the files that share a definition file's base name, those that belong to the symbol. Work files do not.
const QStringList Belongings = {QStringLiteral(".PMN"), SlideEnding, QStringLiteral(".LBL"),
                                QStringLiteral(".PDF")};

// The folder that is meant by PickedDir, which spells the root in upper case: spelled as LibRoot it is no
// other folder whose name differs only in case.
QString TargetFolder(const GlobalState& state) {
    const QString picked = WithBackslash(state.PickedDir);
    const QString& root = state.LibRoot;
    return picked.startsWith(root, Qt::CaseInsensitive) ? root + picked.sliced(root.size()) : picked;
}

// The operating system takes either character for a separator, so a row of the library may hold either.
QString FolderOf(const QString& path) {
    return path.first(std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
}

FoundFile At(const QString& path, const QString& native) {
    const QString place = PlaceOf(native);
    return {path, place, place.toCaseFolded(), QFileInfo(native).isFile()};
}

class Survey {
public:
    explicit Survey(const GlobalState& state) : root_(state.LibRoot), target_(TargetFolder(state)) {
        if (!IsBelow(target_, root_))
            throw RuntimeError(ErrorNumber::PathFileAccess,
                               QStringLiteral("移動先のフォルダは、ライブラリのフォルダの外にあります。"))
                .InFile(state.PickedDir);
    }

    Candidate Look(const QString& entry, const QString& field, const QString& name) {
        const QString source = root_ + name;
        const QString destination = target_ + PathToFnam(name);
        Candidate found;
        found.entry = entry;
        found.field = field;
        found.name = name;
        if (!StaysBelow(source) || !StaysBelow(destination)) {
            found.isOutside = true;
            return found;
        }
        const QString from = paths_.Find(source);
        const QString to = paths_.Find(destination);
        found.source = At(source, from);
        found.destination = At(destination, to);
        found.isInPlace = IsSameFile(from, to) || found.source.foldedPlace == found.destination.foldedPlace;
        return found;
    }

    // What lies beside a definition file and belongs to its symbol.
    std::vector<Candidate> LookBeside(const Candidate& definition) {
        std::vector<Candidate> found;
        const QString base = BaseName(definition.name);
        if (base.isEmpty() || definition.isOutside)
            return found;
        for (const QString& ending : Belongings) {
            const QString native = paths_.Find(root_ + base + ending);
            const QString name = FolderOf(definition.name) + QFileInfo(native).fileName();
            if (!QFileInfo(native).isFile() || name.compare(definition.name, Qt::CaseInsensitive) == 0)
                continue;
            found.push_back(Look(definition.entry, ending == SlideEnding ? SlideField : PdfField, name));
            found.back().goesAlong = true;
        }
        return found;
    }

private:
    // Asked once for each folder.
    bool StaysBelow(const QString& path) {
        const auto [known, isNew] = below_.try_emplace(FolderOf(path));
        if (isNew)
            known->second = IsBelow(path, root_);
        return known->second;
    }

    const QString& root_;
    QString target_;
    NativePaths paths_;
    std::map<QString, bool> below_;
};

} // namespace

QString WithBackslash(const QString& folder) {
    return folder.endsWith(u'\\') ? folder : folder + u'\\';
}

QString BaseName(const QString& name) {
    return PathToFnam(name).size() > EndingSize ? name.chopped(EndingSize) : QString();
}

std::optional<std::vector<Candidate>> SurveyFiles(const GlobalState& state,
                                                  const std::vector<ContentRow>& selected,
                                                  const FileMoveCallbacks& callbacks) {
    Survey survey(state);
    std::vector<Candidate> candidates;
    QSet<QString> named;
    const qint64 total = 2 * qint64(selected.size());
    const bool isReported = callbacks.progress && total > NamesPerReport;
    for (qint64 done = 0; done < total; ++done) {
        if (isReported && done % NamesPerReport == 0 && !callbacks.progress(done, total))
            return std::nullopt;
        const ContentRow& row = selected[size_t(done / 2)];
        const bool isPdf = done % 2 == 0;
        const QString& name = isPdf ? row.pdf : row.slide;
        if (name.isEmpty())
            continue;
        candidates.push_back(survey.Look(row.name, isPdf ? PdfField : SlideField, name));
        named.insert(candidates.back().source.foldedPlace);
        if (!isPdf)
            continue;
        std::vector<Candidate> beside = survey.LookBeside(candidates.back());
        std::ranges::move(beside, std::back_inserter(candidates));
    }
    if (isReported && !callbacks.progress(total, total))
        return std::nullopt;
    std::erase_if(candidates, [&named](const Candidate& candidate) {
        return candidate.goesAlong && named.contains(candidate.source.foldedPlace);
    });
    return candidates;
}

} // namespace velmo
