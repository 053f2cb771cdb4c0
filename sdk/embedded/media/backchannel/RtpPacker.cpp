#include "media/backchannel/RtpPacker.h"

#include <utility>

namespace ipncsdk::media {

namespace {

void append(std::string& packet, std::uint32_t number, int bytes) {
    for (int byte = bytes - 1; byte >= 0; --byte) {
        packet += static_cast<char>(static_cast<unsigned char>(number >> (8 * byte) & 0xFFU));
    }
}

} // namespace

std::string RtpPacker::pack(std::span<const std::uint8_t> samples) {
    constexpr std::uint32_t headSize = 12;
    constexpr std::uint32_t version = 2U << 6;
    constexpr std::uint32_t marker = 0x80;
    const auto size = static_cast<std::uint32_t>(samples.size());
    std::string packet(1, '$');
    packet.reserve(samples.size() + headSize + 4);
    append(packet, channel_, 1);
    append(packet, headSize + size, 2);
    append(packet, version, 1);
    append(packet, (std::exchange(begins_, false) ? marker : 0U) | payloadType_, 1);
    append(packet, next_.number++, 2);
    append(packet, next_.time, 4);
    append(packet, next_.source, 4);
    packet.append(reinterpret_cast<const char*>(samples.data()), samples.size());
    next_.time += size;
    return packet;
}

void RtpPacker::pass(std::uint32_t samples) {
    next_.time += samples;
    begins_ = true;
}

} // namespace ipncsdk::media
