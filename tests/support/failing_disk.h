#pragma once

#include <QtGlobal>

#include <memory>

namespace velmo {

// While it lives, no file of this process can grow beyond a number of bytes, as if the disk were full.
class FailingDisk {
public:
    explicit FailingDisk(qint64 bytes);
    ~FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

private:
    struct Before;
    std::unique_ptr<Before> before_;
};

} // namespace velmo
