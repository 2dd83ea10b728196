#include "variables/cell_block.h"

#include <gtest/gtest.h>

#include <random>

namespace velmo {
namespace {

using Rows = std::vector<QStringList>;

// The cells of a block, short rows filled up.
Rows Cells(const CellBlock& block) {
    Rows rows;
    for (int row = 0; row < block.Rows(); ++row) {
        QStringList& cells = rows.emplace_back();
        for (int column = 0; column < block.Columns(); ++column)
            cells << block.Text(row, column);
    }
    return rows;
}

Rows Read(const QString& text) {
    return Cells(FromTabText(text));
}

TEST(CellBlock, IsAsWideAsItsWidestRow) {
    const CellBlock block(Rows{{"a"}, {}, {"b", "c", "d"}});
    EXPECT_EQ(block.Rows(), 3);
    EXPECT_EQ(block.Columns(), 3);
    EXPECT_EQ(Cells(block), (Rows{{"a", "", ""}, {"", "", ""}, {"b", "c", "d"}}));
    EXPECT_TRUE(CellBlock().IsEmpty());
    EXPECT_FALSE(block.IsEmpty());
}

TEST(CellBlock, IsWrittenWithTabsAndLineFeeds) {
    EXPECT_EQ(ToTabText(CellBlock(Rows{{"M10", "1.5"}, {"M12"}})), "M10\t1.5\nM12\t");
    EXPECT_EQ(ToTabText(CellBlock(Rows{{"M10"}})), "M10");
    EXPECT_EQ(ToTabText(CellBlock(Rows{{" a ", "b c"}})), " a \tb c");
    EXPECT_EQ(ToTabText(CellBlock()), "");
}

TEST(CellBlock, AnEmptyLastRowIsNotLost) {
    EXPECT_EQ(ToTabText(CellBlock(Rows{{""}})), "\n");
    EXPECT_EQ(ToTabText(CellBlock(Rows{{"a"}, {""}})), "a\n\n");
    EXPECT_EQ(ToTabText(CellBlock(Rows{{"", ""}})), "\t");
}

TEST(CellBlock, QuotesWhatWouldBeReadDifferently) {
    EXPECT_EQ(ToTabText(CellBlock(Rows{{"\"a\"", "b\"c", "d\te", "f\ng\"", "\""}})),
              "\"\"\"a\"\"\"\tb\"c\t\"d\te\"\t\"f\ng\"\"\"\t\"\"\"\"");
}

TEST(CellBlock, RowsEndInEitherLineEnd) {
    const Rows rows{{"a", "b"}, {"c", "d"}};
    EXPECT_EQ(Read("a\tb\nc\td"), rows);
    EXPECT_EQ(Read("a\tb\nc\td\n"), rows);
    EXPECT_EQ(Read("a\tb\r\nc\td\r\n"), rows);
    EXPECT_EQ(Read("a\tb\r\nc\td\r\n\r\n"), (Rows{{"a", "b"}, {"c", "d"}, {"", ""}}));
    EXPECT_EQ(Read("\n"), (Rows{{""}}));
    EXPECT_EQ(Read(""), Rows());
    EXPECT_EQ(Read("\t"), (Rows{{"", ""}}));
}

TEST(CellBlock, ShortRowsGetEmptyCells) {
    EXPECT_EQ(Read("a\n\nb\tc\t"), (Rows{{"a", "", ""}, {"", "", ""}, {"b", "c", ""}}));
}

TEST(CellBlock, ReadsQuotedCells) {
    EXPECT_EQ(Read("\"a\tb\"\tc"), (Rows{{"a b", "c"}}));
    EXPECT_EQ(Read("\"a\"\"b\"\n\"\"\n\"\"\"\""), (Rows{{"a\"b"}, {""}, {"\""}}));
    EXPECT_EQ(Read("\"a\r\nb\"\r\nc"), (Rows{{"a b"}, {"c"}}));
}

TEST(CellBlock, QuotesThatEncloseNoCellAreText) {
    EXPECT_EQ(Read("a\"b\"\t3\""), (Rows{{"a\"b\"", "3\""}}));
    EXPECT_EQ(Read("\"a\tb\nc"), (Rows{{"\"a", "b"}, {"c", ""}}));
    EXPECT_EQ(Read("\"A\" 形\t\"b\""), (Rows{{"\"A\" 形", "b"}}));
    EXPECT_EQ(Read("\""), (Rows{{"\""}}));
}

TEST(CellBlock, ACellIsOneLine) {
    EXPECT_EQ(Read("\"a\nb\rc\r\nd\te\""), (Rows{{"a b c d e"}}));
    EXPECT_EQ(Read(QStringLiteral("a\rb\u2028c\u2029d")), (Rows{{"a b c d"}}));
    EXPECT_EQ(Read(QStringLiteral("a\u0001\u001B\u007F\u0085b\u3000 ")), (Rows{{"ab\u3000 "}}));
    EXPECT_EQ(Read(QString(QChar(0)) + "a\t b "), (Rows{{"a", " b "}}));
}

TEST(CellBlock, ComesBackAsItWasWritten) {
    std::mt19937 random(20190417);
    const auto upTo = [&random](int last) { return std::uniform_int_distribution(0, last)(random); };
    const QStringList pieces{"\"", "\"\"", " ",  "a",    "10", "ボルト",
                             "𠮷", "\t",   "\n", "\r\n", "\r", "\u2028"};
    const qsizetype lastOfLine = pieces.indexOf("𠮷");
    for (int round = 0; round < 2000; ++round) {
        Rows written(size_t(1 + upTo(3)));
        Rows expected;
        const int columns = 1 + upTo(3);
        for (QStringList& row : written) {
            QStringList& expectedRow = expected.emplace_back();
            for (int column = 0; column < columns; ++column) {
                QString text, line;
                for (int length = upTo(5); length > 0; --length) {
                    const int piece = upTo(int(pieces.size()) - 1);
                    // Two line ends side by side may read as one.
                    const bool breaks = piece > lastOfLine;
                    text += breaks ? pieces[piece] + u'.' : pieces[piece];
                    line += breaks ? QStringLiteral(" .") : pieces[piece];
                }
                row << text;
                expectedRow << line;
            }
        }
        const QString text = ToTabText(CellBlock(written));
        ASSERT_EQ(Read(text), expected) << text.toStdString();
        ASSERT_EQ(Read(text + u'\n').size(), expected.size() + (text.endsWith(u'\n') ? 1U : 0U))
            << text.toStdString();
    }
}

TEST(CellBlock, AnyTextIsReadIntoOneLineCells) {
    std::mt19937 random(7);
    const QString units = QStringLiteral("\"\"\"\t\n\r ab\u2029");
    std::uniform_int_distribution<qsizetype> unit(0, units.size() - 1);
    for (int round = 0; round < 2000; ++round) {
        QString text;
        while (text.size() < 12)
            text += units[unit(random)];
        const Rows rows = Read(text);
        ASSERT_FALSE(rows.empty());
        for (const QStringList& row : rows) {
            for (const QString& cell : row) {
                for (const QChar character : cell)
                    ASSERT_TRUE(character.isPrint()) << text.toStdString();
            }
        }
        ASSERT_EQ(Read(ToTabText(CellBlock(rows))), rows) << text.toStdString();
    }
}

// What a paste into a table of 10 x 5 cells would write.
PasteTargets Targets(int blockRows, int blockColumns, const CellRange& selected) {
    QStringList row(blockColumns);
    return TargetsOfPaste(CellBlock(Rows(size_t(blockRows), row)), selected, 10, 5);
}

TEST(PasteTargets, OneValueFillsTheSelection) {
    const PasteTargets targets = Targets(1, 1, {2, 3, 4, 2});
    EXPECT_EQ(targets.cells, (CellRange{2, 3, 4, 2}));
    EXPECT_TRUE(targets.Fit());
}

TEST(PasteTargets, ABlockThatFillsTheSelectionEvenlyIsRepeated) {
    EXPECT_EQ(Targets(2, 1, {1, 1, 6, 3}).cells, (CellRange{1, 1, 6, 3}));
    EXPECT_EQ(Targets(2, 2, {3, 2, 2, 2}).cells, (CellRange{3, 2, 2, 2}));
}

TEST(PasteTargets, AnotherBlockGoesOnceFromTheTopLeft) {
    EXPECT_EQ(Targets(2, 1, {1, 1, 5, 1}).cells, (CellRange{1, 1, 2, 1}));
    EXPECT_EQ(Targets(2, 2, {1, 1, 4, 3}).cells, (CellRange{1, 1, 2, 2}));
    EXPECT_EQ(Targets(3, 2, {4, 2, 1, 1}).cells, (CellRange{4, 2, 3, 2}));
}

TEST(PasteTargets, WhatReachesOutOfTheTableDoesNotFit) {
    EXPECT_TRUE(Targets(10, 5, {1, 1, 1, 1}).Fit());
    EXPECT_TRUE(Targets(2, 2, {9, 4, 1, 1}).Fit());
    EXPECT_FALSE(Targets(2, 2, {10, 4, 1, 1}).Fit());
    EXPECT_FALSE(Targets(1, 2, {10, 5, 1, 1}).Fit());
    const PasteTargets targets = Targets(5, 3, {8, 4, 1, 1});
    EXPECT_FALSE(targets.Fit());
    EXPECT_EQ(targets.cells, (CellRange{8, 4, 5, 3}));
    EXPECT_EQ(targets.rowsThere, 3);
    EXPECT_EQ(targets.columnsThere, 2);
}

TEST(PasteTargets, NoCellsWriteNothing) {
    const PasteTargets targets = Targets(0, 0, {1, 1, 2, 2});
    EXPECT_EQ(targets.cells.rows, 0);
    EXPECT_TRUE(targets.Fit());
}

TEST(PasteTargets, TextsRepeatWithTheBlock) {
    const CellBlock block(Rows{{"a", "b"}, {"c"}});
    QStringList texts;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            texts << PastedText(block, row, column);
    }
    EXPECT_EQ(texts.join(u','), "a,b,a,b,c,,c,,a,b,a,b,c,,c,");
}

} // namespace
} // namespace velmo
