#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"
#include "support/CodedVideo.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>

namespace {

const QString Start = QStringLiteral("开始录像");
const QString Stop = QStringLiteral("停止录像");
const QStringList Names{QStringLiteral("东大门入口"), QStringLiteral("东大门出口"), QStringLiteral("西大门入口"),
                        QStringLiteral("西大门出口")};

} // namespace

/// Recordings and snapshots of the running program, judged by what lies on the disk.
class tst_Recording final : public ProgramTest {
    Q_OBJECT
private slots:
    void fourForAMinute();
    void killedAndStartedAgain();
    void snapshot();

private:
    /// Settings with folders of the test's own as drives.
    void prepare(int packingTime);
    void chooseForRow(const QString& row, const QString& entry);
    QString drive(int number) const { return data() + QStringLiteral("/disk%1/").arg(number); }
    /// The files of a device on all drives, in their order.
    QStringList files(const QString& ipncId, const QString& kind = QStringLiteral("LocalRecord")) const;
    /// How many coded frames the device's requests have delivered, as the SDK says at the end of each.
    int delivered(const QString& ipncId);
};

void tst_Recording::prepare(int packingTime) {
    const QJsonObject settings{{QStringLiteral("盘符文件夹"), QJsonArray{drive(1), drive(2)}},
                               {QStringLiteral("录像打包时间"), packingTime}};
    QVERIFY(QDir().mkpath(data() + QStringLiteral("/config")));
    QFile file(data() + QStringLiteral("/config/set.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(settings).toJson());
}

void tst_Recording::chooseForRow(const QString& row, const QString& entry) {
    QRect place;
    STEP(reveal(row, place));
    Desktop::clickRight(place.center());
    chooseEntry(entry);
}

QStringList tst_Recording::files(const QString& ipncId, const QString& kind) const {
    QStringList result;
    for (const int number : {1, 2}) {
        QDirIterator it(drive(number) + QStringLiteral("ZEL/%1/%2").arg(ipncId, kind), QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext())
            result += it.next();
    }
    result.sort();
    return result;
}

int tst_Recording::delivered(const QString& ipncId) {
    const QRegularExpression line(QStringLiteral("request \\d+ of %1 ended after (\\d+) coded frames").arg(ipncId));
    int sum = 0;
    for (auto found = line.globalMatch(program().log()); found.hasNext();)
        sum += found.next().captured(1).toInt();
    return sum;
}

void tst_Recording::fourForAMinute() {
    STEP(prepare(1));
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    STEP(doubleClickRow(Names[0])); // watched and recorded at the same time
    for (const QString& name : Names)
        STEP(chooseForRow(name, Start));
    QVERIFY(sight::becomesLive(window().tile(0)));
    // Two pieces of each, the second with something in it.
    const QStringList ids{QStringLiteral("CAM0001"), QStringLiteral("CAM0002"), QStringLiteral("CAM0003"),
                          QStringLiteral("CAM0004")};
    COMES(std::all_of(ids.begin(), ids.end(), [this](const QString& id) {
        const QStringList pieces = files(id);
        return pieces.size() >= 2 && wholeFrames(pieces.last()) > 10;
    }));
    for (const QString& name : Names)
        STEP(chooseForRow(name, Stop));
    COMES(std::all_of(ids.begin(), ids.end(), [this](const QString& id) { return delivered(id) > 0; }));
    STEP(quit());
    for (const QString& id : ids) {
        int frames = 0;
        const QStringList pieces = files(id);
        for (const QString& piece : pieces) {
            const ProbedVideo probed = ProbedVideo::of(piece);
            QCOMPARE(probed.problems, QString());
            QVERIFY(probed.beginsWithKey); // cut at key frames
            frames += probed.frames;
        }
        QCOMPARE(frames, delivered(id));
        QVERIFY(ProbedVideo::of(pieces.first()).duration >= 60.0);
    }
}

void tst_Recording::killedAndStartedAgain() {
    STEP(prepare(10));
    STEP(startAndSignIn());
    STEP(chooseForRow(QStringLiteral("园区大门"), QStringLiteral("本组开始录像"))); // nine
    STEP(chooseForRow(QStringLiteral("一号厂房"), QStringLiteral("本组开始录像"))); // thirteen
    QStringList ids;
    for (int number = 1; number <= 22; ++number)
        ids += QStringLiteral("CAM%1").arg(number, 4, 10, QLatin1Char('0'));
    COMES(std::all_of(ids.begin(), ids.end(), [this](const QString& id) {
        const QStringList pieces = files(id);
        return pieces.size() == 1 && wholeFrames(pieces.first()) > 5;
    }));
    program().kill();
    QMap<QString, int> frames;
    for (const QString& id : ids)
        frames.insert(files(id).first(), wholeFrames(files(id).first()));

    STEP(startAndSignIn());
    // They are completed, and recorded on.
    COMES(program().log().count(QStringLiteral("recording completed")) == ids.size());
    for (auto it = frames.cbegin(); it != frames.cend(); ++it) {
        const ProbedVideo probed = ProbedVideo::of(it.key());
        QCOMPARE(probed.problems, QString());
        QCOMPARE(probed.frames, it.value());
    }
    COMES(std::all_of(ids.begin(), ids.end(), [this](const QString& id) { return files(id).size() == 2; }));
    quit();
}

void tst_Recording::snapshot() {
    STEP(prepare(10));
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    STEP(doubleClickRow(Names[0]));
    QVERIFY(sight::becomesLive(window().tile(0)));
    Desktop::clickRight(window().tile(0).center());
    STEP(chooseEntry(QStringLiteral("抓拍照片")));
    COMES(window().message().startsWith(QStringLiteral("已抓拍：")));
    const QStringList pictures = files(QStringLiteral("CAM0001"), QStringLiteral("Capture"));
    QCOMPARE(pictures.size(), 1);
    static const QRegularExpression name(QStringLiteral("/ZEL/CAM0001/Capture/\\d{4}-\\d\\d-\\d\\d/\\d{17}\\.jpg$"));
    QVERIFY2(name.match(pictures.first()).hasMatch(), qPrintable(pictures.first()));
    const QImage picture(pictures.first());
    QVERIFY(!picture.isNull() && picture.width() >= 640);
    quit();
}

QTEST_MAIN(tst_Recording)
#include "tst_Recording.moc"
