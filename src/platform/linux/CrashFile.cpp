#include "platform/linux/CrashFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace corvanta::platform {

namespace {

constexpr const char* mapsFile = "/proc/self/maps";

ssize_t readSome(int descriptor, char* data, std::size_t size) {
    ssize_t count = 0;
    do {
        count = read(descriptor, data, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

/// A line of the mappings: "start-end permissions offset device inode   path".
struct Mapping {
    std::uint64_t start = 0;
    std::uint64_t end = 0;
    std::uint64_t offset = 0;
    std::string_view path;
};

/// Takes a hexadecimal number and the character after it off the text.
std::uint64_t takeHex(std::string_view& text) {
    std::uint64_t number = 0;
    std::size_t used = 0;
    for (; used < text.size(); ++used) {
        const char digit = text[used];
        if (digit >= '0' && digit <= '9') {
            number = number * 16 + static_cast<std::uint64_t>(digit - '0');
        } else if (digit >= 'a' && digit <= 'f') {
            number = number * 16 + static_cast<std::uint64_t>(digit - 'a') + 10;
        } else {
            break;
        }
    }
    text.remove_prefix(std::min(used + 1, text.size()));
    return number;
}

void skipField(std::string_view& text) {
    text.remove_prefix(std::min(text.find(' '), text.size() - 1) + 1);
}

Mapping parseMapping(std::string_view line) {
    Mapping mapping;
    mapping.start = takeHex(line);
    mapping.end = takeHex(line);
    if (line.empty()) {
        return {};
    }
    skipField(line); // permissions
    mapping.offset = takeHex(line);
    const std::size_t path = line.find('/');
    if (path != std::string_view::npos) {
        mapping.path = line.substr(path);
    }
    return mapping;
}

} // namespace

void writeHex(std::uint64_t number, HexText& text) {
    std::size_t digits = 1;
    while (digits < 16 && number >> (4 * digits) != 0) {
        ++digits;
    }
    text[digits] = '\0';
    for (std::size_t i = digits; i-- > 0;) {
        text[i] = "0123456789abcdef"[number % 16];
        number /= 16;
    }
}

CrashFile::CrashFile(const char* name)
    : descriptor_(open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600)) {}

CrashFile::~CrashFile() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

void CrashFile::text(std::string_view text) {
    while (descriptor_ >= 0 && !text.empty()) {
        const ssize_t written = write(descriptor_, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return;
        }
    }
}

void CrashFile::hex(std::uint64_t number) {
    HexText digits;
    writeHex(number, digits);
    text(digits.data());
}

void CrashFile::decimal(std::uint64_t number) {
    std::array<char, std::numeric_limits<std::uint64_t>::digits10 + 1> digits;
    std::size_t first = digits.size();
    do {
        digits[--first] = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number != 0);
    text({digits.data() + first, digits.size() - first});
}

void CrashFile::modules() {
    const int maps = open(mapsFile, O_RDONLY | O_CLOEXEC);
    if (maps < 0) {
        return;
    }
    std::array<char, 4096> block;
    for (ssize_t count = 0; (count = readSome(maps, block.data(), block.size())) > 0;) {
        text({block.data(), static_cast<std::size_t>(count)});
    }
    close(maps);
}

void CrashFile::place(std::uint64_t address) {
    const int maps = open(mapsFile, O_RDONLY | O_CLOEXEC);
    if (maps < 0) {
        return;
    }
    // A line is taken off the front as soon as it is whole; one longer than the block (a path of that length) ends
    // the search.
    std::array<char, 8192> block;
    std::size_t filled = 0;
    bool isFound = false;
    for (ssize_t count = 0; !isFound && filled < block.size() &&
                            (count = readSome(maps, block.data() + filled, block.size() - filled)) > 0;) {
        filled += static_cast<std::size_t>(count);
        std::string_view rest(block.data(), filled);
        for (std::size_t end = 0; !isFound && (end = rest.find('\n')) != std::string_view::npos;) {
            const Mapping mapping = parseMapping(rest.substr(0, end));
            if (address >= mapping.start && address < mapping.end && !mapping.path.empty()) {
                text(mapping.path);
                text("+");
                hex(address - mapping.start + mapping.offset);
                isFound = true;
            }
            rest.remove_prefix(end + 1);
        }
        std::copy(rest.begin(), rest.end(), block.begin());
        filled = rest.size();
    }
    close(maps);
    if (!isFound) {
        text("?");
    }
}

} // namespace corvanta::platform
