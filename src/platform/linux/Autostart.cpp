#include "platform/Autostart.h"

#include "platform/linux/UserFolders.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace corvanta::platform {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::filesystem::path entryFile() {
    return configFolder() / "autostart" / "corvanta.desktop";
}

/// A value of an entry, after the Desktop Entry Specification: every backslash is doubled, and there are no raw line
/// ends.
std::string asText(const std::string& value) {
    std::string text;
    for (const char character : value) {
        switch (character) {
        case '\\':
            text += "\\\\";
            break;
        case '\n':
            text += "\\n";
            break;
        case '\r':
            text += "\\r";
            break;
        case '\t':
            text += "\\t";
            break;
        default:
            text += character;
        }
    }
    return text;
}

/// A path as the one argument of an entry's Exec line: within quotes four characters take a backslash, and a percent
/// sign is doubled.
std::string quotedForExec(const std::string& path) {
    std::string quoted = "\"";
    for (const char character : path) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) {
            quoted += '\\';
        } else if (character == '%') {
            quoted += '%';
        }
        quoted += character;
    }
    return quoted + '"';
}

std::string entryText(bool enabled, const std::string& executable) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Corvanta\n"
           "Comment=Watch and record network cameras and sensors\n"
           "TryExec=" +
           asText(executable) + // without the program, say after a package is removed, the entry counts for nothing
           "\n"
           "Exec=" +
           asText(quotedForExec(executable)) +
           "\n"
           "Terminal=false\n"
           "Hidden=" +
           (enabled ? "false\n" : "true\n");
}

std::error_code writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return lastError();
        }
        text.remove_prefix(static_cast<std::size_t>(written < 0 ? 0 : written));
    }
    return {};
}

/// Whoever reads `file` sees what was there before or all of `text`, whatever happens meanwhile.
std::error_code writeWhole(const std::filesystem::path& file, std::string_view text) {
    std::string temporary = file.string() + ".XXXXXX";
    const int descriptor = mkostemp(temporary.data(), 0);
    if (descriptor < 0) {
        return lastError();
    }
    std::error_code error = writeAll(descriptor, text);
    if (!error && (fchmod(descriptor, 0644) != 0 || fsync(descriptor) != 0)) {
        error = lastError();
    }
    if (close(descriptor) != 0 && !error) {
        error = lastError();
    }
    if (!error && rename(temporary.c_str(), file.c_str()) != 0) {
        error = lastError();
    }
    if (error) {
        unlink(temporary.c_str());
    }
    return error;
}

} // namespace

std::error_code setAutostart(bool enabled, const std::filesystem::path& executable) {
    std::error_code error;
    const auto program = std::filesystem::absolute(executable, error);
    if (error) {
        return error;
    }
    const auto file = entryFile();
    std::filesystem::create_directories(file.parent_path(), error);
    if (error) {
        return error;
    }
    return writeWhole(file, entryText(enabled, program.string()));
}

bool isAutostartEnabled() {
    std::ifstream file(entryFile());
    bool isStarted = false; // an entry that starts nothing, or none, starts nothing
    bool isInEntry = false;
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.front() == '[') {
            isInEntry = line == "[Desktop Entry]";
        } else if (isInEntry && line.compare(0, 5, "Exec=") == 0) {
            isStarted = true;
        } else if (isInEntry && (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false")) {
            return false;
        }
    }
    return isStarted;
}

} // namespace corvanta::platform
