#include "update/BodyDecoder.h"

#include <zlib.h>

#include <array>

namespace corvanta::update {
namespace {

constexpr std::size_t BlockSize = 65536; // bytes
constexpr int Wrapped = 32 + MAX_WBITS;  // zlib's or gzip's wrapping, whichever is there
constexpr int Bare = -MAX_WBITS;

/// Whether a "deflate" body begins with the wrapping that it should have; some servers send it without (RFC 1950).
bool beginsWrapped(const QByteArray& bytes) {
    const auto first = static_cast<unsigned char>(bytes.at(0));
    if (bytes.size() < 2)
        return (first & 0x0f) == Z_DEFLATED;
    const auto second = static_cast<unsigned char>(bytes.at(1));
    return (first & 0x0f) == Z_DEFLATED && (first * 256 + second) % 31 == 0;
}

} // namespace

struct BodyDecoder::Stream {
    bool isGzip = false;
    bool isBegun = false;
    bool isAtEnd = false; ///< of a member
    z_stream zlib{};
    std::array<char, BlockSize> block{};
};

BodyDecoder::BodyDecoder(const QByteArray& encoding, Sink sink)
    : sink_(std::move(sink)) {
    const QByteArray name = encoding.trimmed().toLower();
    if (name.isEmpty() || name == "identity")
        return;
    stream_ = std::make_unique<Stream>();
    stream_->isGzip = name == "gzip" || name == "x-gzip";
    known_ = stream_->isGzip || name == "deflate";
}

BodyDecoder::~BodyDecoder() {
    if (stream_ != nullptr && stream_->isBegun)
        inflateEnd(&stream_->zlib);
}

bool BodyDecoder::feed(const QByteArray& bytes) {
    if (failed_ || !known_)
        return false;
    if (!bytes.isEmpty())
        failed_ =
            stream_ != nullptr ? !inflate(bytes) : !sink_(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return !failed_;
}

bool BodyDecoder::begin(const QByteArray& bytes) {
    const bool isWrapped = stream_->isGzip || beginsWrapped(bytes);
    stream_->isBegun = inflateInit2(&stream_->zlib, isWrapped ? Wrapped : Bare) == Z_OK;
    return stream_->isBegun;
}

bool BodyDecoder::inflate(const QByteArray& bytes) {
    if (!stream_->isBegun && !begin(bytes))
        return false;
    z_stream& zlib = stream_->zlib;
    // The library takes its input without const and leaves it as it is.
    zlib.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.constData()));
    zlib.avail_in = static_cast<uInt>(bytes.size());
    do {
        if (stream_->isAtEnd) {
            if (zlib.avail_in == 0)
                return true;
            if (!stream_->isGzip || inflateReset(&zlib) != Z_OK) // only gzip has members in a row
                return false;
            stream_->isAtEnd = false;
        }
        zlib.next_out = reinterpret_cast<Bytef*>(stream_->block.data());
        zlib.avail_out = static_cast<uInt>(stream_->block.size());
        const int code = ::inflate(&zlib, Z_NO_FLUSH);
        if (code != Z_OK && code != Z_STREAM_END && code != Z_BUF_ERROR)
            return false;
        const std::size_t count = stream_->block.size() - zlib.avail_out;
        if (count > 0 && !sink_(stream_->block.data(), count))
            return false;
        stream_->isAtEnd = code == Z_STREAM_END;
    } while (zlib.avail_in > 0 || zlib.avail_out == 0);
    return true;
}

bool BodyDecoder::isComplete() const {
    return !failed_ && (stream_ == nullptr || !stream_->isBegun || stream_->isAtEnd);
}

} // namespace corvanta::update
