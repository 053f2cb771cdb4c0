#include "store/StoreKey.h"

#include "base/PrivateFile.h"

#include <sodium.h>

#include <array>
#include <utility>
#include <vector>

namespace ipncsdk::store {

namespace {

constexpr std::size_t secretBytes = crypto_secretbox_KEYBYTES;
constexpr int base64Variant = sodium_base64_VARIANT_ORIGINAL;

const unsigned char* bytesOf(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

std::string hexOf(const unsigned char* bytes, std::size_t count) {
    std::vector<char> text(count * 2 + 1);
    sodium_bin2hex(text.data(), text.size(), bytes, count);
    return text.data();
}

/// Nothing when the text is not the hexadecimal form of a secret.
std::optional<std::string> secretOf(const std::string& text) {
    std::string secret(secretBytes, '\0');
    std::size_t length = 0;
    const char* end = nullptr;
    const int failed = sodium_hex2bin(reinterpret_cast<unsigned char*>(secret.data()), secret.size(), text.data(),
                                      text.size(), "\n", &length, &end);
    if (failed != 0 || length != secretBytes || end != text.data() + text.size())
        return std::nullopt;
    return secret;
}

std::string newSecret() {
    std::array<unsigned char, secretBytes> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    return hexOf(bytes.data(), bytes.size()) + "\n";
}

} // namespace

StoreKey::StoreKey(std::string secret)
    : secret_(std::move(secret)) {}

StoreKey StoreKey::beside(const std::filesystem::path& storeFile) {
    std::filesystem::path file = storeFile;
    file += ".key";
    const auto text =
        madeOnce(file, newSecret, [](const std::string& content) { return secretOf(content).has_value(); });
    return text ? StoreKey(*secretOf(*text)) : StoreKey();
}

std::optional<std::string> StoreKey::seal(const std::string& text) const {
    if (!isUsable())
        return std::nullopt;
    std::vector<unsigned char> box(crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES + text.size());
    randombytes_buf(box.data(), crypto_secretbox_NONCEBYTES);
    crypto_secretbox_easy(box.data() + crypto_secretbox_NONCEBYTES, bytesOf(text), text.size(), box.data(),
                          bytesOf(secret_));
    std::vector<char> sealed(sodium_base64_encoded_len(box.size(), base64Variant));
    sodium_bin2base64(sealed.data(), sealed.size(), box.data(), box.size(), base64Variant);
    return std::string(sealed.data());
}

std::optional<std::string> StoreKey::open(const std::string& sealed) const {
    constexpr std::size_t head = crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES;
    std::vector<unsigned char> box(sealed.size());
    std::size_t length = 0;
    const char* end = nullptr;
    const int failed = sodium_base642bin(box.data(), box.size(), sealed.data(), sealed.size(), nullptr, &length, &end,
                                         base64Variant);
    if (!isUsable() || failed != 0 || end != sealed.data() + sealed.size() || length < head)
        return std::nullopt;
    std::string text(length - head, '\0');
    if (crypto_secretbox_open_easy(reinterpret_cast<unsigned char*>(text.data()),
                                   box.data() + crypto_secretbox_NONCEBYTES, length - crypto_secretbox_NONCEBYTES,
                                   box.data(), bytesOf(secret_)) != 0)
        return std::nullopt;
    return text;
}

std::optional<std::string> StoreKey::hash(const std::string& text) const {
    if (!isUsable())
        return std::nullopt;
    std::array<unsigned char, crypto_generichash_BYTES> bytes{};
    crypto_generichash(bytes.data(), bytes.size(), bytesOf(text), text.size(), bytesOf(secret_), secret_.size());
    return hexOf(bytes.data(), bytes.size());
}

} // namespace ipncsdk::store
