#include "vision/LaserFile.h"

#include "playback/Snapshot.h"
#include "vision/MediaPictures.h"

#include <QDebug>

#include <mutex>
#include <vector>

namespace corvanta::vision {

namespace {

std::optional<LaserPosition> measureVideo(const QString& path, const LaserMeter& meter,
                                          const std::function<bool()>& interrupted, int threads) {
    std::mutex mutex;
    std::vector<LaserPosition> positions; // guarded by `mutex`; their order does not matter
    FrameLoop loop;
    loop.taskOfThread = [&]() -> FrameTask {
        return [&](std::size_t, const playback::Picture& frame) {
            if (const auto position = meter.measure(playback::toImage(frame)).position) {
                const std::lock_guard lock(mutex);
                positions.push_back(*position);
            }
        };
    };
    loop.interrupted = interrupted;
    loop.threads = threads;
    const bool isRead = forEachFrame(path, loop);
    return isRead && !(interrupted && interrupted()) ? trimmedMean(positions) : std::nullopt;
}

} // namespace

std::optional<LaserPosition> measureFile(const QString& path, const LaserMeter& meter,
                                         const std::function<bool()>& interrupted, int threads) {
    switch (mediaKindOf(path)) {
    case MediaKind::Picture:
        return meter.measure(readPicture(path)).position;
    case MediaKind::Video:
        return measureVideo(path, meter, interrupted, threads);
    case MediaKind::Unknown:
        break;
    }
    qDebug() << "neither a picture nor a video, nothing is measured" << path;
    return std::nullopt;
}

FileMeasurement laserMeasurement(const QVariantMap& info, const QString& root) {
    return [info = LaserInfo::fromMap(info), root](const QString& path, const std::function<bool()>& interrupted) {
        const QString referencePath = info.referencePath(root);
        const QImage reference = referencePath.isEmpty() ? QImage() : readPicture(referencePath);
        const auto meter =
            reference.isNull() && !info.reference.isEmpty() ? std::nullopt : LaserMeter::make(info, reference);
        if (!meter) {
            qDebug() << "no laser spot can be measured:" << info.measureProblem().value_or(referencePath);
            return QStringList();
        }
        const auto position = measureFile(path, *meter, interrupted);
        return position ? position->texts() : QStringList();
    };
}

} // namespace corvanta::vision
