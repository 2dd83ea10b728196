#pragma once

#include "platform/database.h"

#include <functional>

namespace velmo {

// The user stopped the making of a library; nothing of it is left.
struct ImportCancelled {};

// What is to be made at the place of a library.
enum class Making { Nothing, New, Replacement };

// How a library is made.
struct LibraryOrder {
    // The stored path.
    QString path;
    // Asked when no other program is making it: one may just have done so.
    std::function<Making()> wanted;
    // Fills the empty library in one transaction.
    std::function<void(Database& library)> fill;
    // Called again and again while another program takes long to make it; false stops the waiting.
    std::function<bool()> wait;
    // Called when the whole library is about to be there, or is there because another program made it. What
    // this throws leaves no library behind.
    std::function<void()> announce;
};

// Makes a library unless none is wanted. It appears when it is whole, and a new one never takes the place of
// a file that has appeared meanwhile. Of several programs one makes it while the others wait. Throws 75 or 76
// when no file can be made there, ImportCancelled, and what fill and announce throw; nothing is left then.
void MakeLibrary(const LibraryOrder& order);

// Deletes what a program that was killed left after it had made the library, if it can be.
void ClearMakingRemains(const QString& path);

} // namespace velmo
