#include "startup/hand_off_files.h"

#include "platform/runtime_error.h"
#include "platform/text_file.h"

namespace velmo {

namespace {

// Stands for a library word that could not be read; it is neither library's word.
const QString UnreadLibrary = QStringLiteral("TOLVIKS2");

QString ValuesFile(const QString& folder) {
    return folder + QStringLiteral("velmo.ret");
}

QString ChoiceFile(const QString& folder) {
    return folder + QStringLiteral("velmo.ret2");
}

QString DocumentFile(const QString& folder) {
    return folder + QStringLiteral("velmo.doc");
}

} // namespace

PreviousAnswer ReadPreviousAnswer(const QString& folder) {
    PreviousAnswer answer{{}, UnreadLibrary};
    try {
        TextReader file(ChoiceFile(folder));
        answer.symbol = file.ReadLine();
        answer.library = file.ReadLine();
    } catch (const RuntimeError&) {
        // A missing or short file is the answer of a first run.
    }
    return answer;
}

void WriteAnswer(const QString& folder, const QList<VariableValue>& values, const QString& symbolFile,
                 bool userLibrary) {
    TextWriter valuesFile(ValuesFile(folder));
    valuesFile.WriteLine(QString::number(values.size()));
    for (const VariableValue& variable : values) {
        valuesFile.WriteLine(variable.name);
        valuesFile.WriteLine(variable.value);
    }
    TextWriter choiceFile(ChoiceFile(folder));
    choiceFile.WriteLine(symbolFile);
    choiceFile.WriteLine(userLibrary ? UserLibraryWord : SystemLibraryWord);
    ReplaceFiles({valuesFile.Replacement(), choiceFile.Replacement()});
}

void WriteNoSelection(const QString& folder) {
    TextWriter file(ChoiceFile(folder));
    file.WriteLine(NoSelection);
    file.Commit();
}

void WriteDocument(const QString& folder, const QString& document) {
    TextWriter file(DocumentFile(folder));
    file.WriteLine(document);
    file.Commit();
}

} // namespace velmo
