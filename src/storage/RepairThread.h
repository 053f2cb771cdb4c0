#pragma once

#include "base/BackgroundThread.h"

#include <QStringList>

#include <atomic>

/// Completes, in the background, the recordings that an earlier run of the program could not bring to their end. One
/// debug line for each file that it changes.
class RepairThread final : public BackgroundThread {
    Q_OBJECT
public:
    explicit RepairThread(QStringList drives, QObject* parent = nullptr);
    /// Ends soon, in the middle of the work if need be; what is left is done at the next start.
    ~RepairThread() override;

    /// Files completed so far.
    int repaired() const { return repaired_; }

protected:
    void run() override;

private:
    const QStringList drives_;
    std::atomic<bool> cancelled_{false};
    std::atomic<int> repaired_{0};
};
