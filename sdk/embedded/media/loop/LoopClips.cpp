#include "media/loop/LoopClips.h"

#include "media/H264Decoder.h"
#include "media/JpegEncoder.h"
#include "media/MemoryMuxer.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <span>
#include <utility>

namespace ipncsdk::media {

namespace {

using Gops = std::vector<std::shared_ptr<const Gop>>;

/// The parameter sets in front of a key frame's slices.
std::span<const std::uint8_t> parameterSets(const Gop& gop) {
    const std::span<const std::uint8_t> frame(gop.bytes.data(), gop.sizes.front());
    for (std::size_t index = 0; index + 4 < frame.size(); ++index) {
        const bool startCode =
            frame[index] == 0 && frame[index + 1] == 0 && frame[index + 2] == 0 && frame[index + 3] == 1;
        const int type = frame[index + 4] & 31;
        if (startCode && type != 7 && type != 8) {
            return frame.first(index);
        }
    }
    return {};
}

std::vector<std::uint8_t> video(const LoopKey& key, const Gops& gops, LoopClips::Format format) {
    const bool mp4 = format == LoopClips::Format::Mp4;
    MemoryMuxer muxer(mp4 ? "mp4" : "avi", loopFrameRate);
    // In an AVI file they stand before every key frame alone.
    const auto head = mp4 ? parameterSets(*gops.front()) : std::span<const std::uint8_t>();
    if (!muxer.begin(key.width(), key.height(), head)) {
        return {};
    }
    std::int64_t number = 0;
    for (const auto& gop : gops) {
        std::size_t offset = 0;
        for (std::size_t index = 0; index < gop->sizes.size(); ++index) {
            if (!muxer.write({gop->bytes.data() + offset, gop->sizes[index]}, index == 0, number++)) {
                return {};
            }
            offset += gop->sizes[index];
        }
    }
    return muxer.finish();
}

} // namespace

LoopClips::LoopClips(std::filesystem::path folder, Log log)
    : library_(std::move(folder), std::move(log)) {}

std::vector<std::uint8_t> LoopClips::make(const LoopSource& source, const Clip& clip, const Cancelled& cancelled) {
    const LoopKey key{source, Quality::Light};
    const std::shared_ptr<Loop> loop = library_.acquire(key);
    Gops gops;
    const std::size_t count = clip.format == Format::Jpeg ? 1 : std::max<std::size_t>(clip.seconds, 1);
    while (gops.size() < count) {
        auto gop = loop->gop((clip.firstGop + gops.size()) % key.gopCount(), std::chrono::milliseconds(50));
        if (gop != nullptr) {
            gops.push_back(std::move(gop));
        } else if (loop->failed() || cancelled()) {
            return {};
        }
    }
    if (clip.format != Format::Jpeg) {
        return video(key, gops, clip.format);
    }
    H264Decoder decoder;
    decoder.feed({gops.front()->bytes.data(), gops.front()->sizes.front(), true, {}});
    decoder.finish();
    Picture picture;
    return decoder.take(picture) ? encodeJpeg(picture) : std::vector<std::uint8_t>();
}

} // namespace ipncsdk::media
