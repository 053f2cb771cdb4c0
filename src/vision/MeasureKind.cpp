#include "vision/MeasureKind.h"

#include "base/DeviceModel.h"
#include "vision/LaserFile.h"
#include "vision/LaserSensor.h"
#include "vision/QrFile.h"
#include "vision/QrSensor.h"

namespace corvanta::vision {

QVariantMap measureInfoOf(const DeviceRecord& device, MeasureKind kind) {
    return kind == MeasureKind::Code ? qrInfoOf(device) : laserInfoOf(device);
}

std::optional<FileMeasurement> measurementOf(const DeviceRecord& device, MeasureKind kind, const QString& root) {
    const QVariantMap info = measureInfoOf(device, kind);
    if (info.isEmpty())
        return std::nullopt;
    return kind == MeasureKind::Code ? qrMeasurement(QrSetup::fromMap(info)) : laserMeasurement(info, root);
}

QVariantList uploadOf(const DeviceRecord& device, MeasureKind kind, const QStringList& result) {
    const QVariantMap info = measureInfoOf(device, kind);
    if (kind == MeasureKind::LaserSpot) {
        LaserInfo laser = LaserInfo::fromMap(info);
        laser.inputs = laserInputsOf(device);
        return laserUpload(laser, result);
    }
    return uploadOf(qrInputsOf(device), info.value(QStringLiteral("inintDataList")).toMap(), result);
}

} // namespace corvanta::vision
