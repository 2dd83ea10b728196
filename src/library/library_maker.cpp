#include "library/library_maker.h"

#include "library/library_database.h"
#include "platform/file_move.h"
#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/work_file.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QScopeGuard>
#include <QThread>

#include <cerrno>
#include <memory>

namespace velmo {

namespace {

// Until the next look whether another program is done, and after how long the wait is told. Milliseconds.
constexpr unsigned Pause = 20;
constexpr qint64 LongWait = 500;

// A database is made under this name and gets its own when it is whole.
QString WorkName(const QString& path) {
    return path + QStringLiteral(".new");
}

// The file (native path) that is held by the program that makes the library.
QString HeldName(const QString& path) {
    return NativePath(path) + QStringLiteral(".making");
}

// What a program that was killed may have left beside a database.
void DeleteJournals(const QString& path) {
    for (const char* ending : {"-journal", "-wal", "-shm"})
        DeleteFileIfAny(path + QLatin1String(ending));
}

void DeleteWorkFiles(const QString& path) {
    DeleteFileIfAny(WorkName(path));
    DeleteJournals(WorkName(path));
}

void TryDeleteWorkFiles(const QString& path) {
    try {
        DeleteWorkFiles(path);
    } catch (const RuntimeError&) {
        // Another failure says more than this one, and the next making begins with deleting it.
    }
}

bool IsHeldByAnother(int systemError) {
    return systemError == EWOULDBLOCK || systemError == EAGAIN;
}

// While it lives no other program makes the library; it goes with the program, however that ends.
std::unique_ptr<WorkFile> HoldMaking(const LibraryOrder& order) {
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        errno = 0;
        auto held = std::make_unique<WorkFile>(HeldName(order.path));
        if (held->IsOpen())
            return held;
        if (!IsHeldByAnother(errno))
            throw RuntimeError(QFileInfo(held->Path()).dir().exists() ? ErrorNumber::PathFileAccess
                                                                      : ErrorNumber::PathNotFound)
                .InFile(QFileInfo::exists(held->Path()) ? held->Path() : order.path);
        if (waited.elapsed() >= LongWait && order.wait && !order.wait())
            throw ImportCancelled();
        QThread::msleep(Pause);
    }
}

} // namespace

void MakeLibrary(const LibraryOrder& order) {
    const std::unique_ptr<WorkFile> held = HoldMaking(order);
    const Making making = order.wanted();
    if (making == Making::Nothing) {
        order.announce();
        return;
    }
    const QString& path = order.path;
    DeleteWorkFiles(path);
    const auto leaveNothing = qScopeGuard([&path] { TryDeleteWorkFiles(path); });
    CreateLibraryFile(WorkName(path));
    {
        Database database(WorkName(path), Database::Access::Write);
        Transaction transaction(database);
        order.fill(database);
        transaction.Commit();
    }
    order.announce();
    // A journal of an old database would be played into the new one.
    if (making == Making::Replacement || !FileExists(path))
        DeleteJournals(path);
    if (making == Making::Replacement)
        RenameOver(WorkName(path), path);
    else
        static_cast<void>(RenameUnlessThere(WorkName(path), path));
}

void ClearMakingRemains(const QString& path) {
    const QString name = HeldName(path);
    if (!QFileInfo::exists(name))
        return;
    // It deletes what it gets; what another program holds it does not get.
    const WorkFile held(name);
    if (held.IsOpen())
        TryDeleteWorkFiles(path);
}

} // namespace velmo
