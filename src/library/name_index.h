#pragma once

#include "library/library_names.h"
#include "startup/global_state.h"

#include <QDateTime>

namespace velmo {

// Where a name that was found stands.
struct FoundName {
    bool systemTree = false;
    // The IDs of the categories from the root to the one that was found, or whose entry was found.
    std::vector<std::int16_t> way;
    // 0 when it is the category itself.
    std::int16_t entryId = 0;

    friend bool operator==(const FoundName&, const FoundName&) = default;
};

// All names of the libraries that the browser shows, folded for search. Names go by their numbers, 0-based,
// which hold until the names are read again.
class NameIndex {
public:
    // Reads the names, unless they are known and the libraries have not changed since. False when progress
    // stopped it. Throws what opening and reading a library throws. Either way the names known before stay.
    bool Refresh(const GlobalState& state, const ReadingProgress& progress = {});
    // The next Refresh reads the names in any case.
    void Forget();
    // Counts the readings, each of which numbers the names anew.
    int Reading() const { return reading_; }

    // The names that match all words of a text, the best first: the text itself, names that begin with the
    // first word, names that hold all words, and last those where words are found only on the way to the
    // category; of these the shorter first. Blanks separate words; without a word nothing matches.
    std::vector<int> Find(QStringView text) const;

    int Count() const { return int(names_.size()); }
    const QString& Text(int name) const { return names_[size_t(name)].text; }
    bool IsCategory(int name) const { return names_[size_t(name)].entryId == 0; }
    // The names on the way to where it stands, as the status bar spells the path of a category; empty for a
    // root.
    QString Way(int name) const;
    FoundName Place(int name) const;
    // The number of the name that stands there now; -1 when none does.
    int NameAt(const FoundName& place) const;

private:
    struct Library {
        QString path;
        bool systemTree = false;
        qint64 size = -1;
        QDateTime changed;
        // What a program that has the library open may not have put into it yet.
        qint64 logSize = -1;
        QDateTime logChanged;

        friend bool operator==(const Library&, const Library&) = default;
    };
    struct Name {
        QString text;
        std::int16_t categoryId = 0;
        std::int16_t entryId = 0;
        bool systemTree = false;
    };

    static Library Look(const QString& path, bool systemTree);
    static std::vector<Library> LookAtAll(const GlobalState& state);
    static bool MayChangeUnseen(const Library& library, const QDateTime& now);
    void Add(const LibraryNames& library, bool systemTree);
    void Add(Name name, int above);
    qsizetype NextWith(QStringView word, qsizetype rarest, qsizetype from) const;
    // A byte for each name: 1 where it holds the word.
    std::vector<char> NamesWith(QStringView word) const;
    // The same for the ways to the names, as far as they are shown.
    std::vector<char> WaysWith(const std::vector<char>& namesWith) const;
    QStringView Folded(size_t name) const;
    // The category above that the way to a category's own names shows; -1 for none.
    int ShownAbove(int category) const;

    std::vector<Name> names_;
    // For each name the number of the category above; -1 for a root.
    std::vector<int> above_;
    // All folded names one after the other, each with a separator behind it, and where each begins; the last
    // beginning is the end.
    QString folded_;
    std::vector<qsizetype> begins_;
    // How often each unit stands in the folded names.
    std::vector<qsizetype> frequencies_;
    // The categories, parents before their children.
    std::vector<int> fromTheRoots_;

    std::vector<Library> libraries_;
    bool known_ = false;
    int reading_ = 0;
    // With two roots their names tell the libraries apart.
    bool rootsTellApart_ = false;
};

} // namespace velmo
