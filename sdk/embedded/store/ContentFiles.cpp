#include "store/ContentFiles.h"

#include "base/Log.h"
#include "base/PartFile.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <system_error>

namespace ipncsdk::store {

namespace {

namespace fs = std::filesystem;

constexpr auto incomingSuffix = ".part";
constexpr std::chrono::hours longestReceiving{24};

} // namespace

void ContentFiles::setStore(const fs::path& storeFile) {
    folder_ = storeFile;
    folder_ += suffix;
}

fs::path ContentFiles::incoming() const {
    std::error_code error;
    fs::create_directories(folder_, error);
    std::random_device random;
    return folder_ / (std::to_string(random()) + "-" + std::to_string(random()) + incomingSuffix);
}

fs::path ContentFiles::pathOf(const std::string& content) const {
    return folder_ / content;
}

bool ContentFiles::write(std::span<const unsigned char> bytes, const std::string& content) const {
    PartFile part(incoming());
    return part.write(reinterpret_cast<const char*>(bytes.data()), bytes.size()) && part.finish(pathOf(content));
}

void ContentFiles::remove(const std::string& content) const {
    std::error_code error;
    if (isContentName(content))
        fs::remove(pathOf(content), error);
    if (error)
        logLine("a user's file could not be removed: " + error.message());
}

void ContentFiles::sweep(const std::set<std::string>& used) const {
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
        const auto text = entry->path().filename().u8string();
        const std::string name(text.begin(), text.end());
        std::error_code failed;
        if (isContentName(name) && used.count(name) == 0)
            remove(name);
        else if (entry->path().extension() == incomingSuffix &&
                 fs::file_time_type::clock::now() - entry->last_write_time(failed) > longestReceiving && !failed)
            fs::remove(entry->path(), failed);
    }
}

bool ContentFiles::isContentName(const std::string& name) {
    const auto isDigit = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
    };
    if (name.size() <= hashDigits || !std::all_of(name.begin(), name.begin() + hashDigits, isDigit))
        return false;
    const std::string extension = name.substr(hashDigits);
    return extension == ".png" || extension == ".jpg";
}

} // namespace ipncsdk::store
