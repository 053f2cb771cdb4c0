#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace ipncsdk {

/// The content of a small file that is made once and then stays: what `make` returned at the first call, by whichever
/// process came first. A new file can be read by its owner alone, where the system knows such rights. One whose
/// content `isGood` refuses is renamed with ".damaged" behind its name and made anew. Nothing when the file can
/// neither be read nor made; one line of the log says why.
std::optional<std::string> madeOnce(const std::filesystem::path& file, const std::function<std::string()>& make,
                                    const std::function<bool(const std::string&)>& isGood);

/// Adds text to the end of a file that its owner alone can read; makes it when it is missing. False when that failed,
/// or when the file is a link or no plain file.
bool appendPrivately(const std::filesystem::path& file, const std::string& text);

} // namespace ipncsdk
