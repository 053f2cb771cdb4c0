#pragma once

#include <QStringList>

namespace corvanta::vision {

/// The device that the path of an alarm's video names: the third element of "D:/ZEL/<device>/...". The root of a
/// drive is one element, however deep it lies ("/mnt/disk/" of "/mnt/disk/ZEL/<device>/..."); `drives` are those
/// roots, each with its slash. Empty for a path that is too short.
QString deviceOfVideo(const QString& path, const QStringList& drives);

} // namespace corvanta::vision
