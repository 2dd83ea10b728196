#include "library/library_names.h"
#include "platform/runtime_error.h"
#include "platform/save_file.h"

#include <QTemporaryDir>

#include <cstdint>

// Any file in a library's place is read or refused with an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    const QString path = folder.path() + QStringLiteral("\\Velmo2.mdb");
    velmo::ReplaceFile(path, QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    try {
        velmo::Database library(path, velmo::Database::Access::Read);
        velmo::ReadLibraryNames(library, {});
        for (velmo::RecordSet rows = velmo::AllEntries(library); !rows.Eof(); rows.MoveNext())
            velmo::ReadEntry(rows);
        for (velmo::RecordSet rows = velmo::ChildCategories(library, 1); !rows.Eof(); rows.MoveNext())
            velmo::ReadCategory(rows);
    } catch (const velmo::RuntimeError&) {
    }
    return 0;
}
