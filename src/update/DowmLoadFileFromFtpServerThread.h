#pragma once

#include "base/BackgroundThread.h"
#include "update/DownloadFolder.h"
#include "update/UpdateServer.h"

#include <QByteArray>

#include <atomic>
#include <functional>
#include <mutex>

class QNetworkReply;

namespace corvanta::update {

/// How far the patience with a server goes.
struct FetchLimits {
    int silence = 30000;            ///< ms; a server that sends nothing for so long has gone away
    qint64 largestFile = 2LL << 30; ///< bytes; no part of an installation comes near it
};

/// What became of one file.
struct FetchResult {
    enum class State {
        Here,
        Cancelled,
        Broken,  ///< the connection or the body; another try may help
        Refused, ///< the server says no
        Disk,    ///< it cannot be written
    };
    State state = State::Cancelled;
    QByteArray md5;  ///< of what was written, lower-case hexadecimal, when it is here
    QString problem; ///< for the user, when it is not
};

} // namespace corvanta::update

/// Fetches one file of the update after the other: it is given a name, started, and when `finished` has come it can
/// be joined and given the next. (The name is that of the first version, which spoke another protocol.)
class DowmLoadFileFromFtpServerThread final : public BackgroundThread {
    Q_OBJECT
public:
    DowmLoadFileFromFtpServerThread(corvanta::update::UpdateServer server, corvanta::update::DownloadFolder folder,
                                    QObject* parent = nullptr);
    /// Cancels, and waits for the end.
    ~DowmLoadFileFromFtpServerThread() override;

    /// What the next start fetches: a path relative to the installation folder. Not while it runs.
    void setFileName(const QString& path);
    const QString& fileName() const { return path_; }
    /// Not while it runs.
    void setLimits(const corvanta::update::FetchLimits& limits) { limits_ = limits; }

    /// Makes it end soon, for good: it is not started again. Any thread.
    void cancel();
    /// Bytes of the file, as they came over the line, and how many there will be (0: not told). Any thread.
    qint64 received() const { return received_; }
    qint64 total() const { return total_; }
    /// After `join`.
    const corvanta::update::FetchResult& result() const { return result_; }

protected:
    void run() override;

private:
    corvanta::update::FetchResult fetch();
    bool waitFor(QNetworkReply& reply);

    const corvanta::update::UpdateServer server_;
    const corvanta::update::DownloadFolder folder_;
    QString path_;
    corvanta::update::FetchLimits limits_;
    corvanta::update::FetchResult result_;
    std::atomic<qint64> received_{0};
    std::atomic<qint64> total_{0};
    std::atomic<bool> cancelled_{false};
    std::mutex mutex_;                  ///< guards `stopWaiting_`
    std::function<void()> stopWaiting_; ///< while the thread waits for the server; from any thread
};
