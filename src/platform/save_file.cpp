#include "platform/save_file.h"

#include "platform/files.h"
#include "platform/runtime_error.h"

#include <QFileInfo>

#include <cerrno>
#include <filesystem>
#include <memory>

namespace velmo {

namespace {

constexpr qint64 LargestKept = 16'777'216;

// The old content of a file that is replaced together with others, to be put back when one of them fails. It
// is on the disk before the first of them changes.
class FormerContent {
public:
    explicit FormerContent(const QString& stored) : stored_(stored) {
        if (!FileExists(stored))
            return;
        // What is so large is no answer of ours, and not worth the time and room.
        isKept_ = QFileInfo(NativePath(stored)).size() <= LargestKept;
        if (!isKept_)
            return;
        const QString work = stored + QStringLiteral(".velmo-old");
        save_ = std::make_unique<SaveFile>(stored, work);
        if (!save_->IsOpen())
            ThrowCannotWrite(work, errno);
        save_->Write(ReadWholeFile(stored, LargestKept));
    }

    void TryPutBack() {
        try {
            if (save_)
                save_->Commit();
            else if (isKept_)
                DeleteFileIfAny(stored_);
        } catch (const RuntimeError&) {
            // The failure that made this necessary says more than this one.
        }
    }

private:
    QString stored_;
    bool isKept_ = true;
    std::unique_ptr<SaveFile> save_;
};

} // namespace

SaveFile::SaveFile(const QString& stored, std::chrono::milliseconds patience)
    : stored_(stored), target_(FollowLink(NativePath(stored))) {
    TakeOwn(patience);
}

SaveFile::SaveFile(const NativeFile& file, std::chrono::milliseconds patience)
    : stored_(file.path), target_(FollowLink(file.path)) {
    TakeOwn(patience);
}

void SaveFile::TakeOwn(std::chrono::milliseconds patience) {
    RequireReplaceable();
    const QString work = target_ + QStringLiteral(".velmo-new");
    Take(TakeWorkFile(work, patience));
    if (IsOpen())
        return;
    // Whatever stands in the work file's place is what the user must look at.
    const int obstacle = errno;
    ThrowCannotWrite(obstacle != EWOULDBLOCK && QFileInfo::exists(work) ? work : stored_, obstacle);
}

SaveFile::SaveFile(const QString& stored, const QString& work)
    : stored_(stored), target_(FollowLink(NativePath(stored))) {
    RequireReplaceable();
    Take(std::make_unique<WorkFile>(NativePath(work)));
}

// Even where its folder would let it be, a write-protected file is not to be replaced, nor is a pipe or
// device.
void SaveFile::RequireReplaceable() const {
    QFile old(target_);
    if (QFileInfo::exists(target_) && !OpenRegularFile(old, QIODevice::ReadWrite))
        ThrowCannotWrite(stored_, errno);
}

void SaveFile::Take(std::unique_ptr<WorkFile> work) {
    const int obstacle = errno;
    work_ = std::move(work);
    if (IsOpen())
        work_->TakePermissions(target_);
    errno = obstacle;
}

void SaveFile::Write(const QByteArray& bytes) {
    bytes_ = bytes;
    errno = 0;
    if (!work_->Write(bytes) || !work_->Finish())
        ThrowCannotWrite(stored_, errno);
}

void SaveFile::Commit() {
    std::error_code failed;
    std::filesystem::rename(std::filesystem::path(work_->Path().toStdU16String()),
                            std::filesystem::path(target_.toStdU16String()), failed);
    if (failed == std::errc::cross_device_link) {
        // The work file stands beside a link to another disk.
        SaveFile there(stored_);
        there.Write(bytes_);
        there.Commit();
        placed_ = true;
        return;
    }
    if (failed)
        ThrowCannotWrite(stored_, failed.value());
    placed_ = true;
    if (!work_->Renamed(target_))
        ThrowCannotWrite(stored_, errno);
}

void ReplaceFile(const QString& stored, const QByteArray& bytes) {
    SaveFile file(stored);
    file.Write(bytes);
    file.Commit();
}

void ReplaceFiles(const std::vector<FileReplacement>& files) {
    std::vector<std::unique_ptr<SaveFile>> saves;
    saves.reserve(files.size());
    for (const FileReplacement& file : files)
        saves.push_back(std::make_unique<SaveFile>(file.path));
    for (size_t i = 0; i < files.size(); ++i)
        saves[i]->Write(files[i].bytes);
    std::vector<FormerContent> former;
    former.reserve(files.size());
    for (const FileReplacement& file : files)
        former.emplace_back(file.path);
    try {
        for (const auto& save : saves)
            save->Commit();
    } catch (const RuntimeError&) {
        for (size_t i = 0; i < saves.size(); ++i) {
            if (saves[i]->IsPlaced())
                former[i].TryPutBack();
        }
        throw;
    }
}

bool ReplaceFileThrough(const QString& work, const QString& stored, const QByteArray& bytes) {
    SaveFile file(stored, work);
    if (!file.IsOpen())
        return false;
    file.Write(bytes);
    file.Commit();
    return true;
}

} // namespace velmo
