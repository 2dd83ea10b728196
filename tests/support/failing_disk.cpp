#include "support/failing_disk.h"

#include <csignal>
#include <sys/resource.h>

namespace velmo {

struct FailingDisk::Before {
    rlimit limit{};
    struct sigaction action {};
};

FailingDisk::FailingDisk(qint64 bytes) : before_(std::make_unique<Before>()) {
    getrlimit(RLIMIT_FSIZE, &before_->limit);
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGXFSZ, &ignore, &before_->action);
    const rlimit small{rlim_t(bytes), before_->limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
}

FailingDisk::~FailingDisk() {
    setrlimit(RLIMIT_FSIZE, &before_->limit);
    sigaction(SIGXFSZ, &before_->action, nullptr);
}

} // namespace velmo
