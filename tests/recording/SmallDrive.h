#pragma once

#include <QString>

/// Small file systems of their own, in memory, which only this program and its children see.
///
/// `enterOwnMounts` comes first, before there is a second thread; where the kernel refuses, `refusal` says why and
/// nothing can be mounted.
namespace smallDrives {

void enterOwnMounts();
QString refusal();

} // namespace smallDrives

/// One such file system, mounted on a folder that is there.
class SmallDrive final {
public:
    SmallDrive(const QString& folder, int mebibytes);
    /// Unmounts it, in use or not.
    ~SmallDrive();
    SmallDrive(const SmallDrive&) = delete;
    SmallDrive& operator=(const SmallDrive&) = delete;

    bool isMounted() const { return isMounted_; }
    /// As when a plug is pulled: the folder is there, and what was mounted on it is not.
    void vanish();
    bool makeReadOnly();

    /// Writes a file of some bytes, at most as many as there is room for; returns how many.
    qint64 fill(const QString& name, qint64 bytes) const;

private:
    QByteArray folder_;
    bool isMounted_ = false;
};
