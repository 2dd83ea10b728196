#include "platform/runtime_error.h"
#include "variables/dimension_table.h"
#include "variables/symbol_definition.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

namespace {

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(path));
}

} // namespace

// Any definition file and any table file (what follows the first NUL) are read or refused with an error.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype split = bytes.indexOf('\0');
    Write(folder.filePath(QStringLiteral("S.TXT")), split < 0 ? bytes : bytes.first(split));
    Write(folder.filePath(QStringLiteral("S.PMN")), split < 0 ? QByteArray() : bytes.sliced(split + 1));
    for (const std::int16_t mode : {velmo::run_mode::VariableInput, velmo::run_mode::UserLibrary}) {
        velmo::GlobalState state;
        state.TempDir = folder.path() + u'\\';
        state.SymbolFile = state.TempDir + QStringLiteral("S.TXT");
        state.RunMode = mode;
        velmo::GridCells variables(velmo::GridCells::FirstColumn::Texts);
        variables.SetCols(2);
        velmo::WorkDatabase work(state.TempDir);
        try {
            const int count = velmo::ReadSymbolDefinition(state, work, variables, [](const QString&) {});
            velmo::LoadDimensionTable(state, work, count, variables);
        } catch (const velmo::RuntimeError&) {
        }
    }
    return 0;
}
