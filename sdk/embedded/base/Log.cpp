#include "base/Log.h"

#include <cstdio>
#include <string>

namespace ipncsdk {

namespace {
constexpr std::size_t longestLine = 1000;
}

void logLine(std::string_view text) {
    std::string line = "ipncsdk: ";
    line.append(text.substr(0, longestLine));
    for (char& c : line) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = ' ';
    }
    if (text.size() > longestLine)
        line += " ...";
    line += '\n';
    // One call for the whole line: the stream's own lock keeps lines of several threads apart.
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace ipncsdk
