#include "library/find_results_model.h"
#include "library/library_samples.h"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

namespace velmo {
namespace {

class FindResultsModelTest : public testing::Test {
protected:
    FindResultsModelTest() {
        folder.Write("made", "");
        state.LibraryDb = folder.Path("Velmo2.mdb");
        CreateLibraryFile(state.LibraryDb);
        Database library(state.LibraryDb, Database::Access::Write);
        AddCategory(library, 0, "root");
        AddCategory(library, 1, "bolts");
        AddCategory(library, 2, "hex");
        AddEntry(library, 3, "hex M10", "A");
        names.Refresh(state);
    }
    QVariant Data(int row, int role) const { return model.index(row).data(role); }

    const TempFolder folder;
    GlobalState state;
    NameIndex names;
    FindResultsModel model{names};
};

TEST_F(FindResultsModelTest, ShowsNamesWithTheWayToThem) {
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.rowCount(), 0);
    const std::vector<int> hits = names.Find(u"hex");
    model.SetHits(hits);
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(Data(0, Qt::DisplayRole).toString(), "hex");
    EXPECT_EQ(Data(0, FindResultsModel::WayRole).toString(), "bolts");
    EXPECT_EQ(Data(0, Qt::ToolTipRole).toString(), "bolts － hex");
    EXPECT_EQ(Data(1, Qt::DisplayRole).toString(), "hex M10");
    EXPECT_EQ(Data(1, FindResultsModel::WayRole).toString(), "bolts － hex");
    EXPECT_EQ(Data(1, Qt::AccessibleTextRole).toString(), "bolts － hex － hex M10");
    EXPECT_EQ(model.NameIn(1), hits[1]);
    EXPECT_EQ(model.RowOf(hits[1]), 1);
    EXPECT_EQ(model.RowOf(-1), -1);
}

TEST_F(FindResultsModelTest, ARootHasNoWay) {
    model.SetHits(names.Find(u"root"));
    EXPECT_EQ(Data(0, FindResultsModel::WayRole).toString(), "");
    EXPECT_EQ(Data(0, Qt::ToolTipRole).toString(), "root");
}

TEST_F(FindResultsModelTest, CategoriesAndEntriesHaveTheirOwnPictures) {
    model.SetHits(names.Find(u"hex"));
    const auto picture = [this](int row) {
        return qvariant_cast<QIcon>(Data(row, Qt::DecorationRole)).pixmap(QSize(16, 16)).toImage();
    };
    EXPECT_NE(picture(0), picture(1));
}

} // namespace
} // namespace velmo
