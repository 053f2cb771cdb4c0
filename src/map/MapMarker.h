#pragma once

#include <QList>
#include <QMetaType>
#include <QPointF>
#include <QString>
#include <QVariantMap>
#include <QVector>

#include <optional>

namespace corvanta::map {

/// When a marker's label is seen.
enum class ShowMode { Always, MouseIn };

/// A camera or sensor at its place on a map. A value. Keys that this program does not know are kept in `rest`.
struct MapMarker {
    QString id;     ///< of the marker, by the service; empty for one that was never submitted
    QString pid;    ///< of the sensor; empty for a camera
    QString ipncId; ///< of the device
    QString name;
    double x = 0;   ///< on a picture: fraction of its width, 0 to 1, from the left
    double y = 0;   ///< fraction of its height, from the top
    double lat = 0; ///< on an online map: degrees north
    double lng = 0; ///< degrees east
    QString icon;   ///< file name in the icon library; empty: the program's own drawing for its kind
    QString iconName;
    QString iconPath; ///< local file or resource of the icon, filled in by `MapDocument`; not sent
    bool iconPublic = false;
    ShowMode showMode = ShowMode::Always;
    bool showDatas = false;           ///< the newest values stand under the name
    bool isUpdate = true;             ///< they are refreshed as values arrive
    std::optional<QList<int>> inputs; ///< pids of the inputs whose values are shown; none: all
    QString protocol;                 ///< of the sensor; "4353": one that tells positions
    QVector<QPointF> locations;       ///< reference points of such a sensor, metres from the picture's upper left
    QVariantMap rest;

    bool isCamera() const { return pid.isEmpty(); }
    bool isPositioning() const { return protocol == QLatin1String("4353"); }

    /// Numbers are taken as numbers or as texts; one that is neither, or not finite, or out of range, counts as the
    /// nearest that is (0 for what is no number), with one debug line.
    static MapMarker fromMap(const QVariantMap& map);
    /// As the service takes it: "point" as texts that give back the same numbers.
    QVariantMap toMap() const;
};

} // namespace corvanta::map

Q_DECLARE_METATYPE(corvanta::map::MapMarker)
