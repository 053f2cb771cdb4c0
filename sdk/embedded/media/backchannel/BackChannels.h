#pragma once

#include "media/Stream.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ipncsdk::media {

/// What is known of the cameras' ways for sound to them: each address of a camera is asked once. Thread-safe.
class BackChannels final {
public:
    /// Whether the caller is to ask the address: nobody has done so, and nobody is doing it. Then `note` has to
    /// follow.
    bool begin(const std::string& camera, const RtspSource& source);
    /// Takes what asking or talking has shown. `None` and `TalkBusy`: there is a way. What says nothing about that
    /// (a camera that cannot be reached) leaves what is known, and lets the next one ask.
    void note(const std::string& camera, const RtspSource& source, StreamError outcome);
    /// The address through which a camera can be talked to; nothing when none is known.
    std::optional<RtspSource> wayTo(const std::string& camera) const;

private:
    enum class Answer { Unknown, Yes, No };
    struct Entry {
        RtspSource source;
        Answer answer = Answer::Unknown;
        bool asking = false;
    };

    Entry& entryOf(const std::string& camera, const RtspSource& source);

    mutable std::mutex mutex_;
    std::map<std::string, std::vector<Entry>> cameras_; ///< guarded by mutex_
};

} // namespace ipncsdk::media
