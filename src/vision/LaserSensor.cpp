#include "vision/LaserSensor.h"

#include "base/DeviceModel.h"

namespace corvanta::vision {

namespace {

QVariant valueAt(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key));
}

std::optional<LaserInput> inputOf(const QVariantMap& board, const QVariantMap& port) {
    return LaserInput::fromMap({{QStringLiteral("pid"), valueAt(port, "pid")},
                                {QStringLiteral("ifpid"), valueAt(board, "pid")},
                                {QStringLiteral("ifname"), valueAt(board, "ifname")},
                                {QStringLiteral("type"), valueAt(valueAt(port, "params").toMap(), "axis")}});
}

} // namespace

QVariantMap laserInfoOf(const DeviceRecord& device) {
    const QVariantMap info = valueAt(device.record, "info").toMap();
    return valueAt(valueAt(info, "Laserinfo").toMap(), "info").toMap();
}

QList<LaserInput> laserInputsOf(const DeviceRecord& device) {
    QList<LaserInput> inputs = LaserInfo::fromMap(laserInfoOf(device)).inputs;
    if (!inputs.isEmpty())
        return inputs;
    for (const QVariant& entry : device.interfaces) {
        const QVariantMap board = entry.toMap();
        if (valueAt(board, "type").toString() != QLatin1String("LASER"))
            continue;
        const QVariantList ports = valueAt(board, "input").toList();
        for (const QVariant& port : ports) {
            if (const auto input = inputOf(board, port.toMap()))
                inputs += *input;
        }
    }
    return inputs;
}

} // namespace corvanta::vision
