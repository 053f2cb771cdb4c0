#include "base/PrivateFile.h"

#include "base/Log.h"
#include "base/ReplaceFile.h"

#include <fstream>
#include <iterator>
#include <random>
#include <system_error>

namespace ipncsdk {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largest = 4096;

std::string utf8(const fs::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

std::optional<std::string> readSmall(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > largest || error)
        return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    return in.bad() || !in.is_open() ? std::nullopt : std::make_optional(text);
}

/// Makes an empty file and takes all rights but the owner's from it.
bool makeEmpty(const fs::path& file) {
    std::ofstream out(file, std::ios::binary | std::ios::app);
    out.close();
    std::error_code error;
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write, error);
    return out.good() && !error;
}

/// A name beside the file that nobody can guess.
fs::path temporaryBeside(const fs::path& file) {
    std::random_device random;
    fs::path temporary = file;
    temporary += "." + std::to_string(random()) + std::to_string(random()) + ".part";
    return temporary;
}

/// Writes the file whole. One that another process has made in the meantime stays.
bool writeNew(const fs::path& file, const std::string& content) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    const fs::path temporary = temporaryBeside(file);
    bool written = makeEmpty(temporary);
    if (written) {
        std::ofstream out(temporary, std::ios::binary);
        out << content;
        out.close();
        written = out.good();
    }
    if (written) {
        // A link is made only where nothing stands yet; some file systems know none.
        fs::create_hard_link(temporary, file, error);
        if (error && !fs::exists(fs::symlink_status(file, error)))
            fs::rename(temporary, file, error);
    }
    fs::remove(temporary, error);
    return written;
}

} // namespace

std::optional<std::string> madeOnce(const fs::path& file, const std::function<std::string()>& make,
                                    const std::function<bool(const std::string&)>& isGood) {
    std::error_code error;
    auto content = readSmall(file);
    if (content && isGood(*content))
        return content;
    if (content) {
        fs::path damaged = file;
        damaged += ".damaged";
        logLine(utf8(file) + " is damaged and made anew");
        replaceFile(file, damaged);
    }
    writeNew(file, make());
    // Read again, for another process may have been faster.
    content = readSmall(file);
    if (content && isGood(*content))
        return content;
    logLine(utf8(file) + " can't be made");
    return std::nullopt;
}

bool appendPrivately(const fs::path& file, const std::string& text) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    const fs::file_status status = fs::symlink_status(file, error);
    if (fs::exists(status) ? !fs::is_regular_file(status) : !makeEmpty(file))
        return false;
    std::ofstream out(file, std::ios::binary | std::ios::app);
    out << text;
    out.close();
    return out.good();
}

} // namespace ipncsdk
