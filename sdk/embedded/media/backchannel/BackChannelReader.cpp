#include "media/backchannel/BackChannelReader.h"

#include "media/backchannel/BackChannelSession.h"
#include "media/backchannel/RtpPacker.h"
#include "media/sound/G711Encoder.h"
#include "media/sound/TalkPlayer.h"

extern "C" {
#include <libavutil/random_seed.h>
}

#include <array>
#include <utility>
#include <vector>

namespace ipncsdk::media {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds packetTime{20};
constexpr int packetsASecond = 50;
/// Someone later than this (a suspended machine) goes on from now.
constexpr milliseconds patience{500};

/// The one way to a camera, held as long as the object lives; the connection before may still be saying good-bye.
class Seat {
public:
    Seat(TalkLine& line, ReaderHost& host)
        : line_(line) {
        while (!taken_ && host.running()) {
            taken_ = line_.enter();
            if (!taken_) {
                host.waitUntil(Clock::now() + packetTime);
            }
        }
    }
    ~Seat() {
        if (taken_) {
            line_.leave();
        }
    }
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;
    explicit operator bool() const { return taken_; }

private:
    TalkLine& line_;
    bool taken_ = false;
};

/// Turns what is said into packets.
class Mouth {
public:
    Mouth(const BackChannelMedia& media, std::uint8_t channel, std::shared_ptr<const TalkLine> line)
        : player_(std::move(line))
        , encoder_(media.codec, media.rate)
        , packer_(static_cast<std::uint8_t>(media.payloadType), channel,
                  {static_cast<std::uint16_t>(av_get_random_seed()), av_get_random_seed(), av_get_random_seed()})
        , packetSize_(static_cast<std::size_t>(media.rate / packetsASecond)) {}

    bool isReady() const { return encoder_.isReady(); }
    bool hasLost() { return player_.hasLost(); }

    /// What is to be sent in the next packet's time: a packet as a rule.
    std::vector<std::string> next() {
        std::array<std::int16_t, Talk::rate / packetsASecond> said{};
        const std::size_t count = player_.take(said);
        const auto coded = encoder_.encode(std::span(said).first(count));
        coded_.insert(coded_.end(), coded.begin(), coded.end());
        if (count == 0) {
            packer_.pass(static_cast<std::uint32_t>(packetSize_));
        }
        std::vector<std::string> packets;
        while (coded_.size() >= packetSize_) {
            packets.push_back(packer_.pack(std::span(coded_).first(packetSize_)));
            coded_.erase(coded_.begin(), coded_.begin() + static_cast<std::ptrdiff_t>(packetSize_));
        }
        return packets;
    }

private:
    TalkPlayer player_;
    G711Encoder encoder_;
    RtpPacker packer_;
    const std::size_t packetSize_;
    std::vector<std::uint8_t> coded_; ///< less than a packet, as a rule
};

} // namespace

BackChannelReader::BackChannelReader(std::string camera, RtspSource source, RtspOptions options,
                                     std::shared_ptr<TalkLine> line)
    : camera_(std::move(camera))
    , source_(std::move(source))
    , options_(std::move(options))
    , line_(std::move(line)) {}

StreamError BackChannelReader::run(ReaderHost& host) {
    host.stage(OpenStage::Information);
    const auto address = RtspAddress::parse(source_);
    if (!address) {
        host.log("the camera's address is no rtsp address");
        return StreamError::AddressUnreachable;
    }
    const Seat seat(*line_, host);
    if (!seat) {
        return StreamError::None;
    }
    host.stage(OpenStage::Connecting);
    TCPSocketDelegate* delegate = options_.socketDelegate ? options_.socketDelegate() : nullptr;
    BackChannelSession session(*address, delegate, options_.networkTimeout, std::nullopt,
                               [&host] { return host.running(); });
    StreamError error = session.open();
    options_.backChannels->note(camera_, source_, error);
    if (error == StreamError::None) {
        error = talk(host, session);
    }
    if (error == StreamError::Stopped) {
        return StreamError::None;
    }
    host.log("the camera at " + address->host() + " takes no talk: " +
             (session.why().empty() ? "error " + std::to_string(static_cast<int>(error)) : session.why()));
    return error;
}

StreamError BackChannelReader::talk(ReaderHost& host, BackChannelSession& session) const {
    Mouth mouth(session.media(), session.channel(), line_);
    if (!mouth.isReady()) {
        return StreamError::Internal;
    }
    StreamParameters parameters;
    parameters.connectionType = session.isRelayed() ? "RTSP/PROXY" : "RTSP/TCP";
    parameters.talk = true;
    host.opened(parameters);
    bool stuck = false;
    for (Clock::time_point due = Clock::now();; due += packetTime) {
        if (const StreamError error = session.workUntil(due); error != StreamError::None) {
            return error;
        }
        due = Clock::now() - due > patience ? Clock::now() : due;
        for (std::string& packet : mouth.next()) {
            if (!session.send(std::move(packet)) && !std::exchange(stuck, true)) {
                host.log("the camera does not take all that is said");
            }
        }
        if (mouth.hasLost()) {
            host.log("talk comes faster than it can be sent; the oldest is left out");
        }
    }
}

} // namespace ipncsdk::media
