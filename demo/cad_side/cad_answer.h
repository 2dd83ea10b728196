#pragma once

#include <QString>

#include <vector>

namespace velmo {

enum class AnswerKind {
    None,        // there is no answer yet
    NoSelection, // the user chose nothing
    Symbol,
};

// A variable of velmo.ret: its label "V12(W)" (or "V12" from table editing) and its value, as they stand.
struct CadVariable {
    QString label;
    QString value;

    // The 12 of V12(W); 0 when the label has no number.
    int Number() const;
    // True when the label has a display name, so that value is the variable's value.
    bool HasValue() const { return label.contains(u'('); }
};

// What velmo.ret2 and velmo.ret say.
struct CadAnswer {
    AnswerKind kind = AnswerKind::None;
    // Stored path of the symbol's definition file.
    QString symbolFile;
    // "VELMO" for the user library, "TOLVIKS" for the system library.
    QString libraryWord;
    std::vector<CadVariable> variables;
};

// Reads the answer files of an exchange folder (stored path ending in a separator). A missing velmo.ret2 is
// no answer. Throws 5, 13 or 62 naming file and line when a file breaks its layout, 53 when velmo.ret is
// missing.
CadAnswer ReadCadAnswer(const QString& exchangeFolder);

} // namespace velmo
