#pragma once

#include "update/DowmLoadFileFromFtpServerThread.h"
#include "update/DownloadFolder.h"
#include "update/DownloadMeter.h"
#include "update/UpdateDescription.h"
#include "update/UpdateServer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>

namespace corvanta::update {

class ComparisonThread;

/// The way of an update from its description to the updater. GUI thread; what takes long is done beside it.
///
/// Life: `Idle`; `start` -> `Comparing` the installation with the description; -> `Fetching` what differs, one file
/// at a time, each compared with its MD5; -> `Ready`; `install` -> `Checking` what was fetched once more -> handed
/// over. A file that comes wrong is fetched once more. Whatever goes wrong then, and `cancel` from anywhere, leads
/// back to `Idle`, with nothing left behind.
class UpdateDownload final : public QObject {
    Q_OBJECT
public:
    enum class State { Idle, Comparing, Fetching, Ready, Checking, HandedOver };

    /// How far it is.
    struct Progress {
        QString file; ///< that is being fetched
        int done = 0; ///< files compared or fetched
        int files = 0;
        DownloadMeter::Reading download; ///< while it fetches
    };

    /// `installation`: the folder that is updated, without a slash at its end.
    UpdateDownload(QString installation, DownloadFolder folder, QObject* parent = nullptr);
    /// Cancels.
    ~UpdateDownload() override;

    /// For what is begun from then on.
    void setLimits(const FetchLimits& limits) { limits_ = limits; }

    /// Whether the installation is this program's to change. One in a system's folder is kept up to date by the
    /// package manager, also where this process could write there.
    bool canInstall() const;

    /// Begins; is ignored unless it is idle and can install.
    void start(const UpdateServer& server, std::shared_ptr<const UpdateDescription> description);
    void cancel();
    /// Hands over to the updater; is ignored unless it is ready.
    void install();

    State state() const { return state_; }
    Progress progress() const;

signals:
    void sigStateChanged();
    /// Some five times a second while something goes on.
    void sigProgress();
    /// Everything is as the description has it. The state is idle.
    void sigNothingToDo();
    /// Everything is here.
    void sigReady();
    /// Nothing will be installed; `text` is for the user. The state is idle.
    void sigFailed(QString text);
    /// The updater runs and waits for the end of this program.
    void sigHandedOver();

private:
    void setState(State state);
    void compare(const QString& folder, std::vector<ListedFile> files);
    void onCompared();
    void fetchMissing();
    void fetchNext();
    void onFetched();
    void tryAgain(const QString& problem);
    void takeFile();
    void onChecked();
    void fail(const QString& text);
    void reset();
    void onBeat();

    const QString installation_;
    const DownloadFolder folder_;
    FetchLimits limits_;
    State state_ = State::Idle;
    std::optional<UpdateServer> server_;
    std::shared_ptr<const UpdateDescription> description_;
    std::unique_ptr<ComparisonThread> comparison_;
    std::unique_ptr<DowmLoadFileFromFtpServerThread> thread_;
    std::deque<ListedFile> missing_;  ///< files still to be fetched; the first one is being fetched
    std::vector<ListedFile> fetched_; ///< files that are here
    bool isSecondTry_ = false;        ///< for the file that is being fetched
    DownloadMeter meter_;
    QElapsedTimer clock_;
    QTimer beat_;
};

} // namespace corvanta::update
