#pragma once

#include "playback/Picture.h"

#include <QImage>
#include <QString>

#include <cstddef>
#include <functional>

namespace corvanta::vision {

/// What a file is by its path; the parts of names are known to those who write such files.
enum class MediaKind {
    Unknown,
    Picture, ///< ".jpg" or ".png" stands somewhere in the path
    Video    ///< ".avi" does
};

MediaKind mediaKindOf(const QString& path);

/// A picture of a file, in 32 bits of colour without transparency and turned as its camera was held. Null where it
/// cannot be read or is larger than any camera's; one debug line says why. Any thread.
QImage readPicture(const QString& path);

/// What is done with a frame of a video; numbers count from 0.
using FrameTask = std::function<void(std::size_t number, const playback::Picture& frame)>;

struct FrameLoop {
    std::function<FrameTask()> taskOfThread; ///< called once in each thread; frames of one thread come in order
    std::function<bool()> interrupted;       ///< asked between frames, by all threads; may be empty
    int threads = 0;                         ///< at most; 0: as many as there are cores
};

/// Hands every frame of a video to tasks, a part of the video to each thread. False where it cannot be read, with
/// one debug line. Returns when all are done.
bool forEachFrame(const QString& path, const FrameLoop& loop);

} // namespace corvanta::vision
