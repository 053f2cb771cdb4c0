#include "service/ComputerId.h"

#include "base/PrivateFile.h"

#include <sodium.h>

#include <algorithm>
#include <array>

namespace ipncsdk::service {

namespace {

constexpr std::size_t idBytes = 16;

std::string newId() {
    std::array<unsigned char, idBytes> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    std::array<char, idBytes * 2 + 1> text{};
    sodium_bin2hex(text.data(), text.size(), bytes.data(), bytes.size());
    return text.data();
}

bool isId(const std::string& text) {
    return text.size() == idBytes * 2 && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

} // namespace

std::string computerId(const std::filesystem::path& root) {
    return madeOnce(root / "config" / "computer.id", newId, isId).value_or(newId());
}

} // namespace ipncsdk::service
