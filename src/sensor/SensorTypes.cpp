#include "sensor/SensorTypes.h"

#include "base/DeviceModel.h"
#include "base/ServiceWords.h"
#include "sensor/Samples.h"

#include <QCoreApplication>
#include <QDebug>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvanta::sensor {
namespace {

constexpr int LongestText = 1000;

QVariant at(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key));
}

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SensorTypes)
};

std::optional<Field::Kind> kindOf(const QString& name) {
    static constexpr std::array<std::pair<const char*, Field::Kind>, 5> kinds{{{"int", Field::Kind::Int},
                                                                               {"real", Field::Kind::Real},
                                                                               {"text", Field::Kind::Text},
                                                                               {"secret", Field::Kind::Secret},
                                                                               {"choice", Field::Kind::Choice}}};
    for (const auto& [text, kind] : kinds) {
        if (name == QLatin1String(text))
            return kind;
    }
    return std::nullopt;
}

QString numberText(double number) {
    return QString::number(number, 'g', 10);
}

} // namespace

std::optional<Field> Field::fromMap(const QVariantMap& map) {
    Field field;
    field.key = at(map, "key").toString();
    const auto kind = kindOf(at(map, "kind").toString());
    if (field.key.isEmpty() || !kind) {
        qDebug() << "a sensor's parameter is not understood" << map;
        return std::nullopt;
    }
    field.kind = *kind;
    field.name = serviceWord(at(map, "name").toString());
    if (field.name.isEmpty())
        field.name = field.key;
    field.low = readNumber(at(map, "low"));
    field.high = readNumber(at(map, "high"));
    field.initial = at(map, "default");
    const QVariantList choices = at(map, "choices").toList();
    for (const QVariant& entry : choices) {
        const QVariantMap choice = entry.toMap();
        const QString name = serviceWord(at(choice, "name").toString());
        field.choices += {at(choice, "value"), name.isEmpty() ? at(choice, "value").toString() : name};
    }
    const QVariantMap when = at(map, "when").toMap();
    field.whenKey = at(when, "key").toString();
    field.whenIs = at(when, "is").toStringList();
    return field;
}

QVector<Field> Field::listFrom(const QVariant& list) {
    QVector<Field> fields;
    const QVariantList entries = list.toList();
    for (const QVariant& entry : entries) {
        if (auto field = fromMap(entry.toMap()))
            fields += *field;
    }
    return fields;
}

bool Field::isShown(const QVariantMap& values) const {
    return whenKey.isEmpty() || whenIs.contains(values.value(whenKey).toString());
}

std::optional<QString> Field::problem(const QVariant& value) const {
    if (kind == Kind::Choice) {
        const bool isOne = std::any_of(choices.begin(), choices.end(), [&value](const Option& option) {
            return option.value.toString() == value.toString();
        });
        return isOne ? std::nullopt : std::optional(Texts::tr("请选择%1!").arg(name));
    }
    if (kind == Kind::Text || kind == Kind::Secret) {
        const int longest = high ? static_cast<int>(std::clamp(*high, 0.0, 1e6)) : LongestText;
        return value.toString().size() > longest ? std::optional(Texts::tr("%1过长!").arg(name)) : std::nullopt;
    }
    const auto number = readNumber(value);
    if (!number || (kind == Kind::Int && *number != std::floor(*number)))
        return (kind == Kind::Int ? Texts::tr("%1应为整数!") : Texts::tr("%1应为数字!")).arg(name);
    if ((low && *number < *low) || (high && *number > *high))
        return Texts::tr("%1应在%2到%3之间!")
            .arg(name, low ? numberText(*low) : QStringLiteral("-∞"), high ? numberText(*high) : QStringLiteral("∞"));
    return std::nullopt;
}

QVariantMap initialValues(const QVector<Field>& fields) {
    QVariantMap values;
    for (const Field& field : fields) {
        QVariant value = field.initial;
        if (!value.isValid() && field.kind == Field::Kind::Choice && !field.choices.isEmpty())
            value = field.choices.constFirst().value;
        else if (!value.isValid() && (field.kind == Field::Kind::Int || field.kind == Field::Kind::Real))
            value = field.low.value_or(0);
        values.insert(field.key, value.isValid() ? value : QString());
    }
    return values;
}

SensorTypes SensorTypes::fromReply(const QVariantMap& resp) {
    SensorTypes all;
    const QVariantList types = at(resp, "sensortypes").toList();
    for (const QVariant& entry : types) {
        const QVariantMap map = entry.toMap();
        SensorType type{at(map, "type").toString(),
                        at(map, "name").toString(),
                        at(map, "sublist").toBool(),
                        Field::listFrom(at(map, "fields")),
                        Field::listFrom(at(map, "inputfields")),
                        Field::listFrom(at(map, "outputfields"))};
        if (type.name.isEmpty())
            type.name = type.type;
        if (!type.type.isEmpty())
            all.types += type;
    }
    const QVariantList templates = at(resp, "templates").toList();
    for (const QVariant& entry : templates) {
        const QVariantMap map = entry.toMap();
        const BoardTemplate one{at(map, "name").toString(), at(map, "type").toString(), at(map, "board").toMap()};
        if (all.type(one.type) != nullptr && !one.board.isEmpty())
            all.templates += one;
    }
    return all;
}

const SensorType* SensorTypes::type(const QString& name) const {
    const auto it =
        std::find_if(types.begin(), types.end(), [&name](const SensorType& type) { return type.type == name; });
    return it == types.end() ? nullptr : &*it;
}

QVector<QVariantMap> boardsOf(const DeviceRecord& device) {
    QVector<QVariantMap> boards;
    for (const QVariantList& list : {device.interfaces, device.subDevices()}) {
        for (const QVariant& board : list)
            boards += board.toMap();
    }
    return boards;
}

QVariantMap newBoard(const SensorType& type) {
    return {
        {QStringLiteral("type"), type.type},
        {QStringLiteral("ifname"), QString()},
        {QStringLiteral("name"), type.name},
        {QStringLiteral("extend"), QString()},
        {QStringLiteral("softif"), type.type == QLatin1String("SOFT") ? QStringLiteral("1") : QStringLiteral("0")},
        {QStringLiteral("params"), initialValues(type.fields)},
        {QStringLiteral("input"), QVariantList()},
        {QStringLiteral("output"), QVariantList()}};
}

QVariantMap newPort(const QVector<Field>& fields, const QString& name, bool isInput) {
    QVariantMap port{{QStringLiteral("name"), name},
                     {QStringLiteral("unit"), QString()},
                     {QStringLiteral("extend"), QString()},
                     {QStringLiteral("isupload"), QStringLiteral("1")},
                     {QStringLiteral("params"), initialValues(fields)}};
    if (isInput) {
        port.insert(QStringLiteral("scale"), 1);
        port.insert(QStringLiteral("offset"), 0);
        port.insert(QStringLiteral("hysteresis"), 0);
        port.insert(QStringLiteral("thresholds"), QVariantList());
    }
    return port;
}

std::optional<Calibration> calibrated(const CalibrationPoint& one, const CalibrationPoint& other) {
    const double scale = (other.truth - one.truth) / (other.raw - one.raw);
    const double offset = one.truth - scale * one.raw;
    if (!std::isfinite(scale) || !std::isfinite(offset) || scale == 0)
        return std::nullopt;
    return Calibration{scale, offset};
}

} // namespace corvanta::sensor
