#include "storage/avi/AviFormat.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace corvanta::avi {

namespace {

constexpr std::uint32_t TrackListSize = 100; // bytes in the header
constexpr std::uint32_t FirstTrackPosition = 212;
constexpr std::uint32_t SoftwareNameSize = 64;
constexpr std::uint32_t InfoListSize = 84; // with the list's own header
constexpr double SlowestRate = 0.001;      // frames a second; what is below counts as unknown
constexpr double Millionths = 1000000.0;

/// Writes one value after another.
class HeaderText final {
public:
    void text(std::string_view text) {
        for (const char c : text)
            bytes_[at_++] = static_cast<std::byte>(c);
    }
    void characters(const FourCharacters& characters) { text({characters.data(), characters.size()}); }
    void number(std::uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes_[at_++] = static_cast<std::byte>(value >> shift);
    }
    void shortNumber(std::uint32_t value) {
        bytes_[at_++] = static_cast<std::byte>(value);
        bytes_[at_++] = static_cast<std::byte>(value >> 8U);
    }
    void numbers(std::initializer_list<std::uint32_t> values) {
        for (const std::uint32_t value : values)
            number(value);
    }
    void zeros(std::size_t count) { at_ += count; }
    std::size_t position() const { return at_; }
    const std::array<std::byte, HeaderSize>& bytes() const { return bytes_; }

private:
    std::array<std::byte, HeaderSize> bytes_{};
    std::size_t at_ = 0;
};

/// Halves are rounded up; what is written has always been made so.
std::uint32_t rounded(double value) {
    return static_cast<std::uint32_t>(std::floor(value + 0.5));
}

std::uint32_t microsecondsPerFrame(double framesPerSecond) {
    return framesPerSecond < SlowestRate ? 0 : rounded(Millionths / framesPerSecond);
}

std::uint32_t rateInMillionths(double framesPerSecond) {
    return framesPerSecond < SlowestRate ? 0 : rounded(framesPerSecond * Millionths);
}

/// Bytes of a sample of all channels; 4 at least, which readers of these files count on.
std::uint32_t sampleBytes(const AudioTrack& track) {
    return std::max<std::uint32_t>(4, track.channels * ((track.bits + 7U) / 8U));
}

void writeMainHeader(HeaderText& out, const Header& header) {
    out.text("avih");
    out.number(56);
    std::uint32_t flags = FlagInterleaved;
    if (header.hasIndex)
        flags |= FlagIndexed | (header.mustUseIndex ? FlagMustUseIndex : 0U);
    const auto streams = static_cast<std::uint32_t>(header.tracks.size()) + 1;
    out.numbers({microsecondsPerFrame(header.framesPerSecond), 0, 0, flags, header.videoFrames, 0, streams, 0,
                 header.width, header.height});
    out.zeros(16);
}

void writeVideoStream(HeaderText& out, const Header& header) {
    out.text("LIST");
    out.number(116);
    out.text("strlstrh");
    out.number(56);
    out.text("vids");
    out.characters(header.compressor);
    constexpr std::uint32_t scale = 1000000;
    constexpr std::uint32_t noQuality = 0xFFFFFFFF;
    out.numbers({0, 0, 0, scale, rateInMillionths(header.framesPerSecond), 0, header.videoFrames, 0, noQuality, 0});
    out.zeros(8);
    out.text("strf");
    out.numbers({40, 40, header.width, header.height});
    out.shortNumber(1);
    out.shortNumber(24);
    out.characters(header.compressor);
    out.number(header.width * header.height * 3);
    out.zeros(16);
}

void writeAudioStream(HeaderText& out, const AudioTrack& track) {
    const std::uint32_t sample = sampleBytes(track);
    const std::uint32_t bytesPerSecond = track.bitRate * 125;
    constexpr std::uint32_t noQuality = 0xFFFFFFFF;
    out.text("LIST");
    out.number(92);
    out.text("strlstrh");
    out.number(56);
    out.text("auds");
    out.numbers(
        {0, 0, 0, 0, sample / 4, bytesPerSecond, 0, 4 * track.bytesWritten / sample, 0, noQuality, sample / 4});
    out.zeros(8);
    out.text("strf");
    out.number(16);
    out.shortNumber(track.formatTag);
    out.shortNumber(track.channels);
    out.number(track.rate);
    out.number(bytesPerSecond);
    out.shortNumber(sample / 4);
    out.shortNumber(track.bits);
}

} // namespace

std::array<std::byte, HeaderSize> headerBytes(const Header& header) {
    const auto tracks = static_cast<std::uint32_t>(header.tracks.size());
    const std::uint32_t listsEnd = FirstTrackPosition + TrackListSize * tracks;
    const std::int64_t junk = static_cast<std::int64_t>(HeaderSize) - 20 - (listsEnd + InfoListSize);
    if (junk < 1) {
        std::fputs("AVI_close_output_file: # of header bytes too small\n", stderr);
        std::exit(1);
    }
    HeaderText out;
    out.text("RIFF");
    out.number(header.fileSize - 8);
    out.text("AVI LIST");
    out.number(listsEnd - 20);
    out.text("hdrl");
    writeMainHeader(out, header);
    writeVideoStream(out, header);
    for (const AudioTrack& track : header.tracks)
        writeAudioStream(out, track);
    out.text("LIST");
    out.number(SoftwareNameSize + 12);
    out.text("INFOISFT");
    out.number(SoftwareNameSize);
    out.zeros(SoftwareNameSize);
    out.text("JUNK");
    out.number(static_cast<std::uint32_t>(junk));
    out.zeros(static_cast<std::size_t>(junk));
    out.text("LIST");
    out.number(header.moviEnd - 2044);
    out.text("movi");
    return out.bytes();
}

FourCharacters compressorFromText(std::string_view text) {
    FourCharacters result{};
    if (!text.starts_with("RGB"))
        std::copy_n(text.begin(), std::min(text.size(), result.size()), result.begin());
    return result;
}

std::array<std::byte, ChunkHeaderSize> chunkHeader(const FourCharacters& chunk, std::uint32_t length) {
    std::array<std::byte, ChunkHeaderSize> result{};
    for (std::size_t i = 0; i < chunk.size(); ++i) {
        result[i] = static_cast<std::byte>(chunk[i]);
        result[i + 4] = static_cast<std::byte>(length >> (8 * i));
    }
    return result;
}

std::vector<std::byte> indexBytes(std::span<const IndexEntry> entries) {
    std::vector<std::byte> result;
    result.reserve(ChunkHeaderSize + entries.size() * IndexEntrySize);
    const auto append = [&result](const FourCharacters& chunk, std::initializer_list<std::uint32_t> numbers) {
        for (const char c : chunk)
            result.push_back(static_cast<std::byte>(c));
        for (const std::uint32_t number : numbers) {
            for (int shift = 0; shift < 32; shift += 8)
                result.push_back(static_cast<std::byte>(number >> shift));
        }
    };
    append({'i', 'd', 'x', '1'}, {static_cast<std::uint32_t>(entries.size() * IndexEntrySize)});
    for (const IndexEntry& entry : entries)
        append(entry.chunk, {entry.flags, entry.position, entry.length});
    return result;
}

FourCharacters audioChunk(int track) {
    // Two digits and what is left of four characters, as the format has always cut it.
    const std::string text = "0" + std::to_string(track) + "wb";
    FourCharacters result{};
    std::copy_n(text.begin(), result.size(), result.begin());
    return result;
}

std::uint32_t readNumber(std::span<const std::byte> bytes, std::size_t position) {
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < 4; ++i)
        result |= std::to_integer<std::uint32_t>(bytes[position + i]) << (8 * i);
    return result;
}

bool hasText(std::span<const std::byte> bytes, std::size_t position, std::string_view text) {
    return bytes.size() >= position + text.size() &&
           std::equal(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(position),
                      [](char c, std::byte byte) { return static_cast<std::byte>(c) == byte; });
}

} // namespace corvanta::avi
