#pragma once

#include "playback/MediaFile.h"
#include "playback/Timeline.h"

#include <condition_variable>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace corvanta::playback {

/// Decodes what one camera has recorded, on a thread of its own. Requests and reports each have one place: a newer
/// one takes it, so nobody waits for a decoding and no picture is made that nobody would see.
class CameraPlayer final {
public:
    using microseconds = std::chrono::microseconds;

    struct File {
        std::filesystem::path path;
        std::optional<Moment> begin; ///< by its name; else by when it was written last
    };
    struct Request {
        enum class Kind {
            Show,   ///< exactly what is seen at the moment
            Follow, ///< the same while time goes on; may leave out frames where there is no time for all
            Step    ///< so many frames on from the moment, or back
        };
        Kind kind = Kind::Show;
        Moment moment{0};
        double speed = 1; ///< of following
        int frames = 0;   ///< of a step
        std::uint64_t serial = 0;
    };
    struct Report {
        enum class State { Picture, Gap, Broken };
        State state = State::Gap;
        SharedPicture picture;    ///< null unless the state is `Picture`
        Moment moment{0};         ///< when the picture begins to be seen; without one, as requested
        std::uint64_t serial = 0; ///< of the request
        bool isFinal = true;      ///< false for a key frame on the way to the picture that was requested
        bool keyFramesOnly = false;
    };
    /// What the files were found to be; comes once.
    struct Findings {
        Timeline timeline;
        std::vector<std::pair<std::filesystem::path, OpenError>> unreadable;
        std::vector<std::filesystem::path> incomplete; ///< playable, but never finished
    };

    /// Begins to look into the files. `wake` is called on the player's thread when there is something to be taken; it
    /// is not called again before that was taken.
    CameraPlayer(std::vector<File> files, MediaFile::Options options, std::function<void()> wake);
    /// Ends the thread; a decoding is broken off.
    ~CameraPlayer();
    CameraPlayer(const CameraPlayer&) = delete;
    CameraPlayer& operator=(const CameraPlayer&) = delete;

    /// Any thread.
    void request(const Request& request);
    /// The newest report, if it was not taken yet; any thread.
    std::optional<Report> takeReport();
    std::shared_ptr<const Findings> takeFindings();

private:
    void run();
    void lookIntoFiles();
    std::optional<Request> nextRequest();
    bool isOvertaken(const Request& request);
    bool isEnding();

    void show(const Request& request);
    void follow(const Request& request);
    void step(const Request& request);
    std::optional<Timeline::Place> stepOnce(Timeline::Place place, bool forward);
    MediaFile* open(std::size_t recording);
    std::size_t withinPiece(MediaFile& file, const Timeline::Place& place);
    SharedPicture decode(MediaFile& file, std::size_t frame, const MediaFile::Interrupted& interrupted);
    void reportFrame(const Request& request, const Timeline::Place& place, std::size_t frame, bool isFinal);
    void reportNothing(const Request& request, Report::State state);
    void publish(Report report);

    // The decoding thread's own.
    std::vector<File> files_;
    MediaFile::Options options_;
    std::shared_ptr<const Findings> findings_;
    struct OpenFile {
        std::size_t recording = 0;
        std::unique_ptr<MediaFile> file; ///< null for one that cannot be opened any more
    };
    std::list<OpenFile> open_; ///< used last in front
    struct Shown {
        std::size_t recording = 0;
        std::size_t frame = 0;
        friend bool operator==(const Shown&, const Shown&) = default;
    };
    std::optional<Shown> shown_;           ///< nothing while the last report was no picture
    std::optional<Report::State> nothing_; ///< the last report's state, when it was no picture
    double secondsAFrame_ = 0;             ///< that decoding takes, on the average
    bool keyFramesOnly_ = false;
    Report last_; ///< published last

    std::mutex mutex_; ///< of everything below; held for moments only
    std::condition_variable changed_;
    std::optional<Request> request_; ///< not served yet
    std::optional<Report> report_;   ///< not taken yet
    std::shared_ptr<const Findings> newFindings_;
    bool ending_ = false;

    std::function<void()> wake_;
    std::thread thread_; ///< last: begins when everything else is there
};

} // namespace corvanta::playback
