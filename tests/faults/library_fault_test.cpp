#include "fault_test.h"

#include <algorithm>
#include <array>

namespace velmo {
namespace {

// What the user changes in the library and among its files.
class LibraryFaultTest : public FaultTest {
protected:
    Task Command(const std::function<void()>& command) {
        return {[this, command] {
            StartWith("VLM_MAIN");
            command();
            Run().ClickAction("Tbar_Cancel");
        }};
    }
    // The library's file and what is in it show what the command did.
    void AwaitList(const QStringList& entries) {
        Run().WaitFor("the new list", [&] { return ListedEntries() == entries; });
    }
};

TEST_P(LibraryFaultTest, ANewCategory) {
    Try(Command([this] {
        AddCategoryBelow(bolts_);
        Fill("Name2", "新");
        ConfirmEditor();
    }));
}

TEST_P(LibraryFaultTest, AChangedCategory) {
    Try(Command([this] {
        EditCategory(bolts_);
        Fill("Name2", "新");
        ConfirmEditor();
    }));
}

TEST_P(LibraryFaultTest, ANewEntry) {
    Try(Command([this] {
        AddEntry(bolts_);
        Fill("Name2", "新");
        Fill("Name3", "A.PDF");
        Fill("Name4", "A.SLD");
        ConfirmEditor();
    }));
}

TEST_P(LibraryFaultTest, AChangedEntry) {
    Try(Command([this] {
        EditEntry(bolts_, "記号");
        Fill("Name2", "新");
        ConfirmEditor();
    }));
}

TEST_P(LibraryFaultTest, ADeletedEntry) {
    Try(Command([this] {
        ChooseCategory(bolts_);
        ChooseOnEntry("記号", "VlmMnuPopDel");
        ExpectQuestion("記号 を削除します。よろしいですか", "VelmoPDFリスト削除");
        Run().AnswerYes();
        AwaitList({"六角ボルト", "アイボルト"});
    }));
}

TEST_P(LibraryFaultTest, ADeletedCategory) {
    session_.ExecuteHome(library_, "DELETE FROM PDFFileTable WHERE FolderID=4");
    Try(Command([this] {
        ChooseOnCategory(large_, "VlmMnuPopDel");
        ExpectQuestion("大形を削除します。よろしいですか", "VELMO分類ツリー削除");
        Run().AnswerYes();
        Run().WaitFor("the category's end", [this] { return SelectedCategory() == washers_.join(" > "); });
    }));
}

TEST_P(LibraryFaultTest, ACopiedCategory) {
    Try(Command([this] {
        ChooseOnCategory(bolts_, "VlmMnuPopCopy");
        ChooseOnCategory(washers_, "VlmMnuPopPaste");
        Run().WaitFor("the copy", [this] { return Run().Tree("VlmTreeView").filter("ボルト").size() == 2; });
    }));
}

TEST_P(LibraryFaultTest, AMovedCategory) {
    Try(Command([this] {
        ChooseOnCategory(bolts_, "VlmMnuPopCut");
        ChooseOnCategory(washers_, "VlmMnuPopPaste");
        Run().WaitFor("the move", [this] { return Run().Tree("VlmTreeView").contains("    ボルト"); });
    }));
}

// Files that change their folder.
class FileMoveFaultTest : public LibraryFaultTest {
protected:
    void SetUp() override {
        LibraryFaultTest::SetUp();
        session_.ExecuteHome(library_,
                             "INSERT INTO FolderTable (ParentID, FolderName, SLDFileName) VALUES "
                             "(1, '部品', '');"
                             "INSERT INTO PDFFileTable (FolderID, PDFName, PDFFileName, SLDFileName) "
                             "VALUES (5, '弁', 'OLD\\VALVE.PDF', 'OLD\\VALVE.SLD')");
        for (const char* name : {"VALVE.PDF", "VALVE.SLD"})
            session_.WriteHome(QString("OLD\\") + name, name);
        session_.WriteHome("NEW\\OTHER.TXT", "other");
    }

    // A move that was interrupted may have left a file in both places, and asks.
    void AwaitMove() {
        Run().WaitFor("the end of the move", [this] {
            const std::optional<Message> message = Run().OpenMessage();
            if (!message)
                return !Run().IsWindowShown("Vlm_Tool");
            if (!message->buttons.contains("Yes"))
                throw HarnessError(message->text);
            Run().AnswerYes();
            return false;
        });
    }

    // Each file is somewhere, whole.
    QStringList LostFiles() {
        QStringList lost;
        for (const char* name : {"VALVE.PDF", "VALVE.SLD"}) {
            const bool isThere = std::ranges::any_of(std::array{"OLD\\", "NEW\\"}, [&](const char* folder) {
                const QString path = QString(folder) + name;
                return session_.ExistsInHome(path) && session_.ReadHome(path) == name;
            });
            if (!isThere)
                lost << QString("lost: ") + name;
        }
        return lost;
    }
    // The library names each where it is.
    QStringList Misnamed() {
        QStringList misnamed = LostFiles();
        const QList<QStringList> row =
            session_.QueryHome(library_, "SELECT PDFFileName, SLDFileName FROM PDFFileTable WHERE ID=5");
        for (const QString& name : row.value(0)) {
            if (!session_.ExistsInHome(name))
                misnamed << "the library names " + name + ", which is not there";
        }
        return misnamed;
    }
};

TEST_P(FileMoveFaultTest, TheFilesOfAnEntry) {
    Task task = Command([this] {
        ChooseOnCategory({"トルヴィク", "部品"}, "VlmMnuPopTool");
        Run().WaitForWindow("Vlm_Tool");
        Run().Click("SelList", Item::Named("弁"));
        Run().Click("FilMovBtn");
        Run().WaitForWindow("Vlm_SelDir");
        Run().Click("VlmDirTV", Item::Path({"トルヴィク", "NEW"}));
        Run().Click("OkBtn");
        AwaitMove();
    });
    task.complaints = [this] { return LostFiles(); };
    task.complaintsAfterStart = [this] { return Misnamed(); };
    Try(task);
}

INSTANTIATE_TEST_SUITE_P(Calls, LibraryFaultTest, FaultTest::Fates(), FaultTest::FateName);
INSTANTIATE_TEST_SUITE_P(Calls, FileMoveFaultTest, FaultTest::Fates(), FaultTest::FateName);

} // namespace
} // namespace velmo
