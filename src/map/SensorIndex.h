#pragma once

#include "map/MapMarker.h"
#include "sensor/InputRecords.h"

#include <QHash>
#include <QStringList>

class DeviceModel;
class InputFields;

namespace corvanta::map {

/// Which inputs the markers of maps stand for, looked up quickly. A value, made anew with each list of devices.
class SensorIndex final {
public:
    SensorIndex() = default;
    explicit SensorIndex(const DeviceModel& devices);

    /// The inputs of a marker's sensor, or, of a camera, those of all sensors of its device. In their order.
    QVector<sensor::InputRecord> inputsOf(const MapMarker& marker) const;
    /// Of these the ones whose values its label shows.
    QVector<sensor::InputRecord> shownInputs(const MapMarker& marker) const;

    /// What a marker's label says: the name; a line "name: value unit" for each input that is shown and has one; then
    /// the newest of their times. Everything is plain text of one line each.
    QStringList labelLines(const MapMarker& marker, const InputFields& fields) const;

    /// The markers that an alarm is about. Its "input" tells the sensor; where that has no marker on the map, the
    /// camera of its device stands for it.
    QList<int> markersOf(const QVariantMap& trigger, const QList<MapMarker>& markers) const;

private:
    const sensor::InputRecord* input(int pid) const;

    QVector<sensor::InputRecord> inputs_;
    QHash<int, int> byPid_; ///< place in inputs_
    QHash<QString, QVector<int>> byDevice_;
};

/// Number of an interface: the pid of the board of an input.
QString boardPid(const sensor::InputRecord& input);

} // namespace corvanta::map
