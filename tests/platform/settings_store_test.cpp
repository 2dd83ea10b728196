#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/settings_store.h"
#include "support/failing_disk.h"
#include "support/temp_folder.h"

#include <QFileInfo>
#include <gtest/gtest.h>

namespace velmo {
namespace {

QString Ini(const TempFolder& folder) {
    return NativePath(folder.Path("Velmo2.ini"));
}

TEST(SettingsStore, AMissingFileIsEmpty) {
    const TempFolder folder;
    const SettingsStore store(Ini(folder));
    EXPECT_EQ(store.Get("VlmHome"), "");
    EXPECT_EQ(store.Get("VlmMode", "2"), "2");
}

TEST(SettingsStore, ValuesAreVerbatim) {
    const TempFolder folder;
    folder.Write("Velmo2.ini",
                 "[Settings]\nVlmHome=C:\\lib\\new\nA= x=\"1\"; # \\t \nB=\nVlmTemp=/tmp/呼び\r\n");
    const SettingsStore store(Ini(folder));
    EXPECT_EQ(store.Get("VlmHome"), "C:\\lib\\new");
    EXPECT_EQ(store.Get("A"), " x=\"1\"; # \\t ");
    EXPECT_EQ(store.Get("B", "fallback"), "");
    EXPECT_EQ(store.Get("VlmTemp"), "/tmp/呼び");
}

TEST(SettingsStore, OnlyItsOwnSectionCounts) {
    const TempFolder folder;
    folder.Write("Velmo2.ini", "VlmMode=9\n[Other]\nVlmMode=8\n[Settings]\nVlmMode=3\n[More]\nVlmMode=7\n");
    EXPECT_EQ(SettingsStore(Ini(folder)).Get("VlmMode"), "3");
}

TEST(SettingsStore, ASaveLeavesEverythingElseByteForByte) {
    const TempFolder folder;
    folder.Write(
        "Velmo2.ini",
        "; by hand\n[Other]\nKey=\xFF\xFE raw\n\n[Settings]\nVlmHome=/a\\\nTwice=1\nTwice=2\nForeign=\\x\\\n"
        "no equals sign\n\n[Last]\nz=1\n");
    {
        SettingsStore store(Ini(folder));
        store.Save("VlmHome", "/b\\");
        store.Save("New", "n");
        store.Flush();
    }
    EXPECT_EQ(
        folder.Read("Velmo2.ini"),
        "; by hand\n[Other]\nKey=\xFF\xFE raw\n\n[Settings]\nVlmHome=/b\\\nTwice=1\nTwice=2\nForeign=\\x\\\n"
        "no equals sign\nNew=n\n\n[Last]\nz=1\n");
}

TEST(SettingsStore, MakesFileAndSection) {
    const TempFolder folder;
    {
        SettingsStore store(NativePath(folder.Path("Kestova2019\\Velmo2.ini")));
        store.Save("VlmMode", 4);
        store.Flush();
    }
    EXPECT_EQ(folder.Read("Kestova2019\\Velmo2.ini"), "[Settings]\nVlmMode=4\n");
    folder.Write("Velmo2.ini", "[Other]\nx=1");
    {
        SettingsStore store(Ini(folder));
        store.Save("VlmMode", 2);
        store.Flush();
    }
    EXPECT_EQ(folder.Read("Velmo2.ini"), "[Other]\nx=1\n[Settings]\nVlmMode=2\n");
}

TEST(SettingsStore, GarbageGivesTheFallbacks) {
    const TempFolder folder;
    folder.Write("Velmo2.ini", QByteArray("\x00\xFF[[[=\n=x\n[Settings\nVlmMode=3\n", 28));
    EXPECT_EQ(SettingsStore(Ini(folder)).Get("VlmMode", "2"), "2");
}

TEST(SettingsStore, WhatOthersSavedMeanwhileStays) {
    const TempFolder folder;
    SettingsStore first(Ini(folder));
    SettingsStore second(Ini(folder));
    first.Save("A", "1");
    first.Flush();
    second.Save("B", "2");
    second.Flush();
    const QByteArray file = folder.Read("Velmo2.ini");
    EXPECT_TRUE(file.contains("A=1\n")) << file.constData();
    EXPECT_TRUE(file.contains("B=2\n")) << file.constData();
}

TEST(SettingsStore, ALineBreakIsRefused) {
    const TempFolder folder;
    SettingsStore store(Ini(folder));
    EXPECT_THROW(store.Save("A", "1\n2"), RuntimeError);
}

TEST(SettingsStore, AFailedSaveLeavesTheOldFile) {
    const TempFolder folder;
    folder.Write("Velmo2.ini", "[Settings]\nA=1\n");
    SettingsStore store(Ini(folder));
    store.Save("A", QString(100'000, u'x'));
    {
        const FailingDisk disk(1024);
        EXPECT_THROW(store.Flush(), RuntimeError);
    }
    EXPECT_EQ(folder.Read("Velmo2.ini"), "[Settings]\nA=1\n");
    EXPECT_EQ(store.Get("A"), "1") << "what could not be saved is forgotten";
    store.Save("B", "2");
    store.Flush();
    EXPECT_EQ(folder.Read("Velmo2.ini"), "[Settings]\nA=1\nB=2\n");
    EXPECT_EQ(SettingsStore(Ini(folder)).Get("A"), "1");
}

} // namespace
} // namespace velmo
