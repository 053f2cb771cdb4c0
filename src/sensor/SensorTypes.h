#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>

#include <optional>

struct DeviceRecord;

namespace corvanta::sensor {

/// A parameter of a board or port as the service describes it; dialogs are made from these.
struct Field {
    enum class Kind { Int, Real, Text, Secret, Choice };
    struct Option {
        QVariant value;
        QString name;
    };

    QString key;
    QString name; ///< as the user reads it
    Kind kind = Kind::Text;
    std::optional<double> low;
    std::optional<double> high;
    QVariant initial;
    QVector<Option> choices;
    QString whenKey; ///< shown only while the parameter of this key has one of `whenIs`; always when empty
    QStringList whenIs;

    /// Nothing for a description without a key or of a kind that is not known.
    static std::optional<Field> fromMap(const QVariantMap& map);
    static QVector<Field> listFrom(const QVariant& list);

    bool isShown(const QVariantMap& values) const;
    /// Why the service would not take a value, for the user; nothing when it would.
    std::optional<QString> problem(const QVariant& value) const;
};

/// The parameters of a new board or port.
QVariantMap initialValues(const QVector<Field>& fields);

/// A kind of board.
struct SensorType {
    QString type;
    QString name;             ///< as the service says it, and as it is stored; shown as a `serviceWord`
    bool isSubDevice = false; ///< stands among the sub-devices
    QVector<Field> fields;
    QVector<Field> inputFields;
    QVector<Field> outputFields;
};

struct BoardTemplate {
    QString name;
    QString type;
    QVariantMap board; ///< without numbers
};

/// What the service can measure with.
struct SensorTypes {
    QVector<SensorType> types;
    QVector<BoardTemplate> templates; ///< only of types that are known

    static SensorTypes fromReply(const QVariantMap& resp);
    /// Null for one that is not known.
    const SensorType* type(const QString& name) const;
};

/// The boards of a device: interfaces first, then sub-devices.
QVector<QVariantMap> boardsOf(const DeviceRecord& device);

/// A board of a type without ports, and a port, neither with a number yet.
QVariantMap newBoard(const SensorType& type);
QVariantMap newPort(const QVector<Field>& fields, const QString& name, bool isInput);

/// value = raw * scale + offset
struct Calibration {
    double scale = 1;
    double offset = 0;
};
/// From two raw values and what they should have read; nothing when they do not tell one line that rises or falls.
struct CalibrationPoint {
    double raw;
    double truth;
};
std::optional<Calibration> calibrated(const CalibrationPoint& one, const CalibrationPoint& other);

} // namespace corvanta::sensor
