#pragma once

#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "recording/Recorder.h"
#include "storage/DiskProbe.h"
#include "storage/RecordingStorage.h"
#include "support/FakeSdk.h"

#include <QHash>
#include <QObject>
#include <QTemporaryDir>

#include <chrono>
#include <memory>
#include <mutex>

/// Disks whose space the test decides, also while a deletion asks for it in its own thread.
class FakeDisks final : public DiskProbe {
public:
    QStringList drives() const override { return drives_; }
    QString systemDrive() const override { return {}; }
    std::optional<std::uint64_t> freeBytes(const QString& drive) const override {
        const std::lock_guard lock(mutex_);
        return full_.contains(drive) ? 0 : std::uint64_t(1) << 40U;
    }
    QDate today() const override { return today_; }
    void setFull(const QStringList& full) {
        const std::lock_guard lock(mutex_);
        full_ = full;
    }

    QStringList drives_;
    QDate today_{2024, 3, 5};

private:
    mutable std::mutex mutex_;
    QStringList full_;
};

/// What the tests of recordings share: a recorder over the scripted SDK, two drives and clocks that the test moves.
class RecorderTest : public QObject {
    Q_OBJECT
protected:
    void make();
    int start(const QString& device);
    void report(int id, const QByteArray& rest);
    void opened(int id, int rate = 25);
    void frame(int id, std::size_t index);
    void frames(int id, std::size_t from, std::size_t to);
    /// Every recording, by name, on one drive or all.
    QStringList files(const QString& drive = {}) const;
    QString drive(int number) const { return dir_->filePath(QStringLiteral("d%1/").arg(number)); }

    FakeSdk& sdk_ = FakeSdk::instance();
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<TaskQueue> queue_;
    std::unique_ptr<Settings> settings_;
    FakeDisks* disks_ = nullptr;
    std::unique_ptr<RecordingStorage> storage_;
    std::unique_ptr<SdkGateway> gateway_;
    std::unique_ptr<Recorder> recorder_;
    QDateTime now_;
    std::chrono::milliseconds waited_{0}; ///< how far the clock that is never set back has come
    QHash<QString, QString> names_;       ///< what the user calls devices
    QStringList said_;

private slots:
    void init();
    void cleanup();
};
