#include "library/library_database.h"
#include "library/list_file_import.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"

#include <QTemporaryDir>

#include <cstdint>

// Any lines are imported or refused with an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("l.mdb"));
    if (static const bool made = (velmo::CreateLibraryFile(path), true); !made)
        return 0;
    velmo::Database database(path, velmo::Database::Access::Write);
    // Never committed: each input begins with empty tables.
    const velmo::Transaction transaction(database);
    velmo::ListFileImport import(database);
    velmo::CodePageDecoder decoder;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    try {
        for (const QByteArray& line : bytes.split('\n'))
            import.ImportListLine(decoder.Decode(line));
    } catch (const velmo::RuntimeError&) {
    }
    return 0;
}
