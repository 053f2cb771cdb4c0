#include "media/file/FileReader.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace ipncsdk::media {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

/// Someone later than this (a suspended machine, a disk that slept) goes on from now.
constexpr milliseconds patience{500};
constexpr std::chrono::seconds lookEvery{1};

} // namespace

FileReader::FileReader(FileSource source, const std::string& camera, FileOptions options)
    : source_(std::move(source))
    , spread_(std::hash<std::string>{}(camera))
    , options_(options) {}

StreamError FileReader::run(ReaderHost& host) {
    host.stage(OpenStage::Information);
    auto pause = options_.firstPause;
    while (host.running()) {
        host.stage(OpenStage::Loading);
        const StreamError error = loop(host);
        sound_.forget();
        if (!host.running()) {
            break;
        }
        host.log(error == StreamError::StreamNotFound      ? "the video file is missing"
                 : error == StreamError::CodecNotSupported ? "the file is no H.264 video"
                                                           : "the video file was lost while it played");
        if (!everOpened_) {
            return error;
        }
        if (std::exchange(open_, false)) {
            pause = options_.firstPause;
        }
        host.stage(OpenStage::Connecting);
        if (!host.waitUntil(Clock::now() + pause)) {
            break;
        }
        pause = std::min(pause * 2, options_.longestPause);
    }
    return StreamError::None;
}

/// Plays the file again and again until it fails or the host ends it.
StreamError FileReader::loop(ReaderHost& host) {
    while (host.running()) {
        VideoFile file;
        if (const StreamError error = file.open(source_.file, known_); error != StreamError::None) {
            return error;
        }
        clock_.describe(known_.period, known_.reordering);
        clock_.beginLoop();
        sound_.begin(file.soundParameters(), clock_.next());
        if (!everOpened_) {
            begin_ = Clock::now() + microseconds(spread_ % static_cast<std::size_t>(known_.period.count()));
        }
        if (!open_ || known_.parameters != told_) {
            told_ = known_.parameters;
            StreamParameters parameters = told_;
            parameters.connectionType = "FILE";
            // Another file took this one's place: who watches is told as after a lost connection.
            host.stage(OpenStage::Loading);
            host.opened(parameters);
            open_ = everOpened_ = true;
        }
        if (const StreamError error = play(host, file); error != StreamError::None) {
            return error;
        }
    }
    return StreamError::None;
}

StreamError FileReader::play(ReaderHost& host, VideoFile& file) {
    VideoFile::Unit unit;
    while (true) {
        switch (file.next(clock_, unit)) {
        case VideoFile::Read::End:
            // A file that was cut short while it played ends early.
            return file.isWhole() ? StreamError::None : StreamError::ConnectionLost;
        case VideoFile::Read::Failed:
            return StreamError::ConnectionLost;
        case VideoFile::Read::Sound:
            keepSound(host, file);
            continue;
        case VideoFile::Read::Unit:
            break;
        }
        if (!waitFor(host, unit.due)) {
            return StreamError::None;
        }
        host.frame(unit.frame);
        if (const auto now = Clock::now(); now >= lookAt_) {
            lookAt_ = now + lookEvery;
            if (!file.isWhole()) {
                return StreamError::ConnectionLost;
            }
        }
    }
}

/// Lets the sound that was read stand by for its time.
void FileReader::keepSound(ReaderHost& host, const VideoFile& file) {
    if (!host.soundWanted()) {
        return sound_.forget();
    }
    const auto stamp = file.soundStamp();
    const auto due = stamp ? clock_.dueOf(*stamp) : std::nullopt;
    if (due || !stamp) {
        sound_.add(file.soundPacket(), due);
    }
}

/// Waits until a unit is due. What sound is due before is heard meanwhile.
bool FileReader::waitFor(ReaderHost& host, microseconds due) {
    // The first picture is awaited by somebody; the clock begins a little later.
    if (!std::exchange(everPlayed_, true)) {
        return host.running();
    }
    const auto now = Clock::now();
    if (now - (begin_ + due) > patience) {
        begin_ = now - due;
    }
    for (auto sound = sound_.due(); sound && *sound <= due; sound = sound_.due()) {
        if (!host.waitUntil(begin_ + *sound)) {
            return false;
        }
        sound_.deliver(host, Clock::now() - (begin_ + *sound) > patience);
    }
    return host.waitUntil(begin_ + due);
}

} // namespace ipncsdk::media
