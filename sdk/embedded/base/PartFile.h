#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>

namespace ipncsdk {

/// A file that is written piece by piece under another name and gets its own when it is whole. Unless that has
/// happened nothing is left of it. One thread.
class PartFile final {
public:
    /// `part` is where it is written; it should be in the folder of the place that it gets in the end.
    explicit PartFile(std::filesystem::path part);
    ~PartFile();
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    /// False when it could not be written, as for all that follows then.
    bool write(const char* bytes, std::size_t count);
    /// Ends the writing; what was written is on its way to the disk then.
    bool close();
    /// Closes it and puts it in its place, where it replaces what is there; of a link the link itself.
    bool finish(const std::filesystem::path& target);

    [[nodiscard]] const std::filesystem::path& path() const { return part_; }

private:
    const std::filesystem::path part_;
    std::ofstream stream_;
};

} // namespace ipncsdk
