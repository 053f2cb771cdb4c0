#pragma once

#include "playback/Picture.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// Video files whose every picture has its number drawn into it, so that what was decoded tells which frame it is.
namespace numbered {

inline constexpr int Width = 320;
inline constexpr int Height = 192;

struct Kind {
    const char* suffix = "avi";
    const char* rate = "25"; ///< as ffmpeg reads it
    int frames = 100;
    int keyEvery = 25;
    int bFrames = 0;
    bool openGroups = false;
    int firstNumber = 0;
    bool fullRange = false;
};

/// Has ffmpeg code it into `file`; false when that fails.
bool make(const QString& file, const Kind& kind);

/// The number of a decoded picture, -1 when there is none.
int numberOf(const corvanta::playback::Picture* picture);

/// How far a file of our own recording came.
enum class Writing {
    Finished,     ///< header, frames, index
    Provisional,  ///< a header that counts no frames, frames
    WithoutHeader ///< 2048 zero bytes, frames
};
/// Writes the frames of `source`, an AVI file of ffmpeg's, as this program records them.
bool makeOwn(const QString& file, const QString& source, double rate, Writing writing);

/// Runs a program to its end; its standard output, null when it fails.
QByteArray run(const QString& program, const QStringList& arguments, const QByteArray& input = {});
/// What ffprobe tells of a value of the video stream, e.g. "nb_read_frames".
QString probe(const QString& file, const QString& entry);

} // namespace numbered
