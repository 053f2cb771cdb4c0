#include "playback/PlaybackSession.h"

#include <QFileInfo>

#include <algorithm>

namespace corvanta::playback {

namespace {

using Kind = CameraPlayer::Request::Kind;

constexpr int Beat = 10; // ms
constexpr std::chrono::seconds longestWait{1};
/// For decoded frames that are kept by all cameras together.
constexpr std::size_t keptBytes = 160ULL << 20;
constexpr unsigned mostThreads = 4;

std::vector<CameraPlayer::File> filesOf(const PlaybackCamera& camera) {
    std::vector<CameraPlayer::File> files;
    QStringList paths = camera.files;
    paths.removeDuplicates();
    for (const QString& path : qAsConst(paths)) {
        const QByteArray bytes = path.toUtf8();
        files.push_back({std::filesystem::path(std::u8string(bytes.begin(), bytes.end())),
                         beginFromName(QFileInfo(path).fileName())});
    }
    return files;
}

} // namespace

PlaybackSession::PlaybackSession(const QVector<PlaybackCamera>& cameras, PlaybackClock::TimeSource source,
                                 QObject* parent)
    : QObject(parent)
    , clock_(std::move(source)) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(Beat);
    connect(&timer_, &QTimer::timeout, this, &PlaybackSession::tick);
    MediaFile::Options options;
    const auto count = static_cast<std::size_t>(std::max(cameras.size(), 1));
    // One camera may use several cores; several cameras have a thread each.
    options.threads =
        count == 1 ? static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, mostThreads)) : 1;
    options.keptBytes = keptBytes / count;
    for (const PlaybackCamera& camera : cameras) {
        cameras_.push_back(std::make_unique<Camera>());
        const auto wake = [this] {
            queue_.post([this] { collect(); });
        };
        cameras_.back()->player = std::make_unique<CameraPlayer>(filesOf(camera), options, wake);
    }
}

PlaybackSession::~PlaybackSession() = default;

bool PlaybackSession::isReady() const {
    return ready_;
}

std::shared_ptr<const CameraPlayer::Findings> PlaybackSession::findings(int camera) const {
    return cameras_[static_cast<std::size_t>(camera)]->findings;
}

bool PlaybackSession::isSettled() const {
    return ready_ && std::all_of(cameras_.begin(), cameras_.end(),
                                 [this](const std::unique_ptr<Camera>& camera) { return camera->settled >= seek_; });
}

void PlaybackSession::becomeReady() {
    std::vector<Span> covered;
    for (const auto& camera : cameras_) {
        const std::vector<Span> spans = camera->findings->timeline.covered();
        covered.insert(covered.end(), spans.begin(), spans.end());
    }
    clock_.setCovered(unite(std::move(covered), std::chrono::seconds(0)));
    ready_ = true;
    showMoment();
    emit sigReady();
}

void PlaybackSession::play() {
    if (!ready_)
        return;
    stepping_.reset();
    clock_.play();
    timer_.start();
    emit sigStateChanged();
}

void PlaybackSession::pause() {
    clock_.pause();
    timer_.stop();
    if (ready_)
        showMoment(); // exactly that moment, should frames have been left out
    emit sigStateChanged();
}

void PlaybackSession::setSpeed(double speed) {
    clock_.setSpeed(speed);
    emit sigStateChanged();
}

void PlaybackSession::seek(Moment moment) {
    if (!ready_)
        return;
    stepping_.reset();
    clock_.seek(moment);
    showMoment();
    emit sigMoved();
}

bool PlaybackSession::seekNextBegin() {
    const auto begin = clock_.nextBegin();
    if (begin)
        seek(*begin);
    return begin.has_value();
}

bool PlaybackSession::seekPreviousBegin() {
    const auto begin = clock_.previousBegin();
    if (begin)
        seek(*begin);
    return begin.has_value();
}

/// Asks every camera for exactly what is seen now, and lets the clock wait for them.
void PlaybackSession::showMoment() {
    seek_ = ++serial_;
    for (const auto& camera : cameras_)
        camera->player->request({Kind::Show, clock_.now(), 1, 0, serial_});
    waiting_ = true;
    waitUntil_ = std::chrono::steady_clock::now() + longestWait;
    clock_.hold(true);
}

void PlaybackSession::checkSettled() {
    if (waiting_ && (isSettled() || std::chrono::steady_clock::now() > waitUntil_)) {
        waiting_ = false;
        clock_.hold(false);
    }
}

void PlaybackSession::step(int frames, int camera) {
    if (!ready_ || camera < 0 || camera >= cameraCount())
        return;
    if (clock_.isPlaying()) {
        clock_.pause();
        timer_.stop();
        emit sigStateChanged();
    }
    if (stepping_ != camera) {
        // What is shown counts, which may have begun a little before the clock's moment.
        stepping_ = camera;
        stepFrom_ = clock_.now();
        stepFrames_ = 0;
    }
    stepFrames_ += frames; // steps that come before the last one was made are made together
    seek_ = ++serial_;
    cameras_[static_cast<std::size_t>(camera)]->player->request({Kind::Step, stepFrom_, 1, stepFrames_, serial_});
}

void PlaybackSession::tick() {
    checkSettled();
    const bool wasPlaying = clock_.isPlaying();
    const Moment now = clock_.now();
    if (!clock_.isPlaying()) {
        timer_.stop();
        showMoment();
        if (wasPlaying)
            emit sigStateChanged();
    } else if (!waiting_) {
        ++serial_;
        for (const auto& camera : cameras_)
            camera->player->request({Kind::Follow, now, clock_.speed(), 0, serial_});
    }
    emit sigMoved();
}

void PlaybackSession::collect() {
    for (int number = 0; number < cameraCount(); ++number) {
        Camera& camera = *cameras_[static_cast<std::size_t>(number)];
        if (auto findings = camera.player->takeFindings())
            camera.findings = std::move(findings);
        if (const auto report = camera.player->takeReport())
            takeReport(number, camera, *report);
    }
    if (!ready_ && std::all_of(cameras_.begin(), cameras_.end(),
                               [](const std::unique_ptr<Camera>& camera) { return camera->findings != nullptr; }))
        becomeReady();
    checkSettled();
}

void PlaybackSession::takeReport(int number, Camera& camera, const CameraPlayer::Report& report) {
    camera.view = {report.state, report.picture, report.moment, report.keyFramesOnly};
    if (report.isFinal)
        camera.settled = std::max(camera.settled, report.serial);
    emit sigView(number);
    // Where a step leads only its camera knows; the clock and the others go there too.
    if (stepping_ != number || report.serial < seek_ || !report.isFinal)
        return;
    stepping_.reset();
    clock_.seek(report.moment);
    seek_ = ++serial_;
    camera.settled = serial_;
    for (int other = 0; other < cameraCount(); ++other) {
        if (other != number)
            cameras_[static_cast<std::size_t>(other)]->player->request({Kind::Show, report.moment, 1, 0, serial_});
    }
    emit sigMoved();
}

} // namespace corvanta::playback
