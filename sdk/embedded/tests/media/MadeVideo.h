#pragma once

#include <QDebug>
#include <QProcess>
#include <QStringList>

/// Has ffmpeg write `file`; `arguments` are its inputs and codecs, blanks between them. False with a warning when it
/// can't.
inline bool makeVideo(const QString& file, const QString& arguments) {
    QProcess ffmpeg;
    QStringList list{"-v", "error", "-y", "-threads", "1"};
    list += arguments.split(' ', Qt::SkipEmptyParts);
    ffmpeg.start("ffmpeg", list << file);
    const bool done = ffmpeg.waitForFinished(120000) && ffmpeg.exitCode() == 0;
    if (!done)
        qWarning() << ffmpeg.readAllStandardError();
    return done;
}
