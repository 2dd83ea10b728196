#pragma once

#include <QFile>

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo {

// While it lives, this process works as another user, who may add files to a folder but delete none that were
// there before. Only the superuser can be another user; IsPossible tells.
class OtherUser {
public:
    static bool IsPossible() { return ::geteuid() == 0; }

    explicit OtherUser(const QString& folder) {
        constexpr mode_t everyoneAddsOwnersDelete = 01777;
        constexpr uid_t nobody = 65534;
        changed_ = ::chmod(QFile::encodeName(folder).constData(), everyoneAddsOwnersDelete) == 0 &&
                   ::seteuid(nobody) == 0;
    }
    ~OtherUser() {
        if (::seteuid(0) != 0)
            ::abort();
    }
    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;

    bool Changed() const { return changed_; }

private:
    bool changed_ = false;
};

} // namespace velmo
