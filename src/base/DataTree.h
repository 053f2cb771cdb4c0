#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Names of files and folders in the data tree: drive / "ZEL" / device / kind / day.
namespace corvanta::dataTree {

/// How days and the beginnings of file names are written.
inline const QString DayFormat = QStringLiteral("yyyy-MM-dd");
inline const QString FileTimeFormat = QStringLiteral("yyyyMMddhhmmss");

/// The kinds of files, as their folders are named.
inline const QString Capture = QStringLiteral("Capture");           ///< snapshots by the user
inline const QString Image = QStringLiteral("Image");               ///< pictures of alarms
inline const QString LocalRecord = QStringLiteral("LocalRecord");   ///< recordings made here
inline const QString DeviceRecord = QStringLiteral("DeviceRecord"); ///< recordings fetched from a device
inline const QString InputData = QStringLiteral("Inputdata");       ///< samples of sensors; without folders for days
/// Those with a folder for each day.
const QStringList& kindsByDay();

/// `text` when it can be one component of a path on every system (no separators, no drive, no "..", no control
/// characters, no trailing dot or blank, no device name of Windows, whole letters only, at most 255 bytes), else
/// nothing. Every text that comes from outside passes here before it becomes part of a path.
std::optional<QString> pathComponent(const QString& text);

/// The folder for a new file, ending with a slash: `drive` + "ZEL/" + device + "/" + kind + "/" + day + "/", and
/// without the day for "Inputdata". An empty day means today. Nothing when one of the texts is no path component.
std::optional<QString> folder(const QString& drive, const QString& kind, const QString& ipncid, const QString& day);

} // namespace corvanta::dataTree
