#pragma once

#include <QList>
#include <QString>

namespace velmo {

// The small text files through which the CAD side gets its answer. folder is the exchange folder, ending in a
// backslash, or empty for the current folder. Writing replaces the whole file in one step and throws as
// ReplaceFile does; a text that code page 932 cannot hold is error 5.

// Words of velmo.ret2.
inline const QString NoSelection = QStringLiteral("NO SELECT");
inline const QString UserLibraryWord = QStringLiteral("VELMO");
inline const QString SystemLibraryWord = QStringLiteral("TOLVIKS");

struct PreviousAnswer {
    // Line 1: the symbol's definition file or NoSelection; empty when it could not be read.
    QString symbol;
    // Line 2, or a word that means neither library when there is none.
    QString library;
};

// The first two lines of velmo.ret2. Never fails.
PreviousAnswer ReadPreviousAnswer(const QString& folder);

struct VariableValue {
    QString name;
    QString value;
};

// A symbol was confirmed. velmo.ret gets the number of variables, then a line for each name and each value;
// velmo.ret2 the symbol's definition file and its library. Neither file changes unless both can be written.
void WriteAnswer(const QString& folder, const QList<VariableValue>& values, const QString& symbolFile,
                 bool userLibrary);

// velmo.ret2 when nothing was chosen.
void WriteNoSelection(const QString& folder);

// velmo.doc when the run ended with a document (stored path) instead of values.
void WriteDocument(const QString& folder, const QString& document);

} // namespace velmo
