#include "playback/UnfinishedAvi.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

namespace corvanta::playback {

namespace {

/// Where the frames begin in a file of this program whose header was never written: it is kept free until the end.
constexpr std::int64_t keptForHeader = 2048;
constexpr std::uint32_t largestFrame = 64U << 20; ///< bytes; a larger size is damage
constexpr std::int64_t longestSearch = 8LL << 20; ///< bytes of something else between two chunks
constexpr std::size_t lookInto = 64;              ///< bytes of a frame that tell whether it is a key frame
constexpr std::uint32_t usualRate = 25;           ///< frames a second, where no header tells

std::uint32_t littleEndian(const char* bytes) {
    std::uint32_t value = 0;
    for (int index = 3; index >= 0; --index)
        value = value << 8 | static_cast<std::uint8_t>(bytes[index]);
    return value;
}

bool is(const std::array<char, 4>& code, std::string_view text) {
    return std::equal(code.begin(), code.end(), text.begin(), text.end());
}

std::int64_t padded(std::uint32_t size) {
    return static_cast<std::int64_t>(size) + size % 2;
}

} // namespace

bool UnfinishedAvi::readAt(std::int64_t position, void* to, std::size_t count) {
    if (position < 0 || position + static_cast<std::int64_t>(count) > fileSize_)
        return false;
    file_.clear();
    file_.seekg(position);
    file_.read(static_cast<char*>(to), static_cast<std::streamsize>(count));
    return file_.good();
}

std::optional<UnfinishedAvi::Chunk> UnfinishedAvi::chunkAt(std::int64_t position) {
    std::array<char, 8> bytes{};
    if (!readAt(position, bytes.data(), bytes.size()))
        return std::nullopt;
    Chunk chunk;
    std::copy_n(bytes.begin(), 4, chunk.code.begin());
    chunk.size = littleEndian(bytes.data() + 4);
    return chunk;
}

bool UnfinishedAvi::open(const std::filesystem::path& file) {
    file_.open(file, std::ios::binary | std::ios::ate);
    if (!file_.is_open())
        return false;
    fileSize_ = static_cast<std::int64_t>(file_.tellg());
    stream_.complete = false;
    stream_.timeBase = {1, static_cast<int>(usualRate)};
    stream_.frameRate = {static_cast<int>(usualRate), 1};
    stream_.codec.reset(avcodec_parameters_alloc());
    const auto frames = readHeader();
    if (!frames || stream_.codec == nullptr || (codec_ != AV_CODEC_ID_H264 && codec_ != AV_CODEC_ID_MJPEG))
        return false;
    stream_.codec->codec_type = AVMEDIA_TYPE_VIDEO;
    stream_.codec->codec_id = codec_;
    walk(*frames);
    if (!tidyEntries(fileSize_))
        return false;
    readSize();
    return true;
}

/// Width and height, as the first key frame tells.
void UnfinishedAvi::readSize() {
    const Packet packet = newPacket();
    const Parser parser(av_parser_init(codec_));
    const CodecContext context(avcodec_alloc_context3(nullptr));
    if (parser == nullptr || context == nullptr || packet == nullptr || !read(0, *packet))
        return;
    parser->flags |= PARSER_FLAG_COMPLETE_FRAMES;
    std::uint8_t* frame = nullptr;
    int size = 0;
    av_parser_parse2(parser.get(), context.get(), &frame, &size, packet->data, packet->size, AV_NOPTS_VALUE,
                     AV_NOPTS_VALUE, packet->pos);
    stream_.codec->width = parser->width;
    stream_.codec->height = parser->height;
}

/// Where the frames begin; nothing when this is no AVI file.
std::optional<std::int64_t> UnfinishedAvi::readHeader() {
    std::array<char, 12> begin{};
    if (!readAt(0, begin.data(), begin.size()))
        return std::nullopt;
    if (std::all_of(begin.begin(), begin.end(), [](char byte) { return byte == 0; }))
        return keptForHeader;
    if (std::memcmp(begin.data(), "RIFF", 4) != 0 || std::memcmp(begin.data() + 8, "AVI ", 4) != 0)
        return std::nullopt;
    std::int64_t position = 12;
    while (const auto chunk = chunkAt(position)) {
        std::array<char, 4> kind{};
        if (is(chunk->code, "LIST") && readAt(position + 8, kind.data(), kind.size())) {
            if (is(kind, "movi"))
                return position + 12;
            if (is(kind, "hdrl"))
                readHeaderList(position + 12, position + 8 + padded(chunk->size));
        }
        position += 8 + padded(chunk->size);
    }
    return std::nullopt;
}

/// Number, rate and coding of the first video stream.
void UnfinishedAvi::readHeaderList(std::int64_t position, std::int64_t end) {
    for (int number = 0; position < end;) {
        const auto chunk = chunkAt(position);
        if (!chunk)
            return;
        std::array<char, 52> strl{}; // "strl", the stream header's code and size, and its first 40 bytes
        if (is(chunk->code, "LIST") && readAt(position + 8, strl.data(), strl.size()) &&
            std::memcmp(strl.data(), "strl", 4) == 0) {
            if (std::memcmp(strl.data() + 12, "vids", 4) == 0) {
                number_ = {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
                codec_ = AV_CODEC_ID_NONE;
                std::array<const AVCodecTag*, 2> tags{avformat_get_riff_video_tags(), nullptr};
                codec_ = av_codec_get_id(tags.data(), littleEndian(strl.data() + 16));
                const std::uint32_t scale = littleEndian(strl.data() + 32);
                const std::uint32_t rate = littleEndian(strl.data() + 36);
                constexpr std::uint32_t limit = std::numeric_limits<int>::max();
                if (scale > 0 && rate > 0 && scale <= limit && rate <= limit) {
                    stream_.timeBase = {static_cast<int>(scale), static_cast<int>(rate)};
                    stream_.frameRate = {static_cast<int>(rate), static_cast<int>(scale)};
                }
                return;
            }
            ++number;
        }
        position += 8 + padded(chunk->size);
    }
}

void UnfinishedAvi::walk(std::int64_t position) {
    std::int64_t frame = 0;
    while (position + 8 <= fileSize_) {
        const auto chunk = chunkAt(position);
        const bool known = chunk && chunk->size <= largestFrame &&
                           (std::isalnum(static_cast<unsigned char>(chunk->code[0])) != 0) &&
                           (std::isalnum(static_cast<unsigned char>(chunk->code[1])) != 0) &&
                           (std::isalnum(static_cast<unsigned char>(chunk->code[2])) != 0);
        if (!known) {
            const auto found = findChunk(position);
            if (!found)
                return;
            position = *found;
            continue;
        }
        if (is(chunk->code, "LIST")) {
            position += 12; // frames may be gathered in lists
            continue;
        }
        const bool ours = chunk->code[0] == number_[0] && chunk->code[1] == number_[1] && chunk->code[2] == 'd' &&
                          (chunk->code[3] == 'b' || chunk->code[3] == 'c');
        if (ours) {
            // An empty one stands for a picture that was left out.
            if (chunk->size > 0)
                entries_.push_back({frame, position + 8, chunk->size, isKeyFrame(position + 8, chunk->size), false});
            ++frame;
        }
        position += 8 + padded(chunk->size);
    }
}

/// The next place that looks like a frame of the video.
std::optional<std::int64_t> UnfinishedAvi::findChunk(std::int64_t position) {
    std::vector<char> window(1U << 16);
    const std::int64_t end = std::min(fileSize_, position + longestSearch);
    for (++position; position + 8 <= end; position += static_cast<std::int64_t>(window.size()) - 8) {
        const auto count = static_cast<std::size_t>(
            std::min<std::int64_t>(static_cast<std::int64_t>(window.size()), fileSize_ - position));
        if (!readAt(position, window.data(), count))
            return std::nullopt;
        for (std::size_t index = 0; index + 8 <= count; ++index) {
            const char* const at = window.data() + index;
            if (at[0] == number_[0] && at[1] == number_[1] && at[2] == 'd' && (at[3] == 'b' || at[3] == 'c') &&
                littleEndian(at + 4) <= largestFrame)
                return position + static_cast<std::int64_t>(index);
        }
    }
    return std::nullopt;
}

/// An H.264 frame that brings its sequence parameters or is an instantaneous refresh.
bool UnfinishedAvi::isKeyFrame(std::int64_t position, std::uint32_t size) {
    if (codec_ != AV_CODEC_ID_H264)
        return true;
    std::array<std::uint8_t, lookInto> bytes{};
    const std::size_t count = std::min<std::size_t>(size, bytes.size());
    if (!readAt(position, bytes.data(), count))
        return false;
    for (std::size_t index = 0; index + 3 < count; ++index) {
        if (bytes[index] == 0 && bytes[index + 1] == 0 && bytes[index + 2] == 1) {
            const int type = bytes[index + 3] & 0x1F;
            if (type == 7 || type == 5)
                return true;
        }
    }
    return false;
}

bool UnfinishedAvi::read(std::size_t entry, AVPacket& packet) {
    av_packet_unref(&packet);
    const Entry& place = entries_[entry];
    if (av_new_packet(&packet, static_cast<int>(place.size)) < 0)
        return false;
    packet.dts = place.stamp;
    packet.pos = place.position;
    packet.flags = place.keyFrame ? AV_PKT_FLAG_KEY : 0;
    return readAt(place.position, packet.data, static_cast<std::size_t>(place.size));
}

} // namespace corvanta::playback
