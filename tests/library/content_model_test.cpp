#include "library/content_model.h"
#include "platform/plain_tool_tip.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

namespace velmo {
namespace {

QString TextAt(const ContentModel& model, int row, int column) {
    return model.index(row, column).data().toString();
}

TEST(ContentModelTest, ShowsSubcategoriesWithoutAndEntriesWithFiles) {
    ContentModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.SetRows({{true, 3, "folder", {}, {}}, {false, 3, "entry", "A\\B.PDF", "A\\B.SLD"}});
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(TextAt(model, 0, 0), "folder");
    EXPECT_EQ(TextAt(model, 0, 1), "");
    EXPECT_FALSE(model.index(0, 0).data(Qt::DecorationRole).isNull());
    EXPECT_EQ(TextAt(model, 1, 0), "entry");
    EXPECT_EQ(TextAt(model, 1, 1), "A\\B.PDF");
    EXPECT_EQ(TextAt(model, 1, 2), "A\\B.SLD");
    EXPECT_TRUE(model.index(1, 0).data(Qt::DecorationRole).isNull());
    model.SetRows({});
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(ContentModelTest, MarkupInANameIsReadAsItIsWritten) {
    ContentModel model;
    model.SetRows({{false, 3, "<b>x</b>", "A\\B.PDF", "A\\B.SLD"}});
    EXPECT_EQ(TextAt(model, 0, 0), "<b>x</b>");
    EXPECT_EQ(model.index(0, 0).data(Qt::ToolTipRole).toString(), PlainToolTip("<b>x</b>"));
    EXPECT_EQ(model.index(0, 1).data(Qt::ToolTipRole).toString(), "A\\B.PDF");
}

TEST(ContentModelTest, ItsColumnsAreNamed) {
    const ContentModel model;
    const auto header = [&model](int column) {
        return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    };
    EXPECT_EQ(header(0), QString::fromUtf8("名前"));
    EXPECT_EQ(header(1), QString::fromUtf8("PDFファイル"));
    EXPECT_EQ(header(2), QString::fromUtf8("SLDファイル"));
}

} // namespace
} // namespace velmo
