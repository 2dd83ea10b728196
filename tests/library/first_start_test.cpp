#include "library/library_samples.h"
#include "platform/files.h"

#include <QDir>
#include <QProcess>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace velmo {
namespace {

constexpr int NoCall = 1'000'000;

// Programs of their own that open a home folder without libraries.
class FirstStartTest : public testing::Test {
protected:
    FirstStartTest() { WriteList(1); }

    void WriteList(int entries) {
        entries_ = entries;
        QStringList lines = {"(\"root,  \\R.SLD,\"", "(\"ボルト,  \\BOLT\\BOLT.SLD,\""};
        for (int entry = 0; entry < entries; ++entry)
            lines << QStringLiteral("(\"六角ボルト %1,  \\BOLT\\HEX.SLD,  \\BOLT\\HEX.TXT\")").arg(entry);
        folder.WriteLines("home\\syst\\vlmsymlib.lst", lines);
    }
    std::unique_ptr<QProcess> Start(int call = NoCall) {
        auto program = std::make_unique<QProcess>();
        program->start(QStringLiteral(FIRST_START),
                       {folder.Path("home\\"),
                        NativePath(folder.Path(QStringLiteral("settings%1.ini").arg(++starts_))),
                        QString::number(call)});
        return program;
    }
    QStringList Files() const {
        return QDir(NativePath(folder.Path("home"))).entryList(QDir::Files, QDir::Name);
    }
    void ExpectWhole() const {
        EXPECT_EQ(Files(), (QStringList{"VelmoUsr.mdb", "velmo2.mdb"}));
        EXPECT_EQ(Rows("velmo2.mdb", "FolderTable"), 2);
        EXPECT_EQ(Rows("velmo2.mdb", "PDFFileTable"), entries_);
        EXPECT_EQ(Rows("VelmoUsr.mdb", "FolderTable"), 1);
    }
    // The rows of a table in a file that the engine finds no fault with.
    int Rows(const QString& name, const QString& table) const {
        Database database(folder.Path("home\\" + name), Database::Access::Read);
        const auto check = database.Prepare("PRAGMA integrity_check");
        EXPECT_TRUE(check->statement.executeStep());
        EXPECT_EQ(check->statement.getColumn(0).getString(), "ok");
        const auto count = database.Prepare("SELECT count(*) FROM " + table);
        EXPECT_TRUE(count->statement.executeStep());
        return count->statement.getColumn(0).getInt();
    }
    void Clear() {
        QDir home(NativePath(folder.Path("home")));
        for (const QString& name : Files())
            ASSERT_TRUE(home.remove(name));
    }

    TempFolder folder;

private:
    int entries_ = 0;
    int starts_ = 0;
};

TEST_F(FirstStartTest, ManyAtOnceEndWithWholeLibraries) {
    constexpr int rounds = 5;
    constexpr int programs = 12;
    for (const int entries : {1, 1000}) {
        WriteList(entries);
        for (int round = 0; round < rounds; ++round) {
            std::vector<std::unique_ptr<QProcess>> started;
            for (int program = 0; program < programs; ++program)
                started.push_back(Start());
            for (const std::unique_ptr<QProcess>& program : started) {
                ASSERT_TRUE(program->waitForFinished(-1));
                EXPECT_EQ(program->exitStatus(), QProcess::NormalExit);
                EXPECT_EQ(program->exitCode(), 0);
            }
            ExpectWhole();
            ASSERT_FALSE(HasFailure()) << entries << " entries, round " << round;
            Clear();
        }
    }
}

TEST_F(FirstStartTest, WhatAKilledOneLeftTheNextClears) {
    int call = 1;
    for (; call < NoCall; ++call) {
        const std::unique_ptr<QProcess> killed = Start(call);
        ASSERT_TRUE(killed->waitForFinished(-1));
        if (killed->exitStatus() == QProcess::NormalExit)
            break;
        const std::unique_ptr<QProcess> next = Start();
        ASSERT_TRUE(next->waitForFinished(-1));
        EXPECT_EQ(next->exitCode(), 0);
        ExpectWhole();
        ASSERT_FALSE(HasFailure()) << "call " << call;
        Clear();
    }
    EXPECT_GT(call, 50);
    ExpectWhole();
}

} // namespace
} // namespace velmo
