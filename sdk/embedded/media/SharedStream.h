#pragma once

#include "media/Diagnostics.h"
#include "media/H264Decoder.h"
#include "media/Picture.h"
#include "media/StreamReader.h"
#include "media/Subscriber.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace ipncsdk::media {

/// One stream with its reader's thread, its decoder and everyone who takes part in it.
///
/// Life: made with its first subscriber, `start`ed once, then either asked to stop by the owner or ended by the
/// reader itself (`Owner::ending`), and always joined by the owner in the end. Nothing may join the stream after
/// `Owner::ending`.
class SharedStream final : private ReaderHost {
public:
    /// What the stream tells whoever made it, on the reader's thread and with no lock held.
    class Owner {
    public:
        /// The stream has come to its end by itself: nobody may be added from now on.
        virtual void ending(const SharedStream& stream) = 0;
        /// The subscriber has had its last call.
        virtual void finished(int subscriberId) = 0;

    protected:
        ~Owner() = default;
    };

    SharedStream(std::string name, std::unique_ptr<StreamReader> reader, Owner& owner, Log log);
    /// `join` has been called when the stream was started.
    ~SharedStream();
    SharedStream(const SharedStream&) = delete;
    SharedStream& operator=(const SharedStream&) = delete;

    void start();
    /// Makes the reader end soon; returns at once. Whoever waits for a picture gives up.
    void requestStop();
    void join();

    void add(std::shared_ptr<Subscriber> subscriber);
    /// Returns how many are left.
    std::size_t remove(int subscriberId);
    /// The stream has opened and has no sound.
    bool isSilent() const { return silent_; }

    /// Copies the newest picture. Without one and without decoding subscribers, waits up to `patience` for the next
    /// key frame; with such subscribers only when `always`. `None`, `NoPicture`, or why the stream ended.
    StreamError copyPicture(std::chrono::milliseconds patience, bool always, Picture& picture);

private:
    using Subscribers = std::vector<std::shared_ptr<Subscriber>>;

    // ReaderHost
    bool running() override;
    bool waitUntil(Clock::time_point moment) override;
    void stage(OpenStage stage) override;
    void opened(const StreamParameters& parameters) override;
    void frame(const CodedFrame& frame) override;
    bool watched() const override;
    bool soundWanted() const override;
    void sound(const SoundBlock& sound) override;
    void log(const std::string& line) override;

    void threadMain();
    StreamError read();
    void takeNewSubscribers();
    void tellState();
    void tellState(Subscriber& subscriber);
    void closeRefused();
    std::size_t closeMember(std::size_t index, StreamError reason);
    void closeLate(Clock::time_point now);
    void closeAll(StreamError reason);
    void decode(const CodedFrame& frame);
    void stopDecoding();
    bool picturesWanted() const;

    const std::string name_;
    const std::unique_ptr<StreamReader> reader_;
    Owner& owner_;
    const Log log_;
    std::thread thread_;

    std::atomic<bool> stop_{false};
    std::atomic<bool> changed_{false};   ///< `subscribers_` differs from the reader's copy
    std::atomic<bool> silent_{false};    ///< opened without sound
    std::atomic<int> pictureWaiters_{0}; ///< threads inside `copyPicture` that need the decoder

    std::mutex mutex_;
    std::condition_variable wake_;    ///< the reader: to stop, or someone joined
    std::condition_variable picture_; ///< those who wait for a picture
    Subscribers subscribers_;
    Picture newest_; ///< written by the reader with the lock held; the reader alone may read it without
    bool ended_ = false;
    StreamError endReason_ = StreamError::None;

    // What follows belongs to the reader's thread.
    Subscribers members_; ///< the reader's copy of `subscribers_`
    OpenStage stage_ = OpenStage::Information;
    bool open_ = false;
    StreamParameters parameters_;
    std::unique_ptr<H264Decoder> decoder_; ///< while somebody wants pictures, from a key frame on
    unsigned reportedDamage_ = 0;
    Picture working_; ///< the buffer for the next picture
};

} // namespace ipncsdk::media
