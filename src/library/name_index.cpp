#include "library/name_index.h"

#include "library/category_keys.h"
#include "platform/files.h"
#include "platform/text_folding.h"

#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <numeric>

namespace velmo {

namespace {

// No word holds it, so none is found across two names.
constexpr QChar Separator = u'\n';

// A file system's clock may stand still for so long.
constexpr qint64 ClockMilliseconds = 2000;

enum Rank : size_t { Same, Begins, Holds, OnTheWay, RankCount };

// Longer names count as equally long.
constexpr size_t LengthCount = size_t(LongestText) + 1;

QStringList FoldedWords(QStringView text) {
    QStringList words;
    qsizetype begin = 0;
    for (qsizetype end = 0; end <= text.size(); ++end) {
        if (end < text.size() && !text[end].isSpace())
            continue;
        if (end > begin)
            words << FoldedForSearch(text.sliced(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

// The names that have a rank, the best first. What is equal stays in the order of the names.
std::vector<int> Sorted(const std::vector<std::uint16_t>& ranks, size_t worst) {
    std::vector<int> begins(worst + 1, 0);
    for (const std::uint16_t rank : ranks)
        ++begins[rank];
    const int count = int(ranks.size()) - begins[worst];
    std::exclusive_scan(begins.begin(), begins.end(), begins.begin(), 0);
    std::vector<int> sorted(size_t(count), 0);
    for (size_t name = 0; name < ranks.size(); ++name) {
        if (ranks[name] < worst)
            sorted[size_t(begins[ranks[name]]++)] = int(name);
    }
    return sorted;
}

} // namespace

bool NameIndex::Refresh(const GlobalState& state, const ReadingProgress& progress) {
    // Looked at before they are read: a change in between is then seen the next time.
    std::vector<Library> libraries = LookAtAll(state);
    if (known_ && libraries == libraries_)
        return true;
    known_ = false;
    std::vector<LibraryNames> read;
    const qint64 count = qint64(libraries.size());
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (qint64 i = 0; i < count; ++i) {
        Database database(libraries[size_t(i)].path, Database::Access::Read);
        auto names = ReadLibraryNames(database, [&](qint64 done, qint64 whole) {
            return !progress || progress(i * whole + done, count * whole);
        });
        if (!names)
            return false;
        read.push_back(std::move(*names));
    }
    ++reading_;
    names_.clear();
    above_.clear();
    folded_.clear();
    begins_ = {0};
    frequencies_.assign(size_t(std::numeric_limits<char16_t>::max()) + 1, 0);
    fromTheRoots_.clear();
    rootsTellApart_ = libraries.size() > 1;
    known_ = true;
    for (size_t i = 0; i < read.size(); ++i) {
        Add(read[i], libraries[i].systemTree);
        known_ = known_ && !MayChangeUnseen(libraries[i], now);
    }
    libraries_ = std::move(libraries);
    return true;
}

void NameIndex::Forget() {
    known_ = false;
}

std::vector<NameIndex::Library> NameIndex::LookAtAll(const GlobalState& state) {
    std::vector<Library> libraries{Look(state.LibraryDb, false)};
    if (ShowsBothLibraries(state))
        libraries.push_back(Look(state.SystemDb, true));
    return libraries;
}

NameIndex::Library NameIndex::Look(const QString& path, bool systemTree) {
    const QString native = NativePath(path);
    const QFileInfo file(native);
    const QFileInfo log(native + QStringLiteral("-wal"));
    Library library{path, systemTree, -1, {}, -1, {}};
    if (file.exists()) {
        library.size = file.size();
        library.changed = file.lastModified();
    }
    if (log.exists()) {
        library.logSize = log.size();
        library.logChanged = log.lastModified();
    }
    return library;
}

// Whether a change that comes now could leave time and size as they are.
bool NameIndex::MayChangeUnseen(const Library& library, const QDateTime& now) {
    const auto isRecent = [&now](const QDateTime& changed) {
        return changed.isValid() && qAbs(changed.msecsTo(now)) < ClockMilliseconds;
    };
    return isRecent(library.changed) || isRecent(library.logChanged);
}

void NameIndex::Add(const LibraryNames& library, bool systemTree) {
    const int first = Count();
    for (const LibraryNames::Category& category : library.categories)
        Add({category.name, category.id, 0, systemTree}, category.parent < 0 ? -1 : first + category.parent);
    for (const int category : library.fromTheRoot)
        fromTheRoots_.push_back(first + category);
    for (const LibraryNames::Entry& entry : library.entries)
        Add({entry.name, library.categories[size_t(entry.category)].id, entry.id, systemTree},
            first + entry.category);
}

void NameIndex::Add(Name name, int above) {
    folded_ += FoldedForSearch(name.text);
    for (const QChar unit : QStringView(folded_).sliced(begins_.back()))
        ++frequencies_[unit.unicode()];
    folded_ += Separator;
    begins_.push_back(folded_.size());
    names_.push_back(std::move(name));
    above_.push_back(above);
}

QStringView NameIndex::Folded(size_t name) const {
    return QStringView(folded_).sliced(begins_[name], begins_[name + 1] - begins_[name] - 1);
}

// Where the word comes next in the folded names; -1 when it does not. Its rarest unit is looked for, which is
// much quicker than looking for the word.
qsizetype NameIndex::NextWith(QStringView word, qsizetype rarest, qsizetype from) const {
    const QStringView all(folded_);
    for (qsizetype at = all.indexOf(word[rarest], from + rarest); at >= 0;
         at = all.indexOf(word[rarest], at + 1)) {
        if (all.sliced(at - rarest).startsWith(word))
            return at - rarest;
    }
    return -1;
}

std::vector<char> NameIndex::NamesWith(QStringView word) const {
    std::vector<char> found(names_.size(), 0);
    const auto isRarer = [this](QChar left, QChar right) {
        return frequencies_[left.unicode()] < frequencies_[right.unicode()];
    };
    const qsizetype rarest = std::min_element(word.begin(), word.end(), isRarer) - word.begin();
    size_t name = 0;
    for (qsizetype at = NextWith(word, rarest, 0); at >= 0; at = NextWith(word, rarest, begins_[name + 1])) {
        while (begins_[name + 1] <= at)
            ++name;
        found[name] = 1;
    }
    return found;
}

int NameIndex::ShownAbove(int category) const {
    const int above = above_[size_t(category)];
    const bool isRoot = above >= 0 && above_[size_t(above)] < 0;
    return isRoot && !rootsTellApart_ ? -1 : above;
}

std::vector<char> NameIndex::WaysWith(const std::vector<char>& namesWith) const {
    std::vector<char> found(namesWith);
    for (const int category : fromTheRoots_) {
        const int above = ShownAbove(category);
        if (above >= 0 && found[size_t(above)] != 0)
            found[size_t(category)] = 1;
    }
    return found;
}

std::vector<int> NameIndex::Find(QStringView text) const {
    const QStringList words = FoldedWords(text);
    if (words.isEmpty() || names_.empty())
        return {};
    std::vector<char> matches(names_.size(), 1);
    std::vector<char> holdsAll(names_.size(), 1);
    for (const QString& word : words) {
        const std::vector<char> names = NamesWith(word);
        // Bytes of the categories, each with the way that its own names have.
        const std::vector<char> ways = WaysWith(names);
        for (size_t name = 0; name < names.size(); ++name) {
            const int above = above_[name];
            const char onTheWay = above < 0 ? char(0) : ways[size_t(above)];
            matches[name] = char(matches[name] & (names[name] | onTheWay));
            holdsAll[name] = char(holdsAll[name] & names[name]);
        }
    }

    const QString whole = FoldedForSearch(text.trimmed());
    constexpr size_t none = RankCount * LengthCount;
    std::vector<std::uint16_t> ranks(names_.size(), none);
    for (size_t name = 0; name < names_.size(); ++name) {
        const QStringView folded = Folded(name);
        if (matches[name] == 0 || folded.isEmpty())
            continue;
        const size_t rank = holdsAll[name] == 0                ? OnTheWay
                            : folded == whole                  ? Same
                            : folded.startsWith(words.first()) ? Begins
                                                               : Holds;
        ranks[name] = std::uint16_t(rank * LengthCount + qMin(size_t(folded.size()), LengthCount - 1));
    }
    return Sorted(ranks, none);
}

QString NameIndex::Way(int name) const {
    const int holder = above_[size_t(name)];
    if (holder < 0)
        return {};
    QString way = Text(holder);
    for (int above = ShownAbove(holder); above >= 0; above = ShownAbove(above))
        way.prepend(Text(above) + PathSeparator);
    return way;
}

FoundName NameIndex::Place(int name) const {
    const Name& found = names_[size_t(name)];
    FoundName place{found.systemTree, {}, found.entryId};
    for (int category = found.entryId == 0 ? name : above_[size_t(name)]; category >= 0;
         category = above_[size_t(category)])
        place.way.push_back(names_[size_t(category)].categoryId);
    std::reverse(place.way.begin(), place.way.end());
    return place;
}

int NameIndex::NameAt(const FoundName& place) const {
    for (int name = 0; name < Count(); ++name) {
        const Name& known = names_[size_t(name)];
        if (known.entryId == place.entryId && known.categoryId == place.way.back() &&
            known.systemTree == place.systemTree)
            return name;
    }
    return -1;
}

} // namespace velmo
