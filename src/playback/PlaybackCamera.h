#pragma once

#include <QString>
#include <QStringList>

namespace corvanta::playback {

/// A camera whose recordings are to be played: what is shown of it, and its files, in any order.
struct PlaybackCamera {
    QString name;
    QString ipncId;
    QStringList files;
};

} // namespace corvanta::playback
