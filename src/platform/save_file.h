#pragma once

#include "platform/work_file.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <memory>
#include <vector>

namespace velmo {

// A path of the operating system.
struct NativeFile {
    QString path;
};

// A file (stored path) whose new content is written beside it and takes its place in one step. As long as the
// work file lives, no other program can write the same file this way. Without Commit the old file stays as it
// was and the work file goes. The permissions of the old file stay, and what is a symbolic link still is one.
class SaveFile {
public:
    // Takes a work file of its own naming, which it waits for. Throws 76 when the folder is missing, 61 when
    // the disk is full, 57, 70 or 75 when the file cannot be written.
    explicit SaveFile(const QString& stored, std::chrono::milliseconds patience = WritingPatience);
    // The same for a path of the operating system, taken as it is.
    explicit SaveFile(const NativeFile& file, std::chrono::milliseconds patience = WritingPatience);
    // By way of a work file (stored path) in the same folder; one that a killed run left is overwritten. It
    // is not open when that cannot be created, or when another program is writing it. Throws as above when
    // the file is not to be replaced.
    SaveFile(const QString& stored, const QString& work);

    bool IsOpen() const { return work_ && work_->IsOpen(); }
    // All of the new content, written and synced. Throws as the constructor.
    void Write(const QByteArray& bytes);
    // The file has the new content, which outlasts a loss of power too. When that is not certain (57), the
    // content is in place all the same.
    void Commit();
    // The new content took the place of the old.
    bool IsPlaced() const { return placed_; }

private:
    void TakeOwn(std::chrono::milliseconds patience);
    void RequireReplaceable() const;
    void Take(std::unique_ptr<WorkFile> work);

    QString stored_;
    // The operating system's path, of what a link leads to.
    QString target_;
    std::unique_ptr<WorkFile> work_;
    QByteArray bytes_;
    bool placed_ = false;
};

// A file (stored path) and what it is to hold.
struct FileReplacement {
    QString path;
    QByteArray bytes;
};

// Puts bytes in the place of a file in one step. Throws as SaveFile.
void ReplaceFile(const QString& stored, const QByteArray& bytes);

// Replaces several files; with an error all are as before. Programs that replace the same files in the same
// order do so one after the other.
void ReplaceFiles(const std::vector<FileReplacement>& files);

// ReplaceFile by way of a work file (stored path) in the same folder. False when that cannot be created;
// nothing has changed then.
[[nodiscard]] bool ReplaceFileThrough(const QString& work, const QString& stored, const QByteArray& bytes);

} // namespace velmo
