#pragma once

namespace velmo {

// For the new process of VelmoRun: the superuser, too, obeys the permissions of files from now on.
void ObeyPermissions();

} // namespace velmo
