#pragma once

#include <QString>

#include <vector>

namespace velmo {

// The texts of one row of a grid, 0-based, in a single block of memory: a string of its own for each of
// thirty short texts would take several times the room. Texts past the last one stored are empty.
class CellRow {
public:
    // Adds a text behind the last one. Throws 5 when it is longer than 65535 characters.
    void Append(QStringView text);
    QStringView Text(int index) const;
    // All of them at once, which is quicker than one by one; at least count, good until one changes.
    void GetTexts(std::vector<QStringView>& texts, int count) const;
    void SetText(int index, QStringView text);
    // Forgets a text, if there is one.
    void Forget(int index);
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
