#include "media/backchannel/RtspText.h"

#include <algorithm>
#include <charconv>

namespace ipncsdk::media {

namespace {

char small(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

} // namespace

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

bool readNumber(std::string_view text, int lowest, int highest, int& number) {
    int read = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, read);
    const bool good = result.ec == std::errc() && result.ptr == end && read >= lowest && read <= highest;
    number = good ? read : number;
    return good;
}

std::string inSmallLetters(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), small);
    return result;
}

} // namespace ipncsdk::media
