#pragma once

#include "media/loop/LoopClips.h"

#include <chrono>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace soci {
class session;
}

namespace ipncsdk::device {

/// What happened to the card of a loop camera.
struct CardState {
    std::chrono::system_clock::time_point formatted; ///< what is older is gone
    std::set<std::string> deleted;                   ///< paths
};

// In the caller's transaction; throw what the connection throws.
CardState cardOf(soci::session& sql, const std::string& ipncid);
void storeCard(soci::session& sql, const std::string& ipncid, const CardState& card);

/// A file on a card. Its bytes are made from the camera's own loop when somebody wants them.
struct CardFile {
    std::string folder; ///< of the day, such as "20260401"
    std::string name;
    const char* kind = ""; ///< "video" or "image"
    std::string date;      ///< "yyyy-MM-dd", local time as the next
    std::string time;      ///< "yyyy-MM-dd hh:mm:ss"
    media::LoopClips::Clip clip;
    [[nodiscard]] std::string path() const { return folder + '/' + name; }
};

/// What is on the card at a moment: recordings and pictures of the last days, a few of each a day, in order of time.
/// The same camera has the same files, whoever asks.
std::vector<CardFile> cardFiles(const std::string& ipncid, const CardState& card,
                                std::chrono::system_clock::time_point now);

/// True for a date as "yyyy-MM-dd".
bool isDate(std::string_view text);

} // namespace ipncsdk::device
