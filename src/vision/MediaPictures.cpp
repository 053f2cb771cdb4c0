#include "vision/MediaPictures.h"

#include "playback/MediaFile.h"

#include <QDebug>
#include <QImageReader>

#include <algorithm>
#include <filesystem>
#include <thread>
#include <vector>

namespace corvanta::vision {

namespace {

constexpr qint64 MostPixels = 100'000'000; // more than any camera's sensor has
constexpr std::size_t LeastFrames = 8;     // that are worth a thread of their own

/// Frames `begin` to `end`, on the thread that calls.
void loopOver(playback::MediaFile& file, std::size_t begin, std::size_t end, const FrameLoop& loop) {
    const FrameTask task = loop.taskOfThread();
    for (std::size_t frame = begin; frame < end; ++frame) {
        if (loop.interrupted && loop.interrupted())
            return;
        if (const playback::SharedPicture picture = file.decode(frame))
            task(frame, *picture);
    }
}

std::size_t threadsFor(std::size_t frames, int most) {
    const std::size_t cores = most > 0 ? static_cast<std::size_t>(most) : std::thread::hardware_concurrency();
    return std::clamp<std::size_t>(frames / LeastFrames, 1, std::max<std::size_t>(cores, 1));
}

} // namespace

MediaKind mediaKindOf(const QString& path) {
    if (path.contains(QLatin1String(".jpg")) || path.contains(QLatin1String(".png")))
        return MediaKind::Picture;
    return path.contains(QLatin1String(".avi")) ? MediaKind::Video : MediaKind::Unknown;
}

QImage readPicture(const QString& path) {
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (static_cast<qint64>(size.width()) * size.height() > MostPixels) {
        qDebug() << "a picture is too large to be measured" << path << size;
        return {};
    }
    const QImage picture = reader.read();
    if (picture.isNull()) {
        qDebug() << "a picture cannot be read" << path << reader.errorString();
        return {};
    }
    return picture.convertToFormat(QImage::Format_RGB32);
}

bool forEachFrame(const QString& path, const FrameLoop& loop) {
    const std::filesystem::path name(path.toStdU16String());
    const playback::MediaFile::Options options;
    playback::MediaFile first;
    const playback::OpenError error = first.open(name, options);
    if (error != playback::OpenError::None) {
        qDebug() << "a video cannot be measured" << path << static_cast<int>(error);
        return false;
    }
    const std::size_t frames = first.frameCount();
    const std::size_t parts = threadsFor(frames, loop.threads);
    std::vector<std::thread> others;
    for (std::size_t part = 1; part < parts; ++part) {
        others.emplace_back([&, part] {
            playback::MediaFile file;
            if (file.open(name, options) == playback::OpenError::None)
                loopOver(file, frames * part / parts, frames * (part + 1) / parts, loop);
        });
    }
    loopOver(first, 0, frames / parts, loop);
    for (std::thread& thread : others)
        thread.join();
    return true;
}

} // namespace corvanta::vision
