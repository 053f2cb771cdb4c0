#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace ipncsdk::media {

/// Takes one line of diagnostics; called on any thread. Empty: nobody listens.
using Log = std::function<void(const std::string&)>;

/// Outside text in a form that may stand in a line: control characters become '?', and long text is cut.
inline std::string loggable(std::string_view text) {
    constexpr std::size_t longest = 80;
    std::string line(text.substr(0, longest));
    for (char& character : line) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7F) {
            character = '?';
        }
    }
    return line;
}

} // namespace ipncsdk::media
