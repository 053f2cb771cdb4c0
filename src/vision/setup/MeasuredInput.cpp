#include "vision/setup/MeasuredInput.h"

#include "base/DeviceModel.h"

namespace corvanta::vision {
namespace {

QVariant at(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key));
}

QVariantMap keptOf(const QVariantList& kept, const QVariant& pid) {
    for (const QVariant& entry : kept) {
        const QVariantMap one = entry.toMap();
        if (at(one, "pid").toString() == pid.toString())
            return one;
    }
    return {};
}

} // namespace

QVariantMap MeasuredInput::toMap() const {
    QVariantMap map = record;
    map.insert(QStringLiteral("type"), axis);
    map.insert(QStringLiteral("isupload"), isUpload);
    return map;
}

QVector<MeasuredInput> measuredInputs(const DeviceRecord& device, const QString& boardType, const QStringList& axes,
                                      const QVariantList& kept) {
    QVector<MeasuredInput> inputs;
    const QVariantList boards = device.interfaces + device.subDevices();
    for (const QVariant& entry : boards) {
        const QVariantMap board = entry.toMap();
        if (at(board, "type").toString() != boardType)
            continue;
        const QVariantList ports = at(board, "input").toList();
        for (const QVariant& one : ports) {
            const QVariantMap port = one.toMap();
            MeasuredInput input;
            input.name = at(port, "name").toString();
            input.axis = at(at(port, "params").toMap(), "axis").toString();
            if (!axes.contains(input.axis))
                continue;
            input.record = keptOf(kept, at(port, "pid"));
            input.isUpload = input.record.value(QStringLiteral("isupload"), true).toBool();
            input.record.insert(QStringLiteral("pid"), at(port, "pid"));
            input.record.insert(QStringLiteral("ifpid"), at(board, "pid"));
            input.record.insert(QStringLiteral("ifname"), at(board, "ifname"));
            inputs += input;
        }
    }
    return inputs;
}

QVariantList toList(const QVector<MeasuredInput>& inputs) {
    QVariantList list;
    for (const MeasuredInput& input : inputs)
        list += input.toMap();
    return list;
}

} // namespace corvanta::vision
