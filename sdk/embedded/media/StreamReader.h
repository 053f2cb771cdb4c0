#pragma once

#include "media/Stream.h"

#include <chrono>
#include <string>

namespace ipncsdk::media {

using Clock = std::chrono::steady_clock;

/// What a reader reports to and asks. Everything is called on the reader's own thread.
class ReaderHost {
public:
    /// False once the reader must end. To be asked at least every 100 ms, also while the reader waits for
    /// something: those who joined meanwhile are served, and time limits are kept, from inside this call.
    virtual bool running() = 0;
    /// Sleeps until a moment; false, and earlier, once the reader must end.
    virtual bool waitUntil(Clock::time_point moment) = 0;
    virtual void stage(OpenStage stage) = 0;
    /// The stream runs (again), or it goes on and can be talked to from now on; a key frame follows.
    virtual void opened(const StreamParameters& parameters) = 0;
    virtual void frame(const CodedFrame& frame) = 0;
    /// Somebody takes pictures or access units, and not just for a moment.
    virtual bool watched() const = 0;
    /// Somebody listens. Readers decode sound only while this is so.
    virtual bool soundWanted() const = 0;
    /// Only while the stream is open.
    virtual void sound(const SoundBlock& sound) = 0;
    /// Also on other threads, as long as the reader runs.
    virtual void log(const std::string& line) = 0;

protected:
    ~ReaderHost() = default;
};

/// Where coded frames come from.
class StreamReader {
public:
    virtual ~StreamReader() = default;
    /// Reads until the host says no or the stream cannot go on; returns why, `None` when the host ended it.
    virtual StreamError run(ReaderHost& host) = 0;
};

} // namespace ipncsdk::media
