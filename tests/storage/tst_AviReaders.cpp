#include "storage/avi/AviWriter.h"
#include "support/CodedVideo.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Output {
    int exitCode = -1;
    QList<QByteArray> lines;
    QString problems;
};

Output run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(120000))
        return {-1, {}, process.errorString()};
    Output result{process.exitCode(), {}, QString::fromUtf8(process.readAllStandardError())};
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty() && !line.startsWith('#'))
            result.lines += line.simplified();
    }
    return result;
}

/// Plays a file with mpv to its end; one line for each frame, which ends with what its picture is told by.
Output play(const QString& file, const QStringList& options = {}) {
    return run(QStringLiteral("mpv"),
               QStringList{QStringLiteral("--no-config"), QStringLiteral("--no-terminal"),
                           QStringLiteral("--no-audio"), QStringLiteral("--hr-seek=yes"), QStringLiteral("--o=-"),
                           QStringLiteral("--of=framecrc"), QStringLiteral("--ovc=rawvideo")} +
                   options + QStringList{file});
}

QByteArray picture(const QByteArray& line) {
    return line.mid(line.lastIndexOf(' ') + 1);
}

} // namespace

/// Recordings in the hands of other programs: they find every picture, at its place, and any key frame.
class tst_AviReaders final : public QObject {
    Q_OBJECT
private slots:
    void opencv_data() { rows(); }
    void opencv();
    void mpv_data() { rows(); }
    void mpv();

private:
    static constexpr int Width = 64;
    static constexpr int Height = 48;
    static void rows();
    /// A file made by the writer.
    QString record(int frames, int keyInterval, int rate) const;
    QTemporaryDir dir_;
};

void tst_AviReaders::rows() {
    QTest::addColumn<int>("frames");
    QTest::addColumn<int>("keyInterval");
    QTest::addColumn<int>("rate");
    QTest::newRow("two key frames") << 2 << 1 << 25;
    QTest::newRow("25 a second") << 110 << 25 << 25;
    QTest::newRow("12 a second, rare keys") << 130 << 60 << 12;
}

QString tst_AviReaders::record(int frames, int keyInterval, int rate) const {
    const CodedVideo video = CodedVideo::make(frames, keyInterval, rate, Width, Height);
    const QString file = dir_.filePath(QStringLiteral("%1.avi").arg(frames));
    const auto writer = AviWriter::openOutput(file.toStdString());
    writer->setVideo(Width, Height, rate, "H264");
    for (std::size_t i = 0; i < video.frames.size(); ++i) {
        const QByteArray& frame = video.frames[i];
        writer->writeFrame(
            {reinterpret_cast<const std::byte*>(frame.constData()), static_cast<std::size_t>(frame.size())},
            video.isKey(i));
    }
    return file;
}

void tst_AviReaders::opencv() {
    QFETCH(int, frames);
    QFETCH(int, keyInterval);
    QFETCH(int, rate);
    QVERIFY2(QFile::exists(QStringLiteral(READ_AVI)), "built without OpenCV's libopencv-videoio-dev");
    QStringList arguments{record(frames, keyInterval, rate)};
    // Backwards, so that no seek is a mere reading on.
    for (int at = (frames - 1) / keyInterval * keyInterval; at >= 0; at -= keyInterval)
        arguments += QString::number(at);
    const Output output = run(QStringLiteral(READ_AVI), arguments);
    QCOMPARE(output.problems, QString());
    QCOMPARE(output.exitCode, 0);
    QCOMPARE(output.lines.size(), arguments.size());
    QCOMPARE(output.lines.first(),
             QStringLiteral("%1 %2 %3 %4.000").arg(frames).arg(Width).arg(Height).arg(rate).toUtf8());
    QCOMPARE(output.lines.mid(1).count("same"), arguments.size() - 1);
}

void tst_AviReaders::mpv() {
    QFETCH(int, frames);
    QFETCH(int, keyInterval);
    QFETCH(int, rate);
    const QString file = record(frames, keyInterval, rate);
    const Output whole = play(file);
    QCOMPARE(whole.exitCode, 0);
    QCOMPARE(whole.problems, QString());
    QCOMPARE(whole.lines.size(), frames);
    for (int at = keyInterval; at < frames; at += keyInterval) {
        const Output rest = play(file, {QStringLiteral("--start=%1").arg(double(at) / rate)});
        QCOMPARE(rest.lines.size(), frames - at);
        QCOMPARE(picture(rest.lines.first()), picture(whole.lines[at]));
        QCOMPARE(picture(rest.lines.last()), picture(whole.lines.last()));
    }
}

QTEST_GUILESS_MAIN(tst_AviReaders)
#include "tst_AviReaders.moc"
