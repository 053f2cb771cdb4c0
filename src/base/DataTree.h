#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// Names of files and folders in the data tree: drive / "ZEL" / device / kind / day.
namespace corvanta::dataTree {

/// `text` when it can be one component of a path on every system (no separators, no drive, no "..", no control
/// characters, no trailing dot or blank, no device name of Windows, at most 255 bytes), else nothing. Every text
/// that comes from outside passes here before it becomes part of a path.
std::optional<QString> pathComponent(const QString& text);

/// The folder for a new file, ending with a slash: `drive` + "ZEL/" + device + "/" + kind + "/" + day + "/", and
/// without the day for "Inputdata". An empty day means today. Nothing when one of the texts is no path component.
std::optional<QString> folder(const QString& drive, const QString& kind, const QString& ipncid, const QString& day);

/// The drives to store on, in order of preference: those of the settings, else the system's writable ones.
/// Each ends with a slash.
QStringList drives(const QStringList& fromSettings);

} // namespace corvanta::dataTree
