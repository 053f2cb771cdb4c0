#pragma once

#include <QString>

#include <functional>

namespace corvanta::storage {

struct FileRecord;

/// What the user reads instead of a device's id.
using DeviceNames = std::function<QString(const QString& ipncid)>;

/// The texts in which files are shown.
namespace fileTexts {
/// The kind as the user reads it; an unknown one as it is.
QString kind(const QString& folder);
/// "yyyy-MM-dd hh:mm:ss".
QString time(const FileRecord& file);
/// A name of a file or folder as one line: without control characters, at most `longest` characters.
QString oneLine(const QString& name, int longest = 200);
/// "1,234".
QString count(int number);
} // namespace fileTexts

} // namespace corvanta::storage
