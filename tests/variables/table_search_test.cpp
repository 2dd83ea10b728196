#include "platform/text_folding.h"
#include "variables/table_search.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <string>

namespace velmo {
namespace {

constexpr auto Forward = SearchDirection::Forward;
constexpr auto Backward = SearchDirection::Backward;
constexpr auto AtCurrent = SearchStart::AtCurrent;
constexpr auto BeyondCurrent = SearchStart::BeyondCurrent;

class TableSearchTest : public testing::Test {
protected:
    TableSearchTest() { Fill(numbered_, 1); }

    // Below a header that is no data; the texts stand from a column on.
    static void Fill(GridCells& cells, int column) {
        const QList<QStringList> rows{{"M1", "M1"}, {"M10", "ﾎﾞﾙﾄ"}, {"M12", "六角"}, {"m100", "ナット M10"}};
        cells.SetRows(int(rows.size()));
        cells.SetCols(column + 2);
        for (int row = 0; row < int(rows.size()); ++row) {
            cells.SetText(row, column, rows[row][0]);
            cells.SetText(row, column + 1, rows[row][1]);
        }
    }

    // "row,column" of what is found, "wrapped" behind it, or nothing.
    static std::string Find(const GridCells& cells, const QString& text, GridPlace current,
                            SearchDirection direction, SearchStart start) {
        const auto found = FindInTable(cells, FoldedForSearch(text), current, direction, start);
        if (!found)
            return {};
        return std::to_string(found->place.row) + ',' + std::to_string(found->place.column) +
               (found->wrapped ? " wrapped" : "");
    }
    std::string Find(const QString& text, GridPlace current, SearchDirection direction, SearchStart start) {
        return Find(numbered_, text, current, direction, start);
    }

    GridCells numbered_{GridCells::FirstColumn::RowNumbers};
};

TEST_F(TableSearchTest, GoesRowByRow) {
    EXPECT_EQ(Find("m1", {1, 1}, Forward, AtCurrent), "1,1");
    EXPECT_EQ(Find("m1", {1, 1}, Forward, BeyondCurrent), "2,1");
    EXPECT_EQ(Find("m1", {2, 1}, Forward, BeyondCurrent), "3,1");
    EXPECT_EQ(Find("m1", {3, 1}, Forward, BeyondCurrent), "3,2");
    EXPECT_EQ(Find("m1", {3, 2}, Forward, AtCurrent), "3,2");
}

TEST_F(TableSearchTest, GoesBackTheSameWay) {
    EXPECT_EQ(Find("m1", {3, 2}, Backward, AtCurrent), "3,2");
    EXPECT_EQ(Find("m1", {3, 2}, Backward, BeyondCurrent), "3,1");
    EXPECT_EQ(Find("m1", {3, 1}, Backward, BeyondCurrent), "2,1");
    EXPECT_EQ(Find("m1", {2, 1}, Backward, BeyondCurrent), "1,1");
}

TEST_F(TableSearchTest, GoesOnAtTheOtherEnd) {
    EXPECT_EQ(Find("m1", {3, 2}, Forward, BeyondCurrent), "1,1 wrapped");
    EXPECT_EQ(Find("m1", {1, 1}, Backward, BeyondCurrent), "3,2 wrapped");
    EXPECT_EQ(Find("m12", {2, 2}, Forward, AtCurrent), "2,1 wrapped");
    EXPECT_EQ(Find("六角", {2, 1}, Backward, AtCurrent), "2,2 wrapped");
}

TEST_F(TableSearchTest, TheOnlyCellIsFoundAgain) {
    EXPECT_EQ(Find("六角", {2, 2}, Forward, AtCurrent), "2,2");
    EXPECT_EQ(Find("六角", {2, 2}, Forward, BeyondCurrent), "2,2 wrapped");
    EXPECT_EQ(Find("六角", {2, 2}, Backward, BeyondCurrent), "2,2 wrapped");
}

TEST_F(TableSearchTest, CaseWidthAndKanaTypeDoNotMatter) {
    for (const char* text : {"ボルト", "ぼると", "ﾎﾞﾙﾄ"})
        EXPECT_EQ(Find(text, {1, 1}, Forward, AtCurrent), "1,2");
    EXPECT_EQ(Find("Ｍ１２", {1, 1}, Forward, AtCurrent), "2,1");
    EXPECT_EQ(Find("ﾅｯﾄ　ｍ", {1, 1}, Forward, AtCurrent), "3,2");
}

TEST_F(TableSearchTest, WhatIsNotThereIsNotFound) {
    EXPECT_EQ(Find("M1000", {1, 1}, Forward, AtCurrent), "");
    EXPECT_EQ(Find("ホルト", {1, 1}, Backward, AtCurrent), "");
    EXPECT_EQ(Find("", {1, 1}, Forward, AtCurrent), "");
}

TEST_F(TableSearchTest, HeadersAndRowNumbersAreNoData) {
    EXPECT_EQ(Find("3", {1, 1}, Forward, AtCurrent), "");
    numbered_.SetText(0, 1, u"見出し");
    EXPECT_EQ(Find("見出し", {1, 1}, Forward, AtCurrent), "");
}

TEST_F(TableSearchTest, FromNoDataCellAllIsSearched) {
    for (const GridPlace place : {GridPlace{0, 1}, GridPlace{2, 0}, GridPlace{9, 1}, GridPlace{1, 3}}) {
        EXPECT_EQ(Find("m1", place, Forward, BeyondCurrent), "1,1");
        EXPECT_EQ(Find("m1", place, Backward, BeyondCurrent), "3,2");
    }
}

TEST_F(TableSearchTest, WithoutRowNumbersTheFirstColumnIsSearched) {
    GridCells plain(GridCells::FirstColumn::Texts);
    Fill(plain, 0);
    EXPECT_EQ(Find(plain, "m12", {1, 0}, Forward, AtCurrent), "2,0");
    EXPECT_EQ(Find(plain, "m1", {1, 0}, Backward, BeyondCurrent), "3,1 wrapped");
}

TEST_F(TableSearchTest, NothingIsFoundWithoutData) {
    GridCells empty(GridCells::FirstColumn::RowNumbers);
    EXPECT_EQ(Find(empty, "m", {1, 1}, Forward, AtCurrent), "");
    empty.SetRows(3);
    empty.SetCols(1);
    EXPECT_EQ(Find(empty, "1", {1, 0}, Forward, AtCurrent), "");
    empty.BecomeMessage("m");
    EXPECT_EQ(Find(empty, "m", {0, 0}, Forward, AtCurrent), "");
}

} // namespace
} // namespace velmo
