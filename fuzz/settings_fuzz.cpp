#include "platform/plain_settings.h"

#include <cstdint>

// Any file of settings is read, and a save changes what was saved and nothing else.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const velmo::SettingsValues before = velmo::ReadPlainSettings(file);
    if (velmo::WithPlainSettings(file, before) != file && file.contains("[Settings]"))
        qFatal("what did not change was written anew");
    velmo::SettingsValues wanted = before;
    const velmo::SettingsValues changes{{QStringLiteral("VlmMode"), QStringLiteral("4")},
                                        {QStringLiteral("SmbTbl1"), QStringLiteral(" 呼び=\\x ")}};
    wanted.insert(changes);
    if (velmo::ReadPlainSettings(velmo::WithPlainSettings(file, changes)) != wanted)
        qFatal("what was saved is not what is read");
    return 0;
}
