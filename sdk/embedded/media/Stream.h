#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace ipncsdk::media {

class Talk;

/// Why a stream ended or did not open. The numbers are the "retcode" of "avclose" and of the results of
/// change-video-operations; clients show them, so a number never changes its meaning.
enum class StreamError : int {
    None = 0,
    UnknownDevice = 1,       ///< no such device for this account
    DeviceOffline = 2,       ///< the device is known and not reachable now
    NoRight = 3,             ///< the account may not watch this device
    NotSignedIn = 4,         ///< nobody is signed in
    NoVideo = 5,             ///< the device has no video
    BadRequest = 6,          ///< the request lacks something or is of wrong types
    NoSound = 7,             ///< the stream has no sound, or none that can be decoded
    NoTalk = 8,              ///< the device cannot be talked to
    TalkBusy = 9,            ///< somebody else talks to the device
    AddressUnreachable = 10, ///< host not found, connection refused, no route, not an address at all
    StreamNotFound = 11,     ///< the camera answers, and has no stream under this path
    PasswordRefused = 12,    ///< the camera refuses user name and password
    CodecNotSupported = 13,  ///< the camera sends no video, or none in H.264
    TimedOut = 14,           ///< nothing usable came within the time for opening
    ConnectionLost = 15,     ///< a running connection broke and may not be made again
    ProxyFailed = 16,        ///< the client's transport could not reach the camera
    FileNotWritten = 20,     ///< a snapshot's file could not be written
    NoPicture = 21,          ///< a snapshot was wanted before the first picture
    Replaced = 22,           ///< a later change of the same stream took this one's place
    Stopped = 23,            ///< the request was stopped before its stream could be changed
    Internal = 30            ///< a failure of the SDK itself, named in its log
};

/// A recorded scene, made at first use and then served from its coded frames.
struct LoopSource {
    std::string title;  ///< UTF-8, drawn into the picture
    int scene = 0;      ///< which moving scene; any number, taken modulo the scenes there are
    unsigned phase = 0; ///< shifts the loop's start, in frames, so that cameras do not beat together
    friend bool operator==(const LoopSource&, const LoopSource&) = default;
};

/// A network camera. User name and password may also stand in the address; the fields win.
struct RtspSource {
    std::string url;
    std::string user;
    std::string password;
    friend bool operator==(const RtspSource&, const RtspSource&) = default;
};

/// A recorded video file, played over and over.
struct FileSource {
    std::filesystem::path file; ///< absolute
    friend bool operator==(const FileSource&, const FileSource&) = default;
};

using Source = std::variant<LoopSource, RtspSource, FileSource>;

enum class Quality { Light, Main };

/// Progress of opening; the numbers are the "state" of "avstate".
enum class OpenStage : int { Information = 0, Connecting = 1, Loading = 2 };

struct StreamParameters {
    int width = 0;              ///< pixels
    int height = 0;             ///< pixels
    int frameRate = 0;          ///< frames per second, rounded; 25 when the camera does not say
    std::string connectionType; ///< shown to the user: "LOOP", "RTSP/TCP", "RTSP/PROXY", "FILE"
    bool sound = false;         ///< there is sound that can be decoded
    bool talk = false;          ///< the camera can be talked to; of a network camera that may be told later
    friend bool operator==(const StreamParameters&, const StreamParameters&) = default;
};

/// One picture: planar YUV 4:2:0 (I420), rows tightly packed from the top, full range; Y plane width x height,
/// then U and V of width/2 x height/2. Width and height are even. Valid during the call that hands it over.
struct DecodedFrame {
    const std::uint8_t* data = nullptr;
    int width = 0;
    int height = 0;
    std::chrono::microseconds time{0}; ///< presentation time in the stream
};

/// One access unit in Annex B form: every NAL unit behind a four-byte start code, no access unit delimiter; a key
/// frame begins with its SPS (first byte 0x67) and PPS. Valid during the call that hands it over.
struct CodedFrame {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;
    bool keyFrame = false;
    std::chrono::microseconds time{0};
};

/// The least and the greatest rate in which sound leaves and enters the SDK.
inline constexpr int lowestSoundRate = 8000;
inline constexpr int highestSoundRate = 48000;

/// A run of sound: interleaved 16-bit samples in the machine's byte order. Valid during the call that hands it over.
struct SoundBlock {
    const std::int16_t* samples = nullptr;
    std::size_t frames = 0; ///< samples of each channel
    int rate = 0;           ///< samples of a channel in a second, from the lowest to the highest rate
    int channels = 1;       ///< 1 or 2
    std::size_t bytes() const { return frames * static_cast<std::size_t>(channels) * sizeof(std::int16_t); }
};

/// Receives what happens on one subscription. Calls come from threads of the hub, one at a time for one listener.
/// Order: any number of `onStage`, then `onOpened`, then frames; after a lost connection the same again; `onClosed`
/// is the last call. `onOpened` comes again when it turns out that the camera can be talked to. The first frame after
/// `onOpened` is a key frame (coded) or its picture (decoded). Sound comes between the frames, as the stream brings
/// it.
class StreamListener {
public:
    virtual ~StreamListener() = default;
    virtual void onStage(OpenStage stage) = 0;
    virtual void onOpened(const StreamParameters& parameters) = 0;
    virtual void onDecoded(const DecodedFrame& frame) = 0;
    virtual void onCoded(const CodedFrame& frame) = 0;
    virtual void onSound(const SoundBlock& sound) = 0;
    virtual void onClosed(StreamError reason) = 0;
};

/// What a subscriber wants. Who wants nothing but to listen, or to talk to a recorded scene, takes part in whatever
/// stream of the camera runs already, and ends with `NoSound`, `NoTalk` or `TalkBusy` where that cannot be.
struct Subscription {
    std::string camera; ///< subscriptions with equal camera, quality and source share one reader and one decoder
    Quality quality = Quality::Light;
    Source source;
    bool decoded = false;                                 ///< deliver pictures
    bool coded = false;                                   ///< deliver access units
    std::optional<std::chrono::milliseconds> openTimeout; ///< none: the hub's own limits of the network alone
    bool sound = false;                                   ///< deliver sound
    /// Not null: hold the way to the camera open for it. With a network camera that is all that is done.
    std::shared_ptr<Talk> talk = nullptr;
};

} // namespace ipncsdk::media
