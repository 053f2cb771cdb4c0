#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// Coded H.264 as devices deliver it: access units with start codes of four bytes, key frames beginning with a
/// sequence parameter set.
struct CodedVideo {
    int width = 0;
    int height = 0;
    int frameRate = 0;
    std::vector<QByteArray> frames;

    bool isKey(std::size_t index) const { return frames[index].size() > 4 && frames[index][4] == '\x67'; }

    /// Made by the ffmpeg command; empty frames when that fails. A key frame each `keyInterval` frames.
    static CodedVideo make(int frameCount, int keyInterval = 25, int frameRate = 25, int width = 320,
                           int height = 180);
};

/// What ffprobe says of a file's first video stream.
struct ProbedVideo {
    int exitCode = -1;
    int frames = 0; ///< decoded
    int keyFrames = 0;
    bool beginsWithKey = false;
    QString size;      ///< "320x180"
    QString frameRate; ///< "25/1"
    double duration = 0.0;
    QString codec;
    QString problems; ///< what it had to say; empty for a faultless file

    static ProbedVideo of(const QString& file);
};

/// The whole frames of a recording in an AVI file, counted chunk by chunk, finished or not; -1 without a file.
int wholeFrames(const QString& path);
