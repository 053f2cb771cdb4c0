#include "media/PictureHeader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <istream>
#include <limits>
#include <span>

namespace ipncsdk::media {

namespace {

constexpr std::array<std::uint8_t, 8> pngMark = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};

template <std::size_t Size>
bool read(std::istream& file, std::array<std::uint8_t, Size>& bytes) {
    return static_cast<bool>(file.read(reinterpret_cast<char*>(bytes.data()), Size));
}

std::uint32_t bigEndian(std::span<const std::uint8_t> bytes) {
    std::uint32_t value = 0;
    for (const std::uint8_t byte : bytes)
        value = value << 8U | byte;
    return value;
}

/// The check sum of PNG's chunks: CRC-32 as in ISO 3309.
std::uint32_t crcOf(std::span<const std::uint8_t> bytes) {
    constexpr std::uint32_t polynomial = 0xEDB88320U;
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const std::uint8_t byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) != 0 ? crc >> 1U ^ polynomial : crc >> 1U;
    }
    return ~crc;
}

/// Behind the mark stands the chunk IHDR: length, name, width, height, five bytes on the form, check sum.
std::optional<PictureHeader> pngHeader(std::istream& file) {
    std::array<std::uint8_t, 25> bytes{};
    if (!read(file, bytes))
        return std::nullopt;
    const std::span all(bytes);
    constexpr std::array<std::uint8_t, 4> name = {'I', 'H', 'D', 'R'};
    if (bigEndian(all.first<4>()) != 13 || !std::equal(name.begin(), name.end(), bytes.begin() + 4) ||
        crcOf(all.subspan<4, 17>()) != bigEndian(all.last<4>()))
        return std::nullopt;
    const PictureHeader header{PictureHeader::Kind::Png, bigEndian(all.subspan<8, 4>()),
                               bigEndian(all.subspan<12, 4>())};
    constexpr std::uint32_t widest = std::numeric_limits<std::int32_t>::max();
    const bool sized = header.width > 0 && header.width <= widest && header.height > 0 && header.height <= widest;
    return sized ? std::make_optional(header) : std::nullopt;
}

bool standsAlone(std::uint8_t marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7);
}

/// A frame header is SOF0 to SOF15, among which three markers are of another kind (DHT, JPG, DAC).
bool isFrame(std::uint8_t marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Segments follow one another until the frame header: 0xFF, marker, length with its own two bytes.
std::optional<PictureHeader> jpegHeader(std::istream& file) {
    while (file) {
        std::array<std::uint8_t, 1> byte{};
        if (!read(file, byte) || byte[0] != 0xFF)
            return std::nullopt;
        // Any number of fill bytes may stand before a marker.
        while (byte[0] == 0xFF) {
            if (!read(file, byte))
                return std::nullopt;
        }
        const std::uint8_t marker = byte[0];
        if (standsAlone(marker))
            continue;
        std::array<std::uint8_t, 2> length{};
        // The data of a scan, or the end, comes behind the frame header only.
        if (marker == 0xDA || marker == 0xD9 || !read(file, length) || bigEndian(length) < 2)
            return std::nullopt;
        if (!isFrame(marker)) {
            file.seekg(static_cast<std::streamoff>(bigEndian(length)) - 2, std::ios::cur);
            continue;
        }
        std::array<std::uint8_t, 6> frame{}; // precision, height, width, number of components
        if (!read(file, frame) || bigEndian(length) != 8U + 3U * frame[5])
            return std::nullopt;
        const std::span all(frame);
        const PictureHeader header{PictureHeader::Kind::Jpeg, bigEndian(all.subspan<3, 2>()),
                                   bigEndian(all.subspan<1, 2>())};
        return header.width > 0 && header.height > 0 ? std::make_optional(header) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::optional<PictureHeader> readPictureHeader(std::istream& file) {
    std::array<std::uint8_t, 2> mark{};
    if (!read(file, mark))
        return std::nullopt;
    if (mark[0] == 0xFF && mark[1] == 0xD8)
        return jpegHeader(file);
    std::array<std::uint8_t, 6> rest{};
    const bool png = std::equal(mark.begin(), mark.end(), pngMark.begin()) && read(file, rest) &&
                     std::equal(rest.begin(), rest.end(), pngMark.begin() + 2);
    return png ? pngHeader(file) : std::nullopt;
}

} // namespace ipncsdk::media
