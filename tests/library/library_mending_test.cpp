#include "library_opening.h"
#include "platform/work_file.h"

#include <optional>

namespace velmo {
namespace {

TEST_F(LibraryFilesTest, AnEmptySystemLibraryIsMadeAnewOnlyOnYes) {
    WriteList(SmallList);
    const QString path = folder_.Path("home\\Velmo2.mdb");
    const QString question =
        path + " には分類がありません。\n\n一覧ファイルからライブラリを作り直してよろしいですか";
    settings_.Save("TreeLast", 2);
    for (const bool hasTables : {false, true}) {
        questions_.clear();
        answer_ = false;
        folder_.Write("home\\Velmo2.mdb", "");
        if (hasTables) {
            DeleteFile(path);
            CreateLibraryFile(path);
        }
        const QByteArray before = folder_.Read("home\\Velmo2.mdb");
        Open();
        EXPECT_EQ(questions_, QStringList{question});
        EXPECT_EQ(folder_.Read("home\\Velmo2.mdb"), before);
        answer_ = true;
        Open();
        EXPECT_EQ(RootName(path), "トルヴィク");
        EXPECT_EQ(state_.CurFolderID, 1);
        EXPECT_EQ(Databases().size(), 1);
        Open();
        EXPECT_EQ(questions_.size(), 2);
    }
}

TEST_F(LibraryFilesTest, ALibraryThatAnotherProgramFilledWhileTheUserWasAskedStays) {
    WriteList(SmallList);
    const QString path = folder_.Write("home\\Velmo2.mdb", "");
    callbacks_.ask = [&](const QString&) {
        DeleteFile(path);
        CreateLibraryFile(path);
        Database other(path, Database::Access::Write);
        AddCategory(other, 0, "theirs");
        return true;
    };
    Open();
    EXPECT_EQ(RootName(path), "theirs");
    EXPECT_EQ(Databases().size(), 1);
}

TEST_F(LibraryFilesTest, WhatIsNoLibraryIsNeverReplaced) {
    answer_ = true;
    WriteList(SmallList);
    folder_.Write("home\\Velmo2.mdb", "a text of the length that a database has at least, or so");
    EXPECT_EQ(Failure([this] { Open(); }), ErrorNumber::NotADatabase);
    DeleteFile(folder_.Path("home\\Velmo2.mdb"));
    Database::Create(folder_.Path("home\\Velmo2.mdb")).Execute("CREATE TABLE Customers (Name)");
    EXPECT_EQ(Failure([this] { Open(); }), ErrorNumber::TableNotFound);
    EXPECT_EQ(questions_, QStringList());
}

TEST_F(LibraryFilesTest, ARootThatIsGoneIsMadeAnewOnlyOnYes) {
    state_.UserLibrary = true;
    Open();
    const QString path = state_.LibraryDb;
    {
        Database user(path, Database::Access::Write);
        AddCategory(user, 1, "below");
        AddEntry(user, 2, "entry", "e.txt");
        user.Execute("DELETE FROM FolderTable WHERE ID=1");
    }
    Open();
    EXPECT_EQ(
        questions_,
        QStringList{path + " には最上位の分類がありません。\n\n最上位の分類を作り直してよろしいですか"});
    EXPECT_THROW(RootName(path), RuntimeError);
    answer_ = true;
    Open();
    EXPECT_EQ(RootName(path), "VELMOデータ");
    {
        Database user(path, Database::Access::Write);
        EXPECT_EQ(ChildCategories(user, 1).Text(u"FolderName"), "below") << "what was below it is so again";
        EXPECT_FALSE(AllEntries(user).Eof());
        user.Execute("UPDATE FolderTable SET ParentID=2, FolderName='kept' WHERE ID=1");
    }
    Open();
    EXPECT_EQ(RootName(path), "kept");
    Open();
    EXPECT_EQ(questions_.size(), 3);

    folder_.Write("home\\VelmoUsr.mdb", "");
    Open();
    EXPECT_EQ(RootName(path), "VELMOデータ");
    EXPECT_EQ(questions_.size(), 4);
}

TEST_F(LibraryFilesTest, ASystemLibraryWithCategoriesKeepsThem) {
    const QString path = folder_.Path("home\\Velmo2.mdb");
    CreateLibraryFile(path);
    {
        Database system(path, Database::Access::Write);
        AddCategory(system, 2, "root");
        AddCategory(system, 1, "below");
    }
    answer_ = true;
    Open();
    EXPECT_EQ(questions_.size(), 1);
    EXPECT_EQ(RootName(path), "root");
}

TEST_F(LibraryFilesTest, WhileAnotherProgramMakesTheLibraryItIsWaitedFor) {
    WriteList(SmallList);
    std::optional<WorkFile> other(NativePath(folder_.Path("home\\velmo2.mdb.making")));
    ASSERT_TRUE(other->IsOpen());
    int waits = 0;
    callbacks_.wait = [&] {
        if (++waits == 3) {
            CreateLibraryFile(folder_.Path("home\\Velmo2.mdb"));
            Database theirs(folder_.Path("home\\Velmo2.mdb"), Database::Access::Write);
            AddCategory(theirs, 0, "theirs");
            other.reset();
        }
        return true;
    };
    Open();
    EXPECT_EQ(waits, 3);
    EXPECT_EQ(RootName(state_.LibraryDb), "theirs");
    EXPECT_EQ(state_.CurFolderID, 1);
    EXPECT_EQ(settings_.Get("VelmoDB"), folder_.Path("home\\velmo2.mdb"));
    EXPECT_EQ(Databases().size(), 1);
}

TEST_F(LibraryFilesTest, TheWaitCanBeStopped) {
    const WorkFile other(NativePath(folder_.Path("home\\velmo2.mdb.making")));
    callbacks_.wait = [] { return false; };
    EXPECT_THROW(Open(), ImportCancelled);
    EXPECT_EQ(Databases(), QStringList{"velmo2.mdb.making"});
}

TEST_F(LibraryFilesTest, ALibraryThatAppearsMeanwhileIsNotReplaced) {
    QStringList lines = SmallList;
    for (int i = 0; i < 600; ++i)
        lines << QStringLiteral("(\"Entry %1,  \\A\\LONG.SLD,  \\A\\A.TXT\")").arg(i);
    WriteList(lines);
    callbacks_.progress = [this](qint64, qint64) {
        folder_.Write("home\\velmo2.mdb", "theirs");
        return true;
    };
    Open();
    EXPECT_EQ(folder_.Read("home\\velmo2.mdb"), "theirs");
    EXPECT_EQ(Databases(), QStringList{"velmo2.mdb"});
}

TEST_F(LibraryFilesTest, WhatAMakerLeftBesideAWholeLibraryIsCleared) {
    WriteList(SmallList);
    Open();
    for (const char* left : {"velmo2.mdb.making", "velmo2.mdb.new", "velmo2.mdb.new-journal"})
        folder_.Write(QString("home\\") + left, "left");
    {
        const WorkFile other(NativePath(folder_.Path("home\\velmo2.mdb.making")));
        Open();
        EXPECT_EQ(Databases().size(), 4) << "another program may be making it anew";
    }
    folder_.Write("home\\velmo2.mdb.making", "left");
    Open();
    EXPECT_EQ(Databases(), QStringList{"velmo2.mdb"});
}

} // namespace
} // namespace velmo
