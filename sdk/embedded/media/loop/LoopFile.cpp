#include "media/loop/LoopFile.h"

extern "C" {
#include <libavutil/crc.h>
}

#include <algorithm>
#include <string_view>

namespace ipncsdk::media {

namespace {

using Span = std::span<const std::uint8_t>;

constexpr std::string_view magic = "IPNCLOOP";
/// Raised whenever pictures, encoding or layout change, so that older files are made anew.
constexpr std::uint32_t version = 2;
constexpr std::size_t checkedFrom = 16; ///< what stands before it is magic, version and checksum

std::uint32_t checksum(Span bytes) {
    return av_crc(av_crc_get_table(AV_CRC_32_IEEE_LE), 0xFFFFFFFFU, bytes.data(), bytes.size()) ^ 0xFFFFFFFFU;
}

void putNumber(std::vector<std::uint8_t>& bytes, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
    }
}

/// Takes bytes off the front; once too few are left it is broken and gives nothing more.
class Taker {
public:
    explicit Taker(Span bytes)
        : rest_(bytes) {}

    Span bytes(std::size_t count) {
        if (count > rest_.size()) {
            rest_ = {};
            broken_ = true;
            return {};
        }
        const Span taken = rest_.first(count);
        rest_ = rest_.subspan(count);
        return taken;
    }
    std::uint32_t number() {
        const Span taken = bytes(4);
        return taken.empty()
                   ? 0
                   : taken[0] | static_cast<std::uint32_t>(taken[1]) << 8 |
                         static_cast<std::uint32_t>(taken[2]) << 16 | static_cast<std::uint32_t>(taken[3]) << 24;
    }
    bool broken() const { return broken_; }
    Span rest() const { return rest_; }

private:
    Span rest_;
    bool broken_ = false;
};

bool sameText(Span bytes, std::string_view text) {
    return std::equal(bytes.begin(), bytes.end(), text.begin(), text.end(),
                      [](std::uint8_t byte, char character) { return byte == static_cast<std::uint8_t>(character); });
}

} // namespace

std::vector<std::uint8_t> packLoop(const LoopKey& key, std::span<const std::shared_ptr<const Gop>> gops) {
    const std::string text = key.text();
    std::vector<std::uint8_t> file(magic.begin(), magic.end());
    putNumber(file, version);
    putNumber(file, 0);
    putNumber(file, static_cast<std::uint32_t>(text.size()));
    file.insert(file.end(), text.begin(), text.end());
    putNumber(file, static_cast<std::uint32_t>(key.length()));
    for (const auto& gop : gops) {
        for (const std::uint32_t size : gop->sizes) {
            putNumber(file, size);
        }
    }
    for (const auto& gop : gops) {
        file.insert(file.end(), gop->bytes.begin(), gop->bytes.end());
    }
    std::vector<std::uint8_t> sum;
    putNumber(sum, checksum(Span(file).subspan(checkedFrom)));
    std::copy(sum.begin(), sum.end(), file.begin() + checkedFrom - 4);
    return file;
}

std::vector<std::shared_ptr<const Gop>> unpackLoop(const LoopKey& key, Span file) {
    Taker taker(file);
    const bool known = sameText(taker.bytes(magic.size()), magic) && taker.number() == version;
    const std::uint32_t sum = taker.number();
    if (!known || taker.broken() || checksum(taker.rest()) != sum) {
        return {};
    }
    const Span text = taker.bytes(taker.number());
    if (!sameText(text, key.text()) || taker.number() != static_cast<std::uint32_t>(key.length())) {
        return {};
    }
    Taker sizes(taker.bytes(std::size_t{4} * static_cast<std::size_t>(key.length())));
    std::vector<std::shared_ptr<const Gop>> gops;
    for (int first = 0; first < key.length(); first += loopGopLength) {
        auto gop = std::make_shared<Gop>();
        for (int frame = 0; frame < loopGopLength; ++frame) {
            const std::uint32_t size = sizes.number();
            const Span bytes = taker.bytes(size);
            gop->bytes.insert(gop->bytes.end(), bytes.begin(), bytes.end());
            gop->sizes.push_back(size);
        }
        gops.push_back(std::move(gop));
    }
    if (sizes.broken() || taker.broken() || !taker.rest().empty()) {
        return {};
    }
    return gops;
}

} // namespace ipncsdk::media
