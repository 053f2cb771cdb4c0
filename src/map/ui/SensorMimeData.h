#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>
#include <QString>

namespace corvanta::map {

/// What is dragged out of the device tree: a camera, or a sensor of a device.
class SensorMimeData final : public QMimeData {
    Q_OBJECT
public:
    static QString format() { return QStringLiteral("application/x-corvanta-sensor"); }

    /// An empty pid stands for the device's camera.
    SensorMimeData(const QString& ipncId, const QString& sensorPid) {
        const QJsonObject content{{QStringLiteral("ipncid"), ipncId}, {QStringLiteral("pid"), sensorPid}};
        setData(format(), QJsonDocument(content).toJson(QJsonDocument::Compact));
    }

    struct Dragged {
        QString ipncId; ///< empty: nothing of ours is dragged
        QString sensorPid;
    };
    /// Reads the bytes, not the class: they also come through where drag data is copied.
    static Dragged read(const QMimeData& data) {
        const QJsonObject content = QJsonDocument::fromJson(data.data(format())).object();
        return {content.value(QLatin1String("ipncid")).toString(), content.value(QLatin1String("pid")).toString()};
    }
};

} // namespace corvanta::map
