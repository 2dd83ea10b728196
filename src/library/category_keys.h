#pragma once

#include <QString>

#include <cstdint>

namespace velmo {

// The keys of the category tree: three characters that tell the library, then the category's ID in decimal.
inline const QString LibraryPrefix = QStringLiteral("Nod");
inline const QString SystemPrefix = QStringLiteral("Nd2");
// A child that stands for children not read yet; it bears the ID of the first of them.
inline const QString LibraryPlaceholder = QStringLiteral("\\N1");
inline const QString SystemPlaceholder = QStringLiteral("\\N2");

// Between the names on the way to a category.
inline const QString PathSeparator = QStringLiteral(" － ");

inline QString CategoryKey(bool systemTree, int id) {
    return (systemTree ? SystemPrefix : LibraryPrefix) + QString::number(id);
}

inline bool IsSystemKey(const QString& key) {
    return key.startsWith(SystemPrefix);
}

inline bool IsPlaceholderKey(const QString& key) {
    return key.startsWith(LibraryPlaceholder) || key.startsWith(SystemPlaceholder);
}

// The ID of a node: the key from its fourth character on.
inline std::int16_t CategoryIdOf(const QString& key) {
    return std::int16_t(key.sliced(LibraryPrefix.size()).toShort());
}

} // namespace velmo
