#include "media/loop/LoopFormat.h"

#include "media/loop/MeasuringPainter.h"

extern "C" {
#include <libavutil/mem.h>
#include <libavutil/sha.h>
}

#include <array>
#include <memory>

namespace ipncsdk::media {

int LoopKey::length() const {
    return isMeasuringScene(source.scene) ? MeasuringPainter::lengthOf(source.scene, exhibit) : loopLength;
}

std::string LoopKey::text() const {
    const std::string shown = exhibit == 0 ? std::string() : '.' + std::to_string(exhibit);
    // The title comes last, so that whatever it holds cannot look like another field.
    return std::to_string(source.scene) + shown + '/' +
           std::to_string(source.phase % static_cast<unsigned>(length())) + '/' +
           std::to_string(static_cast<int>(quality)) + '/' + source.title;
}

std::string LoopKey::fileName() const {
    struct Free {
        void operator()(AVSHA* sha) const { av_free(sha); }
    };
    const std::unique_ptr<AVSHA, Free> sha(av_sha_alloc());
    std::array<std::uint8_t, 32> digest{};
    const std::string bytes = text();
    av_sha_init(sha.get(), 256);
    av_sha_update(sha.get(), reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    av_sha_final(sha.get(), digest.data());
    constexpr const char* digits = "0123456789abcdef";
    std::string name;
    for (std::size_t index = 0; index < 16; ++index) {
        name += digits[digest[index] >> 4];
        name += digits[digest[index] & 15];
    }
    return name + ".loop";
}

} // namespace ipncsdk::media
