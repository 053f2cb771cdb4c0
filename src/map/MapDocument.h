#pragma once

#include "base/AppContext.h"
#include "map/FileFetcher.h"
#include "map/MapFiles.h"

#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVariantMap>

namespace corvanta::map {

/// The maps and icons of the signed-in account, read from its document, with their files fetched once and kept. What
/// the account itself changes is entered at once; what the service tells later replaces it. GUI thread.
class MapDocument final : public QObject {
    Q_OBJECT
public:
    explicit MapDocument(const AppContext& context, QObject* parent = nullptr);

    /// Own maps first, in the order of the document.
    const QList<MapRecord>& maps() const { return maps_; }
    /// Null for an unknown id. Valid until the maps change.
    const MapRecord* map(const QString& id) const;
    /// Public ones first.
    const QList<MapIcon>& icons() const { return icons_; }
    /// Null where the library has none of that name and kind.
    const MapIcon* icon(const QString& fileName, bool isPublic) const;

    bool isFetching(const QString& path) const { return fetcher_.isFetching(path); }
    /// A map's picture is wanted before all others, or once more after a failure.
    void fetchAgain(const QString& path) { fetcher_.again(path); }

    /// A marker is as given now: replaces the one with its id, or is added.
    void putMarker(const QString& mapId, const MapMarker& marker);
    void removeMarker(const QString& mapId, const QString& markerId);

public slots:
    /// Reads the document; nothing is told when it says the same as before.
    void reload();
    /// The markers of a sensor go from all maps.
    void removeSensor(const QString& pid);

signals:
    void sigMapsChanged();
    void sigIconsChanged();
    void sigPictureReady(QString path);
    void sigPictureFailed(QString path, QString text);

private:
    void read(const QVariantMap& document);
    void wantFiles();
    void fillIcons(MapRecord& map);
    /// Where an icon of a friend's library is, which markers of a shared map have; empty until it is here.
    QString friendsIcon(const QString& ownerId, const QString& fileName);
    MapRecord* find(const QString& id);
    void onReady(const QString& path);
    void tellMaps();

    AppContext context_;
    FileFetcher fetcher_;
    QString account_;
    QVariantMap last_;       ///< the document that was read
    bool isCurrent_ = false; ///< nothing was changed here since
    QList<MapRecord> maps_;
    QList<MapIcon> icons_;
    QSet<QString> friendsIcons_; ///< paths of those that are awaited
    QTimer iconsSettled_;        ///< icons come one after the other and are shown together
};

} // namespace corvanta::map
