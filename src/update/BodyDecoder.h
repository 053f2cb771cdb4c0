#pragma once

#include <QByteArray>

#include <functional>
#include <memory>

namespace corvanta::update {

/// Undoes the compression of an HTTP body, piece by piece: "gzip" (also several members in a row), "deflate" (with or
/// without its wrapping), none. A request that asks for compressed bodies by itself must do that by itself.
class BodyDecoder final {
public:
    /// Takes decoded bytes; false ends the decoding as failed.
    using Sink = std::function<bool(const char* data, std::size_t count)>;

    /// `encoding` is the value of the header "Content-Encoding". See `isKnown`.
    BodyDecoder(const QByteArray& encoding, Sink sink);
    ~BodyDecoder();
    BodyDecoder(const BodyDecoder&) = delete;
    BodyDecoder& operator=(const BodyDecoder&) = delete;

    /// Whether it can decode what it was made for.
    bool isKnown() const { return known_; }
    /// Decodes the next bytes. False when they are damaged or the sink has refused; from then on always.
    bool feed(const QByteArray& bytes);
    /// Whether the body ended where its compression says that it ends.
    bool isComplete() const;

private:
    struct Stream;
    bool inflate(const QByteArray& bytes);
    bool begin(const QByteArray& bytes);

    Sink sink_;
    bool known_ = true;
    bool failed_ = false;
    std::unique_ptr<Stream> stream_; ///< none when the body is as it is
};

} // namespace corvanta::update
