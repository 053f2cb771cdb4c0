#include "map/MapDocument.h"

#include "base/AppEvents.h"
#include "base/AppPaths.h"
#include "base/SdkGateway.h"

#include <QDebug>
#include <QSet>

#include <algorithm>
#include <utility>

namespace corvanta::map {
namespace {

QVariantMap parametersOf(const MapRecord& map) {
    QVariantMap parameters{{QStringLiteral("type"), QStringLiteral("maps")},
                           {QStringLiteral("filename"), map.fileName},
                           {QStringLiteral("progress"), true}};
    if (map.shared)
        parameters.insert(QStringLiteral("userid"), map.ownerId);
    return parameters;
}

QVariantMap parametersOf(const MapIcon& icon) {
    QVariantMap parameters{{QStringLiteral("type"), QStringLiteral("icons")},
                           {QStringLiteral("filename"), icon.fileName}};
    if (icon.isPublic)
        parameters.insert(QStringLiteral("public"), true);
    return parameters;
}

} // namespace

MapDocument::MapDocument(const AppContext& context, QObject* parent)
    : QObject(parent)
    , context_(context)
    , fetcher_(context.gateway) {
    constexpr int together = 100; // ms
    iconsSettled_.setSingleShot(true);
    iconsSettled_.setInterval(together);
    connect(&iconsSettled_, &QTimer::timeout, this, [this] {
        for (MapRecord& map : maps_)
            fillIcons(map);
        emit sigIconsChanged();
        emit sigMapsChanged();
    });
    AppEvents& events = context_.events;
    connect(&events, &AppEvents::sig_updateMapList, this, &MapDocument::reload);
    connect(&events, &AppEvents::sig_updateIconlist, this, &MapDocument::reload);
    connect(&events, &AppEvents::sig_DeleteMapIcon, this, &MapDocument::removeSensor);
    connect(&fetcher_, &FileFetcher::sigReady, this, &MapDocument::onReady);
    connect(&fetcher_, &FileFetcher::sigFailed, this, &MapDocument::sigPictureFailed);
    reload();
}

const MapRecord* MapDocument::map(const QString& id) const {
    const auto found = std::find_if(maps_.begin(), maps_.end(), [&id](const MapRecord& one) { return one.id == id; });
    return found == maps_.end() ? nullptr : &*found;
}

MapRecord* MapDocument::find(const QString& id) {
    return const_cast<MapRecord*>(map(id));
}

const MapIcon* MapDocument::icon(const QString& fileName, bool isPublic) const {
    const auto found = std::find_if(icons_.begin(), icons_.end(), [&](const MapIcon& one) {
        return one.fileName == fileName && one.isPublic == isPublic;
    });
    return found == icons_.end() ? nullptr : &*found;
}

void MapDocument::reload() {
    const QString account = context_.gateway.phoneId();
    if (std::exchange(account_, account) != account)
        fetcher_.forget();
    const QVariantMap document =
        account.isEmpty() ? QVariantMap() : context_.gateway.document(QStringLiteral("userinfo"));
    if (isCurrent_ && document == last_)
        return;
    isCurrent_ = true;
    last_ = document;
    read(document);
    wantFiles();
    emit sigIconsChanged();
    emit sigMapsChanged();
}

void MapDocument::read(const QVariantMap& document) {
    icons_ = iconsOf(document);
    maps_.clear();
    QSet<QString> seen;
    const QVariantMap config = document.value(QStringLiteral("userconfig")).toMap();
    for (const char* const key : {"maps", "sharemaps"}) {
        const QVariantList entries = config.value(QLatin1String(key)).toList();
        for (const QVariant& entry : entries) {
            MapRecord record = MapRecord::fromMap(entry.toMap(), qstrcmp(key, "sharemaps") == 0);
            if (record.id.isEmpty() || seen.contains(record.id)) {
                qDebug() << "map left out" << record.id << record.name.left(40);
                continue;
            }
            seen.insert(record.id);
            maps_ += record;
        }
    }
}

void MapDocument::wantFiles() {
    const QString folder = context_.paths.userInfo();
    const auto obtain = [this](const QString& path, qint64 size, const QVariantMap& parameters) {
        const bool isHere = isThere(path, size);
        if (!isHere && !path.isEmpty())
            fetcher_.want(path, parameters);
        return isHere;
    };
    for (MapIcon& icon : icons_) {
        const QString path = iconPath(folder, icon, account_);
        if (obtain(path, icon.size, parametersOf(icon)))
            icon.filePath = path;
    }
    for (MapRecord& map : maps_) {
        fillIcons(map);
        if (map.type != MapType::Local)
            continue;
        map.filePath = mapPath(folder, map, account_);
        obtain(map.filePath, map.rest.value(QStringLiteral("size")).toLongLong(), parametersOf(map));
    }
}

void MapDocument::fillIcons(MapRecord& map) {
    for (MapMarker& marker : map.markers) {
        marker.iconPath.clear();
        if (marker.icon.isEmpty())
            continue;
        if (map.shared && !marker.iconPublic) {
            marker.iconPath = friendsIcon(map.ownerId, marker.icon);
        } else if (const MapIcon* const used = icon(marker.icon, marker.iconPublic)) {
            marker.iconPath = used->filePath;
        }
    }
}

QString MapDocument::friendsIcon(const QString& ownerId, const QString& fileName) {
    MapIcon icon;
    icon.fileName = fileName;
    QString path = iconPath(context_.paths.userInfo(), icon, ownerId);
    if (path.isEmpty() || isThere(path, 0))
        return path;
    QVariantMap parameters = parametersOf(icon);
    parameters.insert(QStringLiteral("userid"), ownerId);
    friendsIcons_.insert(path);
    fetcher_.want(path, parameters);
    return {};
}

void MapDocument::onReady(const QString& path) {
    for (MapIcon& icon : icons_) {
        if (icon.filePath.isEmpty() && iconPath(context_.paths.userInfo(), icon, account_) == path) {
            icon.filePath = path;
            iconsSettled_.start();
        }
    }
    if (friendsIcons_.remove(path))
        iconsSettled_.start();
    emit sigPictureReady(path);
}

void MapDocument::putMarker(const QString& mapId, const MapMarker& marker) {
    MapRecord* const record = find(mapId);
    if (record == nullptr)
        return;
    const int index = record->indexOf(marker.id);
    if (index >= 0)
        record->markers[index] = marker;
    else
        record->markers.append(marker);
    fillIcons(*record);
    tellMaps();
}

void MapDocument::removeMarker(const QString& mapId, const QString& markerId) {
    MapRecord* const record = find(mapId);
    const int index = record == nullptr ? -1 : record->indexOf(markerId);
    if (index < 0)
        return;
    record->markers.removeAt(index);
    tellMaps();
}

void MapDocument::removeSensor(const QString& pid) {
    if (pid.isEmpty())
        return;
    bool isChanged = false;
    for (MapRecord& map : maps_) {
        const auto gone = std::remove_if(map.markers.begin(), map.markers.end(),
                                         [&pid](const MapMarker& marker) { return marker.pid == pid; });
        isChanged = isChanged || gone != map.markers.end();
        map.markers.erase(gone, map.markers.end());
    }
    if (isChanged)
        tellMaps();
}

void MapDocument::tellMaps() {
    isCurrent_ = false; // what the service says next counts, even what it said before
    emit sigMapsChanged();
}

} // namespace corvanta::map
