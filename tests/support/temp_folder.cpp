#include "support/temp_folder.h"

#include "platform/code_page.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace velmo {

TempFolder::TempFolder() {
    if (!folder_.isValid())
        ADD_FAILURE() << "no temporary folder: " << folder_.errorString().toStdString();
}

QString TempFolder::Path(const QString& name) const {
    return folder_.path() + u'\\' + name;
}

QString TempFolder::Native(const QString& name) const {
    QString part = name;
    return folder_.filePath(part.replace(u'\\', u'/'));
}

QString TempFolder::Write(const QString& name, const QByteArray& bytes) const {
    QDir().mkpath(QFileInfo(Native(name)).path());
    QFile file(Native(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        ADD_FAILURE() << "cannot write " << file.fileName().toStdString();
    return Path(name);
}

QString TempFolder::WriteLines(const QString& name, const QStringList& lines) const {
    QByteArray bytes;
    for (const QString& line : lines)
        bytes += EncodeCodePage(line) + "\r\n";
    return Write(name, bytes);
}

QByteArray TempFolder::Read(const QString& name) const {
    QFile file(Native(name));
    if (!file.open(QIODevice::ReadOnly))
        ADD_FAILURE() << "cannot read " << file.fileName().toStdString();
    return file.readAll();
}

bool TempFolder::Exists(const QString& name) const {
    return QFileInfo::exists(Native(name));
}

} // namespace velmo
