#pragma once

#include <QStringList>
#include <QVariantMap>

struct DeviceRecord;

namespace corvanta::vision {

/// The axes of a measurement in the order of its values: "QRcode_x", "QRcode_y", "QRcode_z".
const QStringList& qrAxes();

/// What a device's record keeps of its code and its camera ("QRinfo"/"info"); empty where nothing was set up.
QVariantMap qrInfoOf(const DeviceRecord& device);

/// The inputs of the device's code: those that were set up, else those of its board for codes. Each a map of "pid",
/// "ifpid", "ifname", "type" (an axis) and "isupload".
QVariantList qrInputsOf(const DeviceRecord& device);

/// The values to be reported for a position: for every input of an axis, unless it is not to be reported, "pid",
/// "ifpid", "ifname", "type" and as "data" how far the position is from the initial one, with six significant digits.
/// Empty where there are no inputs or `position` is not three numbers.
QVariantList uploadOf(const QVariantList& inputs, const QVariantMap& initial, const QStringList& position);

} // namespace corvanta::vision
