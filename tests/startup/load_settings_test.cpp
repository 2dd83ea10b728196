#include "platform/files.h"
#include "startup/load_settings.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class LoadSettingsTest : public testing::Test {
protected:
    // Loads from a settings file with the lines given; {temp} stands for the exchange folder.
    GlobalState Load(QByteArray lines) {
        lines.replace("{temp}", folder_.Path("x").toUtf8());
        // Each a file of its own: two of the same size within one moment look unchanged to a store.
        const QString ini = QStringLiteral("velmo%1.ini").arg(++loads_);
        folder_.Write(ini, "[Settings]\n" + lines);
        const SettingsStore settings(NativePath(folder_.Path(ini)));
        GlobalState state;
        LoadSettings(state, settings);
        return state;
    }

    void Answer(const QByteArray& file) { folder_.Write("x\\velmo.ret2", file); }

    TempFolder folder_;
    int loads_ = 0;
};

TEST_F(LoadSettingsTest, NoSettingsGiveTheDefaults) {
    const GlobalState state = Load("");
    EXPECT_EQ(state.NextFlag, 0);
    EXPECT_EQ(state.RunMode, 2);
    EXPECT_EQ(state.HomeDir, "");
    EXPECT_EQ(state.LibRoot, "");
    EXPECT_EQ(state.TempDir, "");
    EXPECT_FALSE(state.UserLibrary);
    EXPECT_EQ(state.SymbolFile, "");
}

TEST_F(LoadSettingsTest, FoldersEndInABackslash) {
    EXPECT_EQ(Load("VlmHome=D:\\lib\n").HomeDir, "D:\\lib\\");
    EXPECT_EQ(Load("VlmHome=D:\\lib\\\n").HomeDir, "D:\\lib\\");
    EXPECT_EQ(Load("VlmHome=D:\\lib\n").LibRoot, "D:\\lib\\");
    EXPECT_EQ(Load("VlmTemp=/tmp/x\n").TempDir, "/tmp/x\\");
    EXPECT_EQ(Load("VlmHome=\n").HomeDir, "");
}

TEST_F(LoadSettingsTest, WithoutARequestToReopenTheBrowserOpens) {
    Answer("D:\\lib\\s1.txt\r\nVELMO\r\n");
    const GlobalState state = Load("VlmTemp={temp}\nVlmNxt=0\nVlmMode=2\n");
    EXPECT_EQ(state.SymbolFile, "");
    EXPECT_TRUE(state.UserLibrary) << "the library still follows the previous answer";
}

TEST_F(LoadSettingsTest, AnAnswerOfACancelledRunIsNeverReopened) {
    Answer("NO SELECT\r\nVELMO\r\n");
    const GlobalState state = Load("VlmTemp={temp}\nVlmHome=D:\\lib\nVlmNxt=1\n");
    EXPECT_EQ(state.SymbolFile, "");
    EXPECT_EQ(state.LibraryDb, "");
}

TEST_F(LoadSettingsTest, ReopensTheSymbolOfTheUserLibrary) {
    Answer("D:\\lib\\s1.txt\r\nVELMO\r\n");
    const GlobalState state = Load("VlmTemp={temp}\nVlmHome=D:\\lib\nVlmNxt=1\n");
    EXPECT_EQ(state.SymbolFile, "D:\\lib\\s1.txt");
    EXPECT_EQ(state.LibraryDb, "D:\\lib\\VelmoUsr.mdb");
}

TEST_F(LoadSettingsTest, TheLibraryWordIsComparedExactly) {
    for (const char* second : {"velmo\r\n", " VELMO\r\n", "TOLVIKS\r\n", ""}) {
        Answer(QByteArray("D:\\lib\\s1.txt\r\n") + second);
        const GlobalState state = Load("VlmTemp={temp}\nVlmHome=D:\\lib\nVlmNxt=1\n");
        EXPECT_FALSE(state.UserLibrary) << second;
        EXPECT_EQ(state.SymbolFile, "D:\\lib\\s1.txt") << second;
        EXPECT_EQ(state.LibraryDb, "D:\\lib\\Velmo2.mdb") << second;
    }
}

TEST_F(LoadSettingsTest, ModeThreeForcesTheUserLibrary) {
    Answer("D:\\lib\\s1.txt\r\nTOLVIKS\r\n");
    const GlobalState state = Load("VlmTemp={temp}\nVlmMode=3\n");
    EXPECT_TRUE(state.UserLibrary);
    EXPECT_EQ(state.SymbolFile, "");
}

TEST_F(LoadSettingsTest, ModeFourReopensAsWell) {
    Answer("D:\\lib\\s1.txt\r\nTOLVIKS\r\n");
    EXPECT_EQ(Load("VlmTemp={temp}\nVlmMode=4\nVlmNxt=0\n").SymbolFile, "D:\\lib\\s1.txt");
}

TEST_F(LoadSettingsTest, AMissingAnswerOpensTheBrowser) {
    EXPECT_EQ(Load("VlmTemp={temp}\nVlmNxt=1\n").SymbolFile, "");
    EXPECT_EQ(Load("VlmTemp={temp}\nVlmMode=4\n").SymbolFile, "");
}

TEST_F(LoadSettingsTest, GarbageGivesTheDefaults) {
    const GlobalState state = Load("VlmNxt=abc\nVlmMode=999999\nVlmHome\n\xFF\xFE=1\n");
    EXPECT_EQ(state.NextFlag, 0);
    EXPECT_EQ(state.RunMode, 2);
    EXPECT_EQ(state.HomeDir, "");
}

TEST_F(LoadSettingsTest, NumbersAreReadAsIntegers) {
    EXPECT_EQ(Load("VlmMode= 3 \n").RunMode, 3);
    EXPECT_EQ(Load("VlmNxt=1.0\n").NextFlag, 1);
}

} // namespace
} // namespace velmo
