#include "benchmarks/lazy.h"
#include "benchmarks/ratio_table.h"
#include "benchmarks/ratios.h"
#include "benchmarks/scratch.h"
#include "pickers/disk_folders.h"
#include "pickers/folder_tree.h"

#include <QApplication>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace velmo::bench {

namespace {

constexpr int Folders = 10'000;
const QString Parent = QStringLiteral("FOLDERS");

double ListBare(const Scratch& scratch) {
    const QByteArray path = QFile::encodeName(scratch.Native(Parent));
    return Seconds([&] {
        DIR* folder = ::opendir(path.constData());
        int found = 0;
        while (const dirent* entry = ::readdir(folder)) {
            struct stat attributes = {};
            if (::fstatat(::dirfd(folder), entry->d_name, &attributes, 0) == 0 && S_ISDIR(attributes.st_mode))
                ++found;
        }
        ::closedir(folder);
        if (found != Folders + 2)
            qFatal("%d folders", found);
    });
}

double OpenFolder(const Scratch& scratch) {
    MessageBoxes messages;
    KeyedTree view;
    DiskFolders source(view, scratch.Path());
    FolderTree tree(view, source, messages);
    tree.Fill([] {});
    view.resize(300, 500);
    view.show();
    QApplication::processEvents();
    const QString key = DiskFolders::KeyOf(scratch.Path(Parent));
    return Seconds([&] {
        view.SetExpanded(key, true);
        view.viewport()->repaint();
    });
}

} // namespace

void AddPickers() {
    const Lazy<Scratch> scratch([] {
        auto made = std::make_unique<Scratch>();
        for (int i = 0; i < Folders; ++i)
            QDir().mkpath(made->Native(QStringLiteral("%1/Folder %2").arg(Parent).arg(i)));
        return made;
    });
    AddRatio(
        "13 scan a folder of 10,000 sub-folders", 3, [scratch] { return OpenFolder(*scratch); },
        [scratch] { return ListBare(*scratch); });
}

} // namespace velmo::bench
