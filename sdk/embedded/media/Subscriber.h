#pragma once

#include "media/Stream.h"
#include "media/sound/Talk.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace ipncsdk::media {

/// The gate before one subscription's listener: lets calls through, one at a time, until it is closed.
///
/// `call` comes from the reader's thread alone, `close` from any thread.
class Subscriber final {
public:
    /// `line` is that of the subscription's camera, and may be null for those who do not talk.
    Subscriber(int id, const Subscription& wishes, std::shared_ptr<TalkLine> line,
               std::shared_ptr<StreamListener> listener);
    Subscriber(const Subscriber&) = delete;
    Subscriber& operator=(const Subscriber&) = delete;

    const int id;
    const bool decoded;
    const bool coded;
    const bool sound;
    const std::shared_ptr<Talk> talk; ///< null for those who do not talk

    /// Why a stream of these parameters is of no use for the subscription; `None` when it is. Begins the talk.
    StreamError refusalOf(const StreamParameters& parameters) const;

    /// Calls `function(listener)` with no lock held, unless the gate is closed.
    template <typename Function>
    void call(Function&& function) {
        if (auto listener = enter()) {
            const Leaving leaving{*this, listener};
            function(*listener);
        }
    }

    /// Lets no call through any more, and ends the talk. Waits for one that is running, except when it is the
    /// caller's own.
    void close();

    // What follows belongs to the reader's thread.

    /// When the subscription gives up waiting for the stream to open; nothing: never, or it has been open.
    std::optional<std::chrono::steady_clock::time_point> openBy;
    std::optional<OpenStage> toldStage;      ///< the last stage reported since the stream last opened
    bool toldOpen = false;                   ///< `onOpened` was the last but frames
    bool codedRuns = false;                  ///< has had its key frame since then
    StreamError refused = StreamError::None; ///< why the stream that has opened is of no use

private:
    /// Lets the listener go before the gate reports that nobody is inside, also when a call throws.
    struct Leaving {
        Subscriber& gate;
        std::shared_ptr<StreamListener>& listener;
        ~Leaving() {
            listener.reset();
            gate.leave();
        }
    };

    std::shared_ptr<StreamListener> enter();
    void leave();

    const std::shared_ptr<TalkLine> line_;
    std::mutex mutex_;
    std::condition_variable left_;
    std::shared_ptr<StreamListener> listener_; ///< null once closed
    bool inside_ = false;
    std::thread::id caller_; ///< meaningful while `inside_`
};

} // namespace ipncsdk::media
