#include "media/rtsp/RtspSession.h"

#include "media/H264Decoder.h"
#include "media/rtsp/Resolver.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ipncsdk::media {

namespace {

using std::chrono::milliseconds;

/// How long saying good-bye to the camera may take.
constexpr milliseconds farewell{150};
constexpr milliseconds lookUpEvery{20};
constexpr int usualFrameRate = 25;

int frameRateOf(double fromStream, const AVStream& stream) {
    const AVRational described = stream.avg_frame_rate;
    const double rate = fromStream > 0                           ? fromStream
                        : described.num > 0 && described.den > 0 ? av_q2d(described)
                                                                 : usualFrameRate;
    return rate >= 0.5 && rate <= 480 ? static_cast<int>(std::lround(rate)) : usualFrameRate;
}

} // namespace

RtspSession::RtspSession(ReaderHost& host, const RtspAddress& address, StreamClock& clock,
                         BackChannelQuestion& question, TCPSocketDelegate* delegate, milliseconds silence,
                         bool limitOpening, bool withSound)
    : host_(host)
    , address_(address)
    , clock_(clock)
    , question_(question)
    , silence_(silence)
    , limitOpening_(limitOpening)
    , withSound_(withSound)
    , relay_(delegate == nullptr ? nullptr
                                 : std::make_unique<Relay>(*delegate, address.host(), address.port(), silence)) {}

RtspSession::~RtspSession() {
    closing_ = true;
    deadline_ = Clock::now() + farewell;
    input_.reset();
}

int RtspSession::interrupted(void* session) {
    return static_cast<RtspSession*>(session)->mustBreakOff() ? 1 : 0;
}

/// Asked by the library again and again while it waits. Listeners may be called from here, and nothing that they
/// throw may pass the library's frames.
bool RtspSession::mustBreakOff() {
    if (closing_) {
        return pastDeadline();
    }
    described_ = opening_ != nullptr ? std::max(described_, opening_->nb_streams) : described_;
    // A camera that sends its callers elsewhere would lead them past the client's transport.
    if (relay_ != nullptr && opening_ != nullptr && opening_->url != nullptr && url_ != opening_->url) {
        return true;
    }
    try {
        return listenerFailed_ || !host_.running() || pastDeadline();
    } catch (...) {
        listenerFailed_ = true;
        return true;
    }
}

void RtspSession::expectData() {
    if (opened_ || limitOpening_) {
        deadline_ = Clock::now() + silence_;
    }
}

StreamError RtspSession::explain(int code, StreamError otherwise) const {
    if (listenerFailed_) {
        return StreamError::Internal;
    }
    if (pastDeadline()) {
        return StreamError::TimedOut;
    }
    switch (code) {
    case AVERROR_HTTP_UNAUTHORIZED:
    case AVERROR_HTTP_FORBIDDEN:
        return StreamError::PasswordRefused;
    case AVERROR_HTTP_BAD_REQUEST:
    case AVERROR_HTTP_NOT_FOUND:
    case AVERROR_HTTP_OTHER_4XX:
    case AVERROR_HTTP_SERVER_ERROR:
    case AVERROR_INVALIDDATA:
    case AVERROR(EPROTONOSUPPORT):
        return StreamError::StreamNotFound;
    default:
        return otherwise;
    }
}

StreamError RtspSession::run() {
    host_.stage(OpenStage::Connecting);
    expectData();
    StreamError error = reach();
    if (error == StreamError::None && host_.running()) {
        error = open();
    }
    if (error == StreamError::None && host_.running()) {
        host_.stage(OpenStage::Loading);
        error = readFrames();
    }
    return error;
}

/// Makes sure of the camera's host, or of the road to it, without a call that could hang.
StreamError RtspSession::reach() {
    if (relay_ == nullptr) {
        const Resolver resolver(address_.host());
        while (resolver.state() == Resolver::State::Pending && !pastDeadline()) {
            if (!host_.waitUntil(Clock::now() + lookUpEvery)) {
                return StreamError::None;
            }
        }
        url_ = address_.url();
        return resolver.state() == Resolver::State::Found ? StreamError::None : StreamError::AddressUnreachable;
    }
    while (relay_->connected() == Relay::Connected::Pending) {
        if (!host_.waitUntil(Clock::now() + lookUpEvery)) {
            return StreamError::None;
        }
    }
    url_ = address_.urlTo("127.0.0.1", relay_->port());
    return relay_->connected() == Relay::Connected::Yes ? StreamError::None : StreamError::ProxyFailed;
}

StreamError RtspSession::open() {
    opening_ = avformat_alloc_context();
    if (opening_ == nullptr) {
        return StreamError::Internal;
    }
    opening_->interrupt_callback = {&RtspSession::interrupted, this};
    FfmpegOptions options;
    options.set("rtsp_transport", "tcp");
    options.set("allowed_media_types", withSound_ ? "video+audio" : "video");
    // Playing begins once it is known that there is something to play: a camera without video would refuse it.
    options.set("initial_pause", "1");
    // Nothing that a camera describes may lead to a file or to another protocol.
    options.set("protocol_whitelist", address_.secure() ? "tcp,tls" : "tcp");
    const int opened =
        avformat_open_input(&opening_, url_.c_str(), av_find_input_format("rtsp"), &options.dictionary);
    input_.reset(std::exchange(opening_, nullptr));
    if (opened < 0) {
        return explain(opened, StreamError::AddressUnreachable);
    }
    chooseStreams();
    if (stream_ == nullptr) {
        return StreamError::CodecNotSupported;
    }
    const AVCodecParameters& parameters = *stream_->codecpar;
    if (parameters.extradata_size > 0) {
        normaliser_.setHeader({parameters.extradata, static_cast<std::size_t>(parameters.extradata_size)});
    }
    clock_.restart();
    const int result = av_read_play(input_.get());
    playing_ = result >= 0;
    return playing_ ? StreamError::None : explain(result, StreamError::StreamNotFound);
}

void RtspSession::chooseStreams() {
    for (unsigned index = 0; index < input_->nb_streams; ++index) {
        AVStream* stream = input_->streams[index];
        if (stream_ == nullptr && stream->codecpar->codec_id == AV_CODEC_ID_H264) {
            stream_ = stream;
        } else if (sound_ == nullptr && SoundDecoder::canDecode(*stream->codecpar)) {
            sound_ = stream;
        } else {
            stream->discard = AVDISCARD_ALL;
        }
    }
}

StreamError RtspSession::readFrames() {
    const Packet packet(av_packet_alloc());
    expectData();
    while (host_.running()) {
        const int result = av_read_frame(input_.get(), packet.get());
        if (result == AVERROR(EAGAIN)) {
            continue;
        }
        if (result < 0) {
            return explain(result, opened_ ? StreamError::ConnectionLost : StreamError::StreamNotFound);
        }
        if (packet->stream_index == stream_->index) {
            expectData();
            handOver(*packet);
        } else if (sound_ != nullptr && packet->stream_index == sound_->index) {
            // Sound alone keeps no stream alive.
            hear(*packet);
        }
        av_packet_unref(packet.get());
    }
    return StreamError::None;
}

void RtspSession::handOver(const AVPacket& packet) {
    const auto unit = normaliser_.normalise({packet.data, static_cast<std::size_t>(packet.size)},
                                            (packet.flags & AV_PKT_FLAG_KEY) != 0);
    if (!unit) {
        return;
    }
    const std::int64_t ticks = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    std::optional<std::chrono::microseconds> time;
    if (ticks != AV_NOPTS_VALUE) {
        time = std::chrono::microseconds(av_rescale_q(ticks, stream_->time_base, {1, 1'000'000}));
    }
    const CodedFrame frame{unit->bytes.data(), unit->bytes.size(), unit->keyFrame, clock_.at(time, Clock::now())};
    if (opened_ && frame.keyFrame) {
        tellTalk();
    }
    if (opened_ || (frame.keyFrame && openWith(frame))) {
        host_.frame(frame);
    }
}

/// Whether the camera can be talked to is asked once its pictures come, so that nobody waits for that. Those who have
/// been told otherwise hear it before a key frame, as they would of a stream that begins.
void RtspSession::tellTalk() {
    if (host_.watched()) {
        question_.ask(address_);
    }
    if (!parameters_.talk && question_.isAnsweredYes()) {
        parameters_.talk = true;
        host_.opened(parameters_);
    }
}

/// Decodes sound and hands it over while somebody listens.
void RtspSession::hear(const AVPacket& packet) {
    if (!opened_ || !host_.soundWanted()) {
        return decoder_.reset();
    }
    if (decoder_ == nullptr) {
        decoder_ = std::make_unique<SoundDecoder>(*sound_->codecpar);
    }
    decoder_->feed(packet);
    SoundBlock block;
    while (decoder_->take(block)) {
        host_.sound(block);
    }
    if (decoder_->damaged() > 0 && !std::exchange(soundDamaged_, true)) {
        host_.log("damaged sound came; some may be missing");
    }
}

/// The stream counts as open from its first key frame on, which tells what the description may have left out.
bool RtspSession::openWith(const CodedFrame& keyFrame) {
    H264Decoder decoder;
    decoder.feed(keyFrame);
    decoder.finish();
    Picture picture;
    if (!decoder.take(picture)) {
        return false;
    }
    opened_ = true;
    expectData();
    if (decoder.reordering() == 0) {
        clock_.keepOrder();
    }
    parameters_ = {picture.width,
                   picture.height,
                   frameRateOf(decoder.frameRate(), *stream_),
                   relay_ != nullptr ? "RTSP/PROXY" : "RTSP/TCP",
                   sound_ != nullptr,
                   question_.isAnsweredYes()};
    host_.opened(parameters_);
    if (host_.watched()) {
        question_.ask(address_);
    }
    return true;
}

} // namespace ipncsdk::media
