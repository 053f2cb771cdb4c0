#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

/// What the storage asks of the computer; tests put their own disks and their own day in its place. Any thread.
class DiskProbe {
public:
    DiskProbe() = default;
    DiskProbe(const DiskProbe&) = delete;
    DiskProbe& operator=(const DiskProbe&) = delete;
    virtual ~DiskProbe() = default;

    /// The roots of the drives that are there, each ending with a slash, in a stable order.
    virtual QStringList drives() const = 0;
    /// The root that the system itself lives on.
    virtual QString systemDrive() const = 0;
    /// Bytes free on a drive, whoever may use them; nothing when that cannot be asked, or nothing can be written.
    virtual std::optional<std::uint64_t> freeBytes(const QString& drive) const = 0;
    /// The size of a drive; nothing when that cannot be asked.
    virtual std::optional<std::uint64_t> totalBytes(const QString&) const { return std::nullopt; }
    virtual QDate today() const = 0;
};

/// This computer's disks. Folders given as drives take the place of the system's own.
///
/// A drive on which a volume was mounted when this object was made has vanished when none is any more: what stays is
/// an empty folder of another volume, which nobody meant.
class SystemDisks final : public DiskProbe {
public:
    /// `folders` that do not exist are made where that is possible.
    explicit SystemDisks(const QStringList& folders = {});

    QStringList drives() const override;
    QString systemDrive() const override;
    std::optional<std::uint64_t> freeBytes(const QString& drive) const override;
    std::optional<std::uint64_t> totalBytes(const QString& drive) const override;
    QDate today() const override { return QDate::currentDate(); }

private:
    bool isThere(const QString& drive) const;

    QStringList folders_;
    QStringList mounted_; ///< drives that were mount points at the beginning
};
