#include "vision/QrSensor.h"

#include "base/DeviceModel.h"

namespace corvanta::vision {

namespace {

QVariant valueAt(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key));
}

/// The initial position has a member for each axis.
const QStringList& initialKeys() {
    static const QStringList keys = {QStringLiteral("qr_inint_x"), QStringLiteral("qr_inint_y"),
                                     QStringLiteral("qr_inint_z")};
    return keys;
}

/// An input of a board in the form of those that are set up.
QVariantMap inputOf(const QVariantMap& board, const QVariantMap& input) {
    return {{QStringLiteral("pid"), valueAt(input, "pid")},
            {QStringLiteral("ifpid"), valueAt(board, "pid")},
            {QStringLiteral("ifname"), valueAt(board, "ifname")},
            {QStringLiteral("type"), valueAt(valueAt(input, "params").toMap(), "axis")},
            {QStringLiteral("isupload"), true}};
}

} // namespace

const QStringList& qrAxes() {
    static const QStringList axes = {QStringLiteral("QRcode_x"), QStringLiteral("QRcode_y"),
                                     QStringLiteral("QRcode_z")};
    return axes;
}

QVariantMap qrInfoOf(const DeviceRecord& device) {
    return valueAt(device.qrInfo, "info").toMap();
}

QVariantList qrInputsOf(const DeviceRecord& device) {
    QVariantList inputs = valueAt(qrInfoOf(device), "input").toList();
    if (!inputs.isEmpty())
        return inputs;
    for (const QVariant& entry : device.interfaces) {
        const QVariantMap board = entry.toMap();
        if (valueAt(board, "type").toString() != QLatin1String("QR"))
            continue;
        const QVariantList ports = valueAt(board, "input").toList();
        for (const QVariant& port : ports)
            inputs += inputOf(board, port.toMap());
    }
    return inputs;
}

QVariantList uploadOf(const QVariantList& inputs, const QVariantMap& initial, const QStringList& position) {
    QVariantList values;
    if (position.size() != qrAxes().size())
        return values;
    for (const QVariant& entry : inputs) {
        const QVariantMap input = entry.toMap();
        const int axis = qrAxes().indexOf(valueAt(input, "type").toString());
        if (axis < 0 || !input.value(QStringLiteral("isupload"), true).toBool())
            continue;
        bool isNumber = false;
        const float moved =
            position[axis].toFloat(&isNumber) - initial.value(initialKeys()[axis]).toString().toFloat();
        if (!isNumber)
            return {};
        QVariantMap value;
        for (const char* key : {"pid", "ifpid", "ifname", "type"})
            value.insert(QLatin1String(key), valueAt(input, key));
        value.insert(QStringLiteral("data"), QString::number(static_cast<double>(moved), 'g', 6));
        values += value;
    }
    return values;
}

} // namespace corvanta::vision
