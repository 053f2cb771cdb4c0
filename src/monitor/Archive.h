#pragma once

#include "playback/PlaybackCamera.h"
#include "storage/StoredFiles.h"

#include <QVector>

class DeviceModel;
class RecordingStorage;

/// Between stored files and their playback.
namespace corvanta::archive {

/// The videos among some stored files, a camera for each device, in the order in which the devices first appear.
QVector<playback::PlaybackCamera> camerasOf(const QVector<storage::FileRecord>& files, const DeviceModel& devices);

/// Where a snapshot of a recording goes: among the snapshots of its device, under the moment that it shows. Makes the
/// folder. Empty when the device is not known or there is no room.
QString snapshotPath(const RecordingStorage& storage, const playback::PlaybackCamera& camera,
                     const QDateTime& moment);

} // namespace corvanta::archive
