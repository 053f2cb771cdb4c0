#pragma once

#include <sodium.h>

#include <cstddef>
#include <span>
#include <string>

namespace ipncsdk::store {

/// The SHA-256 of a content that comes piece by piece.
class ContentHash final {
public:
    ContentHash();
    ContentHash(const ContentHash&) = delete;
    ContentHash& operator=(const ContentHash&) = delete;

    void add(std::span<const unsigned char> bytes);
    /// In 64 digits, small letters. To be called once, at the end.
    std::string take();

    static std::string of(std::span<const unsigned char> bytes);

private:
    crypto_hash_sha256_state state_{};
};

} // namespace ipncsdk::store
