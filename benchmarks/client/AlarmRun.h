#pragma once

#include "app/ClientCallback.h"
#include "base/AppContext.h"
#include "base/TaskQueue.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

class RecordingStorage;

/// Alarms as an SDK reports them, on a thread of their own, and how long each takes until its row is written, the
/// player told and the message bar set. First one after the other, then as many within one second, while a timer
/// tells how long the window does nothing else.
class AlarmRun final : public QObject, private ClientEvents {
    Q_OBJECT
public:
    /// `done` is called once, with "MEDIAN WORST STALL TOTAL", ms.
    AlarmRun(const AppContext& context, const RecordingStorage& storage, int count,
             std::function<void(const QString& answer)> done);
    ~AlarmRun() override;

private:
    void onBar(const QString& text);
    void onWritten();
    void sendOne();
    void flood();
    void tick();
    std::string message() const;

    void alarm(const QVariantMap& message) override;
    void listReady() override {}
    void localListReady(const QVariantMap& /*devices*/) override {}
    void signedOut(const QString& /*reason*/) override {}
    void sensorValues(const QString& /*time*/, const QVariantList& /*values*/) override {}
    void sdkCrashed() override {}
    void notice(const QString& /*text*/) override {}
    void textMessage(const QVariantMap& /*message*/) override {}
    void userInfoChanged() override {}
    void connectionMade(TcpSocketManage* /*connection*/) override {}
    void connectionClosed(TcpSocketManage* /*connection*/) override {}

    AppContext context_;
    const int count_;
    std::function<void(const QString&)> done_;
    TaskQueue queue_;
    ClientCallback callback_;
    std::thread sender_;
    std::chrono::steady_clock::time_point sent_;
    std::vector<double> times_; ///< ms
    bool isFlood_ = false;
    int written_ = 0; ///< of the flood
    QTimer beat_;
    QElapsedTimer sinceBeat_;
    QElapsedTimer sinceFlood_;
    double stall_ = 0; ///< ms, the longest
};
