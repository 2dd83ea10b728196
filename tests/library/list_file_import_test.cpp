#include "library/library_samples.h"
#include "library/list_file_import.h"
#include "platform/files.h"
#include "support/failure.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class ListFileImportTest : public testing::Test {
protected:
    ListFileImportTest() { StartAnew(); }

    void StartAnew() {
        import_.reset();
        database_.reset();
        DeleteFileIfAny(folder_.Path("l.mdb"));
        CreateLibraryFile(folder_.Path("l.mdb"));
        database_.emplace(folder_.Path("l.mdb"), Database::Access::Write);
        import_.emplace(*database_);
    }

    void Import(const QStringList& lines) {
        for (const QString& line : lines)
            import_->ImportListLine(line);
    }

    // The categories, each as "id<parent name slide".
    QStringList Categories() {
        QStringList found;
        for (RecordSet rows(*database_, "FolderTable"); !rows.Eof(); rows.MoveNext())
            found << QStringLiteral("%1<%2 %3 %4")
                         .arg(rows.Text(u"ID"), rows.Text(u"ParentID"), rows.Text(u"FolderName"),
                              rows.Text(u"SLDFileName"));
        return found;
    }

    QStringList Entries() {
        QStringList found;
        for (RecordSet rows(*database_, "PDFFileTable"); !rows.Eof(); rows.MoveNext())
            found << QStringLiteral("%1 %2 %3 %4")
                         .arg(rows.Text(u"FolderID"), rows.Text(u"PDFName"), rows.Text(u"PDFFileName"),
                              rows.Text(u"SLDFileName"));
        return found;
    }

    // The parent of one more category that is filed now: what tells how deep the line before left the import.
    int ParentOfNext() {
        Import({"(\"next,  \\N\\NEXT.SLD,\")"});
        return Categories().last().section('<', 1).section(' ', 0, 0).toInt();
    }

    ErrorNumber FailureOf(const QString& line) {
        return Failure([&] { import_->ImportListLine(line); });
    }

    TempFolder folder_;
    std::optional<Database> database_;
    std::optional<ListFileImport> import_;
};

TEST_F(ListFileImportTest, TheFirstQuotedLineIsTheRootWhateverItNames) {
    Import({"(\"シンボル,  \\X\\X.SLD,\""});
    EXPECT_EQ(Categories(), QStringList{"1<0 トルヴィク "});
    EXPECT_EQ(Entries(), QStringList());
}

TEST_F(ListFileImportTest, CategoriesNestAndEntriesFollow) {
    Import({
        "(\"root,  \\R.SLD,\"",
        "(\"ボルト,  \\BOLT\\BOLT.SLD,\"",
        "(\"六角ボルト,  \\BOLT\\HEX.SLD,  \\BOLT\\HEX.TXT\")",
        "(\"小ねじ,  \\BOLT\\SCREW.SLD,\")",
        "(\"なべ,  \\BOLT\\PAN.SLD,  \\BOLT\\PAN.TXT\")",
        ")",
        "(\"座金,  \\WASHER\\W.SLD,\")",
    });
    EXPECT_EQ(Categories(), (QStringList{"1<0 トルヴィク ", "2<1 ボルト SMB\\BOLT\\BOLT.SLD",
                                         "3<2 小ねじ SMB\\BOLT\\SCREW.SLD", "4<1 座金 SMB\\WASHER\\W.SLD"}));
    EXPECT_EQ(Entries(), (QStringList{"2 六角ボルト SMB\\BOLT\\HEX.TXT SMB\\BOLT\\HEX.SLD",
                                      "3 なべ SMB\\BOLT\\PAN.TXT SMB\\BOLT\\PAN.SLD"}));
}

TEST_F(ListFileImportTest, AnEntryFilesUnderTheCategoryInsertedLast) {
    Import({"(\"root,  \\R.SLD,\"", "(\"aa,  \\A\\AAAA.SLD,\"", "(\"bb,  \\B\\BBBB.SLD,\"", ")", ")",
            "(\"e,  \\E\\EEEE.SLD,  \\E\\E.TXT\")"});
    EXPECT_EQ(Entries(), QStringList{"3 e SMB\\E\\E.TXT SMB\\E\\EEEE.SLD"});
}

TEST_F(ListFileImportTest, AnEmptyLineClosesALevel) {
    Import({"(\"root,  \\R.SLD,\"", "(\"aa,  \\A\\AAAA.SLD,\"", "", "(\"bb,  \\B\\BBBB.SLD,\")"});
    EXPECT_TRUE(Categories().last().startsWith("3<1 ")) << Categories().last().toStdString();
}

TEST_F(ListFileImportTest, ClosingAtTheTopIsIgnored) {
    Import({")", "", "(\"root,  \\R.SLD,\"", ")", ")", "(\"aa,  \\A\\AAAA.SLD,\""});
    EXPECT_TRUE(Categories().last().startsWith("2<1 ")) << Categories().last().toStdString();
}

TEST_F(ListFileImportTest, ALineWithoutParenthesisClosesALevelAfterItsCategory) {
    Import({"(\"root,  \\R.SLD,\"", "(\"aa,  \\A\\AAAA.SLD,\"", "\"bb,  \\B\\BBBB.SLD,\"",
            "(\"cc,  \\C\\CCCC.SLD,\")"});
    EXPECT_TRUE(Categories()[2].startsWith("3<2 ")) << Categories()[2].toStdString();
    EXPECT_TRUE(Categories()[3].startsWith("4<1 ")) << Categories()[3].toStdString();
}

TEST_F(ListFileImportTest, ALevelCanOpenWithoutACategory) {
    Import({"(\"root,  \\R.SLD,\"", "(\"aa,  \\A\\AAAA.SLD,\")", "(", "(\"bb,  \\B\\BBBB.SLD,\")", "( )", ")",
            "(\"cc,  \\C\\CCCC.SLD,\")"});
    EXPECT_TRUE(Categories()[2].startsWith("3<0 ")) << "nothing was filed at that depth before";
    EXPECT_TRUE(Categories()[3].startsWith("4<1 "));
}

TEST_F(ListFileImportTest, AQuoteWithoutItsPartnerIsIgnored) {
    Import({"(\"root,  \\R.SLD,\"", "(\"half"});
    EXPECT_EQ(Categories().size(), 1);
}

const QString root = "(\"root,  \\R.SLD,\"";

TEST_F(ListFileImportTest, AQuoteWithoutItsPartnerIsIgnoredBeforeTheRootToo) {
    Import({"(\"half", "\"half", root});
    EXPECT_EQ(Categories(), QStringList{"1<0 トルヴィク "});
}

TEST_F(ListFileImportTest, TheRestOfTheRootsLineOpensAndClosesNothing) {
    for (const char* line : {"(\"root,  \\R.SLD,\")", "\"root,  \\R.SLD,\"", "(\"root\"", "\"\""}) {
        StartAnew();
        Import({line});
        EXPECT_EQ(Categories(), QStringList{"1<0 トルヴィク "}) << line;
        EXPECT_EQ(ParentOfNext(), 1) << line;
    }
}

TEST_F(ListFileImportTest, OnlyAParenthesisBehindTheClosingQuoteKeepsACategoryALeaf) {
    Import({root, "(\"a)a,  \\A\\A).SLD,\""});
    EXPECT_EQ(Categories().last(), "2<1 a)a SMB\\A\\A).SLD");
    EXPECT_EQ(ParentOfNext(), 2) << "within the quotes";
    Import({")(\"bb,  \\B\\BBBB.SLD,\""});
    EXPECT_EQ(ParentOfNext(), 4) << "before the first parenthesis";
    Import({"( )\"cc,  \\C\\CCCC.SLD,\""});
    EXPECT_EQ(ParentOfNext(), 6) << "before the quotes";
    Import({"(\"dd,  \\D\\DDDD.SLD,\" and more) ("});
    EXPECT_EQ(ParentOfNext(), 6) << "anywhere behind them";
}

TEST_F(ListFileImportTest, QuotesBeforeTheFirstParenthesisDoNotCount) {
    Import({root, "\"aa\" (\"bb,  \\B\\BBBB.SLD,\""});
    EXPECT_EQ(Categories().last(), "2<1 bb SMB\\B\\BBBB.SLD");
    EXPECT_EQ(ParentOfNext(), 2);
    Import({"\"cc,  \\C\\CCCC.SLD,\" ("});
    EXPECT_EQ(Categories().size(), 3) << "a line without a quote behind its parenthesis";
    Import({"(\"dd,  \\D\\DDDD.SLD,\"", ")", ")"});
    EXPECT_EQ(ParentOfNext(), 2) << "it opened a level";
    Import({"\"ee,  \\E\\EEEE.SLD,\" ( )"});
    EXPECT_EQ(ParentOfNext(), 2) << "and with a closing one it does not";
}

TEST_F(ListFileImportTest, WithoutQuotesOnlyAParenthesisBehindTheOpeningOneCloses) {
    Import({root, "(\"aa,  \\A\\AAAA.SLD,\"", ") ("});
    Import({"(\"bb,  \\B\\BBBB.SLD,\"", ")", ")"});
    EXPECT_EQ(ParentOfNext(), 2);
    Import({"()", "( ) (", "text (and) more"});
    EXPECT_EQ(ParentOfNext(), 2);
    Import({"text"});
    EXPECT_EQ(ParentOfNext(), 1);
}

TEST_F(ListFileImportTest, AnEntryNeverChangesTheDepth) {
    Import({root, "(\"aa,  \\A\\AAAA.SLD,\"", "\"e,  \\E\\EEEE.SLD,  \\E\\E.TXT\")"});
    EXPECT_EQ(ParentOfNext(), 2) << "without a parenthesis it closes nothing";
    Import({"(\"f,  \\F\\FFFF.SLD,  \\F\\F.TXT\" ", ")"});
    EXPECT_EQ(ParentOfNext(), 1) << "with one it opens nothing";
    EXPECT_EQ(Entries().size(), 2);
}

TEST_F(ListFileImportTest, ACategoryWithoutParenthesisNeverClosesTheTop) {
    Import({root, "\"aa,  \\A\\AAAA.SLD,\"", "\"bb,  \\B\\BBBB.SLD,\""});
    EXPECT_EQ(ParentOfNext(), 1);
}

TEST_F(ListFileImportTest, NamesAndFilesMayHoldDoubleQuotes) {
    Import({root, "(\"1\"2,  \\A\\AAAA.SLD,  \\A\\A.TXT\")", "(\"b,  \\B\\BBBB.SLD,  \\B\\\"B\".TXT\")"});
    EXPECT_EQ(Entries(), (QStringList{"1 1\"2 SMB\\A\\A.TXT SMB\\A\\AAAA.SLD",
                                      "1 b SMB\\B\\\"B\".TXT SMB\\B\\BBBB.SLD"}));
    EXPECT_EQ(FailureOf("(\"1\"2,  \\A\\AAAA.SLD,\""), ErrorNumber::InvalidArgument)
        << "the comma does not stand before the second quote";
}

TEST_F(ListFileImportTest, AFileReachesToTheLastTwoCharacters) {
    const QString upToFile = "(\"e,  \\E\\EEEE.SLD,  ";
    Import({root, upToFile + "x\")", upToFile + "ab", upToFile + "abc"});
    EXPECT_EQ(Entries(), QStringList{"1 e SMBx SMB\\E\\EEEE.SLD"})
        << "without quotes they are no lines at all";
    Import({upToFile + "a\"bcd"});
    EXPECT_EQ(Entries().last(), "1 e SMBa\"b SMB\\E\\EEEE.SLD");
    EXPECT_EQ(FailureOf(upToFile + "\""), ErrorNumber::InvalidArgument);
    EXPECT_EQ(FailureOf("(\"e,  \\E\\EEEE.SLD, \""), ErrorNumber::InvalidArgument);
}

TEST_F(ListFileImportTest, AFileWithoutCharactersMakesACategory) {
    Import({root, "(\"aa,  \\A\\AAAA.SLD,  \")"});
    EXPECT_EQ(Categories().last(), "2<1 aa SMB\\A\\AAAA.SLD");
    EXPECT_EQ(ParentOfNext(), 1) << "a leaf";
    Import({"(\"bb,  \\B\\BBBB.SLD,  \" "});
    EXPECT_EQ(ParentOfNext(), 4) << "one that opens a level";
}

TEST_F(ListFileImportTest, TheShortestNameAndSlide) {
    Import({root, "(\",  \\A\\AAAA.SLD,\")", "(\"b,  x,\")", "\"c,  ,\""});
    EXPECT_EQ(Categories(),
              (QStringList{"1<0 トルヴィク ", "2<1  SMB\\A\\AAAA.SLD", "3<1 b SMBx", "4<1 c SMB"}));
    // The search for the second comma begins behind it.
    EXPECT_EQ(FailureOf("(\"d,  ,\""), ErrorNumber::InvalidArgument);
    Import({"(\"e,  ,  ,\""});
    EXPECT_EQ(Categories().last(), "5<1 e SMB,  ");
}

TEST_F(ListFileImportTest, TheSecondCommaIsLookedForBehindBothPositions) {
    // The name is short and the quote stands far right: the search starts behind the second comma.
    Import({"(\"root,  \\R.SLD,\""});
    EXPECT_EQ(FailureOf(QString(30, u' ') + "(\"a,  \\A.SLD,\")"), ErrorNumber::InvalidArgument);
}

TEST_F(ListFileImportTest, ALineWithoutCommaIsAnInvalidArgument) {
    Import({"(\"root,  \\R.SLD,\""});
    EXPECT_EQ(FailureOf("(\"name only\")"), ErrorNumber::InvalidArgument);
}

TEST_F(ListFileImportTest, TenLevelsFitAndElevenDoNot) {
    Import({"(\"root,  \\R.SLD,\""});
    for (int level = 1; level <= 10; ++level)
        Import({"(\"level,  \\LEVEL.SLD,\""});
    EXPECT_EQ(Categories().size(), 11);
    EXPECT_EQ(FailureOf("(\"level,  \\LEVEL.SLD,\""), ErrorNumber::SubscriptOutOfRange);
}

TEST_F(ListFileImportTest, NamesMayHoldSingleQuotes) {
    Import({"(\"root,  \\R.SLD,\"", "(\"it's,  \\A\\AAAA.SLD,\")"});
    EXPECT_EQ(Categories().last(), "2<1 it's SMB\\A\\AAAA.SLD");
}

TEST_F(ListFileImportTest, ANameOfMoreThan255CharactersIsRefused) {
    Import({"(\"root,  \\R.SLD,\""});
    const QString name(256, u'x');
    EXPECT_EQ(FailureOf("(\"" + name + ",  \\" + name + ",\")"), ErrorNumber::TextTooLong);
}

} // namespace
} // namespace velmo
