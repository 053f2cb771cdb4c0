#include "playback/NumberedVideo.h"

#include <QDebug>
#include <QFile>
#include <QProcess>

#include <cmath>

namespace numbered {

namespace {

constexpr int bits = 14;
constexpr int side = 16; ///< px of a bit's square

/// Squares that are a number in the topmost rows, the lowest bit first, then one bright and one dark; below them
/// something that moves, so that frames lean on one another.
void draw(std::uint8_t* picture, int number) {
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Width; ++x) {
            const int bit = x / side;
            const bool bright = bit < bits ? (number >> bit & 1) != 0 : bit == bits;
            picture[y * Width + x] = static_cast<std::uint8_t>(
                y < side ? (bright ? 235 : 16) : 60 + (x + y + number * 3) % 64 + (x * y + number) % 7);
        }
    }
    std::fill_n(picture + Width * Height, Width * Height / 2, std::uint8_t{128});
}

quint32 readLittle(const QByteArray& bytes, int at) {
    quint32 value = 0;
    for (int index = 3; index >= 0; --index)
        value = value << 8 | static_cast<quint8>(bytes[at + index]);
    return value;
}

void append(QByteArray& bytes, quint32 value) {
    for (int index = 0; index < 4; ++index)
        bytes += static_cast<char>(value >> (8 * index) & 0xFF);
}

QByteArray header(quint32 fileSize, quint32 moviSize, quint32 frames, double rate, bool indexed) {
    QByteArray bytes("RIFF");
    append(bytes, fileSize - 8);
    bytes += "AVI LIST";
    append(bytes, 192);
    bytes += "hdrlavih";
    for (const quint32 value :
         {56U, static_cast<quint32>(1e6 / rate + 0.5), 0U, 0U, indexed ? 0x110U : 0x100U, frames, 0U, 1U, 0U,
          static_cast<quint32>(Width), static_cast<quint32>(Height), 0U, 0U, 0U, 0U})
        append(bytes, value);
    bytes += "LIST";
    append(bytes, 116);
    bytes += "strlstrh";
    append(bytes, 56);
    bytes += "vidsH264";
    for (const quint32 value :
         {0U, 0U, 0U, 1000000U, static_cast<quint32>(rate * 1e6 + 0.5), 0U, frames, 0U, 0xFFFFFFFFU, 0U, 0U, 0U})
        append(bytes, value);
    bytes += "strf";
    for (const quint32 value : {40U, 40U, static_cast<quint32>(Width), static_cast<quint32>(Height), 24U << 16 | 1U})
        append(bytes, value);
    bytes += "H264";
    append(bytes, Width * Height * 3);
    bytes += QByteArray(16, '\0');
    bytes += "LIST";
    append(bytes, 76);
    bytes += "INFOISFT";
    append(bytes, 64);
    bytes += QByteArray(64, '\0') + "JUNK";
    append(bytes, 2028 - 296);
    bytes += QByteArray(2036 - bytes.size(), '\0') + "LIST";
    append(bytes, moviSize);
    return bytes + "movi";
}

} // namespace

QByteArray run(const QString& program, const QStringList& arguments, const QByteArray& input) {
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        qWarning() << program << arguments << process.errorString() << process.readAllStandardError().right(2000);
        return {};
    }
    const QByteArray output = process.readAllStandardOutput();
    return output.isNull() ? QByteArray("") : output;
}

QString probe(const QString& file, const QString& entry) {
    return QString::fromUtf8(run(QStringLiteral("ffprobe"),
                                 {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-count_frames"),
                                  QStringLiteral("-select_streams"), QStringLiteral("v:0"),
                                  QStringLiteral("-show_entries"), QStringLiteral("stream=") + entry,
                                  QStringLiteral("-of"), QStringLiteral("default=nw=1:nk=1"), file}))
        .section(QLatin1Char('\n'), 0, 0)
        .trimmed(); // containers with programs tell it twice
}

bool make(const QString& file, const Kind& kind) {
    constexpr int bytes = Width * Height * 3 / 2;
    QByteArray pictures(bytes * kind.frames, '\0');
    for (int frame = 0; frame < kind.frames; ++frame)
        draw(reinterpret_cast<std::uint8_t*>(pictures.data()) + frame * bytes, kind.firstNumber + frame);
    QStringList arguments{QStringLiteral("-y"), QStringLiteral("-v"), QStringLiteral("error")};
    const auto add = [&arguments](const QString& text) {
        arguments += text.split(QLatin1Char(' '));
    };
    add(QStringLiteral("-f rawvideo -pix_fmt %3 -s %1x%2")
            .arg(Width)
            .arg(Height)
            .arg(QLatin1String(kind.fullRange ? "yuvj420p" : "yuv420p")));
    add(QStringLiteral("-r %1 -i -").arg(QLatin1String(kind.rate)));
    add(QStringLiteral("-c:v libx264 -preset veryfast -threads 1 -g %1 -keyint_min %1 -sc_threshold 0 -bf %2")
            .arg(kind.keyEvery)
            .arg(kind.bFrames));
    add(QStringLiteral("-x264-params open-gop=%1").arg(kind.openGroups ? 1 : 0));
    arguments += file;
    return !run(QStringLiteral("ffmpeg"), arguments, pictures).isNull();
}

int numberOf(const corvanta::playback::Picture* picture) {
    if (picture == nullptr || picture->size != corvanta::video::FrameSize{Width, Height})
        return -1;
    const auto brightAt = [picture](int square) {
        return picture->bytes[static_cast<std::size_t>(side / 2 * Width + square * side + side / 2)] > 127;
    };
    if (!brightAt(bits) || brightAt(bits + 1))
        return -1;
    int number = 0;
    for (int bit = 0; bit < bits; ++bit)
        number |= brightAt(bit) ? 1 << bit : 0;
    return number;
}

bool makeOwn(const QString& file, const QString& source, double rate, Writing writing) {
    QFile from(source);
    if (!from.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = from.readAll();
    const int movi = bytes.indexOf("movi", bytes.indexOf("LIST", 200));
    QByteArray frames;
    QByteArray index;
    quint32 count = 0;
    for (int at = movi + 4; at + 8 <= bytes.size() && bytes.mid(at, 4) == "00dc";) {
        const quint32 size = readLittle(bytes, at + 4);
        const QByteArray frame = bytes.mid(at + 8, static_cast<int>(size));
        // As the recording tells key frames: by the sequence parameters in front.
        const bool key = frame.startsWith(QByteArray("\x00\x00\x00\x01\x67", 5));
        index += "00db";
        append(index, key ? 16 : 0);
        append(index, static_cast<quint32>(2048 + frames.size()));
        append(index, size);
        frames += "00db";
        append(frames, size);
        frames += frame;
        if (size % 2 != 0)
            frames += '\0';
        at += 8 + static_cast<int>(size + size % 2);
        ++count;
    }
    QByteArray made;
    const auto size = static_cast<quint32>(2048 + frames.size() + 8 + index.size());
    if (writing == Writing::Finished)
        made = header(size, static_cast<quint32>(4 + frames.size()), count, rate, true);
    else if (writing == Writing::Provisional)
        made = header(2048, 4, 0, rate, false);
    else
        made = QByteArray(2048, '\0');
    made += frames;
    if (writing == Writing::Finished) {
        made += "idx1";
        append(made, static_cast<quint32>(index.size()));
        made += index;
    }
    QFile to(file);
    return count > 0 && to.open(QIODevice::WriteOnly) && to.write(made) == made.size();
}

} // namespace numbered
