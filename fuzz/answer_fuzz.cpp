#include "platform/save_file.h"
#include "startup/hand_off_files.h"

#include <QTemporaryDir>

#include <cstdint>

// Any answer of a run before is read without fail.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    const QString place = folder.path() + u'\\';
    velmo::ReplaceFile(place + QStringLiteral("velmo.ret2"),
                       QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    const velmo::PreviousAnswer answer = velmo::ReadPreviousAnswer(place);
    if (answer.symbol.contains(u'\n') || answer.library.contains(u'\n'))
        qFatal("a line holds a line break");
    return 0;
}
