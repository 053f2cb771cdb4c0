#pragma once

#include <cstdint>
#include <filesystem>

namespace corvanta::avi {

/// What became of a file that was looked at.
enum class RepairResult {
    Complete, ///< it has its index, nothing was done
    Repaired, ///< index and header have been made from the frames
    Empty,    ///< a recording without a single whole frame; nothing was done
    Foreign,  ///< no recording of ours; nothing was done
    InUse,    ///< somebody writes it
    Failed,   ///< it cannot be read or written
};

/// Completes a recording whose writer did not come to its end (a crash, a power cut): walks over the chunks behind
/// the header, and writes index and header for those that are whole. No byte of a whole chunk is touched; what
/// follows the last one (a part of a frame) is cut off. Size and rate come from the header as far as it has them; a
/// file that has only its placeholder counts as 25 frames a second.
///
/// May be interrupted at any time and done again. Any thread.
RepairResult repairAvi(const std::filesystem::path& path);

} // namespace corvanta::avi
