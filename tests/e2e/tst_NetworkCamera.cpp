#include "e2e/ProgramTest.h"
#include "e2e/Sight.h"
#include "support/RtspServer.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {
const QString Camera = QStringLiteral("porch");
} // namespace

/// Cameras that a configuration file names, served by an RTSP server that is not ours.
class tst_NetworkCamera final : public ProgramTest {
    Q_OBJECT
private slots:
    void comesBackAfterALoss();
    void refusesTheWrongPassword();
    void mistakeInTheFile();

private:
    void writeFile(const QByteArray& content) const;
    static QByteArray camera(const RtspServer& server, const QString& password);
    /// Opens the camera and finds its tile.
    void open(int& tile);

    static const inline QStringList Protected{QStringLiteral("--user"), QStringLiteral("viewer"),
                                              QStringLiteral("--password"), QStringLiteral("secret")};
};

void tst_NetworkCamera::writeFile(const QByteArray& content) const {
    QVERIFY(QDir().mkpath(data() + QStringLiteral("/config")));
    QFile file(data() + QStringLiteral("/config/service.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray tst_NetworkCamera::camera(const RtspServer& server, const QString& password) {
    const QJsonObject entry{{QStringLiteral("ipncid"), Camera},
                            {QStringLiteral("name"), Camera},
                            {QStringLiteral("main"), QString::fromStdString(server.url("/live"))},
                            {QStringLiteral("user"), QStringLiteral("viewer")},
                            {QStringLiteral("password"), password},
                            {QStringLiteral("group"), QString()}};
    return QJsonDocument(QJsonObject{{QStringLiteral("cameras"), QJsonArray{entry}}}).toJson();
}

void tst_NetworkCamera::open(int& tile) {
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("十六窗口"), 16));
    tile = window().tileOfDevice(Camera);
    QVERIFY(window().shownTiles().contains(tile));
    QVERIFY(sight::isEmpty(window().tile(tile)));
    doubleClickRow(Camera);
}

void tst_NetworkCamera::comesBackAfterALoss() {
    RtspServer server(Protected);
    QVERIFY(server.start());
    STEP(writeFile(camera(server, QStringLiteral("secret"))));
    int index = 0;
    STEP(open(index));
    const QRect tile = window().tile(index);
    QVERIFY(sight::becomesLive(tile));
    server.stop();
    QVERIFY(sight::becomesStill(tile));
    QVERIFY(server.start());
    QVERIFY(sight::becomesLive(tile));
    STEP(quit());
    QVERIFY(!program().log().contains(QStringLiteral("secret")));
}

void tst_NetworkCamera::refusesTheWrongPassword() {
    RtspServer server(Protected);
    QVERIFY(server.start());
    STEP(writeFile(camera(server, QStringLiteral("other"))));
    int index = 0;
    STEP(open(index));
    COMES(program().log().contains(QStringLiteral("refuses user name or password")));
    BECOMES(window().textOfTile(index), QStringLiteral("打开失败(12)"));
    QVERIFY(!sight::isEmpty(window().tile(index)) && !sight::isPicture(window().tile(index)));
    STEP(quit());
    QVERIFY(!program().log().contains(QStringLiteral("other\"")));
}

void tst_NetworkCamera::mistakeInTheFile() {
    STEP(writeFile("{\n  \"cameras\": [\n    { \"ipncid\": \"porch\", }\n  ]\n"));
    STEP(start());
    COMES(program().log().contains(QStringLiteral("service.json")));
    // The user reads of it before anything else.
    if (!program().dialog(Tip).isNull())
        STEP(answer(Tip, QStringLiteral("确定")));
    STEP(signIn());
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    STEP(doubleClickRow(QStringLiteral("东大门入口")));
    QVERIFY(sight::becomesLive(window().tile(0)));
    STEP(quit());
    QFile file(data() + QStringLiteral("/config/service.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("porch")); // what the user wrote is still there to be mended
}

QTEST_MAIN(tst_NetworkCamera)
#include "tst_NetworkCamera.moc"
