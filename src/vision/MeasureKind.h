#pragma once

#include "vision/FileMeasurement.h"

#include <QVariantMap>

#include <optional>

struct DeviceRecord;

namespace corvanta::vision {

/// What the camera of a device looks at to measure.
enum class MeasureKind { Code, LaserSpot };

/// What the device's record keeps for a kind ("QRinfo"/"info", "Laserinfo"/"info"); empty where it was not set up.
QVariantMap measureInfoOf(const DeviceRecord& device, MeasureKind kind);

/// How a file of the device is measured; nothing where it was not set up. `root` is the data folder.
std::optional<FileMeasurement> measurementOf(const DeviceRecord& device, MeasureKind kind, const QString& root);

/// The values that a result is reported as, see `uploadOf` and `laserUpload`.
QVariantList uploadOf(const DeviceRecord& device, MeasureKind kind, const QStringList& result);

} // namespace corvanta::vision
