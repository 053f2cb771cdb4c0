#pragma once

#include <QStringList>
#include <QThread>

/// Finds the ids of the devices that have files on the drives, off the GUI thread. A thread runs once; `finished`
/// tells that the result is there.
class StoredDevicesThread final : public QThread {
    Q_OBJECT
public:
    explicit StoredDevicesThread(QStringList drives, QObject* parent = nullptr)
        : QThread(parent)
        , drives_(std::move(drives)) {}
    /// Waits for the end.
    ~StoredDevicesThread() override { wait(); }

    /// After `finished`.
    const QStringList& devices() const { return devices_; }

protected:
    void run() override;

private:
    const QStringList drives_;
    QStringList devices_;
};
