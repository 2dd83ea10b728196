#include "obey_permissions.h"

#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <linux/capability.h>
#include <sys/prctl.h>
#endif

namespace velmo {

void ObeyPermissions() {
#ifdef Q_OS_LINUX
    // What the process cannot pass over any more, the program that comes into it cannot either.
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
#endif
}

} // namespace velmo
