#pragma once

#include "base/BackgroundThread.h"

#include <QStringList>

/// Finds the ids of the devices that have files on the drives, off the GUI thread. A thread runs once; `finished`
/// tells that the result is there.
class StoredDevicesThread final : public BackgroundThread {
    Q_OBJECT
public:
    explicit StoredDevicesThread(QStringList drives, QObject* parent = nullptr)
        : BackgroundThread(parent)
        , drives_(std::move(drives)) {}
    /// Waits for the end.
    ~StoredDevicesThread() override { join(); }

    /// After `finished`.
    const QStringList& devices() const { return devices_; }

protected:
    void run() override;

private:
    const QStringList drives_;
    QStringList devices_;
};
