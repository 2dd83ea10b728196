#include "cad_side/cad_session.h"

#include "platform/numbers.h"
#include "platform/runtime_error.h"
#include "platform/settings_store.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace velmo {
namespace {

// A day after the epoch; times of zero count as unknown.
const QDateTime kOldAnswer = QDateTime::fromSecsSinceEpoch(86400);

void MakeFolder(const QString& path) {
    if (!QDir().mkpath(path))
        throw RuntimeError(ErrorNumber::PathNotFound, QStringLiteral("フォルダーを作れません。"))
            .InFile(path);
}

// Both paths are absolute.
void CopyFolder(const QString& from, const QString& to) {
    if (!QFileInfo(from).isDir())
        throw RuntimeError(ErrorNumber::PathNotFound, QStringLiteral("ライブラリのホームがありません。"))
            .InFile(from);
    MakeFolder(to);
    QDirIterator entries(from, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString source = entries.next();
        const QString target = to + u'/' + QDir(from).relativeFilePath(source);
        if (entries.fileInfo().isDir()) {
            MakeFolder(target);
            continue;
        }
        MakeFolder(QFileInfo(target).path());
        if (!QFile::copy(source, target))
            throw RuntimeError(ErrorNumber::PathFileAccess, QStringLiteral("複写できません。"))
                .InFile(target);
        // The library may come from a place that cannot be written.
        QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner | QFile::WriteUser);
    }
}

// Two decimals are what a drawing measures; without needless zeros.
QString DistanceText(double distance) {
    QString text = QString::number(distance, 'f', 2);
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    return text;
}

} // namespace

CadSession::CadSession(const QString& folder, const QString& libraryHome)
    : folder_(QDir(folder).absolutePath()) {
    MakeFolder(ConfigFolder());
    MakeFolder(ExchangeFolder());
    if (!QFileInfo::exists(Home()))
        CopyFolder(QDir(libraryHome).absolutePath(), Home());
}

QStringList CadSession::WriteRequest(const CadRequest& request) const {
    QList<std::pair<QString, QString>> settings = {
        {QStringLiteral("VlmHome"), Home()},
        {QStringLiteral("VlmTemp"), ExchangeFolder()},
        {QStringLiteral("VlmMode"), QString::number(static_cast<int>(request.mode))},
        {QStringLiteral("VlmNxt"), request.reopens ? QStringLiteral("1") : QStringLiteral("0")},
    };
    if (request.distance)
        settings.append({QStringLiteral("VlmDist"), DistanceText(*request.distance)});
    MakeFolder(QFileInfo(SettingsFile()).path());
    SettingsStore store(SettingsFile());
    QStringList lines;
    for (const auto& [key, value] : settings) {
        store.Save(key, value);
        lines.append(key + u'=' + value);
    }
    store.Flush();
    return lines;
}

bool CadSession::IsMeasurementAsked() const {
    return SettingsStore(SettingsFile()).Get(QStringLiteral("VlmMode")) == u"4";
}

int CadSession::MeasuredRow() const {
    return ToIntegerOr(SettingsStore(SettingsFile()).Get(QStringLiteral("DistNo")), 0);
}

// An old answer gets a time that no new one can have; clocks of file systems are too coarse to compare.
bool CadSession::IsAnswerNew() const {
    const QFileInfo choice(ChoiceFile());
    return choice.exists() && choice.lastModified() != kOldAnswer;
}

void CadSession::MarkAnswerOld() const {
    QFile choice(ChoiceFile());
    if (!choice.exists())
        return;
    // Opened for appending, so that nothing of it is lost.
    if (!choice.open(QIODevice::Append) || !choice.setFileTime(kOldAnswer, QFileDevice::FileModificationTime))
        throw RuntimeError(ErrorNumber::PermissionDenied).InFile(ChoiceFile());
}

} // namespace velmo
