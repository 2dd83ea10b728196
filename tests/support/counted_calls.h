#pragma once

#include <string>
#include <vector>

namespace velmo {

// What a program may meet at a call by which it changes files.
enum class CallFate { Killed, Failed };

// From now on this program's calls that create, write, sync, lock, date, rename or delete files, whoever
// makes them, are counted; the one of that number (1, 2, 3 ...) kills the program instead, or fails.
void CountCalls(long fatal, CallFate fate);
// The names of those counted so far.
std::vector<std::string> CountedCalls();

} // namespace velmo
