#pragma once

#include <QString>

namespace velmo {

// A disk of a few bytes, mounted over an empty folder for this process and those it starts from now on. Not
// every system lets a test mount one; IsThere tells.
class SmallDisk {
public:
    SmallDisk(const QString& folder, qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsThere() const { return mounted_; }
    // Leaves no room at all, by way of a file of that name.
    void Fill(const QString& name) const;

private:
    QString folder_;
    bool mounted_ = false;
};

} // namespace velmo
