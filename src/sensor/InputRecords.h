#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>

#include <optional>
#include <vector>

class DeviceModel;
class InputFields;

namespace corvanta::sensor {

/// A level is reached by a value above `high` or below `low`.
struct ThresholdLevel {
    int level = 0; ///< 1 to 3
    std::optional<double> high;
    std::optional<double> low;
};

/// An input of an interface or sub-device: a quantity that is measured.
struct InputRecord {
    int pid = 0; ///< unique within the account
    QString ipncId;
    QString device; ///< its name
    QString groupId;
    QString group; ///< its name, empty for a device without one
    int sensorPid = 0;
    QString sensor; ///< name of the interface or sub-device
    QString name;
    QString unit;
    QString extend;
    QString isUpload; ///< "1": its samples are stored by the service
    std::vector<ThresholdLevel> thresholds;
    QVariantMap port; ///< the record as the service sent it

    bool isUploaded() const { return isUpload == QLatin1String("1"); }
    /// "device / sensor / input", for where the input stands alone.
    QString path() const;
};

/// Every input, one device after the other; of a device those of the interfaces first, then those of the sub-devices.
/// An input without a number, and a second one with the same, are left out with one debug line.
QVector<InputRecord> inputsOf(const DeviceModel& devices);

/// The levels of a port's record, by level; such as no service would send are left out.
std::vector<ThresholdLevel> thresholdsOf(const QVariantMap& port);

/// The newest that is known of an input: what was told since (`fields`), else what its record says.
struct InputNow {
    std::optional<double> value;
    std::optional<bool> isNormal;
    std::optional<qint64> latest;   ///< epoch, s
    std::optional<qint64> earliest; ///< likewise
};
InputNow nowOf(const InputRecord& input, const InputFields& fields);

/// Whether a "state" says that communication works.
bool isNormalState(const QVariant& state);

} // namespace corvanta::sensor
