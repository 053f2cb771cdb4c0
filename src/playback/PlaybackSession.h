#pragma once

#include "base/TaskQueue.h"
#include "playback/CameraPlayer.h"
#include "playback/PlaybackCamera.h"
#include "playback/PlaybackClock.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace corvanta::playback {

/// Several cameras in step on one clock. Lives in the GUI thread, which never waits for a decoding: the cameras'
/// threads are asked, and report.
///
/// Life: looks into the files, then shows the first moment, paused; `sigReady` tells. From then on it follows the
/// clock. After a seek the clock stands still until every camera shows that moment, or for a second at most.
class PlaybackSession final : public QObject {
    Q_OBJECT
public:
    struct View {
        CameraPlayer::Report::State state = CameraPlayer::Report::State::Gap;
        SharedPicture picture;
        Moment moment{0};           ///< when the picture began to be seen
        bool keyFramesOnly = false; ///< there is no time to decode all frames at this speed
    };

    explicit PlaybackSession(const QVector<PlaybackCamera>& cameras, PlaybackClock::TimeSource source = {},
                             QObject* parent = nullptr);
    ~PlaybackSession() override;

    int cameraCount() const { return static_cast<int>(cameras_.size()); }
    /// Every camera's files were looked into.
    bool isReady() const;
    /// Null until that camera's files were looked into.
    std::shared_ptr<const CameraPlayer::Findings> findings(int camera) const;
    const View& view(int camera) const { return cameras_[static_cast<std::size_t>(camera)]->view; }
    Moment now() { return clock_.now(); }
    Span whole() const { return clock_.whole(); }
    const std::vector<Span>& covered() const { return clock_.covered(); }
    bool isPlaying() const { return clock_.isPlaying(); }
    double speed() const { return clock_.speed(); }
    bool skipsGaps() const { return clock_.skipsGaps(); }
    /// Every camera shows what belongs to the present moment, as far as it was asked for.
    bool isSettled() const;

    void play();
    void pause();
    void setSpeed(double speed);
    void faster() { setSpeed(clock_.fasterSpeed()); }
    void slower() { setSpeed(clock_.slowerSpeed()); }
    void setSkipGaps(bool skip) { clock_.setSkipGaps(skip); }
    void seek(Moment moment);
    /// To the next or the previous begin of something recorded; false when there is none.
    bool seekNextBegin();
    bool seekPreviousBegin();
    /// Pauses and goes on by so many frames of a camera, or back; the others follow to that moment.
    void step(int frames, int camera);

signals:
    /// Every camera's files were looked into.
    void sigReady();
    /// A camera shows something new.
    void sigView(int camera);
    /// The moment has changed.
    void sigMoved();
    /// Playing, pausing or the speed has changed.
    void sigStateChanged();

private:
    struct Camera {
        std::unique_ptr<CameraPlayer> player;
        std::shared_ptr<const CameraPlayer::Findings> findings;
        View view;
        std::uint64_t settled = 0; ///< the newest request that was carried out
    };
    void tick();
    void collect();
    void takeReport(int number, Camera& camera, const CameraPlayer::Report& report);
    void becomeReady();
    void showMoment();
    void checkSettled();

    TaskQueue queue_; ///< before the players, whose threads post into it
    PlaybackClock clock_;
    std::vector<std::unique_ptr<Camera>> cameras_;
    QTimer timer_;
    bool ready_ = false;
    std::uint64_t serial_ = 0; ///< of the last request
    std::uint64_t seek_ = 0;   ///< of the last one that is waited for
    std::chrono::steady_clock::time_point waitUntil_;
    bool waiting_ = false;
    std::optional<int> stepping_; ///< the camera that tells where a step leads
    int stepFrames_ = 0;          ///< of the step that is on its way
    Moment stepFrom_{0};
};

} // namespace corvanta::playback
