#pragma once

#include "base/JsonText.h"

#include <functional>
#include <string>
#include <vector>

namespace ipncsdk::sensor {

inline constexpr std::size_t mostBoards = 64;  ///< of a device
inline constexpr std::size_t mostPorts = 256;  ///< inputs of a board, and outputs likewise
inline constexpr auto secretMask = "********"; ///< what a password reads as

/// What became of a board that was submitted.
struct CheckedBoard {
    std::string wrong;        ///< Chinese; empty when the board can be taken
    bool tooMany = false;     ///< what is wrong is the number of ports
    Json record;              ///< complete: defaults, pids, the old record's other keys
    std::vector<int> removed; ///< pids of ports that the old record had
};

/// Brings together a board as submitted and the one that it replaces (null for a new one): values are checked, those
/// that are missing become what is usual, ports without "pid" get one from `nextPid`. Keys that nobody knows are
/// kept. The type is one of `boardTypes`.
CheckedBoard checkBoard(const Json& submitted, const Json& old, const std::function<int()>& nextPid);

/// Checks and completes what an input has besides its parameters ("name", "scale", "thresholds", ...). Returns what
/// is wrong, in Chinese, or an empty text.
std::string completeInput(Json& input);

/// Measured values and times are no part of a stored record.
void dropReadings(Json& board);

} // namespace ipncsdk::sensor
