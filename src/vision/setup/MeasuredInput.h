#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <QVector>

struct DeviceRecord;

namespace corvanta::vision {

/// An input that a measurement is reported as, for a dialog.
struct MeasuredInput {
    QString name;
    QString axis; ///< "QRcode_x", "laser_y", ...
    bool isUpload = true;
    QVariantMap record; ///< as it was kept, with keys that nobody here knows

    /// "pid", "ifpid", "ifname", "type" and "isupload", and what else was kept.
    QVariantMap toMap() const;
};

/// The inputs of the device's boards of a type, for those axes that `axes` names, in the order of the boards. What
/// `kept` says of one of the same "pid" is taken over; entries of inputs that are gone are left out.
QVector<MeasuredInput> measuredInputs(const DeviceRecord& device, const QString& boardType, const QStringList& axes,
                                      const QVariantList& kept);

QVariantList toList(const QVector<MeasuredInput>& inputs);

} // namespace corvanta::vision
