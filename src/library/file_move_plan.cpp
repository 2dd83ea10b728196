#include "library/file_move_plan.h"

#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/record_set.h"
#include "platform/runtime_error.h"

#include <QSet>

namespace velmo {

namespace {

// Without regard to case: the file system of the CAD side has none.
QString FoldedPlace(const QString& path) {
    return PlaceOf(path).toCaseFolded();
}

class Planner {
public:
    Planner(const GlobalState& state, const FileMoveCallbacks& callbacks)
        : state_(state), callbacks_(callbacks), folder_(state.PickedDir) {
        if (!folder_.endsWith(u'\\'))
            folder_ += u'\\';
    }

    void Add(const QString& field, const QString& name) {
        if (name.isEmpty())
            return;
        const QString source = state_.LibRoot + name;
        if (!WillExist(source)) {
            callbacks_.inform(source + QStringLiteral("が見つかりません"));
            return;
        }
        const QString destination = folder_ + PathToFnam(name);
        if (IsSameFile(source, destination) || FoldedPlace(source) == FoldedPlace(destination))
            return;
        PlannedMove move{source, destination, IfThere::Refuse, ChangeOf(field, source, destination)};
        RequireUsable(move);
        if (WillExist(destination)) {
            if (!callbacks_.ask(destination + QStringLiteral("はすでに存在します\r上書きしてよろしいですか")))
                return;
            move.ifThere = IfThere::Overwrite;
        }
        taken_.insert(PlaceOf(source));
        made_.insert(FoldedPlace(destination));
        plan_.push_back(std::move(move));
    }

    std::vector<PlannedMove> Take() { return std::move(plan_); }

private:
    // As if what is planned had been done.
    bool WillExist(const QString& path) const {
        return (FileExists(path) && !taken_.contains(PlaceOf(path))) || made_.contains(FoldedPlace(path));
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
    QString folder_;
    std::vector<PlannedMove> plan_;
    // What earlier moves take away and bring, by place.
    QSet<QString> taken_;
    QSet<QString> made_;
};

} // namespace

std::vector<PlannedMove> PlanFileMoves(const GlobalState& state, const std::vector<ContentRow>& selected,
                                       const FileMoveCallbacks& callbacks) {
    Planner planner(state, callbacks);
    for (const ContentRow& row : selected) {
        planner.Add(PdfField, row.pdf);
        planner.Add(SlideField, row.slide);
    }
    return planner.Take();
}

QString PathToFnam(const QString& path) {
    return path.sliced(path.lastIndexOf(u'\\') + 1);
}

} // namespace velmo
