#pragma once

#include "sensor/Samples.h"

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QVector>

#include <optional>

class QIODevice;

namespace corvanta::sensor {

/// The samples of a data file, which a device keeps of the seconds around an alarm, by input: UTF-8 text, a line
/// "#corvanta-dat 1", then lines "EPOCH.mmm<TAB>PID<TAB>VALUE". Lines that are none are left out with one debug line.
/// Nothing when it is no such file.
std::optional<QMap<int, Samples>> readDatFile(QIODevice& device);

/// A data file that has been stored here.
struct StoredDat {
    QString ipncId;
    QString path;
    QString name;
    QDateTime time; ///< when it was written
};

/// Those on the drives, the newest first, a few thousand at most.
QVector<StoredDat> storedDats(const QStringList& drives);

} // namespace corvanta::sensor
