#include "storage/avi/AviRepair.h"

#include "platform/RawFile.h"
#include "storage/avi/AviFormat.h"

#include <algorithm>
#include <array>
#include <optional>

namespace corvanta::avi {

namespace {

using platform::RawFile;

constexpr double UsualRate = 25.0; // frames a second
constexpr std::size_t BeginningSize =
    13; // of a chunk: its header, and the start of a frame up to what tells its kind
constexpr std::size_t FlagsPosition = 44;
constexpr std::size_t RatePosition = 132;
constexpr std::size_t CompressorPosition = 112;
constexpr double Millionths = 1000000.0;

bool isPlaceholder(std::span<const std::byte> header) {
    return std::all_of(header.begin(), header.end(), [](std::byte byte) { return byte == std::byte{0}; });
}

/// The layout that `headerBytes` writes for one video stream: nobody else's has these texts at these places.
bool isOurs(std::span<const std::byte> header) {
    return hasText(header, 0, "RIFF") && hasText(header, 8, "AVI LIST") && hasText(header, 24, "avih") &&
           hasText(header, 100, "strh") && hasText(header, 108, "vids") && hasText(header, 164, "strf") &&
           hasText(header, 212, "LIST") && hasText(header, 220, "INFOISFT") && hasText(header, 296, "JUNK") &&
           hasText(header, 2036, "LIST") && hasText(header, 2044, "movi");
}

bool isIndexed(std::span<const std::byte> header) {
    return (readNumber(header, FlagsPosition) & FlagIndexed) != 0;
}

Header known(std::span<const std::byte> bytes) {
    Header header;
    header.framesPerSecond = UsualRate;
    if (isPlaceholder(bytes))
        return header;
    header.width = readNumber(bytes, 64);
    header.height = readNumber(bytes, 68);
    header.framesPerSecond = readNumber(bytes, RatePosition) / Millionths;
    for (std::size_t i = 0; i < header.compressor.size(); ++i)
        header.compressor[i] = static_cast<char>(bytes[CompressorPosition + i]);
    return header;
}

/// The whole chunks behind the header.
std::vector<IndexEntry> findChunks(RawFile& file, std::uint64_t fileSize) {
    std::vector<IndexEntry> chunks;
    std::uint64_t at = HeaderSize;
    while (at + ChunkHeaderSize <= fileSize && at < SizeLimit) {
        std::array<std::byte, BeginningSize> beginning{};
        const std::size_t got = file.readAt(at, beginning);
        const auto bytes = std::span<const std::byte>(beginning).first(got);
        if (got < ChunkHeaderSize || !hasText(bytes, 0, {VideoChunk.data(), VideoChunk.size()}))
            break;
        const std::uint32_t length = readNumber(bytes, 4);
        if (at + ChunkHeaderSize + length > fileSize)
            break;
        const auto frame = bytes.subspan(ChunkHeaderSize);
        const bool key = isKeyFrame(frame.first(std::min<std::size_t>(frame.size(), length)));
        chunks.push_back({VideoChunk, key ? FlagKeyFrame : 0, static_cast<std::uint32_t>(at), length});
        at += ChunkHeaderSize + static_cast<std::uint64_t>(length) + (length & 1U);
    }
    return chunks;
}

bool complete(RawFile& file, Header header, const std::vector<IndexEntry>& chunks) {
    header.videoFrames = static_cast<std::uint32_t>(chunks.size());
    header.moviEnd =
        chunks.back().position + static_cast<std::uint32_t>(ChunkHeaderSize) + padded(chunks.back().length);
    const std::vector<std::byte> index = indexBytes(chunks);
    header.fileSize = header.moviEnd + static_cast<std::uint32_t>(index.size());
    header.hasIndex = true;
    // The header comes last: until it is there, all of this is done again.
    return file.truncate(header.moviEnd) && file.seek(header.moviEnd) && file.write(index) && file.seek(0) &&
           file.write(headerBytes(header));
}

} // namespace

RepairResult repairAvi(const std::filesystem::path& path) {
    std::array<std::byte, HeaderSize> bytes{};
    {
        // Most files are whole; nobody is kept from them.
        const auto file = RawFile::open(path, RawFile::Access::Read);
        if (file == nullptr)
            return RepairResult::Failed;
        if (file->readAt(0, bytes) < HeaderSize)
            return isPlaceholder(bytes) ? RepairResult::Empty : RepairResult::Foreign;
    }
    if (!isPlaceholder(bytes) && !isOurs(bytes))
        return RepairResult::Foreign;
    if (!isPlaceholder(bytes) && isIndexed(bytes))
        return RepairResult::Complete;
    if (RawFile::isBeingWritten(path))
        return RepairResult::InUse;
    const auto file = RawFile::open(path, RawFile::Access::Update);
    if (file == nullptr)
        return RepairResult::Failed;
    const std::vector<IndexEntry> chunks = findChunks(*file, file->size());
    if (chunks.empty())
        return RepairResult::Empty;
    return complete(*file, known(bytes), chunks) ? RepairResult::Repaired : RepairResult::Failed;
}

} // namespace corvanta::avi
