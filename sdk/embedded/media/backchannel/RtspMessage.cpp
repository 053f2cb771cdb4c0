#include "media/backchannel/RtspMessage.h"

#include <algorithm>

namespace ipncsdk::media {

namespace {

char small(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

} // namespace

std::string_view RtspResponse::header(std::string_view name) const {
    const auto found =
        std::find_if(headers.begin(), headers.end(), [&](const auto& header) { return header.first == name; });
    return found == headers.end() ? std::string_view() : std::string_view(found->second);
}

std::string RtspRequest::text(int sequence) const {
    std::string text = method + ' ' + url + " RTSP/1.0\r\nCSeq: " + std::to_string(sequence) + "\r\n";
    for (const auto& [name, value] : headers) {
        text += name + ": " + value + "\r\n";
    }
    return text + "\r\n";
}

bool isAddressText(std::string_view text) {
    constexpr std::size_t longest = 1000;
    return !text.empty() && text.size() <= longest && std::all_of(text.begin(), text.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte > 0x20 && byte < 0x7F;
    });
}

bool isSameWord(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return small(one) == small(other); });
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string_view cutField(std::string_view& rest, char separator) {
    const std::size_t end = std::min(rest.find(separator), rest.size());
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(std::min(rest.size(), end + 1));
    return trimmed(field);
}

} // namespace ipncsdk::media
