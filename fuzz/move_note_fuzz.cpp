#include "library/move_note.h"
#include "platform/runtime_error.h"
#include "platform/save_file.h"

#include <QTemporaryDir>

#include <cstdint>

// Any note of a killed move is read or refused with an error; what is read can be written and read again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    const QString library = folder.path() + QStringLiteral("\\VelmoUsr.mdb");
    velmo::ReplaceFile(library + QStringLiteral(".move"),
                       QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    velmo::MoveNote note(library);
    try {
        const std::vector<velmo::NameChange> changes = note.Read();
        note.Write(changes);
        if (note.Read().size() != changes.size())
            qFatal("a written note differs from the one that was read");
    } catch (const velmo::RuntimeError&) {
    }
    return 0;
}
