#pragma once

#include "library/folder_content.h"
#include "maintained_library.h"

#include <QDir>
#include <QMap>

namespace velmo {

// A library whose entries have files: those of category 2 in the folder A, and a folder N to move them to.
class SymbolLibrary : public MaintainedLibrary {
protected:
    SymbolLibrary() {
        for (const char* name : {"A\\M10.PDF", "A\\M10.SLD", "A\\M12.PDF", "A\\M12.SLD"})
            WriteFile(name, QByteArray("content of ") + name);
        QDir(NativePath(state.LibRoot)).mkdir("N");
        state.PickedDir = state.LibRoot + "N";
    }

    void WriteFile(const QString& name, const QByteArray& bytes) const {
        folder.Write("home\\" + name, bytes);
    }
    // All files but the library's own, by their names below its root.
    QMap<QString, QByteArray> Files() const {
        QMap<QString, QByteArray> files;
        for (const QString& in : {QStringLiteral("A"), QStringLiteral("N")}) {
            const QDir dir(NativePath(state.LibRoot + in));
            for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden))
                files[in + '\\' + name] = folder.Read("home\\" + in + '\\' + name);
        }
        return files;
    }
    QStringList FileNames() const { return Files().keys(); }
    // What lies beside the library.
    QStringList Leftovers() const {
        return QDir(NativePath(state.LibRoot)).entryList({"VelmoUsr.mdb?*"}, QDir::Files, QDir::Name);
    }
};

} // namespace velmo
