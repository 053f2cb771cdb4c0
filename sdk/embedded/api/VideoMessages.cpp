#include "api/VideoMessages.h"

#include "base/JsonText.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>

namespace ipncsdk::api {

namespace {

// What clients compare with.
constexpr int canListen = 1;
constexpr int canTalk = 3;

template <typename Number>
void appendNumber(std::string& text, Number number) {
    std::array<char, 24> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), written.ptr);
}

/// An address as messages carry it: a whole number, exact at pointer width.
void appendAddress(std::string& text, const void* address) {
    appendNumber(text, reinterpret_cast<std::uintptr_t>(address));
}

} // namespace

std::string stateText(int requestId, media::OpenStage stage) {
    return toText({{"type", "avstate"}, {"reqid", requestId}, {"state", static_cast<int>(stage)}});
}

std::string openText(int requestId, const media::StreamParameters& parameters, bool mainStream) {
    // Clients read the width under this spelling.
    const Json avparam = {{"framerate", parameters.frameRate},
                          {"weidth", parameters.width},
                          {"height", parameters.height},
                          {"codec", "H264"},
                          {"hd", mainStream},
                          {"audiolisten", parameters.sound ? canListen : 0},
                          {"audioplay", parameters.talk ? canTalk : 0}};
    return toText({{"type", "avopen"},
                   {"reqid", requestId},
                   {"retcode", 0},
                   {"contype", parameters.connectionType},
                   {"avparam", avparam}});
}

std::string closeText(int requestId, media::StreamError reason) {
    return toText({{"type", "avclose"}, {"reqid", requestId}, {"retcode", static_cast<int>(reason)}});
}

void writePictureText(std::string& text, int requestId, const media::DecodedFrame& frame) {
    text = R"({"type":"decodevideodata","reqid":)";
    appendNumber(text, requestId);
    text += R"(,"data":)";
    appendAddress(text, frame.data);
    text += R"(,"w":)";
    appendNumber(text, frame.width);
    text += R"(,"h":)";
    appendNumber(text, frame.height);
    text += '}';
}

void writeCodedText(std::string& text, int requestId, const media::CodedFrame& frame) {
    text = R"({"type":"videodata","reqid":)";
    appendNumber(text, requestId);
    text += R"(,"data":)";
    appendAddress(text, frame.data);
    text += R"(,"len":)";
    appendNumber(text, frame.size);
    text += frame.keyFrame ? R"(,"key":true})" : R"(,"key":false})";
}

void writeSoundText(std::string& text, int requestId, const media::SoundBlock& sound) {
    static_assert(std::endian::native == std::endian::little, "samples leave as they stand in memory");
    text = R"({"type":"audiodata","reqid":)";
    appendNumber(text, requestId);
    text += R"(,"data":)";
    appendAddress(text, sound.samples);
    text += R"(,"len":)";
    appendNumber(text, sound.bytes());
    text += R"(,"rate":)";
    appendNumber(text, sound.rate);
    text += R"(,"channels":)";
    appendNumber(text, sound.channels);
    text += R"(,"bits":16})";
}

} // namespace ipncsdk::api
