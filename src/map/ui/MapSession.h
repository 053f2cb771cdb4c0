#pragma once

#include "base/AppContext.h"
#include "map/MapDocument.h"
#include "map/SensorIndex.h"
#include "map/ui/MapView.h"

#include <QHash>
#include <QMultiHash>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVariantList>

namespace corvanta::map {

/// One map in one view, whichever kind: says what the view shows (markers, values, alarms) and does what the user
/// wants of markers, with the service's consent. A move shows at once and is taken back when it is refused. GUI
/// thread.
///
/// Lives as long as its view, which owns it.
class MapSession final : public QObject {
    Q_OBJECT
public:
    /// `document` outlives the view. `mapId` is one of its maps.
    MapSession(const AppContext& context, MapDocument& document, QString mapId, MapView& view);

    const QString& mapId() const { return mapId_; }
    const QList<MapMarker>& markers() const { return shown_; }
    /// Level of a marker's alarm that nobody has cleared; nothing without one.
    std::optional<int> alarmOf(int index) const;

    /// Brings the markers of an alarm into view; false when it is about none of them.
    bool showAlarmPlace(const QString& ipncId, const QVariantMap& trigger);

public slots:
    /// An alarm (its "trigger" object) is shown on the markers that it is about, until it is cleared.
    void OntriggerAlarm(const QVariantMap& triggerMap);
    /// Values of inputs (list of {"pid", ...}) have changed.
    void UpdateSensorInputData(const QString& time, const QVariantList& datalist);

signals:
    /// The map is not in the document any more.
    void sigGone();

private:
    void connectView();
    void refresh();
    /// Tells the view of the difference in as few words as can be; false: it has to be told everything.
    bool refreshPart(const QList<MapMarker>& wanted);
    void tellAll();
    void fillTables();
    void tellText(int index);
    void tellPending();
    bool mayChange();
    const MapMarker* marker(int index) const;
    void drop(const QString& ipncId, const QString& sensorPid, const MapMarker& place);
    void move(int index, const MapMarker& place);
    void activate(int index);
    void menu(int index, const QPoint& place);
    void edit(int index);
    void askToDelete(int index);
    void clearAlarm(int index);
    void editReferences(int index);

    /// Values are shown a few times a second, however many come.
    static constexpr int ValueBeat = 400; // ms

    AppContext context_;
    MapDocument& document_;
    const QString mapId_;
    MapView& view_;
    SensorIndex index_;
    QList<MapMarker> shown_;
    QMultiHash<int, int> followers_; ///< by input, indices of the markers that show it as it changes
    QHash<QString, int> alarms_;     ///< level, by the marker's own id
    QHash<QString, int> moving_;     ///< number of the last move that waits for an answer, by the marker's own id
    int moves_ = 0;
    QSet<int> pending_; ///< indices of markers whose values have changed
    QTimer beat_;
};

} // namespace corvanta::map
