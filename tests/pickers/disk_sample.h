#pragma once

#include "pickers/folder_scan.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <functional>
#include <sys/stat.h>

namespace velmo {

// A library home on the disk. Names below it have backslashes.
class DiskSample {
public:
    DiskSample() { MakeFolder({}); }

    // With its backslash.
    QString Home() const { return folder_.Path(QStringLiteral("home\\")); }
    QString Key(const QString& below = {}) const { return UpperCasePath(Home() + below); }
    QString Native(const QString& below = {}) const { return Home().append(below).replace(u'\\', u'/'); }

    void MakeFolder(const QString& below) const {
        if (!QDir().mkpath(Native(below)))
            ADD_FAILURE() << "cannot make " << below.toStdString();
    }
    void RemoveFolder(const QString& below) const {
        if (!QDir(Native(below)).removeRecursively())
            ADD_FAILURE() << "cannot remove " << below.toStdString();
    }
    // Another folder, whose name is that of the home in upper case, with a folder WRONG and a file WRONG.SLD.
    void MakeNamesake() const {
        folder_.Write(QStringLiteral("HOME\\WRONG\\X"), {});
        folder_.Write(QStringLiteral("HOME\\WRONG.SLD"), {});
    }
    // The folder above the home lets everyone in but shows its names to nobody but its owner.
    void HideHome() const { ASSERT_EQ(::chmod(QFile::encodeName(Native("..")).constData(), 0711), 0); }
    void WriteFile(const QString& below, const QByteArray& bytes = {}) const {
        folder_.Write(QStringLiteral("home\\") + below, bytes);
    }
    void Link(const QString& below, const QString& target) const {
        if (!QFile::link(target, Native(below)))
            ADD_FAILURE() << "cannot link " << below.toStdString();
    }

private:
    TempFolder folder_;
};

} // namespace velmo
