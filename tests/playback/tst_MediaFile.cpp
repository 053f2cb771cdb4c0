#include "playback/MediaFile.h"
#include "playback/NumberedVideo.h"
#include "playback/Snapshot.h"

#include <QTemporaryDir>
#include <QtTest>

#include <filesystem>
#include <random>

using corvanta::playback::MediaFile;
using corvanta::playback::OpenError;
using corvanta::playback::SharedPicture;
using numbered::Kind;
using numbered::Writing;
using std::chrono::microseconds;

Q_DECLARE_METATYPE(corvanta::playback::OpenError)
Q_DECLARE_METATYPE(numbered::Kind)
Q_DECLARE_METATYPE(numbered::Writing)

namespace {

std::filesystem::path toPath(const QString& file) {
    return std::filesystem::path(file.toStdString());
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& content) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

} // namespace

class tst_MediaFile final : public QObject {
    Q_OBJECT

private:
    int decoded(MediaFile& file, int frame) {
        return numbered::numberOf(file.decode(static_cast<std::size_t>(frame)).get());
    }
    /// Every frame in turn, then any, then back from the end.
    void checkEveryFrame(MediaFile& file, int frames) {
        for (int frame = 0; frame < frames; ++frame)
            QCOMPARE(decoded(file, frame), frame);
        std::mt19937 random(7);
        for (int turn = 0; turn < 60; ++turn) {
            const int frame = static_cast<int>(random() % static_cast<unsigned>(frames));
            QCOMPARE(decoded(file, frame), frame);
        }
        for (int frame = frames - 1; frame >= 0; --frame)
            QCOMPARE(decoded(file, frame), frame);
    }
    QString path(const QString& name) const { return dir_.filePath(name); }

    QTemporaryDir dir_;

private slots:
    void findsAndDecodesEveryFrame_data() {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<int>("threads");
        QTest::addColumn<int>("kept");
        constexpr int Enough = 48 << 20;
        QTest::newRow("AVI") << Kind{} << 1 << Enough;
        QTest::newRow("AVI, B frames") << Kind{"avi", "25", 100, 25, 3} << 1 << Enough;
        QTest::newRow("AVI, long groups") << Kind{"avi", "25", 300, 250, 0} << 2 << Enough;
        QTest::newRow("AVI, little kept") << Kind{"avi", "25", 120, 60, 2} << 2 << 0;
        QTest::newRow("AVI, odd rate") << Kind{"avi", "12.5", 60, 13, 0} << 1 << Enough;
        QTest::newRow("AVI, open groups") << Kind{"avi", "25", 100, 20, 3, true} << 1 << Enough;
        QTest::newRow("MP4") << Kind{"mp4", "25", 100, 25, 0} << 1 << Enough;
        QTest::newRow("MP4, B frames, odd rate") << Kind{"mp4", "30000/1001", 120, 30, 3} << 1 << Enough;
        QTest::newRow("MP4, long groups") << Kind{"mp4", "25", 300, 250, 2} << 2 << Enough;
        QTest::newRow("MP4, open groups") << Kind{"mp4", "25", 100, 20, 3, true} << 3 << 0;
        QTest::newRow("MP4, one key frame") << Kind{"mp4", "15", 70, 1000, 1} << 1 << Enough;
        QTest::newRow("Matroska") << Kind{"mkv", "25", 100, 25, 2} << 1 << Enough;
        QTest::newRow("transport stream") << Kind{"ts", "25", 100, 25, 2} << 1 << Enough;
        QTest::newRow("one frame") << Kind{"avi", "25", 1, 25, 0} << 2 << Enough;
    }

    void findsAndDecodesEveryFrame() {
        QFETCH(Kind, kind);
        QFETCH(int, threads);
        QFETCH(int, kept);
        const QString name = path(QStringLiteral("a.%1").arg(QLatin1String(kind.suffix)));
        QVERIFY(numbered::make(name, kind));
        MediaFile file;
        QCOMPARE(file.open(toPath(name), {threads, static_cast<std::size_t>(kept)}), OpenError::None);
        QVERIFY(file.isComplete());
        QCOMPARE(file.size(), (corvanta::video::FrameSize{numbered::Width, numbered::Height}));
        QCOMPARE(static_cast<int>(file.frameCount()), kind.frames);
        QCOMPARE(QString::number(file.frameCount()), numbered::probe(name, QStringLiteral("nb_read_frames")));
        const QStringList rate = QString::fromLatin1(kind.rate).split(QLatin1Char('/'));
        const double seconds = (rate.size() == 2 ? rate[1].toDouble() : 1) / rate[0].toDouble();
        QVERIFY(std::abs(static_cast<double>(file.duration().count()) - kind.frames * seconds * 1e6) < 2000);
        for (int frame = 0; frame < kind.frames; ++frame) {
            const auto number = static_cast<std::size_t>(frame);
            const auto begin = static_cast<double>(file.beginOf(number).count());
            QVERIFY2(std::abs(begin - frame * seconds * 1e6) < 1000, qPrintable(QString::number(frame)));
            QCOMPARE(file.frameAt(file.beginOf(number)), number);
            QCOMPARE(file.frameAt(file.beginOf(number) + microseconds(static_cast<int>(seconds * 0.9e6))), number);
        }
        QCOMPARE(file.frameAt(microseconds(-5)), std::size_t{0});
        QCOMPARE(file.frameAt(std::chrono::hours(3)), file.frameCount() - 1);
        checkEveryFrame(file, kind.frames);
    }

    void timesAreThoseOfAnotherReader() {
        // Times that do not come at one rate, and do not begin at zero.
        const QString even = path(QStringLiteral("even.mp4"));
        const QString name = path(QStringLiteral("uneven.mp4"));
        QVERIFY(numbered::make(even, {"mp4", "25", 60, 20, 2}));
        QVERIFY(!numbered::run(
                     QStringLiteral("ffmpeg"),
                     {QStringLiteral("-y"), QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), even,
                      QStringLiteral("-vf"), QStringLiteral("setpts=PTS*(1+N/100)+0.7/TB"),
                      QStringLiteral("-fps_mode"), QStringLiteral("vfr"), QStringLiteral("-g"), QStringLiteral("20"),
                      QStringLiteral("-bf"), QStringLiteral("2"), QStringLiteral("-qp"), QStringLiteral("18"), name})
                     .isNull());
        const QStringList lines =
            QString::fromUtf8(
                numbered::run(QStringLiteral("ffprobe"),
                              {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-select_streams"),
                               QStringLiteral("v"), QStringLiteral("-show_entries"),
                               QStringLiteral("frame=best_effort_timestamp_time"), QStringLiteral("-of"),
                               QStringLiteral("csv=p=0"), name}))
                .remove(QLatin1Char('\r'))
                .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        MediaFile file;
        QCOMPARE(file.open(toPath(name), {}), OpenError::None);
        QCOMPARE(static_cast<int>(file.frameCount()), lines.size());
        const double first = lines[0].section(QLatin1Char(','), 0, 0).toDouble();
        for (int frame = 0; frame < lines.size(); ++frame) {
            const double time = (lines[frame].section(QLatin1Char(','), 0, 0).toDouble() - first) * 1e6;
            QVERIFY(std::abs(static_cast<double>(file.beginOf(static_cast<std::size_t>(frame)).count()) - time) < 10);
        }
        for (int frame : {0, 59, 20, 19, 21, 40, 39, 1})
            QCOMPARE(decoded(file, frame), frame);
    }

    void playsOwnRecordings_data() {
        QTest::addColumn<Writing>("writing");
        QTest::addColumn<double>("rate");
        QTest::addColumn<bool>("complete");
        QTest::newRow("finished") << Writing::Finished << 20.0 << true;
        QTest::newRow("left with its provisional header") << Writing::Provisional << 20.0 << false;
        QTest::newRow("left without a header") << Writing::WithoutHeader << 25.0 << false;
    }

    void playsOwnRecordings() {
        QFETCH(Writing, writing);
        QFETCH(double, rate);
        QFETCH(bool, complete);
        const QString coded = path(QStringLiteral("coded.avi"));
        const QString name = path(QStringLiteral("own.avi"));
        QVERIFY(numbered::make(coded, {}));
        QVERIFY(numbered::makeOwn(name, coded, rate, writing));
        MediaFile file;
        QCOMPARE(file.open(toPath(name), {}), OpenError::None);
        QCOMPARE(file.isComplete(), complete);
        QCOMPARE(file.size(), (corvanta::video::FrameSize{numbered::Width, numbered::Height}));
        QCOMPARE(file.frameCount(), std::size_t{100});
        QCOMPARE(file.frameRate(), rate);
        checkEveryFrame(file, 100);
    }

    void playsWhatIsThereOfACutFile_data() {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("own");
        QTest::newRow("AVI") << QStringLiteral("avi") << false;
        QTest::newRow("own recording") << QStringLiteral("avi") << true;
        QTest::newRow("transport stream") << QStringLiteral("ts") << false;
    }

    void playsWhatIsThereOfACutFile() {
        QFETCH(QString, suffix);
        QFETCH(bool, own);
        const QString whole = path(QStringLiteral("whole.") + suffix);
        const QString cut = path(QStringLiteral("cut.") + suffix);
        QVERIFY(numbered::make(whole, {suffix == QLatin1String("ts") ? "ts" : "avi", "25", 100, 25, 0}));
        if (own) {
            QVERIFY(QFile::remove(cut) || !QFile::exists(cut));
            QVERIFY(numbered::makeOwn(cut, whole, 25, Writing::Finished));
        }
        const QByteArray content = contentOf(own ? cut : whole);
        write(cut, content.left(content.size() * 6 / 10));
        MediaFile file;
        QCOMPARE(file.open(toPath(cut), {}), OpenError::None);
        const auto frames = static_cast<int>(file.frameCount());
        QVERIFY2(frames > 40 && frames < 80, qPrintable(QString::number(frames)));
        for (int frame : {0, frames - 3, 30, 7})
            QCOMPARE(decoded(file, frame), frame);
    }

    void aFileThatGrowsIsPlayedAsFarAsItIs() {
        const QString coded = path(QStringLiteral("coded.avi"));
        const QString name = path(QStringLiteral("growing.avi"));
        QVERIFY(numbered::make(coded, {}));
        QVERIFY(numbered::makeOwn(name, coded, 25, Writing::Provisional));
        const QByteArray content = contentOf(name);
        std::size_t before = 0;
        for (int part = 3; part <= 10; ++part) {
            write(name, content.left(content.size() * part / 10));
            MediaFile file;
            QCOMPARE(file.open(toPath(name), {}), OpenError::None);
            QVERIFY(file.frameCount() >= before);
            before = file.frameCount();
            QCOMPARE(decoded(file, static_cast<int>(before) - 1), static_cast<int>(before) - 1);
        }
        QCOMPARE(before, std::size_t{100});
    }

    void saysWhyAFileCannotBePlayed_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<OpenError>("error");
        QTest::newRow("nothing in it") << QByteArray("") << OpenError::NotAVideo;
        QTest::newRow("zeros only") << QByteArray(5000, '\0') << OpenError::NotAVideo;
        QTest::newRow("a text") << QByteArray("no video\n").repeated(400) << OpenError::NotAVideo;
    }

    void saysWhyAFileCannotBePlayed() {
        QFETCH(QByteArray, content);
        QFETCH(OpenError, error);
        const QString name = path(QStringLiteral("bad.avi"));
        write(name, content);
        MediaFile file;
        QCOMPARE(file.open(toPath(name), {}), error);
    }

    void saysThatAFileIsMissingOrOnlyBegun() {
        MediaFile missing;
        QCOMPARE(missing.open(toPath(path(QStringLiteral("none.avi"))), {}), OpenError::Missing);
        MediaFile folder;
        QCOMPARE(folder.open(toPath(dir_.path()), {}), OpenError::Missing);
        const QString coded = path(QStringLiteral("coded.avi"));
        const QString name = path(QStringLiteral("begun.avi"));
        QVERIFY(numbered::make(coded, {}));
        QVERIFY(numbered::makeOwn(name, coded, 25, Writing::Provisional));
        write(name, contentOf(name).left(2048));
        MediaFile begun;
        QCOMPARE(begun.open(toPath(name), {}), OpenError::Unfinished);
    }

    void damageInTheMiddleHurtsOnlyItsGroup_data() {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("unfinished");
        QTest::newRow("AVI") << QStringLiteral("avi") << false;
        QTest::newRow("MP4") << QStringLiteral("mp4") << false;
        QTest::newRow("unfinished recording") << QStringLiteral("avi") << true;
    }

    void damageInTheMiddleHurtsOnlyItsGroup() {
        QFETCH(QString, suffix);
        QFETCH(bool, unfinished);
        QString name = path(QStringLiteral("d.") + suffix);
        QVERIFY(numbered::make(name, {suffix == QLatin1String("mp4") ? "mp4" : "avi", "25", 100, 10, 0}));
        if (unfinished) {
            const QString own = path(QStringLiteral("d-own.avi"));
            QVERIFY(numbered::makeOwn(own, name, 25, Writing::WithoutHeader));
            name = own;
        }
        QByteArray content = contentOf(name);
        std::mt19937 random(3);
        for (int at = content.size() / 2; at < content.size() / 2 + 600; ++at)
            content[at] = static_cast<char>(random());
        write(name, content);
        MediaFile file;
        QCOMPARE(file.open(toPath(name), {}), OpenError::None);
        const auto frames = static_cast<int>(file.frameCount());
        QVERIFY(frames >= 80);
        for (int frame = 0; frame < frames; ++frame)
            file.decode(static_cast<std::size_t>(frame));
        for (int frame : {35, 0, 20})
            QCOMPARE(decoded(file, frame), frame);
        QCOMPARE(decoded(file, frames - 1), 99);
    }

    void nothingInAFileMakesItCrash() {
        std::mt19937 random(11);
        for (const char* suffix : {"avi", "mp4", "own"}) {
            const bool own = QLatin1String(suffix) == QLatin1String("own");
            const QString coded = path(QStringLiteral("f.") + QLatin1String(own ? "avi" : suffix));
            QVERIFY(numbered::make(coded, {own ? "avi" : suffix, "25", 12, 4, 1}));
            QString name = coded;
            if (own) {
                name = path(QStringLiteral("f-own.avi"));
                QVERIFY(numbered::makeOwn(name, coded, 25, Writing::Provisional));
            }
            const QByteArray whole = contentOf(name);
            for (int turn = 0; turn < 60; ++turn) {
                QByteArray content = whole;
                const int changes = 1 + static_cast<int>(random() % 40);
                for (int change = 0; change < changes; ++change) {
                    // Half of the changes hit the header, where the sizes and counts are.
                    const auto reach = static_cast<unsigned>(change % 2 == 0 ? content.size() : 700);
                    content[static_cast<int>(random() % reach)] = static_cast<char>(random());
                }
                write(name, content);
                MediaFile file;
                if (file.open(toPath(name), {}) != OpenError::None)
                    continue;
                const std::size_t frames = file.frameCount();
                for (const std::size_t frame : {frames - 1, std::size_t{0}, frames / 2})
                    file.decode(file.frameAt(file.beginOf(frame)));
            }
        }
    }

    void anInterruptedDecodingGoesOnLater() {
        const QString name = path(QStringLiteral("i.avi"));
        QVERIFY(numbered::make(name, {"avi", "25", 120, 60, 2}));
        MediaFile file;
        QCOMPARE(file.open(toPath(name), {2, 8 << 20}), OpenError::None);
        int asked = 0;
        QVERIFY(file.decode(50, [&asked] { return ++asked > 20; }) == nullptr);
        QCOMPARE(decoded(file, 50), 50);
        QVERIFY(file.decode(110, [] { return true; }) == nullptr);
        QCOMPARE(decoded(file, 55), 55);
        QCOMPARE(decoded(file, 110), 110);
    }

    void picturesAreFullRange_data() {
        QTest::addColumn<bool>("fullRange");
        QTest::addColumn<int>("bright");
        QTest::addColumn<int>("dark");
        QTest::newRow("limited") << false << 255 << 0;
        QTest::newRow("full") << true << 235 << 16;
    }

    void picturesAreFullRange() {
        QFETCH(bool, fullRange);
        QFETCH(int, bright);
        QFETCH(int, dark);
        const QString name = path(QStringLiteral("range.mp4"));
        QVERIFY(numbered::make(name, {"mp4", "25", 3, 3, 0, false, 0, fullRange}));
        MediaFile file;
        QCOMPARE(file.open(toPath(name), {}), OpenError::None);
        const SharedPicture picture = file.decode(0);
        QVERIFY(picture != nullptr);
        QVERIFY(std::abs(picture->bytes[8 * numbered::Width + 14 * 16 + 8] - bright) <= 3);
        QVERIFY(std::abs(picture->bytes[8 * numbered::Width + 15 * 16 + 8] - dark) <= 3);
        QVERIFY(std::abs(picture->bytes[numbered::Width * numbered::Height + 500] - 128) <= 1);
        for (const char* suffix : {"jpg", "png"}) {
            const QString shot = path(QStringLiteral("shot.") + QLatin1String(suffix));
            QVERIFY(corvanta::playback::saveSnapshot(*picture, shot));
            const QImage image(shot);
            QCOMPARE(image.size(), QSize(numbered::Width, numbered::Height));
            QVERIFY(std::abs(qRed(image.pixel(14 * 16 + 8, 8)) - bright) <= 6);
            QVERIFY(std::abs(qBlue(image.pixel(15 * 16 + 8, 8)) - dark) <= 6);
        }
        QVERIFY(!corvanta::playback::saveSnapshot(*picture, path(QStringLiteral("none/shot.jpg"))));
    }
};

QTEST_GUILESS_MAIN(tst_MediaFile)
#include "tst_MediaFile.moc"
