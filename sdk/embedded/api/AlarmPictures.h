#pragma once

#include "api/VideoHub.h"
#include "base/Clock.h"
#include "base/JsonText.h"
#include "media/FrameRing.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace ipncsdk::api {

/// Takes a picture and a recording of each alarm into folders that the client names, of cameras whose light streams
/// it follows all the time: a recording begins before its alarm. Thread-safe.
class AlarmPictures final {
public:
    static constexpr std::chrono::seconds before{5};
    static constexpr std::chrono::seconds after{5};

    struct Parts {
        VideoHub& hub;
        const Clock& clock;
        bool follows = true; ///< false: no streams are followed, so there are no recordings
        /// Sends an unsolicited message to the client and returns the reply. Called on threads of this.
        std::function<std::string(const Json&)> askClient;
        std::filesystem::path root; ///< where relative folders of the client start
    };

    /// An alarm of a camera that is followed.
    struct Wish {
        std::string ipncid;
        std::string datetime; ///< "yyyy-MM-dd hh:mm:ss", as the alarm tells it
        long long madeAt = 0; ///< milliseconds since the beginning of 1970, UTC
        int level = 1;
        bool tellsVideo = false; ///< the client is told once the recording is complete
    };

    explicit AlarmPictures(Parts parts);
    /// As `stop`.
    ~AlarmPictures();
    AlarmPictures(const AlarmPictures&) = delete;
    AlarmPictures& operator=(const AlarmPictures&) = delete;

    /// Follows these streams and no others.
    void follow(std::vector<media::Subscription> streams);
    /// Begins with the picture and the recording; alarms of one camera and level within one second share them.
    void take(const Wish& wish);
    /// Ends what is under way and joins the threads. Before the hub's end.
    void stop();

    /// "yyyyMMddhhmmss-LEVEL.jpg"
    static std::string pictureName(const Wish& wish);

private:
    using Steady = std::chrono::steady_clock::time_point;
    struct Followed {
        media::Subscription subscription;
        std::shared_ptr<media::FrameRing> ring;
        int hubId = 0;
    };
    struct Job {
        Wish wish;
        Steady alarm;
        bool isRecording = false;
    };

    void begin(Followed& followed);
    void work();
    void takePicture(const Wish& wish);
    void takeRecording(const Job& job);
    /// Writes a file into the folder that the client names for it, whole or not at all; its path as the client would
    /// write it, or nothing.
    std::optional<std::string> store(const Wish& wish, const std::string& name,
                                     const std::vector<std::uint8_t>& bytes);

    const Parts parts_;
    std::mutex mutex_;
    std::condition_variable changed_;
    // Guarded by mutex_ from here on.
    std::map<std::string, Followed> followed_; ///< by camera
    std::multimap<Steady, Job> jobs_;          ///< by when they are due
    std::deque<std::string> recent_;           ///< cameras and names of the last files, not to be made twice
    bool stopping_ = false;
    unsigned lastPart_ = 0; ///< number of the last file in the making

    std::vector<std::thread> threads_;
};

} // namespace ipncsdk::api
