#include "e2e/ProgramTest.h"
#include "support/CodedVideo.h"
#include "support/SqliteShell.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <cstdio>
#include <random>

/// The program is killed at random moments of a busy time, and starts clean after each: what was stored is there in
/// its old or its new state, and every frame that was written can be played.
///
/// CORVANTA_KILLS says how often (3), CORVANTA_SEED repeats the moments and keys of a run.
class tst_Kills final : public ProgramTest {
    Q_OBJECT
private slots:
    void startsCleanAfterEach();

private:
    void prepare();
    /// Starts the program and has it killed before it has done so.
    void killWhileItStarts();
    /// Starts the program, looks at what it finds, and has it killed while the operator works.
    void killWhileItWorks();
    /// What lies on the disk while no program runs.
    void examine();
    /// Starts the program, signs in, and demands that all is as it was left.
    void startAndLook();
    /// What a row says, in a copy of a database that is left to its program to mend.
    QStringList readCopy(const QString& file, const QString& statement);
    QStringList recordings() const;
    QStringList setAside() const;
    int random(int most) { return std::uniform_int_distribution<>(0, most)(random_); }

    static constexpr int PackingTime = 1;
    std::mt19937 random_;
    int signIns_ = 0;             ///< that were seen to be complete
    QMap<QString, int> unplayed_; ///< recordings that nobody has looked at since a kill, with their whole frames
    int played_ = 0;
    int samples_ = 0;
};

void tst_Kills::prepare() {
    const QJsonObject settings{{QStringLiteral("盘符文件夹"), QJsonArray{data() + QStringLiteral("/disk/")}},
                               {QStringLiteral("录像打包时间"), PackingTime}};
    QVERIFY(QDir().mkpath(data() + QStringLiteral("/config")));
    QFile file(data() + QStringLiteral("/config/set.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(settings).toJson());
}

QStringList tst_Kills::recordings() const {
    QStringList result;
    QDirIterator it(data() + QStringLiteral("/disk/ZEL"), {QStringLiteral("*.avi")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        result += it.next();
    return result;
}

QStringList tst_Kills::setAside() const {
    QStringList result;
    QDirIterator it(data(), {QStringLiteral("*.damaged-*")}, QDir::AllEntries, QDirIterator::Subdirectories);
    while (it.hasNext())
        result += it.next();
    return result;
}

QStringList tst_Kills::readCopy(const QString& file, const QString& statement) {
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("copy.db"));
    if (!QFile::copy(data() + QLatin1Char('/') + file, copy))
        return {};
    for (const char* companion : {"-wal", "-journal"})
        QFile::copy(data() + QLatin1Char('/') + file + QLatin1String(companion), copy + QLatin1String(companion));
    return sqliteShell::run(copy, statement);
}

void tst_Kills::killWhileItStarts() {
    QVERIFY(program().start());
    QTest::qWait(random(2500));
    program().kill();
}

void tst_Kills::killWhileItWorks() {
    STEP(startAndLook());
    QElapsedTimer clock;
    clock.start();
    const int moment = random(5000);
    static const QStringList Keys{QStringLiteral("1"),    QStringLiteral("2"),     QStringLiteral("3"),
                                  QStringLiteral("4"),    QStringLiteral("space"), QStringLiteral("Right"),
                                  QStringLiteral("Down"), QStringLiteral("Left"),  QStringLiteral("ctrl+w")};
    const QRect tree = window().treeArea();
    while (clock.elapsed() < moment) {
        // Layouts and zooms by keys, videos by a row here and there.
        if (random(3) == 0)
            Desktop::doubleClick(tree.topLeft() + QPoint(60, 10 + random(qMax(0, tree.height() - 20))));
        else
            Desktop::keys({Keys[random(Keys.size() - 1)]});
        QTest::qWait(random(60));
    }
    program().kill();
}

void tst_Kills::examine() {
    for (const QString& path : recordings())
        unplayed_.insert(path, wholeFrames(path));
    QFile settings(data() + QStringLiteral("/config/set.json"));
    QVERIFY(settings.open(QIODevice::ReadOnly));
    const QByteArray text = settings.readAll();
    QVERIFY2(QJsonDocument::fromJson(text).isObject(), text.constData());
    QCOMPARE(program().stored(QStringLiteral("录像打包时间")).toInt(), PackingTime);
    const QString sound = QStringLiteral("pragma integrity_check;");
    for (const char* file : {"dataBase.db", "service/service.db", "service/service.db.samples"}) {
        if (QFile::exists(data() + QLatin1Char('/') + QLatin1String(file)))
            QCOMPARE(readCopy(QLatin1String(file), sound), QStringList{QStringLiteral("ok")});
    }
    if (signIns_ == 0)
        return;
    QCOMPARE(readCopy(QStringLiteral("dataBase.db"), QStringLiteral("select count(*) from loginLogs;")),
             QStringList{QString::number(signIns_)});
    const int samples =
        readCopy(QStringLiteral("service/service.db.samples"), QStringLiteral("select count(*) from samples;"))
            .value(0)
            .toInt();
    QVERIFY(samples >= samples_);
    samples_ = samples;
}

void tst_Kills::startAndLook() {
    const int rows = program().stored(QStringLiteral("fwidget_row")).toInt();
    const int columns = program().stored(QStringLiteral("fwidget_col")).toInt();
    const QVariant zoom = program().stored(QStringLiteral("VideoZoomDisplayIndex"));
    const bool isZoomed = zoom.isValid() && zoom.toInt() >= 0 && zoom.toInt() < rows * columns;
    const bool wasShown = rows > 0;
    const QStringList recorded = program().stored(QStringLiteral("正在录像设备")).toStringList();
    STEP(start());
    if (wasShown)
        QCOMPARE(window().shownTiles().size(), isZoomed ? 1 : rows * columns);
    STEP(signIn());
    ++signIns_;
    QCOMPARE(setAside(), QStringList());
    const QString log = program().log();
    for (const char* complaint : {"damaged", "could not be read", "open db error"})
        QVERIFY2(!log.contains(QLatin1String(complaint)), complaint);
    for (auto it = unplayed_.cbegin(); it != unplayed_.cend(); ++it) {
        if (it.value() <= 0)
            continue; // the camera had delivered nothing yet
        const auto isWhole = [&it] {
            const ProbedVideo probed = ProbedVideo::of(it.key());
            return probed.problems.isEmpty() && probed.frames == it.value();
        };
        QVERIFY2(QTest::qWaitFor(isWhole, Desktop::Patience), qPrintable(it.key()));
        ++played_;
    }
    unplayed_.clear();
    // Whatever was being recorded is recorded on, into files of its own.
    for (const QString& id : recorded) {
        COMES(program().stored(QStringLiteral("正在录像设备")).toStringList().contains(id));
        COMES(program().log().contains(QStringLiteral("开始录像开始录像 \"%1\"").arg(id)));
    }
    if (!recorded.isEmpty())
        return;
    QRect place;
    STEP(reveal(QStringLiteral("园区大门"), place));
    Desktop::clickRight(place.center());
    STEP(chooseEntry(QStringLiteral("本组开始录像")));
    COMES(recordings().size() >= 9);
}

void tst_Kills::startsCleanAfterEach() {
    bool isGiven = false;
    unsigned seed = qEnvironmentVariable("CORVANTA_SEED").toUInt(&isGiven);
    if (!isGiven)
        seed = std::random_device()();
    random_.seed(seed);
    isGiven = false;
    int kills = qEnvironmentVariable("CORVANTA_KILLS").toInt(&isGiven);
    if (!isGiven)
        kills = 3;
    std::fprintf(stderr, "CORVANTA_KILLS=%d CORVANTA_SEED=%u\n", kills, seed);
    STEP(prepare());
    for (int kill = 0; kill < kills; ++kill) {
        if (random(4) == 0)
            STEP(killWhileItStarts());
        else
            STEP(killWhileItWorks());
        STEP(examine());
    }
    STEP(startAndLook());
    std::fprintf(stderr, "%d recordings played, %d samples\n", played_, samples_);
    quit();
}

QTEST_MAIN(tst_Kills)
#include "tst_Kills.moc"
