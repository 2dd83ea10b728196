#include "support/folder_reads.h"
#include "symbol_file_moving.h"

namespace velmo {
namespace {

// Three hundred entries with a file each, two of which have a namesake in the target.
class ManyFilesTest : public SymbolFileMoveTest {
protected:
    ManyFilesTest() {
        Execute("DELETE FROM PDFFileTable");
        Database database = Open();
        Transaction adding(database);
        for (int i = 0; i < count; ++i) {
            const QString name = QStringLiteral("P%1.PDF").arg(i);
            WriteFile("A\\" + name, "x");
            AddEntry(database, 2, name, "A\\" + name, {});
        }
        adding.Commit();
        for (const char* name : {"N\\p7.pdf", "N\\P250.PDF"})
            WriteFile(name, "old");
    }
    static constexpr int count = 300;
};

TEST_F(ManyFilesTest, LookingAtThemIsToldBeforeTheFirstQuestion) {
    QStringList toldBefore;
    callbacks.ask = [&](const QString&) {
        if (toldBefore.isEmpty())
            toldBefore = progress;
        EXPECT_EQ(progress, toldBefore);
        return true;
    };
    Move();
    EXPECT_EQ(toldBefore.value(0), "0/600");
    EXPECT_EQ(toldBefore.value(1), "64/600");
    EXPECT_EQ(toldBefore.value(toldBefore.size() - 1), "600/600")
        << "what shows it is closed before the question";
    EXPECT_EQ(progress.value(toldBefore.size()), "0/300");
    EXPECT_EQ(progress.last(), "299/300");
    EXPECT_EQ(folder.Read("home\\N\\p7.pdf"), "x");
}

TEST_F(ManyFilesTest, StoppingWhileTheyAreLookedAtChangesNothing) {
    const QMap<QString, QByteArray> before = Files();
    for (const qint64 stop : {64, 600}) {
        stopAt = stop;
        Move();
        EXPECT_EQ(progress.value(progress.size() - 1), QStringLiteral("%1/600").arg(stop));
    }
    EXPECT_EQ(asked, QStringList());
    EXPECT_EQ(Files(), before);
}

TEST_F(ManyFilesTest, ALargeTargetIsReadOnce) {
    for (int i = 0; i < 10'000; ++i)
        WriteFile(QStringLiteral("N\\other%1.pdf").arg(i), {});
    refused = {1, 2};
    const int before = FolderReads();
    int planned = 0;
    callbacks.progress = [&](qint64 done, qint64 total) {
        const bool isMoving = total == count - 2;
        if (isMoving && done == 0)
            planned = FolderReads() - before;
        return !isMoving;
    };
    Move();
    EXPECT_GT(planned, 0);
    EXPECT_LT(planned, count / 10) << "reading it for every file would take minutes";
    EXPECT_EQ(asked.size(), 2);
}

} // namespace
} // namespace velmo
