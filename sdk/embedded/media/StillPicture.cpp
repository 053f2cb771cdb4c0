#include "media/StillPicture.h"

#include "media/Ffmpeg.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace ipncsdk::media {

namespace {

constexpr std::int64_t mostPixels = std::int64_t{64} * 1000 * 1000;
constexpr std::array<std::uint8_t, 8> pngMark = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr std::array<std::uint8_t, 3> jpegMark = {0xff, 0xd8, 0xff};

template <std::size_t Size>
bool beginsWith(std::span<const std::uint8_t> bytes, const std::array<std::uint8_t, Size>& mark) {
    return bytes.size() >= Size && std::equal(mark.begin(), mark.end(), bytes.begin());
}

AVCodecID codecOf(std::span<const std::uint8_t> bytes) {
    if (beginsWith(bytes, pngMark))
        return AV_CODEC_ID_PNG;
    return beginsWith(bytes, jpegMark) ? AV_CODEC_ID_MJPEG : AV_CODEC_ID_NONE;
}

} // namespace

bool isStillPicture(std::span<const std::uint8_t> bytes) {
    const AVCodecID id = codecOf(bytes);
    if (id == AV_CODEC_ID_NONE || bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max() / 2))
        return false;
    const AVCodec* codec = avcodec_find_decoder(id);
    const CodecContext context(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    const Frame frame(av_frame_alloc());
    const Packet packet(av_packet_alloc());
    if (context == nullptr || frame == nullptr || packet == nullptr ||
        av_new_packet(packet.get(), static_cast<int>(bytes.size())) < 0)
        return false;
    std::memcpy(packet->data, bytes.data(), bytes.size());
    context->thread_count = 1;
    context->max_pixels = mostPixels;
    // A picture that is cut off or damaged is none.
    context->err_recognition = AV_EF_EXPLODE | AV_EF_CRCCHECK;
    return avcodec_open2(context.get(), codec, nullptr) == 0 &&
           avcodec_send_packet(context.get(), packet.get()) == 0 &&
           avcodec_send_packet(context.get(), nullptr) == 0 &&
           avcodec_receive_frame(context.get(), frame.get()) == 0 && frame->width > 0 && frame->height > 0 &&
           frame->decode_error_flags == 0;
}

} // namespace ipncsdk::media
