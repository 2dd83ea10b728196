#include "library_opening.h"
#include "support/failing_disk.h"

namespace velmo {
namespace {

TEST_F(LibraryFilesTest, AMissingSystemLibraryIsImported) {
    WriteList(SmallList);
    settings_.Save("TreeLast", 2);
    Open();
    EXPECT_EQ(state_.LibraryDb, folder_.Path("home\\Velmo2.mdb"));
    EXPECT_EQ(state_.CurFolderID, 1);
    EXPECT_EQ(RootName(state_.LibraryDb), "トルヴィク");
    EXPECT_EQ(settings_.Get("VelmoDB"), folder_.Path("home\\velmo2.mdb"));
    EXPECT_EQ(Databases().size(), 1);
    EXPECT_TRUE(questions_.isEmpty());
}

TEST_F(LibraryFilesTest, AnExistingSystemLibraryRestoresTheCategory) {
    CreateLibraryFile(folder_.Path("home\\VELMO2.MDB"));
    settings_.Save("TreeLast", 7);
    Open();
    EXPECT_EQ(state_.CurFolderID, 7);
    settings_.Save("TreeLast", "");
    Open();
    EXPECT_EQ(state_.CurFolderID, 1);
}

TEST_F(LibraryFilesTest, ASavedNumberThatIsNoneIsItsDefault) {
    for (const char* name : {"home\\Velmo2.mdb", "home\\VelmoUsr.mdb"})
        CreateLibraryFile(folder_.Path(name));
    for (const char* key : {"TreeLast", "UsrTreeLast", "EdtTreeLast", "Tree2nd1st"})
        settings_.Save(key, "x");
    Open();
    EXPECT_EQ(state_.CurFolderID, 1);
    state_.UserLibrary = true;
    state_.CurFolderID = 0;
    Open();
    EXPECT_EQ(state_.CurFolderID, 1);
    state_.RunMode = 3;
    state_.CurFolderID = 0;
    Open();
    EXPECT_EQ(state_.CurFolderID, 1);
    EXPECT_FALSE(state_.SystemTreeFirst);
    settings_.Save("EdtTreeLast", "40000");
    settings_.Save("Tree2nd1st", "0.5");
    Open();
    EXPECT_EQ(state_.CurFolderID, 1);
    EXPECT_TRUE(state_.SystemTreeFirst);
}

TEST_F(LibraryFilesTest, AMissingUserLibraryHasASingleRoot) {
    state_.UserLibrary = true;
    settings_.Save("UsrTreeLast", 5);
    Open();
    EXPECT_EQ(state_.LibraryDb, folder_.Path("home\\VelmoUsr.mdb"));
    EXPECT_EQ(state_.CurFolderID, 1);
    EXPECT_EQ(settings_.Get("UsrDB"), state_.LibraryDb);
    Database database(state_.LibraryDb, Database::Access::Read);
    RecordSet rows(database, "FolderTable");
    EXPECT_EQ(rows.Integer(u"ID"), 1);
    EXPECT_EQ(rows.Integer(u"ParentID"), 0);
    EXPECT_EQ(rows.Text(u"FolderName"), "VELMOデータ");
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
}

TEST_F(LibraryFilesTest, AnExistingUserLibraryRestoresTheCategory) {
    CreateLibraryFile(folder_.Path("home\\VelmoUsr.mdb"));
    state_.UserLibrary = true;
    settings_.Save("UsrTreeLast", 5);
    Open();
    EXPECT_EQ(state_.CurFolderID, 5);
}

TEST_F(LibraryFilesTest, ModeThreeOpensBothLibraries) {
    CreateLibraryFile(folder_.Path("home\\VelmoUsr.mdb"));
    CreateLibraryFile(folder_.Path("home\\Velmo2.mdb"));
    state_.UserLibrary = true;
    state_.RunMode = 3;
    settings_.Save("EdtTreeLast", 9);
    settings_.Save("Tree2nd1st", 1);
    Open();
    EXPECT_EQ(state_.SystemDb, folder_.Path("home\\Velmo2.mdb"));
    EXPECT_EQ(state_.LibraryDb, folder_.Path("home\\VelmoUsr.mdb"));
    EXPECT_EQ(state_.CurFolderID, 9);
    EXPECT_TRUE(state_.SystemTreeFirst);
}

TEST_F(LibraryFilesTest, ModeThreeTakesAnyNumberButZeroForTheSystemTree) {
    CreateLibraryFile(folder_.Path("home\\VelmoUsr.mdb"));
    CreateLibraryFile(folder_.Path("home\\Velmo2.mdb"));
    state_.UserLibrary = true;
    state_.RunMode = 3;
    for (const auto& [stored, isSystem] :
         {std::pair("2", true), std::pair("-1", true), std::pair("0.5", true), std::pair("1e-3", true),
          std::pair("40000", true), std::pair("0.0", false), std::pair("-0", false), std::pair("", false)}) {
        settings_.Save("Tree2nd1st", QString(stored));
        Open();
        EXPECT_EQ(state_.SystemTreeFirst, isSystem) << stored;
    }
}

TEST_F(LibraryFilesTest, ModeThreeForgetsTheSystemTreeWhenItsLibraryIsNew) {
    WriteList(SmallList);
    CreateLibraryFile(folder_.Path("home\\VelmoUsr.mdb"));
    state_.UserLibrary = true;
    state_.RunMode = 3;
    settings_.Save("EdtTreeLast", 9);
    settings_.Save("Tree2nd1st", 1);
    Open();
    EXPECT_EQ(state_.CurFolderID, 1);
    EXPECT_FALSE(state_.SystemTreeFirst);
}

TEST_F(LibraryFilesTest, ModeThreeKeepsTheSystemCategoryWhenTheUserLibraryIsNew) {
    CreateLibraryFile(folder_.Path("home\\Velmo2.mdb"));
    state_.UserLibrary = true;
    state_.RunMode = 3;
    settings_.Save("EdtTreeLast", 9);
    settings_.Save("Tree2nd1st", 1);
    Open();
    EXPECT_EQ(state_.CurFolderID, 9);
    EXPECT_TRUE(state_.SystemTreeFirst);
    settings_.Save("Tree2nd1st", 0);
    DeleteFile(state_.LibraryDb);
    Open();
    EXPECT_EQ(state_.CurFolderID, 1);
}

TEST_F(LibraryFilesTest, AnExistingFileIsReplacedOnlyOnYes) {
    WriteList(SmallList);
    const QString path = folder_.Path("home\\velmo2.mdb");
    CreateLibraryFile(folder_.Path("home\\Velmo2.mdb"));
    CreateSystemLibrary(state_, settings_, callbacks_);
    EXPECT_EQ(questions_, QStringList{path + " はすでに存在します。更新してよろしいですか"});
    EXPECT_EQ(settings_.Get("VelmoDB"), path);
    EXPECT_THROW(RootName(path), RuntimeError) << "the old library stays";

    answer_ = true;
    CreateSystemLibrary(state_, settings_, callbacks_);
    EXPECT_EQ(RootName(path), "トルヴィク");
    EXPECT_EQ(Databases().size(), 1) << "both spellings are one file";

    const QString user = folder_.Path("home\\VelmoUsr.mdb");
    folder_.Write("home\\VelmoUsr.mdb", "");
    CreateUserLibrary(state_, settings_, callbacks_);
    EXPECT_EQ(questions_.last(), user + " はすでに存在します。更新してよろしいですか");
    EXPECT_EQ(RootName(user), "VELMOデータ");
}

TEST_F(LibraryFilesTest, AMissingListFileLeavesNothingBehind) {
    try {
        Open();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.File(), folder_.Path("home\\syst\\vlmsymlib.lst"));
    }
    EXPECT_EQ(Databases(), QStringList());
    EXPECT_EQ(settings_.Get("VelmoDB", "unset"), "unset");
}

TEST_F(LibraryFilesTest, AListWithoutCategoriesIsRefused) {
    WriteList({});
    try {
        Open();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::NoCurrentRecord);
        EXPECT_EQ(error.File(), folder_.Path("home\\syst\\vlmsymlib.lst"));
    }
    EXPECT_EQ(Databases(), QStringList());
}

TEST_F(LibraryFilesTest, AJournalLeftBesideTheLibraryDoesNotSpoilANewOne) {
    WriteList(SmallList);
    folder_.Write("home\\velmo2.mdb-journal", QByteArray(2000, 'x'));
    Open();
    EXPECT_EQ(RootName(state_.LibraryDb), "トルヴィク");
    EXPECT_EQ(Databases().size(), 1);
}

TEST_F(LibraryFilesTest, ABadLineIsNamedAndLeavesNothingBehind) {
    WriteList(SmallList + QStringList{"(\"no comma\")"});
    try {
        Open();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidArgument);
        EXPECT_EQ(error.File(), folder_.Path("home\\syst\\vlmsymlib.lst"));
        EXPECT_EQ(error.Line(), 4);
    }
    EXPECT_EQ(Databases(), QStringList());
}

TEST_F(LibraryFilesTest, AListOfMoreThanTheProgramCanNumberIsRefusedByItsLine) {
    constexpr int most = 32767;
    const QString category = "(\"c,  \\BOLT\\BOLT.SLD,\")";
    const QString entry = "(\"e,  \\BOLT\\HEX.SLD,  \\BOLT\\HEX.TXT\")";
    for (const QString& line : {category, entry}) {
        // The first line is the root, which counts among the categories.
        QStringList lines = {SmallList[0]};
        while (lines.size() < (line == category ? most : most + 1))
            lines << line;
        WriteList(lines + QStringList{line});
        try {
            Open();
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::Overflow);
            EXPECT_EQ(error.File(), folder_.Path("home\\syst\\vlmsymlib.lst"));
            EXPECT_EQ(error.Line(), lines.size() + 1);
            EXPECT_TRUE(error.Detail().contains("32767 件")) << error.Detail().toStdString();
        }
        EXPECT_EQ(Databases(), QStringList());
        WriteList(lines);
        Open();
        EXPECT_EQ(RootName(state_.LibraryDb), "トルヴィク");
        DeleteFile(state_.LibraryDb);
    }
}

TEST_F(LibraryFilesTest, AnImportThatIsStoppedLeavesNothingBehind) {
    QStringList lines = SmallList;
    for (int i = 0; i < 2000; ++i)
        lines << QStringLiteral("(\"Entry %1,  \\A\\LONG.SLD,  \\A\\A.TXT\")").arg(i);
    WriteList(lines);
    qint64 reported = 0;
    callbacks_.progress = [&](qint64 done, qint64 total) {
        EXPECT_GT(done, reported);
        EXPECT_LE(done, total);
        reported = done;
        return done < total / 2;
    };
    EXPECT_THROW(Open(), ImportCancelled);
    EXPECT_GT(reported, 0);
    EXPECT_EQ(Databases(), QStringList());
}

TEST_F(LibraryFilesTest, WhatAnInterruptedImportLeftIsPassedOver) {
    WriteList(SmallList);
    folder_.Write("home\\velmo2.mdb.new", "half a database");
    Open();
    EXPECT_EQ(RootName(state_.LibraryDb), "トルヴィク");
    EXPECT_EQ(Databases().size(), 1);
}

TEST_F(LibraryFilesTest, AFullDiskLeavesNothingBehind) {
    QStringList lines = SmallList;
    for (int i = 0; i < 5000; ++i)
        lines << QStringLiteral("(\"Entry %1,  \\A\\LONG.SLD,  \\A\\A.TXT\")").arg(i);
    WriteList(lines);
    {
        const FailingDisk disk(100'000);
        EXPECT_THROW(Open(), RuntimeError);
    }
    EXPECT_EQ(Databases(), QStringList());
}

TEST_F(LibraryFilesTest, TheSchemaHoldsExactlyTheColumns) {
    const QString path = folder_.Path("home\\new.mdb");
    CreateLibraryFile(path);
    Database database(path, Database::Access::Write);
    EXPECT_EQ(database.Prepare("SELECT * FROM FolderTable")->columns,
              (QStringList{"ID", "ParentID", "FolderName", "SLDFileName"}));
    EXPECT_EQ(database.Prepare("SELECT * FROM PDFFileTable")->columns,
              (QStringList{"ID", "FolderID", "PDFName", "PDFFileName", "SLDFileName"}));
    EXPECT_EQ(AddCategory(database, 0, "a"), 1);
    EXPECT_EQ(AddCategory(database, 1, "b"), 2);
    EXPECT_EQ(AddEntry(database, 1, "e", "f"), 1);
}

} // namespace
} // namespace velmo
