#include "update/UpdateDownload.h"

#include "base/AppPaths.h"
#include "update/ComparisonThread.h"
#include "update/Handover.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <chrono>

namespace corvanta::update {
namespace {

constexpr std::chrono::milliseconds Beat(200);
constexpr int LongestName = 80; // characters, in a text for the user

/// The end of a path says most.
QString shortened(const QString& path) {
    return path.size() <= LongestName ? path : QStringLiteral("...") + path.right(LongestName);
}

} // namespace

UpdateDownload::UpdateDownload(QString installation, DownloadFolder folder, QObject* parent)
    : QObject(parent)
    , installation_(std::move(installation))
    , folder_(std::move(folder)) {
    beat_.setInterval(Beat);
    connect(&beat_, &QTimer::timeout, this, &UpdateDownload::onBeat);
}

UpdateDownload::~UpdateDownload() {
    blockSignals(true); // whoever would hear of it is going, too
    cancel();
}

void UpdateDownload::setState(State state) {
    state_ = state;
    if (state == State::Comparing || state == State::Fetching || state == State::Checking)
        beat_.start();
    else
        beat_.stop();
    emit sigStateChanged();
}

bool UpdateDownload::canInstall() const {
    return !AppPaths::isSystemFolder(installation_);
}

void UpdateDownload::start(const UpdateServer& server, std::shared_ptr<const UpdateDescription> description) {
    if (state_ != State::Idle || !canInstall())
        return;
    server_ = server;
    description_ = std::move(description);
    if (!folder_.remove()) {
        fail(tr("无法清空临时目录: %1").arg(folder_.path()));
        return;
    }
    compare(installation_, description_->files);
    setState(State::Comparing);
}

void UpdateDownload::compare(const QString& folder, std::vector<ListedFile> files) {
    comparison_ = std::make_unique<ComparisonThread>(folder, std::move(files));
    connect(comparison_.get(), &BackgroundThread::finished, this, &UpdateDownload::onCompared);
    comparison_->start();
}

void UpdateDownload::onCompared() {
    if (comparison_ == nullptr || sender() != comparison_.get())
        return; // it was cancelled while this was on its way
    comparison_->join();
    if (state_ == State::Checking)
        onChecked();
    else
        fetchMissing();
}

void UpdateDownload::fetchMissing() {
    const auto comparison = std::move(comparison_);
    if (comparison->differences().empty()) {
        reset();
        emit sigNothingToDo();
        return;
    }
    if (!folder_.create()) {
        fail(tr("无法创建临时目录: %1").arg(folder_.path()));
        return;
    }
    std::vector<std::optional<qint64>> sizes;
    for (const auto& difference : comparison->differences()) {
        missing_.push_back(difference.file);
        sizes.push_back(difference.size);
    }
    meter_ = DownloadMeter(std::move(sizes));
    clock_.start();
    thread_ = std::make_unique<DowmLoadFileFromFtpServerThread>(*server_, folder_);
    thread_->setLimits(limits_);
    connect(thread_.get(), &BackgroundThread::finished, this, &UpdateDownload::onFetched);
    setState(State::Fetching);
    fetchNext();
}

void UpdateDownload::fetchNext() {
    thread_->setFileName(missing_.front().path);
    thread_->start();
}

void UpdateDownload::onFetched() {
    if (thread_ == nullptr || sender() != thread_.get())
        return; // it was cancelled while this was on its way
    thread_->join();
    meter_.update(clock_.elapsed(), thread_->received(), thread_->total());
    using Fetched = FetchResult::State;
    const FetchResult& result = thread_->result();
    switch (result.state) {
    case Fetched::Here:
        if (result.md5 == missing_.front().md5)
            takeFile();
        else
            tryAgain(tr("文件校验失败"));
        break;
    case Fetched::Broken:
        tryAgain(result.problem);
        break;
    case Fetched::Refused:
    case Fetched::Disk:
        fail(tr("下载失败: %1\n%2").arg(shortened(missing_.front().path), result.problem));
        break;
    case Fetched::Cancelled:
        break;
    }
}

void UpdateDownload::tryAgain(const QString& problem) {
    if (isSecondTry_) {
        fail(tr("下载失败: %1\n%2").arg(shortened(missing_.front().path), problem));
        return;
    }
    qDebug().noquote() << "fetched again:" << missing_.front().path << problem;
    isSecondTry_ = true;
    meter_.fetchAgain();
    fetchNext();
}

void UpdateDownload::takeFile() {
    // What can be started can be started afterwards, too, on systems where files carry that mark.
    const QFileInfo before(installation_ + QLatin1Char('/') + missing_.front().path);
    if (before.isFile() && !before.isSymLink())
        QFile::setPermissions(folder_.pathOf(missing_.front().path),
                              before.permissions() | QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    fetched_.push_back(missing_.front());
    missing_.pop_front();
    isSecondTry_ = false;
    meter_.finishFile();
    if (!missing_.empty()) {
        fetchNext();
        return;
    }
    thread_.reset();
    setState(State::Ready);
    emit sigReady();
}

void UpdateDownload::install() {
    if (state_ != State::Ready)
        return;
    // It may have been ready for days in a folder that others clean.
    compare(folder_.path(), fetched_);
    setState(State::Checking);
}

void UpdateDownload::onChecked() {
    const auto comparison = std::move(comparison_);
    if (!comparison->differences().empty()) {
        fail(tr("已下载的文件不完整，请重新下载!"));
        return;
    }
    if (const auto problem = startUpdater(description_->updaterName, folder_, installation_)) {
        fail(*problem);
        return;
    }
    setState(State::HandedOver);
    emit sigHandedOver();
}

void UpdateDownload::cancel() {
    if (state_ != State::Idle && state_ != State::HandedOver)
        reset();
}

void UpdateDownload::fail(const QString& text) {
    qDebug().noquote() << "update failed:" << text;
    reset();
    emit sigFailed(text);
}

void UpdateDownload::reset() {
    comparison_.reset();
    thread_.reset();
    missing_.clear();
    fetched_.clear();
    isSecondTry_ = false;
    description_.reset();
    if (!folder_.remove())
        qDebug().noquote() << "not removed:" << folder_.path();
    setState(State::Idle);
}

void UpdateDownload::onBeat() {
    if (thread_ != nullptr)
        meter_.update(clock_.elapsed(), thread_->received(), thread_->total());
    emit sigProgress();
}

UpdateDownload::Progress UpdateDownload::progress() const {
    Progress progress;
    if (comparison_ != nullptr) {
        progress.done = comparison_->done();
        progress.files = comparison_->total();
    } else if (!missing_.empty()) {
        progress.file = missing_.front().path;
        progress.download = meter_.reading();
        progress.done = progress.download.filesDone;
        progress.files = progress.download.files;
    }
    return progress;
}

} // namespace corvanta::update
