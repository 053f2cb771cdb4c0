#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// The layout of the AVI files that recordings are kept in: a header of 2048 bytes, the "movi" chunks, the "idx1"
/// chunk. Numbers are little-endian, 32 bits wide unless said otherwise; positions are counted from the file's start.
namespace corvanta::avi {

constexpr std::size_t HeaderSize = 2048;
constexpr std::size_t ChunkHeaderSize = 8; ///< four characters, length of the data
constexpr std::size_t IndexEntrySize = 16; ///< four characters, flags, position, length
constexpr std::size_t MoviSizePosition = 2040;
constexpr std::uint32_t FlagIndexed = 0x10; ///< in the main header: the file has its index
constexpr std::uint32_t FlagMustUseIndex = 0x20;
constexpr std::uint32_t FlagInterleaved = 0x100;
constexpr std::uint32_t FlagKeyFrame = 0x10; ///< in an index entry
/// What a file must stay below, its index included: 4 GiB - 16 MiB - 2 KiB.
constexpr std::uint64_t SizeLimit = 0xFEFFF800;

using FourCharacters = std::array<char, 4>;
constexpr FourCharacters VideoChunk{'0', '0', 'd', 'b'};

/// A sound track, as far as the header tells of it. Recordings made here have none.
struct AudioTrack {
    std::uint16_t formatTag = 1; ///< 1: PCM
    std::uint16_t channels = 1;
    std::uint32_t rate = 8000; ///< samples a second
    std::uint16_t bits = 16;   ///< of a sample
    std::uint32_t bitRate = 0; ///< kbit/s
    std::uint32_t bytesWritten = 0;
};

struct IndexEntry {
    FourCharacters chunk = VideoChunk;
    std::uint32_t flags = 0;
    std::uint32_t position = 0; ///< of the chunk's four characters
    std::uint32_t length = 0;   ///< of the chunk's data
};

/// Everything that the header says.
struct Header {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    double framesPerSecond = 0.0;
    FourCharacters compressor{'H', '2', '6', '4'};
    std::uint32_t videoFrames = 0;
    std::uint32_t moviEnd = HeaderSize;  ///< position behind the last chunk of "movi"
    std::uint32_t fileSize = HeaderSize; ///< the index included
    bool hasIndex = false;
    bool mustUseIndex = false;
    std::vector<AudioTrack> tracks;
};

/// The bytes of the header. Ends the process with status 1 when there are more tracks than 2048 bytes hold (17): a
/// file that lies about its tracks is worse than none, and its users count on that.
std::array<std::byte, HeaderSize> headerBytes(const Header& header);

/// What `headerBytes` writes for the compressor: "RGB..." is stored as four zero bytes.
FourCharacters compressorFromText(std::string_view text);

/// A chunk's four characters and length.
std::array<std::byte, ChunkHeaderSize> chunkHeader(const FourCharacters& chunk, std::uint32_t length);

/// The whole "idx1" chunk.
std::vector<std::byte> indexBytes(std::span<const IndexEntry> entries);

/// The characters of a track's chunks, counted from 1: "01wb".
FourCharacters audioChunk(int track);

/// Chunks begin at even positions.
constexpr std::uint32_t padded(std::uint32_t length) {
    return length + (length & 1U);
}

std::uint32_t readNumber(std::span<const std::byte> bytes, std::size_t position);
bool hasText(std::span<const std::byte> bytes, std::size_t position, std::string_view text);

/// Whether a frame of H.264 in the form that recordings keep (start codes of four bytes) is a key frame: it begins
/// with a sequence parameter set.
constexpr bool isKeyFrame(std::span<const std::byte> frame) {
    constexpr std::size_t afterStartCode = 4;
    constexpr std::byte sequenceParameterSet{0x67};
    return frame.size() > afterStartCode && frame[afterStartCode] == sequenceParameterSet;
}

} // namespace corvanta::avi
