#pragma once

#include <string>
#include <string_view>

namespace ipncsdk::media {

/// Whether text may stand in a request's address: printable, without blanks, and of no more than 1000 bytes.
bool isAddressText(std::string_view text);
/// Compares without regard to the case of ASCII letters.
bool isSameWord(std::string_view left, std::string_view right);
/// The same text with small ASCII letters.
std::string inSmallLetters(std::string_view text);
/// Text without blanks and tabs around it.
std::string_view trimmed(std::string_view text);
/// Cuts off what stands before `separator`, and returns it trimmed; the whole rest when there is none.
std::string_view cutField(std::string_view& rest, char separator);
/// Reads a number that is the whole of the text; false, with `number` left as it was, when it is none within the
/// limits.
bool readNumber(std::string_view text, int lowest, int highest, int& number);

} // namespace ipncsdk::media
