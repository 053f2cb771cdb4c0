#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace corvanta::vision {

/// Measures a file: the result's texts, none where nothing is found. `interrupted` is asked between frames, on
/// several threads, and ends it without a result. Holds copies of all that it needs; any thread.
using FileMeasurement = std::function<QStringList(const QString& path, const std::function<bool()>& interrupted)>;

} // namespace corvanta::vision
