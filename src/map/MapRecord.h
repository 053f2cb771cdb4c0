#pragma once

#include "map/MapMarker.h"

#include <QStringList>

namespace corvanta::map {

enum class MapType { Local, Online, Unknown };

/// A map with its markers, as the account's document tells it. A value.
struct MapRecord {
    QString id;
    QString name;
    QString fileName; ///< of a picture map: the picture at the service; a name never changes its content
    QString filePath; ///< where the picture is here, filled in by `MapDocument`; empty: not a picture map
    QString ownerId;  ///< phone number of the owner of a shared map
    MapType type = MapType::Unknown;
    bool shared = false;      ///< a friend's, not to be changed
    double width = 0;         ///< metres that the whole picture is wide; 0: unknown
    double height = 0;        ///< likewise
    QStringList friends;      ///< phone numbers that an own map is shared with
    QList<MapMarker> markers; ///< their place in the list is their index in every view
    QVariantMap rest;         ///< keys that this program does not know

    static MapRecord fromMap(const QVariantMap& map, bool isShared);
    /// The index of a marker by its own id; -1 when there is none.
    int indexOf(const QString& markerId) const;
};

} // namespace corvanta::map

Q_DECLARE_METATYPE(corvanta::map::MapRecord)
