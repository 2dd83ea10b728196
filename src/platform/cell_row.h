#pragma once

#include <QString>

namespace velmo {

// The texts of one row of a grid, 0-based, in a single block of memory: a string of its own for each of
// thirty short texts would take several times the room. Texts past the last one stored are empty.
class CellRow {
public:
    // Adds a text behind the last one. Throws 5 when it is longer than 65535 characters.
    void Append(QStringView text);
    QStringView Text(int index) const;
    void SetText(int index, QStringView text);
    // Forgets the texts from count on.
    void Truncate(int count);
    // Room for texts of that many characters in all; Squeeze gives back what was not used.
    void Reserve(int texts, qsizetype characters);
    void Squeeze() { packed_.squeeze(); }

private:
    qsizetype Start(int index) const;

    // Each text follows one unit that holds its length.
    QString packed_;
    int count_ = 0;
};

} // namespace velmo
