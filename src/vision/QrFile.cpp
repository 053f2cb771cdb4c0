#include "vision/QrFile.h"

#include "vision/MediaPictures.h"

#include <QDebug>

#include <memory>
#include <mutex>
#include <vector>

namespace corvanta::vision {

namespace {

/// Without a copy; valid as long as the frame.
GreyLevels lumaOf(const playback::Picture& frame) {
    return {frame.bytes.data(), static_cast<int>(frame.size.width), static_cast<int>(frame.size.height)};
}

std::optional<Position> measurePicture(const QString& path, const QrPose& pose) {
    const QImage picture = readPicture(path);
    if (picture.isNull())
        return std::nullopt;
    const auto found = pose.measure(visionBackend()->makeCodeReader()->find(picture));
    return found ? std::optional(found->position) : std::nullopt;
}

std::optional<Position> measureVideo(const QString& path, const QrPose& pose,
                                     const std::function<bool()>& interrupted, int threads) {
    std::mutex mutex;
    std::vector<Position> positions; // guarded by `mutex`; their order does not matter
    FrameLoop loop;
    loop.taskOfThread = [&]() -> FrameTask {
        return [&, reader = std::shared_ptr(visionBackend()->makeCodeReader())](std::size_t,
                                                                                const playback::Picture& frame) {
            if (const auto found = pose.measure(reader->find(lumaOf(frame)))) {
                const std::lock_guard lock(mutex);
                positions.push_back(found->position);
            }
        };
    };
    loop.interrupted = interrupted;
    loop.threads = threads;
    const bool isRead = forEachFrame(path, loop);
    return isRead && !(interrupted && interrupted()) ? trimmedMean(positions) : std::nullopt;
}

} // namespace

std::optional<Position> measureFile(const QString& path, const QrPose& pose, const std::function<bool()>& interrupted,
                                    int threads) {
    if (visionBackend() == nullptr)
        return std::nullopt;
    switch (mediaKindOf(path)) {
    case MediaKind::Picture:
        return measurePicture(path, pose);
    case MediaKind::Video:
        return measureVideo(path, pose, interrupted, threads);
    case MediaKind::Unknown:
        break;
    }
    qDebug() << "neither a picture nor a video, nothing is measured" << path;
    return std::nullopt;
}

FileMeasurement qrMeasurement(const QrSetup& setup) {
    return [setup](const QString& path, const std::function<bool()>& interrupted) {
        const auto pose = QrPose::make(setup);
        const auto position = pose ? measureFile(path, *pose, interrupted) : std::nullopt;
        return position ? position->texts() : QStringList();
    };
}

} // namespace corvanta::vision
