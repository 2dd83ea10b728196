#include "platform/runtime_error.h"

namespace velmo {

namespace {

QString Meaning(ErrorNumber number) {
    switch (number) {
    case ErrorNumber::InvalidArgument:
        return QStringLiteral("プロシージャの呼び出し、または引数が不正です。");
    case ErrorNumber::Overflow:
        return QStringLiteral("オーバーフローしました。");
    case ErrorNumber::OutOfMemory:
        return QStringLiteral("メモリが不足しています。");
    case ErrorNumber::SubscriptOutOfRange:
        return QStringLiteral("インデックスが有効範囲にありません。");
    case ErrorNumber::TypeMismatch:
        return QStringLiteral("型が一致しません。");
    case ErrorNumber::Internal:
        return QStringLiteral("内部エラーが発生しました。");
    case ErrorNumber::FileNotFound:
        return QStringLiteral("ファイルが見つかりません。");
    case ErrorNumber::DeviceIo:
        return QStringLiteral("入出力エラーが発生しました。");
    case ErrorNumber::DiskFull:
        return QStringLiteral("ディスクの空き容量が不足しています。");
    case ErrorNumber::InputPastEnd:
        return QStringLiteral("ファイルの終わりを超えて読み込もうとしました。");
    case ErrorNumber::PermissionDenied:
        return QStringLiteral("書き込みできません。");
    case ErrorNumber::PathFileAccess:
        return QStringLiteral("パス名またはファイルにアクセスできません。");
    case ErrorNumber::PathNotFound:
        return QStringLiteral("パスが見つかりません。");
    case ErrorNumber::NoCurrentRecord:
        return QStringLiteral("カレント レコードがありません。");
    case ErrorNumber::DatabaseReadOnly:
        return QStringLiteral("データベースは読み取り専用のため、書き込めません。");
    case ErrorNumber::QuerySyntax:
        return QStringLiteral("検索条件の構文が正しくありません。");
    case ErrorNumber::TableNotFound:
        return QStringLiteral("データベースに必要なテーブルまたは項目がありません。");
    case ErrorNumber::TextTooLong:
        return QStringLiteral("項目に入れる文字が長すぎます (255 文字まで)。");
    case ErrorNumber::DatabaseLocked:
        return QStringLiteral("データベースはほかのプログラムが使用中です。");
    case ErrorNumber::ItemNotInCollection:
        return QStringLiteral("項目が見つかりません。");
    case ErrorNumber::NotADatabase:
        return QStringLiteral("データベースの形式を認識できません。");
    case ErrorNumber::DatabaseFailed:
        return QStringLiteral("データベースの操作に失敗しました。");
    case ErrorNumber::ElementNotFound:
        return QStringLiteral("要素が見つかりません。");
    case ErrorNumber::KeyNotUnique:
        return QStringLiteral("キーがほかの要素と重複しています。");
    }
    return {};
}

} // namespace

RuntimeError& RuntimeError::InFile(const QString& path) {
    if (file_.isEmpty())
        file_ = path;
    return *this;
}

RuntimeError& RuntimeError::AtLine(qint64 line) {
    if (line_ == 0)
        line_ = line;
    return *this;
}

RuntimeError& RuntimeError::InField(const QString& field) {
    if (field_.isEmpty())
        field_ = field;
    return *this;
}

RuntimeError& RuntimeError::EndsProgram() {
    fatal_ = true;
    return *this;
}

QString ErrorText(const RuntimeError& error) {
    QString text =
        QStringLiteral("実行時エラー '%1':\n%2").arg(int(error.Number())).arg(Meaning(error.Number()));
    if (!error.Detail().isEmpty())
        text += u'\n' + error.Detail();
    QString place;
    if (!error.File().isEmpty())
        place += QStringLiteral("\nファイル: ") + error.File();
    if (error.Line() > 0)
        place += QStringLiteral("\n行: %1").arg(error.Line());
    if (!error.Field().isEmpty())
        place += QStringLiteral("\n項目: ") + error.Field();
    return place.isEmpty() ? text : text + u'\n' + place;
}

} // namespace velmo
