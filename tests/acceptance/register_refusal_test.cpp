#include "library_run.h"

namespace velmo {
namespace {

using testing::ElementsAre;

// What the entry editor refuses, and rows that something else changed while it was open.
class RegisterRefusalTest : public LibraryRunTest {
protected:
    // OK is refused with this message; the editor stays, at the box that is to be filled.
    void ExpectMissing(const QString& text, const QString& box) {
        Run().Click("OK_btn");
        ExpectRefusal(text);
        EXPECT_TRUE(Run().IsWindowShown("Vlm_TBlEdt"));
        EXPECT_EQ(Run().Focus(), box);
    }
    void Paste(const QString& box, const QString& text) {
        Run().SetClipboard(text);
        Fill(box, "");
        Run().Press("Ctrl+V");
    }
    void Leave() {
        Run().Click("Can_Btn");
        Run().WaitUntilClosed("Vlm_TBlEdt");
    }
};

TEST_F(RegisterRefusalTest, ACategoryWithoutAName) {
    StartWith("VLM_MAIN");
    AddCategoryBelow(bolts_);
    Fill("Name3", "A.SLD");
    ExpectMissing("フォルダ名を入力してください", "Name2");
    EXPECT_EQ(Run().Text("Name3"), QString("A.SLD"));
    Run().Type("新");
    ConfirmEditor();
    EXPECT_EQ(Categories().last(), QString("5|2|新|A.SLD"));
    EditCategory(bolts_);
    Fill("Name2", "");
    ExpectMissing("フォルダ名を入力してください", "Name2");
    Leave();
    EXPECT_EQ(Categories()[1], firstCategories_[1]);
}

TEST_F(RegisterRefusalTest, AnEntryWithoutItsNamesOneAfterTheOther) {
    StartWith("VLM_MAIN");
    AddEntry(washers_);
    ExpectMissing("ＰＤＦ名を入力してください", "Name2");
    Run().Type("A");
    ExpectMissing("PDFファイル名を入力してください", "Name3");
    Run().Type("A.PDF");
    ExpectMissing("SLDファイル名を入力してください", "Name4");
    Run().Type("A.SLD");
    EXPECT_EQ(Entries(), firstEntries_);
    ConfirmEditor();
    EXPECT_EQ(Entries().last(), QString("5|3|A|A.PDF|A.SLD"));
}

TEST_F(RegisterRefusalTest, OnlyTheFirstMissingNameIsReported) {
    StartWith("VLM_MAIN");
    AddEntry(washers_);
    Fill("Name2", "A");
    Fill("Name4", "A.SLD");
    ExpectMissing("PDFファイル名を入力してください", "Name3");
    Fill("Name2", "");
    ExpectMissing("ＰＤＦ名を入力してください", "Name2");
    Leave();
    EXPECT_EQ(Entries(), firstEntries_);
}

TEST_F(RegisterRefusalTest, AnEntryThatVanishedIsAddedAnew) {
    StartWith("VLM_MAIN");
    EditEntry(bolts_, "アイボルト");
    Fill("Name2", "吊りボルト");
    Execute("DELETE FROM PDFFileTable WHERE ID = 2");
    ConfirmEditor();
    EXPECT_THAT(Entries(), ElementsAre(firstEntries_[0], firstEntries_[2], firstEntries_[3],
                                       R"(5|2|吊りボルト|SMB\BOLT\EYE.TXT|SMB\BOLT\EYE.SLD)"));
    // Nothing is read again until the user does something.
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号"));
    ChooseCategory(bolts_);
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "記号", "吊りボルト"));
}

TEST_F(RegisterRefusalTest, ACategoryThatVanishedWhileItWasEdited) {
    StartWith("VLM_MAIN");
    EditCategory(large_);
    Fill("Name2", "特大");
    Execute("DELETE FROM FolderTable WHERE ID = 4");
    Run().Click("OK_btn");
    ExpectError({"3021"});
    EXPECT_TRUE(Run().IsWindowShown("Vlm_TBlEdt"));
    EXPECT_EQ(Run().Text("Name2"), QString("特大"));
    Leave();
    EXPECT_EQ(Categories(), firstCategories_.first(3));
}

TEST_F(RegisterRefusalTest, ACategoryThatVanishedWhileOneWasAddedBelowIt) {
    StartWith("VLM_MAIN");
    AddCategoryBelow(large_);
    Fill("Name2", "特大");
    Execute("DELETE FROM FolderTable WHERE ID = 4");
    Run().Click("OK_btn");
    ExpectError({"3021"});
    EXPECT_TRUE(Run().IsWindowShown("Vlm_TBlEdt"));
    Leave();
    EXPECT_EQ(Categories(), firstCategories_.first(3));
    ChooseCategory(bolts_);
    EXPECT_THAT(ListedEntries(), ElementsAre("六角ボルト", "アイボルト", "記号"));
}

TEST_F(RegisterRefusalTest, ANameOf255CharactersAndOneMore) {
    StartWith("VLM_MAIN");
    AddCategoryBelow(bolts_);
    const QString longest(255, QChar(u'漢'));
    Paste("Name2", longest + "字");
    Run().Click("OK_btn");
    ExpectError({"フォルダ名", "255 文字", "256 文字"});
    EXPECT_TRUE(Run().IsWindowShown("Vlm_TBlEdt"));
    EXPECT_EQ(Run().Text("Name2"), longest + "字");
    EXPECT_EQ(Run().Focus(), QString("Name2"));
    EXPECT_EQ(Categories(), firstCategories_);
    Paste("Name2", longest);
    ConfirmEditor();
    EXPECT_EQ(Categories().last(), "5|2|" + longest + '|');
    EXPECT_EQ(SelectedCategory(), "トルヴィク > ボルト > " + longest);
}

TEST_F(RegisterRefusalTest, AnEntryThatIsTooLongChangesNothing) {
    StartWith("VLM_MAIN");
    EditEntry(bolts_, "アイボルト");
    Fill("Name2", "B");
    Paste("Name4", QString(256, 'x'));
    Run().Click("OK_btn");
    ExpectError({"SLDファイル名", "255 文字", "256 文字"});
    EXPECT_TRUE(Run().IsWindowShown("Vlm_TBlEdt"));
    EXPECT_EQ(Run().Focus(), QString("Name4"));
    EXPECT_EQ(Entries(), firstEntries_);
    Leave();
}

TEST_F(RegisterRefusalTest, ControlCharactersAreRefused) {
    StartWith("VLM_MAIN");
    AddEntry(washers_);
    Paste("Name2", "tab\there");
    Fill("Name3", "A.PDF");
    Paste("Name4", "A\x01.SLD");
    Run().Click("OK_btn");
    ExpectError({"ＰＤＦ名", "U+0009"});
    EXPECT_EQ(Run().Focus(), QString("Name2"));
    Fill("Name2", "A");
    Run().Click("OK_btn");
    ExpectError({"SLDファイル名", "U+0001"});
    EXPECT_EQ(Run().Focus(), QString("Name4"));
    EXPECT_TRUE(Run().IsWindowShown("Vlm_TBlEdt"));
    Leave();
    EXPECT_EQ(Entries(), firstEntries_);
}

TEST_F(RegisterRefusalTest, QuotesMarkupAndForeignLettersAreKept) {
    StartWith("VLM_MAIN");
    QStringList expected = firstCategories_;
    QStringList tree = {"トルヴィク", "  ボルト", "  座金+", "    大形"};
    for (const QString& name : {QString("O'Brien \"5\"; DROP TABLE FolderTable --"), QString("한글 😀 ß"),
                                QString("%s <b>&x</b>")}) {
        AddCategoryBelow(root_);
        Paste("Name2", name);
        ConfirmEditor();
        expected.append(QString("%1|1|%2|").arg(expected.size() + 1).arg(name));
        tree.append("  " + name);
        EXPECT_EQ(Categories(), expected);
        EXPECT_EQ(Run().Tree("VlmTreeView"), tree);
        EXPECT_EQ(Panel(1), name);
    }
    EditEntry(bolts_, "記号");
    Fill("Name2", "ß 😀");
    ConfirmEditor();
    EXPECT_EQ(Entries()[2], QString(R"(3|2|ß 😀|SMB\BOLT\MARK.TXT|SMB\BOLT\MARK.SLD)"));
    EXPECT_EQ(SelectedEntry(), QString("ß 😀"));
}

TEST_F(RegisterRefusalTest, AnEntryWithAQuoteIsSavedAndSaysWhyItCannotBeChosen) {
    StartWith("VLM_MAIN");
    AddEntry(washers_);
    Fill("Name2", "3/8' washer");
    Fill("Name3", "A.PDF");
    Fill("Name4", "A.SLD");
    ConfirmEditor();
    EXPECT_EQ(Entries().last(), QString("5|3|3/8' washer|A.PDF|A.SLD"));
    EXPECT_THAT(ListedEntries(), ElementsAre("3/8' washer"));
    Run().Click("VlmPdfList", Item::Named("3/8' washer"));
    ExpectError({"3075"});
}

} // namespace
} // namespace velmo
