#include "media/backchannel/BackChannels.h"

#include <algorithm>

namespace ipncsdk::media {

BackChannels::Entry& BackChannels::entryOf(const std::string& camera, const RtspSource& source) {
    std::vector<Entry>& entries = cameras_[camera];
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.source == source; });
    return found != entries.end() ? *found : entries.emplace_back(Entry{source});
}

bool BackChannels::begin(const std::string& camera, const RtspSource& source) {
    const std::lock_guard lock(mutex_);
    Entry& entry = entryOf(camera, source);
    if (entry.asking || entry.answer != Answer::Unknown) {
        return false;
    }
    entry.asking = true;
    return true;
}

void BackChannels::note(const std::string& camera, const RtspSource& source, StreamError outcome) {
    const std::lock_guard lock(mutex_);
    Entry& entry = entryOf(camera, source);
    entry.asking = false;
    switch (outcome) {
    case StreamError::None:
    case StreamError::TalkBusy:
        entry.answer = Answer::Yes;
        break;
    case StreamError::NoTalk:
    case StreamError::StreamNotFound:
    case StreamError::PasswordRefused:
        entry.answer = Answer::No;
        break;
    default:
        break;
    }
}

std::optional<RtspSource> BackChannels::wayTo(const std::string& camera) const {
    const std::lock_guard lock(mutex_);
    const auto entries = cameras_.find(camera);
    if (entries != cameras_.end()) {
        for (const Entry& entry : entries->second) {
            if (entry.answer == Answer::Yes) {
                return entry.source;
            }
        }
    }
    return std::nullopt;
}

} // namespace ipncsdk::media
