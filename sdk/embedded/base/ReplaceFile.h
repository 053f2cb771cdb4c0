#pragma once

#include <filesystem>
#include <system_error>

namespace ipncsdk {

/// Gives a file another name on the same file system, in place of what has that name. Where a file that somebody
/// reads keeps its name (Windows: a virus scanner, an index, another process of ours), it is tried again for half a
/// second.
std::error_code replaceFile(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace ipncsdk
