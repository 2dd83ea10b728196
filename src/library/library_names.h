#pragma once

#include "library/library_database.h"

#include <functional>

namespace velmo {

// The names that the tree of a library leads to: its first root, every category below that, and their
// entries, each in the order they were added.
struct LibraryNames {
    struct Category {
        std::int16_t id = 0;
        // Index of the parent in categories; -1 for the root.
        int parent = -1;
        QString name;
    };
    struct Entry {
        std::int16_t id = 0;
        // Index in categories.
        int category = 0;
        QString name;
    };

    std::vector<Category> categories;
    std::vector<Entry> entries;
    // Indices into categories; a parent comes before its children.
    std::vector<int> fromTheRoot;
};

// How much is read of the whole; false stops the reading.
using ReadingProgress = std::function<bool(qint64 done, qint64 whole)>;

// Reads both tables, one query each. Rows that the tree cannot lead to are passed over: those in a circle or
// without a parent, and those whose numbers are none or beyond 16 bits. Nothing when it was stopped.
std::optional<LibraryNames> ReadLibraryNames(Database& library, const ReadingProgress& progress);

} // namespace velmo
