#include "vision/MeasureKind.h"

#include "base/DeviceModel.h"
#include "vision/LaserFile.h"
#include "vision/QrFile.h"
#include "vision/QrSensor.h"

namespace corvanta::vision {

QVariantMap measureInfoOf(const DeviceRecord& device, MeasureKind kind) {
    if (kind == MeasureKind::Code)
        return qrInfoOf(device);
    const QVariantMap info = device.record.value(QStringLiteral("info")).toMap();
    return info.value(QStringLiteral("Laserinfo")).toMap().value(QStringLiteral("info")).toMap();
}

std::optional<FileMeasurement> measurementOf(const DeviceRecord& device, MeasureKind kind, const QString& root) {
    const QVariantMap info = measureInfoOf(device, kind);
    if (info.isEmpty())
        return std::nullopt;
    return kind == MeasureKind::Code ? qrMeasurement(QrSetup::fromMap(info)) : laserMeasurement(info, root);
}

QVariantList uploadOf(const DeviceRecord& device, MeasureKind kind, const QStringList& result) {
    const QVariantMap info = measureInfoOf(device, kind);
    if (kind == MeasureKind::LaserSpot)
        return laserUpload(LaserInfo::fromMap(info), result);
    return uploadOf(qrInputsOf(device), info.value(QStringLiteral("inintDataList")).toMap(), result);
}

} // namespace corvanta::vision
