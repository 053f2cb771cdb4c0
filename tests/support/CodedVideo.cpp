#include "support/CodedVideo.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtEndian>

namespace {

constexpr int Patience = 120000; // ms

QByteArray outputOf(const QString& program, const QStringList& arguments, int* exitCode = nullptr,
                    QString* problems = nullptr) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(Patience))
        return {};
    if (exitCode != nullptr)
        *exitCode = process.exitCode();
    if (problems != nullptr)
        *problems = QString::fromUtf8(process.readAllStandardError()).trimmed();
    return process.readAllStandardOutput();
}

/// Where the access units begin: at a sequence parameter set, or at a slice that none precedes.
std::vector<int> beginnings(const QByteArray& stream) {
    static const QByteArray startCode("\0\0\0\1", 4);
    std::vector<int> result;
    for (int at = stream.indexOf(startCode); at >= 0; at = stream.indexOf(startCode, at + 4)) {
        const int type = at + 4 < stream.size() ? stream[at + 4] & 0x1f : 0;
        if (type == 7 || type == 1)
            result.push_back(at);
    }
    return result;
}

} // namespace

CodedVideo CodedVideo::make(int frameCount, int keyInterval, int frameRate, int width, int height) {
    CodedVideo video{width, height, frameRate, {}};
    const QString source = QStringLiteral("testsrc2=size=%1x%2:rate=%3").arg(width).arg(height).arg(frameRate);
    const QString coder =
        QStringLiteral("keyint=%1:min-keyint=%1:scenecut=0:bframes=0:repeat-headers=1:slices=1").arg(keyInterval);
    const QByteArray stream = outputOf(
        QStringLiteral("ffmpeg"),
        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"), QStringLiteral("lavfi"),
         QStringLiteral("-i"), source, QStringLiteral("-frames:v"), QString::number(frameCount),
         QStringLiteral("-c:v"), QStringLiteral("libx264"), QStringLiteral("-preset"), QStringLiteral("ultrafast"),
         QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p"), QStringLiteral("-x264-params"), coder,
         QStringLiteral("-f"), QStringLiteral("h264"), QStringLiteral("-")});
    std::vector<int> at = beginnings(stream);
    at.push_back(stream.size());
    for (std::size_t i = 0; i + 1 < at.size(); ++i)
        video.frames.push_back(stream.mid(at[i], at[i + 1] - at[i]));
    return video;
}

ProbedVideo ProbedVideo::of(const QString& file) {
    ProbedVideo result;
    const QByteArray text = outputOf(
        QStringLiteral("ffprobe"),
        {QStringLiteral("-v"), QStringLiteral("warning"), QStringLiteral("-select_streams"), QStringLiteral("v:0"),
         QStringLiteral("-count_frames"), QStringLiteral("-show_entries"),
         QStringLiteral("stream=codec_name,width,height,r_frame_rate,nb_read_frames:packet=flags:format=duration"),
         QStringLiteral("-of"), QStringLiteral("json"), file},
        &result.exitCode, &result.problems);
    const QJsonObject root = QJsonDocument::fromJson(text).object();
    const QJsonObject stream = root[QLatin1String("streams")].toArray().first().toObject();
    result.codec = stream[QLatin1String("codec_name")].toString();
    result.frames = stream[QLatin1String("nb_read_frames")].toString().toInt();
    result.size = QStringLiteral("%1x%2")
                      .arg(stream[QLatin1String("width")].toInt())
                      .arg(stream[QLatin1String("height")].toInt());
    result.frameRate = stream[QLatin1String("r_frame_rate")].toString();
    result.duration = root[QLatin1String("format")].toObject()[QLatin1String("duration")].toString().toDouble();
    bool isFirst = true;
    for (const QJsonValue& packet : root[QLatin1String("packets")].toArray()) {
        const bool isKey = packet.toObject()[QLatin1String("flags")].toString().startsWith(QLatin1Char('K'));
        result.keyFrames += isKey ? 1 : 0;
        result.beginsWithKey = isFirst ? isKey : result.beginsWithKey;
        isFirst = false;
    }
    return result;
}

int wholeFrames(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    constexpr int headerSize = 2048;
    int frames = 0;
    for (qint64 at = headerSize; file.seek(at);) {
        const QByteArray head = file.read(8);
        if (head.size() < 8 || !head.startsWith("00db"))
            break;
        const auto length = qFromLittleEndian<quint32>(head.constData() + 4);
        if (at + 8 + length > file.size())
            break;
        ++frames;
        at += 8 + length + length % 2;
    }
    return frames;
}
