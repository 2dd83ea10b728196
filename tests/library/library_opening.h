#pragma once

#include "library/library_files.h"
#include "library_samples.h"
#include "platform/files.h"
#include "support/failure.h"

#include <QDir>
#include <gtest/gtest.h>

namespace velmo {

inline const QStringList SmallList = {"(\"root,  \\R.SLD,\"", "(\"ボルト,  \\BOLT\\BOLT.SLD,\")", ")"};

// A home folder whose libraries are opened, and what the user is asked and answers meanwhile.
class LibraryFilesTest : public testing::Test {
protected:
    LibraryFilesTest() : settings_(NativePath(folder_.Path("velmo.ini"))) {
        state_.HomeDir = folder_.Path("home\\");
        folder_.Write("home\\x", "");
        callbacks_.ask = [this](const QString& question) {
            questions_ << question;
            return answer_;
        };
    }

    void WriteList(const QStringList& lines) { folder_.WriteLines("home\\syst\\vlmsymlib.lst", lines); }

    void Open() { OpenLibraries(state_, settings_, callbacks_); }

    QStringList Databases() const {
        return QDir(NativePath(state_.HomeDir)).entryList({"*.mdb*"}, QDir::Files, QDir::Name);
    }

    QString RootName(const QString& path) {
        Database database(path, Database::Access::Read);
        return ReadCategory(RootCategories(database)).name;
    }

    TempFolder folder_;
    SettingsStore settings_;
    GlobalState state_;
    LibraryCallbacks callbacks_;
    QStringList questions_;
    bool answer_ = false;
};

} // namespace velmo
