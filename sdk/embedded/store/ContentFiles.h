#pragma once

#include <cstddef>
#include <filesystem>
#include <set>
#include <span>
#include <string>

namespace ipncsdk::store {

/// The contents of users' files, in a folder beside the store: each content once, named by its SHA-256 and its kind
/// ("<64 digits>.png"), so that a name never changes what it stands for.
///
/// What the store refers to is there; the store's transactions decide. A content is put and removed only inside a
/// changing transaction, of which there is one at a time on a store, whatever the process.
class ContentFiles final {
public:
    /// Behind the store's name.
    static constexpr auto suffix = ".files";
    /// At the beginning of a content's name: its SHA-256, small letters.
    static constexpr std::size_t hashDigits = 64;

    ContentFiles() = default;
    ContentFiles(const ContentFiles&) = delete;
    ContentFiles& operator=(const ContentFiles&) = delete;

    /// Before anything else is called.
    void setStore(const std::filesystem::path& storeFile);

    /// A path for a file that is being received, which nobody else uses; its folder is made. `PartFile` brings it to
    /// its place.
    [[nodiscard]] std::filesystem::path incoming() const;
    [[nodiscard]] std::filesystem::path pathOf(const std::string& content) const;

    /// Writes a content to its place. False when that failed.
    [[nodiscard]] bool write(std::span<const unsigned char> bytes, const std::string& content) const;
    void remove(const std::string& content) const;
    /// Removes what is not among `used` and what was never received whole: remains of processes that ended in
    /// between.
    void sweep(const std::set<std::string>& used) const;

    /// True for a name that contents have.
    static bool isContentName(const std::string& name);

private:
    std::filesystem::path folder_;
};

} // namespace ipncsdk::store
