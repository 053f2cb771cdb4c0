#include "store/ContentHash.h"

#include <array>

namespace ipncsdk::store {

ContentHash::ContentHash() {
    crypto_hash_sha256_init(&state_);
}

void ContentHash::add(std::span<const unsigned char> bytes) {
    crypto_hash_sha256_update(&state_, bytes.data(), bytes.size());
}

std::string ContentHash::take() {
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    std::array<char, crypto_hash_sha256_BYTES * 2 + 1> text{};
    crypto_hash_sha256_final(&state_, hash.data());
    sodium_bin2hex(text.data(), text.size(), hash.data(), hash.size());
    return text.data();
}

std::string ContentHash::of(std::span<const unsigned char> bytes) {
    ContentHash hash;
    hash.add(bytes);
    return hash.take();
}

} // namespace ipncsdk::store
