#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace ipncsdk {

namespace {

constexpr std::size_t longestDeviceId = 64;

struct Decoded {
    std::uint32_t character;
    std::size_t bytes;
};

/// The character at the start of `text`, which is not empty.
std::optional<Decoded> decode(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80)
        return Decoded{lead, 1};
    std::size_t bytes = 0;
    std::uint32_t character = 0;
    std::uint32_t smallest = 0;
    if (lead >= 0xc2 && lead < 0xe0) {
        bytes = 2;
        character = lead & 0x1fU;
        smallest = 0x80;
    } else if (lead >= 0xe0 && lead < 0xf0) {
        bytes = 3;
        character = lead & 0x0fU;
        smallest = 0x800;
    } else if (lead >= 0xf0 && lead < 0xf5) {
        bytes = 4;
        character = lead & 0x07U;
        smallest = 0x10000;
    } else {
        return std::nullopt;
    }
    if (text.size() < bytes)
        return std::nullopt;
    for (std::size_t i = 1; i < bytes; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xc0U) != 0x80U)
            return std::nullopt;
        character = (character << 6U) | (next & 0x3fU);
    }
    const bool surrogate = character >= 0xd800 && character <= 0xdfff;
    if (character < smallest || character > 0x10ffff || surrogate)
        return std::nullopt;
    return Decoded{character, bytes};
}

bool isControl(std::uint32_t character) {
    return character < 0x20 || (character >= 0x7f && character < 0xa0) || character == 0x2028 || character == 0x2029;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

std::optional<std::size_t> characterCount(std::string_view text) {
    std::size_t count = 0;
    while (!text.empty()) {
        const auto decoded = decode(text);
        if (!decoded)
            return std::nullopt;
        text.remove_prefix(decoded->bytes);
        ++count;
    }
    return count;
}

bool isPlainText(std::string_view text, std::size_t longest) {
    std::size_t count = 0;
    while (!text.empty()) {
        const auto decoded = decode(text);
        if (!decoded || isControl(decoded->character) || ++count > longest)
            return false;
        text.remove_prefix(decoded->bytes);
    }
    return true;
}

bool isDeviceId(std::string_view text) {
    return isFileName(text, longestDeviceId);
}

bool isFileName(std::string_view text, std::size_t longest) {
    if (text.empty() || !isPlainText(text, longest))
        return false;
    if (text.find_first_of("/\\:*?\"<>|") != std::string_view::npos || text.find("..") != std::string_view::npos)
        return false;
    const auto isEdge = [](char c) {
        return c == '.' || c == ' ';
    };
    return !isEdge(text.front()) && !isEdge(text.back());
}

bool isPhoneNumber(std::string_view text) {
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    return text.size() >= 5 && text.size() <= 20 && std::all_of(text.begin(), text.end(), isDigit);
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        unsigned value = 0;
        const char* const begin = text.data() + index + 1;
        if (text[index] == '%' && index + 2 < text.size() &&
            std::from_chars(begin, begin + 2, value, 16).ptr == begin + 2) {
            result += static_cast<char>(value);
            index += 2;
        } else {
            result += text[index];
        }
    }
    return result;
}

} // namespace ipncsdk
