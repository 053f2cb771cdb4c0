#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace ipncsdk::store {

/// The secret that belongs to a store and stands in a file beside it, so that the store alone gives nothing away.
/// Thread-safe.
class StoreKey final {
public:
    /// Without a secret: nothing can be sealed, opened or hashed.
    StoreKey() = default;

    /// Reads the key file of the store's file, which is made when it is missing.
    static StoreKey beside(const std::filesystem::path& storeFile);

    [[nodiscard]] bool isUsable() const { return !secret_.empty(); }

    /// Encrypts and authenticates a text (libsodium's secretbox); the result is plain characters. Nothing without a
    /// secret.
    [[nodiscard]] std::optional<std::string> seal(const std::string& text) const;
    /// The text that was sealed; nothing when it was sealed with another secret or has been changed.
    [[nodiscard]] std::optional<std::string> open(const std::string& sealed) const;
    /// A keyed hash (BLAKE2b) in hexadecimal digits. Nothing without a secret.
    [[nodiscard]] std::optional<std::string> hash(const std::string& text) const;

private:
    explicit StoreKey(std::string secret);

    std::string secret_; ///< bytes; empty or of the length that sealing wants
};

} // namespace ipncsdk::store
