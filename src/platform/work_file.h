#pragma once

#include <QByteArrayView>
#include <QFile>

#include <chrono>
#include <memory>

namespace velmo {

// A file that is written and finished under a name of its own before it takes the place of another. As long
// as it does not, it is deleted in the end. Paths are the operating system's. What fails leaves its reason in
// errno.
class WorkFile {
public:
    // Overwrites what a killed run left, but neither what another program is writing nor, by way of a link,
    // another file; then it is not open.
    explicit WorkFile(const QString& path);
    ~WorkFile();
    WorkFile(const WorkFile&) = delete;
    WorkFile& operator=(const WorkFile&) = delete;

    bool IsOpen() const { return file_.isOpen(); }
    const QString& Path() const { return path_; }
    // Those of another file, if it exists, as far as the file system lets it have them.
    void TakePermissions(const QString& other);
    // The times of another file, once all is written.
    void TakeTimes(const QString& other);
    bool Write(QByteArrayView bytes);
    // The bytes are on the disk, and the file can be renamed.
    bool Finish();
    // It has this name now, which is to outlast a loss of power too. False when that is not certain.
    bool Renamed(const QString& name);

private:
    QString path_;
    QFile file_;
    bool mine_ = false;
};

// How long one waits for another program that is writing the same file.
inline constexpr std::chrono::milliseconds WritingPatience{3000};

// A work file that another program may be holding, which is waited for. When it is not open in the end, errno
// tells why: EWOULDBLOCK when it is still held.
std::unique_ptr<WorkFile> TakeWorkFile(const QString& path, std::chrono::milliseconds patience);

} // namespace velmo
