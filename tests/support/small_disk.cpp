#include "support/small_disk.h"

#include <QFile>
#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace velmo {

namespace {

// Mounts of its own, so that nobody else sees them and they end with the process.
bool HasMountsOfItsOwn() {
    static const bool has = ::unshare(CLONE_NEWNS | (::geteuid() == 0 ? 0 : CLONE_NEWUSER)) == 0 &&
                            ::mount("", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return has;
}

} // namespace

SmallDisk::SmallDisk(const QString& folder, qint64 bytes) : folder_(folder) {
    const QByteArray size = "size=" + QByteArray::number(bytes);
    mounted_ = HasMountsOfItsOwn() &&
               ::mount("none", QFile::encodeName(folder).constData(), "tmpfs", 0, size.constData()) == 0;
}

SmallDisk::~SmallDisk() {
    if (mounted_)
        ::umount2(QFile::encodeName(folder_).constData(), MNT_DETACH);
}

void SmallDisk::Fill(const QString& name) const {
    QFile file(folder_ + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const QByteArray bytes(4096, 'x');
    while (file.write(bytes) == bytes.size()) {
    }
}

} // namespace velmo
