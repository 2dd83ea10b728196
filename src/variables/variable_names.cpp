#include "variables/variable_names.h"

#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/save_file.h"
#include "platform/text_file.h"

#include <QHash>

namespace velmo {

namespace {

const QString Call = QStringLiteral("PRO(\"");
constexpr const char* SectionStart = "$VAR";
constexpr const char* SectionEnd = "$GEO";

// By the variable's number; of several variables of one number the first counts.
QHash<int, QString> ReadNames(const WorkDatabase& work) {
    QHash<int, QString> names;
    Database database = work.Open(Database::Access::Read);
    for (RecordSet rows = SelectVariables(database); !rows.Eof(); rows.MoveNext()) {
        const int number = rows.Integer(u"ValNo");
        if (!names.contains(number))
            names.insert(number, rows.Text(u"ValName"));
    }
    return names;
}

void RequireSpellable(const QString& name) {
    if (name.contains(u'"') || name.contains(u'\n') || name.contains(u'\r'))
        throw RuntimeError(ErrorNumber::InvalidArgument,
                           QStringLiteral("名前「%1」に引用符または改行があります。").arg(name));
}

// Works on bytes, so that what is not read as a character stays as it is all the same. No byte of a
// two-byte character is a quote.
class NameWriter {
public:
    NameWriter(const QString& path, QHash<int, QString> names) : file_(path), names_(std::move(names)) {}

    QByteArray Write() {
        if (file_.ReadBytes() == SectionStart) {
            WriteLine(SectionStart);
            WriteSection();
            WriteLine(SectionEnd);
        }
        while (!file_.AtEnd())
            WriteLine(file_.ReadBytes());
        return bytes_;
    }

private:
    void WriteSection() {
        for (int number = 1; !file_.AtEnd(); ++number) {
            const QByteArrayView line = file_.ReadBytes();
            if (line == SectionEnd)
                return;
            const auto name = names_.constFind(number);
            if (name == names_.cend())
                continue;
            try {
                WriteRenamed(line, *name);
            } catch (RuntimeError& error) {
                throw error.InFile(file_.Path()).AtLine(file_.LineNumber());
            }
        }
    }

    void WriteRenamed(QByteArrayView line, const QString& name) {
        const QString text = decoder_.Decode(line);
        const qsizetype call = text.indexOf(Call);
        qsizetype open = -1;
        // As many quotes stand before the one that opens the name in the bytes as in the text.
        for (qsizetype quotes = call < 0 ? -1 : QStringView(text).first(call).count(u'"'); quotes >= 0;
             --quotes)
            open = line.indexOf('"', open + 1);
        const qsizetype close = open < 0 ? -1 : line.indexOf('"', open + 1);
        if (close < 0)
            throw RuntimeError(ErrorNumber::InvalidArgument,
                               QStringLiteral("PRO(\"名前\" の形で書かれていません。"));
        RequireSpellable(name);
        bytes_ += line.first(open + 1);
        bytes_ += EncodeCodePage(name);
        WriteLine(line.sliced(close));
    }

    void WriteLine(QByteArrayView line) {
        bytes_ += line;
        bytes_ += "\r\n";
    }

    TextReader file_;
    QHash<int, QString> names_;
    CodePageDecoder decoder_;
    QByteArray bytes_;
};

} // namespace

void WriteVariableNames(const WorkDatabase& work, const QString& definitionFile, const Inform& inform) {
    if (!FileExists(definitionFile)) {
        inform(definitionFile + QStringLiteral("なし"));
        return;
    }
    const QByteArray bytes = NameWriter(definitionFile, ReadNames(work)).Write();
    const QString workFile = definitionFile + u'2';
    if (!ReplaceFileThrough(workFile, definitionFile, bytes))
        throw RuntimeError(ErrorNumber::PathFileAccess).InFile(workFile);
}

} // namespace velmo
