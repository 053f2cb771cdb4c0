#pragma once

#include "playback/Timeline.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <vector>

namespace corvanta::playback {

/// A stretch of one file, in the file's time.
struct ClipPart {
    std::filesystem::path file;
    std::chrono::microseconds from{0};
    std::chrono::microseconds to{0};
};

/// The parts of a camera's recordings that a range lies over, in the order of time.
std::vector<ClipPart> clipParts(const Timeline& timeline, Span range);

enum class ExportError {
    None,
    Cancelled,
    NothingThere,  ///< no frame lies in the range
    Unreadable,    ///< one of the files cannot be read
    Different,     ///< the parts are of different sizes or codings, one file cannot hold them
    UnknownFormat, ///< neither .avi nor .mp4, or a coding that the format cannot hold
    CannotWrite    ///< no room, no right, or the folder went away
};

struct ExportResult {
    ExportError error = ExportError::None;
    /// By how much the clip begins before what was asked for: at the key frame at or before that.
    std::chrono::microseconds early{0};
    std::chrono::microseconds length{0};
    std::size_t frames = 0;
};

/// Told how much is done, 0 to 1; false ends the export.
using ExportProgress = std::function<bool(double)>;

/// Copies coded frames into a new file, AVI or MP4 by its suffix; nothing is coded anew. Gaps between parts are
/// closed. What is written has another name until it is whole; when it fails or is cancelled nothing is left, and a
/// file that had the name before stays. Any thread, for as long as it takes.
ExportResult exportClip(const std::vector<ClipPart>& parts, const std::filesystem::path& target,
                        const ExportProgress& progress);

} // namespace corvanta::playback
