#include "playback/ClipExport.h"
#include "playback/ExportTask.h"
#include "playback/MediaFile.h"
#include "playback/NumberedVideo.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace corvanta::playback;
using std::chrono::milliseconds;

namespace {

std::filesystem::path toPath(const QString& file) {
    return std::filesystem::path(file.toStdString());
}

const ExportProgress goOn = [](double) {
    return true;
};

} // namespace

class tst_ClipExport final : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    QString path(const QString& name) const { return dir_.filePath(name); }
    QStringList filesIn(const QString& folder) const {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    /// The numbers of the clip's pictures, in the order in which another program shows them.
    std::vector<int> numbersByFfmpeg(const QString& clip) {
        const QByteArray raw = numbered::run(
            QStringLiteral("ffmpeg"),
            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-xerror"), QStringLiteral("-i"), clip,
             QStringLiteral("-fps_mode"), QStringLiteral("passthrough"), QStringLiteral("-f"),
             QStringLiteral("rawvideo"), QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p"), QStringLiteral("-")});
        constexpr int bytes = numbered::Width * numbered::Height * 3 / 2;
        std::vector<int> numbers;
        for (int at = 0; at + bytes <= raw.size(); at += bytes) {
            Picture picture{{numbered::Width, numbered::Height}, {raw.begin() + at, raw.begin() + at + bytes}};
            numbers.push_back(numbered::numberOf(&picture));
        }
        return numbers;
    }
    static std::vector<int> range(int first, int last) {
        std::vector<int> numbers;
        for (int number = first; number <= last; ++number)
            numbers.push_back(number);
        return numbers;
    }

private slots:
    void copiesTheMarkedRange_data() {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("bFrames");
        for (const char* source : {"avi", "mp4"}) {
            for (const char* target : {"avi", "mp4", "MP4"}) {
                for (const int bFrames : {0, 3})
                    QTest::addRow("%s to %s, %d B frames", source, target, bFrames)
                        << QString::fromLatin1(source) << QString::fromLatin1(target) << bFrames;
            }
        }
    }

    void copiesTheMarkedRange() {
        QFETCH(QString, source);
        QFETCH(QString, target);
        QFETCH(int, bFrames);
        const QString name = path(QStringLiteral("from.") + source);
        const QString clip = path(QStringLiteral("clip.") + target);
        const bool mp4 = source == QLatin1String("mp4");
        QVERIFY(numbered::make(name, {mp4 ? "mp4" : "avi", "30000/1001", 120, 30, bFrames}));
        // From frame 40 to frame 90; the key frame before is 30.
        const auto frame = [](double number) {
            return std::chrono::microseconds(qRound64((number + 0.5) * 1001 / 30000 * 1e6));
        };
        double last = 0;
        const ExportResult result =
            exportClip({{toPath(name), frame(40), frame(90)}}, toPath(clip), [&](double done) {
                const bool grows = done >= last;
                last = done;
                return grows;
            });
        QCOMPARE(result.error, ExportError::None);
        QCOMPARE(last, 1.0);
        QVERIFY(std::abs((result.early - (frame(40) - frame(29.5))).count()) < 100);
        // B frames shown after the end may have to be kept for those before it, no more than are reordered.
        const std::vector<int> numbers = numbersByFfmpeg(clip);
        const int extra = static_cast<int>(numbers.size()) - 61;
        QVERIFY2(extra >= 0 && extra <= (bFrames > 0 ? bFrames : 0), qPrintable(QString::number(extra)));
        std::vector<int> expected = range(30, 90);
        if (extra > 0) { // not all between the end and the last one
            QVERIFY(std::equal(expected.begin(), expected.end(), numbers.begin()));
        } else {
            QCOMPARE(numbers, expected);
        }
        QCOMPARE(result.frames, numbers.size());
        QCOMPARE(numbered::probe(clip, QStringLiteral("nb_read_frames")).toInt(), static_cast<int>(numbers.size()));
        QCOMPARE(numbered::probe(clip, QStringLiteral("width")).toInt(), numbered::Width);
        QCOMPARE(numbered::probe(clip, QStringLiteral("r_frame_rate")), QStringLiteral("30000/1001"));
        MediaFile media;
        QCOMPARE(media.open(toPath(clip), {}), OpenError::None);
        for (std::size_t number = 0; number < 61; ++number) {
            QCOMPARE(numbered::numberOf(media.decode(number).get()), 30 + static_cast<int>(number));
            const double begin = static_cast<double>(media.beginOf(number).count());
            QVERIFY(std::abs(begin - static_cast<double>(number) * 1001 / 30000 * 1e6) < 1000);
        }
        QVERIFY(filesIn(dir_.path()).filter(QStringLiteral(".part")).isEmpty());
    }

    void joinsPieces_data() {
        QTest::addColumn<QString>("target");
        QTest::newRow("AVI") << QStringLiteral("joined.avi");
        QTest::newRow("MP4") << QStringLiteral("joined.mp4");
    }

    void joinsPieces() {
        QFETCH(QString, target);
        const QString coded = path(QStringLiteral("coded.avi"));
        const QString own = path(QStringLiteral("own.avi"));
        const QString left = path(QStringLiteral("left.avi"));
        const QString foreign = path(QStringLiteral("foreign.mp4"));
        QVERIFY(numbered::make(coded, {"avi", "25", 50, 25, 0, false, 0}));
        QVERIFY(numbered::makeOwn(own, coded, 25, numbered::Writing::Finished));
        QVERIFY(numbered::make(coded, {"avi", "25", 50, 25, 0, false, 50}));
        QVERIFY(numbered::makeOwn(left, coded, 25, numbered::Writing::WithoutHeader));
        QVERIFY(numbered::make(foreign, {"mp4", "25", 50, 25, 2, false, 100}));
        // One after the other, an hour's gap before the last.
        const auto begin = std::chrono::hours(100000);
        const Timeline timeline({{toPath(own), begin, std::chrono::seconds(2)},
                                 {toPath(left), begin + std::chrono::seconds(2), std::chrono::seconds(2)},
                                 {toPath(foreign), begin + std::chrono::hours(1), std::chrono::seconds(2)}});
        const std::vector<ClipPart> parts =
            clipParts(timeline, {begin + milliseconds(1100), begin + std::chrono::hours(1) + milliseconds(990)});
        QCOMPARE(parts.size(), std::size_t{3});
        const ExportResult result = exportClip(parts, toPath(path(target)), goOn);
        QCOMPARE(result.error, ExportError::None);
        QCOMPARE(result.early, std::chrono::microseconds(milliseconds(100)));
        QCOMPARE(numbersByFfmpeg(path(target)), range(25, 124));
        QCOMPARE(result.length, std::chrono::microseconds(std::chrono::seconds(4)));
        const double seconds = numbered::probe(path(target), QStringLiteral("duration")).toDouble();
        QVERIFY2(std::abs(seconds - 4) < 0.1, qPrintable(QString::number(seconds)));
    }

    void leavesNothingWhenItFails_data() {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("cancelAt"); // per cent
        QTest::addColumn<int>("error");
        const auto code = [](ExportError error) {
            return static_cast<int>(error);
        };
        QTest::newRow("cancelled at once") << QStringLiteral("clip.avi") << 0 << code(ExportError::Cancelled);
        QTest::newRow("cancelled") << QStringLiteral("clip.mp4") << 50 << code(ExportError::Cancelled);
        QTest::newRow("no such format") << QStringLiteral("clip.txt") << 200 << code(ExportError::UnknownFormat);
        QTest::newRow("no suffix") << QStringLiteral("clip") << 200 << code(ExportError::UnknownFormat);
        QTest::newRow("no such folder") << QStringLiteral("none/clip.avi") << 200 << code(ExportError::CannotWrite);
    }

    void leavesNothingWhenItFails() {
        QFETCH(QString, target);
        QFETCH(int, cancelAt);
        QFETCH(int, error);
        const QTemporaryDir folder;
        const QString name = path(QStringLiteral("from.avi"));
        QVERIFY(numbered::make(name, {}));
        QFile before(folder.filePath(QStringLiteral("clip.avi")));
        QVERIFY(before.open(QIODevice::WriteOnly) && before.write("before") == 6);
        before.close();
        const ExportResult result =
            exportClip({{toPath(name), {}, std::chrono::seconds(4)}}, toPath(folder.filePath(target)),
                       [cancelAt](double done) { return done * 100 < cancelAt; });
        QCOMPARE(static_cast<int>(result.error), error);
        QCOMPARE(filesIn(folder.path()), QStringList(QStringLiteral("clip.avi")));
        QCOMPARE(before.size(), qint64{6});
    }

    void refusesWhatOneFileCannotHold() {
        const QString small = path(QStringLiteral("small.avi"));
        const QString large = path(QStringLiteral("large.avi"));
        QVERIFY(numbered::make(small, {}));
        QVERIFY(!numbered::run(QStringLiteral("ffmpeg"),
                               {QStringLiteral("-y"), QStringLiteral("-v"), QStringLiteral("error"),
                                QStringLiteral("-i"), small, QStringLiteral("-s"), QStringLiteral("640x384"),
                                QStringLiteral("-c:v"), QStringLiteral("libx264"), large})
                     .isNull());
        const std::chrono::seconds end(4);
        const QString clip = path(QStringLiteral("both.avi"));
        QCOMPARE(exportClip({{toPath(small), {}, end}, {toPath(large), {}, end}}, toPath(clip), goOn).error,
                 ExportError::Different);
        QCOMPARE(exportClip({{toPath(path(QStringLiteral("none.avi"))), {}, end}}, toPath(clip), goOn).error,
                 ExportError::Unreadable);
        QCOMPARE(exportClip({}, toPath(clip), goOn).error, ExportError::NothingThere);
        QVERIFY(!QFile::exists(clip));
    }

    void aTaskTellsHowFarItIs() {
        const QString name = path(QStringLiteral("from.avi"));
        QVERIFY(numbered::make(name, {"avi", "25", 200, 25, 0}));
        const QString clip = path(QStringLiteral("task.mp4"));
        ExportTask task;
        QSignalSpy progress(&task, &ExportTask::sigProgress);
        QSignalSpy done(&task, &ExportTask::sigDone);
        task.start({{toPath(name), {}, std::chrono::seconds(8)}}, toPath(clip));
        QVERIFY(done.wait(60000));
        QCOMPARE(task.result().error, ExportError::None);
        QCOMPARE(progress.last().first().toInt(), 100);
        QCOMPARE(progress.count(), 100);
        QCOMPARE(numbersByFfmpeg(clip), range(0, 199));
        ExportTask cancelled;
        QSignalSpy ended(&cancelled, &ExportTask::sigDone);
        cancelled.cancel();
        cancelled.start({{toPath(name), {}, std::chrono::seconds(8)}}, toPath(path(QStringLiteral("never.mp4"))));
        QVERIFY(ended.wait(60000));
        QCOMPARE(cancelled.result().error, ExportError::Cancelled);
        QVERIFY(!QFile::exists(path(QStringLiteral("never.mp4"))));
    }
};

QTEST_GUILESS_MAIN(tst_ClipExport)
#include "tst_ClipExport.moc"
