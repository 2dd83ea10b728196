#include "cad_side/cad_answer.h"

#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/runtime_error.h"
#include "platform/text_file.h"

#include <cstdint>

namespace velmo {
namespace {

QString ReadLine(TextReader& reader) {
    try {
        return reader.ReadLine();
    } catch (RuntimeError& error) {
        throw error.InFile(reader.Path()).AtLine(reader.LineNumber() + 1);
    }
}

std::int16_t ReadCount(TextReader& reader) {
    const QString text = ReadLine(reader);
    try {
        const std::int16_t count = ToInteger(text);
        if (count < 0)
            throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("変数の数が負です。"));
        return count;
    } catch (RuntimeError& error) {
        throw error.InFile(reader.Path()).AtLine(1);
    }
}

std::vector<CadVariable> ReadVariables(const QString& path) {
    TextReader reader(path);
    std::vector<CadVariable> variables;
    for (int left = ReadCount(reader); left > 0; --left) {
        QString label = ReadLine(reader);
        variables.push_back({std::move(label), ReadLine(reader)});
    }
    if (!reader.AtEnd())
        throw RuntimeError(ErrorNumber::InvalidArgument, QStringLiteral("1 行目の数より多くの行があります。"))
            .InFile(path)
            .AtLine(reader.LineNumber() + 1);
    return variables;
}

} // namespace

int CadVariable::Number() const {
    if (!label.startsWith(u'V'))
        return 0;
    const qsizetype end = label.indexOf(u'(');
    return ToIntegerOr(QStringView(label).mid(1, end < 0 ? -1 : end - 1), 0);
}

CadAnswer ReadCadAnswer(const QString& exchangeFolder) {
    const QString choice = exchangeFolder + QStringLiteral("velmo.ret2");
    CadAnswer answer;
    if (!FileExists(choice))
        return answer;
    TextReader reader(choice);
    answer.symbolFile = ReadLine(reader);
    if (answer.symbolFile == u"NO SELECT") {
        answer.kind = AnswerKind::NoSelection;
        answer.symbolFile.clear();
        return answer;
    }
    answer.kind = AnswerKind::Symbol;
    answer.libraryWord = ReadLine(reader);
    answer.variables = ReadVariables(exchangeFolder + QStringLiteral("velmo.ret"));
    return answer;
}

} // namespace velmo
