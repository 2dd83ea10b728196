#include "platform/elided_tip_delegate.h"

#include <QListView>
#include <QStringListModel>
#include <QTest>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class TippedNames : public QStringListModel {
public:
    using QStringListModel::QStringListModel;
    QVariant data(const QModelIndex& index, int role) const override {
        return QStringListModel::data(index, role == Qt::ToolTipRole ? int(Qt::DisplayRole) : role);
    }
};

TEST(ElidedTipDelegateTest, ATooltipIsShownOnlyForWhatIsElided) {
    TippedNames names({"short", QString("long ").repeated(40)});
    QListView view;
    view.setModel(&names);
    view.setItemDelegate(new ElidedTipDelegate(&view));
    view.resize(200, 150);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    const auto point = [&](int row) {
        const QPoint place = view.visualRect(names.index(row)).center();
        const QPoint seen(20, place.y());
        QHelpEvent event(QEvent::ToolTip, seen, view.viewport()->mapToGlobal(seen));
        QApplication::sendEvent(view.viewport(), &event);
    };
    point(1);
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().startsWith("long"); }));
    point(0);
    EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().isEmpty() || !QToolTip::isVisible(); }));
}

} // namespace
} // namespace velmo
