#pragma once

#include "platform/record_set.h"

#include <array>

namespace velmo {

// The folder of the symbols below the home folder; names that the import stores begin with it.
inline const QString SymbolFolder = QStringLiteral("SMB");
inline const QString SystemRootName = QStringLiteral("トルヴィク");

// Reads the list file that ships with the system library into a fresh library database.
//
// A line is taken apart by position: name, slide and file stand between the first two double quotes,
// separated by a comma and two more characters. A line without a file is a category, one with a file an entry
// of the category inserted last. "(" without ")" behind the quotes opens a level, a line without "(" closes
// one.
class ListFileImport {
public:
    // The database holds empty tables; its counters start at 1.
    explicit ListFileImport(Database& database);

    // Interprets one line. Throws 5 when the positions cut a text of negative length, 6 when there are more
    // categories or entries than the program can number, 9 when categories nest more than 10 deep, 3163 when
    // a text is longer than 255 characters.
    void ImportListLine(const QString& line);

    int CategoryCount() const { return folderCounter_; }

private:
    static constexpr int DeepestLevel = 10;

    void ImportQuotedLine(const QString& line, int open, int quote);
    void AddImportedEntry(const QString& name, const QString& slide, const QString& file);
    int& StackAt(int depth);

    RecordSet folders_;
    RecordSet entries_;
    // The ID of the category inserted last, 0 before the first: the counter of a fresh table.
    int folderCounter_ = 0;
    int entryCount_ = 0;
    int depth_ = 0;
    // The category under which new ones are filed at each depth.
    std::array<int, DeepestLevel + 1> stack_{};
};

} // namespace velmo
