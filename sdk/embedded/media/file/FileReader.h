#pragma once

#include "media/StreamReader.h"
#include "media/file/FileClock.h"
#include "media/file/FileSound.h"
#include "media/file/VideoFile.h"

#include <chrono>
#include <string>

namespace ipncsdk::media {

struct FileOptions {
    /// Pauses before a file that was lost is opened again: the first, doubled each time up to the longest.
    std::chrono::milliseconds firstPause;
    std::chrono::milliseconds longestPause;
};

/// Plays a recorded video file in real time, over and over, as a camera would send it. The file is opened anew for
/// each time through, so that another one in its place is taken over.
class FileReader final : public StreamReader {
public:
    /// `camera` decides where in a frame's time this reader starts, so that cameras do not all work at once.
    FileReader(FileSource source, const std::string& camera, FileOptions options);
    StreamError run(ReaderHost& host) override;

private:
    StreamError loop(ReaderHost& host);
    StreamError play(ReaderHost& host, VideoFile& file);
    void keepSound(ReaderHost& host, const VideoFile& file);
    bool waitFor(ReaderHost& host, std::chrono::microseconds due);

    const FileSource source_;
    const std::size_t spread_; ///< any number, the same for the same camera
    const FileOptions options_;

    FileClock clock_;
    FileSound sound_;
    VideoFile::Known known_;
    Clock::time_point begin_;  ///< of the clock
    Clock::time_point lookAt_; ///< when the file is to be looked after
    StreamParameters told_;    ///< of the last opening
    bool open_ = false;        ///< the host was told that the stream runs
    bool everOpened_ = false;
    bool everPlayed_ = false; ///< the first unit was handed out
};

} // namespace ipncsdk::media
