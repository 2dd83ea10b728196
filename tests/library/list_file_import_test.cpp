#include "library/library_samples.h"
#include "library/list_file_import.h"
#include "support/failure.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class ListFileImportTest : public testing::Test {
protected:
    ListFileImportTest() {
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
