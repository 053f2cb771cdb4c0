#include "monitor/Archive.h"

#include "base/DataTree.h"
#include "base/DeviceModel.h"
#include "storage/RecordingStorage.h"

#include <QDir>

#include <algorithm>

namespace corvanta::archive {

QVector<playback::PlaybackCamera> camerasOf(const QVector<storage::FileRecord>& files, const DeviceModel& devices) {
    QVector<playback::PlaybackCamera> result;
    for (const storage::FileRecord& file : files) {
        if (file.isPicture())
            continue;
        auto camera = std::find_if(result.begin(), result.end(), [&file](const playback::PlaybackCamera& known) {
            return known.ipncId == file.ipncid;
        });
        if (camera == result.end()) {
            const DeviceRecord* const device = devices.device(file.ipncid);
            result.append({device == nullptr ? file.ipncid : device->displayName(), file.ipncid, {}});
            camera = result.end() - 1;
        }
        camera->files += file.path;
    }
    return result;
}

QString snapshotPath(const RecordingStorage& storage, const playback::PlaybackCamera& camera,
                     const QDateTime& moment) {
    if (camera.ipncId.isEmpty() || !moment.isValid())
        return {};
    const QString folder =
        storage.folderFor(dataTree::Capture, camera.ipncId, moment.date().toString(dataTree::DayFormat));
    if (folder.isEmpty() || !QDir().mkpath(folder))
        return {};
    return folder + moment.toString(QStringLiteral("yyyyMMddhhmmsszzz")) + QStringLiteral(".jpg");
}

} // namespace corvanta::archive
