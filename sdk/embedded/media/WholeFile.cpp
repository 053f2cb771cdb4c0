#include "media/WholeFile.h"

#include "base/ReplaceFile.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <string>
#include <system_error>

namespace ipncsdk::media {

namespace {

/// A name that no other writer of this process or of an earlier run uses at the same time.
std::filesystem::path temporaryBeside(const std::filesystem::path& file) {
    static std::atomic<unsigned> counter{0};
    const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
    std::filesystem::path temporary = file;
    temporary += "." + std::to_string(ticks) + "-" + std::to_string(++counter) + ".part";
    return temporary;
}

bool writeBytes(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return stream.good();
}

} // namespace

bool writeWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) {
    const std::filesystem::path temporary = temporaryBeside(file);
    if (writeBytes(temporary, bytes) && !replaceFile(temporary, file)) {
        return true;
    }
    std::error_code error;
    std::filesystem::remove(temporary, error);
    return false;
}

std::vector<std::uint8_t> readWholeFile(const std::filesystem::path& file, std::uintmax_t largest) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size == 0 || size > largest) {
        return {};
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (stream.gcount() != static_cast<std::streamsize>(bytes.size())) {
        return {};
    }
    return bytes;
}

} // namespace ipncsdk::media
