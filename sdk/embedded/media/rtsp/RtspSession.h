#pragma once

#include "media/AnnexB.h"
#include "media/Ffmpeg.h"
#include "media/StreamReader.h"
#include "media/backchannel/BackChannelQuestion.h"
#include "media/rtsp/Relay.h"
#include "media/rtsp/RtspAddress.h"
#include "media/rtsp/StreamClock.h"
#include "media/sound/SoundDecoder.h"

#include <memory>
#include <optional>

namespace ipncsdk::media {

/// One connection to a network camera, from connecting to its end. Used on the reader's thread.
class RtspSession final {
public:
    /// `silence` is how long nothing may come once the stream runs, and before as well when `limitOpening`.
    /// `delegate` (may be null) carries the connection, is made to connect at once, and is closed at the end.
    /// Without `withSound` the camera is asked for its video alone. `question` is asked while somebody watches.
    RtspSession(ReaderHost& host, const RtspAddress& address, StreamClock& clock, BackChannelQuestion& question,
                TCPSocketDelegate* delegate, std::chrono::milliseconds silence, bool limitOpening, bool withSound);
    ~RtspSession();
    RtspSession(const RtspSession&) = delete;
    RtspSession& operator=(const RtspSession&) = delete;

    /// Runs until the connection ends or the host says so; returns why it ended.
    StreamError run();
    /// The stream was opened in this session.
    bool opened() const { return opened_; }
    /// The camera described more than its video, and then did not play.
    bool failedWithSound() const { return withSound_ && described_ > 1 && !playing_; }

private:
    static int interrupted(void* session);
    bool mustBreakOff();
    void expectData();
    bool pastDeadline() const { return deadline_ && Clock::now() >= *deadline_; }
    StreamError explain(int code, StreamError otherwise) const;

    StreamError reach();
    StreamError open();
    StreamError readFrames();
    void handOver(const AVPacket& packet);
    bool openWith(const CodedFrame& keyFrame);
    void tellTalk();
    void chooseStreams();
    void hear(const AVPacket& packet);

    ReaderHost& host_;
    const RtspAddress& address_;
    StreamClock& clock_;
    BackChannelQuestion& question_;
    const std::chrono::milliseconds silence_;
    const bool limitOpening_;
    const bool withSound_;

    std::unique_ptr<Relay> relay_; ///< outlives the connection through it
    std::string url_;              ///< with credentials: never to be logged
    FormatContext input_;
    AVFormatContext* opening_ = nullptr; ///< while `input_` is being made
    AVStream* stream_ = nullptr;
    AVStream* sound_ = nullptr;             ///< null when there is none that can be decoded
    std::unique_ptr<SoundDecoder> decoder_; ///< of sound, while somebody listens
    bool soundDamaged_ = false;             ///< has been reported
    AnnexB normaliser_;

    std::optional<Clock::time_point> deadline_;
    bool closing_ = false;
    bool listenerFailed_ = false;
    unsigned described_ = 0; ///< streams that the camera was seen to have
    bool playing_ = false;   ///< the camera has agreed to play
    bool opened_ = false;
    StreamParameters parameters_; ///< as told to the host, once `opened_`
};

} // namespace ipncsdk::media
