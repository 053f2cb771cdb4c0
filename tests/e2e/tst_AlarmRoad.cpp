#include "e2e/AccountTest.h"
#include "e2e/MapSteps.h"
#include "e2e/Sight.h"
#include "support/CodedVideo.h"
#include "support/SoundServer.h"
#include "support/SqliteShell.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTcpServer>
#include <QtEndian>
#include <QtTest>

#include <cstdlib>

using Role = Accessible::Role;

namespace {
const QString Camera = QStringLiteral("东大门入口");
const QString Plans = QStringLiteral("联动设置");
const QString NewPlan = QStringLiteral("新增联动策略");
const QString Rules = QStringLiteral("通知规则");
const QString NewRule = QStringLiteral("新增通知规则");
const QString Saved = QStringLiteral("保存成功!");

/// A process whose lines are read as they come, ended with the object.
class Peer final {
public:
    ~Peer() {
        process_.kill();
        process_.waitForFinished(-1);
    }
    bool start(const QString& program, const QStringList& arguments = {}) {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(program, arguments);
        return process_.waitForStarted(-1);
    }
    void write(const QByteArray& line) {
        process_.write(line + '\n');
        process_.waitForBytesWritten(-1);
    }
    /// All that it has said.
    QString said() {
        process_.waitForReadyRead(1);
        said_ += QString::fromUtf8(process_.readAllStandardOutput());
        return said_;
    }

private:
    QProcess process_;
    QString said_;
};

QJsonObject level(int number, double high) {
    return {{QStringLiteral("level"), number}, {QStringLiteral("high"), high}};
}

} // namespace

/// A register of a real Modbus server crosses a limit, and everything that is to follow does.
class tst_AlarmRoad final : public AccountTest {
    Q_OBJECT
private slots:
    void init();
    void everythingFollows();

private:
    /// Alarms of level 2 are heard, and their pictures and recordings are wanted.
    void writeSettings();
    /// Whether the loudspeaker has said something since it was last forgotten.
    bool isHeard();
    /// The configuration names the server's registers as a sensor, and the broker.
    void writeConfig();
    /// Chooses another entry of the combo box that shows this one, counted from it.
    void choose(const QString& dialog, const QString& shown, int down);
    /// Chooses sensor and port of a picker and saves.
    void pick(const QString& picker);
    /// Opens the plan of the park and drags the sensor onto it.
    void placeOnMap();
    void makePlan();
    void makeRule();
    /// What the log of alarms holds of the camera: "type|text".
    QStringList alarms() const;
    QString notices();
    QString texts() const;
    /// A file of the camera on the drive; empty while there is none of that name.
    QString stored(const QString& pattern) const;

    static constexpr int Limit = 80;
    std::unique_ptr<Peer> modbus_;
    std::unique_ptr<Peer> broker_;
    std::unique_ptr<Peer> phone_;
    SoundServer loudspeaker_;
    QPoint marker_; ///< on the screen
    int modbusPort_ = 0;
    int brokerPort_ = 0;
};

void tst_AlarmRoad::init() {
    STEP(AccountTest::init());
    modbus_ = std::make_unique<Peer>();
    QVERIFY(modbus_->start(QStringLiteral(CORVANTA_MODBUS_SERVER)));
    COMES(modbus_->said().contains(QStringLiteral("PORT ")));
    modbusPort_ = modbus_->said().section(QLatin1Char(' '), 1).section(QLatin1Char('\n'), 0, 0).toInt();
    QTcpServer free;
    QVERIFY(free.listen(QHostAddress::LocalHost));
    brokerPort_ = free.serverPort();
    free.close();
    QFile config(data() + QStringLiteral("/broker.conf"));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write(QStringLiteral("listener %1 127.0.0.1\nallow_anonymous true\n").arg(brokerPort_).toUtf8());
    config.close();
    broker_ = std::make_unique<Peer>();
    QVERIFY(broker_->start(QStringLiteral("mosquitto"), {QStringLiteral("-c"), config.fileName()}));
    const auto listens = [this] {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, quint16(brokerPort_));
        return socket.waitForConnected(1000);
    };
    COMES(listens());
    phone_ = std::make_unique<Peer>();
    QVERIFY(phone_->start(QStringLiteral("mosquitto_sub"),
                          {QStringLiteral("-h"), QStringLiteral("127.0.0.1"), QStringLiteral("-p"),
                           QString::number(brokerPort_), QStringLiteral("-v"), QStringLiteral("-t"),
                           QStringLiteral("corvanta/#")}));
    writeConfig();
    QVERIFY(loudspeaker_.start());
    loudspeaker_.listen();
    writeSettings();
}

void tst_AlarmRoad::writeSettings() {
    const QString path = data() + QStringLiteral("/alarm.wav");
    QCOMPARE(QProcess::execute(QStringLiteral("ffmpeg"),
                               {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"),
                                QStringLiteral("lavfi"), QStringLiteral("-i"),
                                QStringLiteral("sine=frequency=800:duration=3"), path}),
             0);
    const QJsonObject settings{{QStringLiteral("是否接收报警"), true},
                               {QStringLiteral("是否二级阈值报警"), true},
                               {QStringLiteral("二级阈值报警"), path}};
    QFile file(data() + QStringLiteral("/config/set.json"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(settings).toJson()) > 0);
}

bool tst_AlarmRoad::isHeard() {
    const QByteArray& heard = loudspeaker_.heard();
    for (int i = 0; i + 1 < heard.size(); i += 2) {
        if (std::abs(qFromLittleEndian<qint16>(heard.constData() + i)) > 500)
            return true;
    }
    return false;
}

void tst_AlarmRoad::writeConfig() {
    const auto port = [](int function, const char* format) {
        return QJsonObject{{QStringLiteral("function"), function},
                           {QStringLiteral("address"), 0},
                           {QStringLiteral("format"), QLatin1String(format)},
                           {QStringLiteral("order"), QStringLiteral("ABCD")}};
    };
    const QJsonObject board{
        {QStringLiteral("type"), QStringLiteral("RS485")},
        {QStringLiteral("ifname"), QStringLiteral("RS485-1")},
        {QStringLiteral("name"), QStringLiteral("压力表")},
        {QStringLiteral("params"), QJsonObject{{QStringLiteral("mode"), QStringLiteral("tcp")},
                                               {QStringLiteral("host"), QStringLiteral("127.0.0.1")},
                                               {QStringLiteral("port"), modbusPort_},
                                               {QStringLiteral("slave"), 1},
                                               {QStringLiteral("period"), 200},
                                               {QStringLiteral("timeout"), 5000}}},
        {QStringLiteral("input"),
         QJsonArray{QJsonObject{{QStringLiteral("name"), QStringLiteral("出口压力")},
                                {QStringLiteral("unit"), QStringLiteral("kPa")},
                                {QStringLiteral("thresholds"), QJsonArray{level(1, 50), level(2, Limit)}},
                                {QStringLiteral("params"), port(3, "u16")}}}},
        {QStringLiteral("output"), QJsonArray{QJsonObject{{QStringLiteral("name"), QStringLiteral("泄压阀")},
                                                          {QStringLiteral("params"), port(5, "bit")}}}}};
    QFile file(data() + QStringLiteral("/config/service.json"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QJsonObject config = QJsonDocument::fromJson(file.readAll()).object();
    config.insert(QStringLiteral("notices"),
                  QJsonObject{{QStringLiteral("broker"), QStringLiteral("127.0.0.1:%1").arg(brokerPort_)},
                              {QStringLiteral("topic"), QStringLiteral("corvanta")}});
    config.insert(QStringLiteral("sensors"),
                  QJsonArray{QJsonObject{{QStringLiteral("ipncid"), QStringLiteral("CAM0001")},
                                         {QStringLiteral("sensorinfo"), board}}});
    QVERIFY(file.resize(0) && file.seek(0) && file.write(QJsonDocument(config).toJson()) > 0);
}

void tst_AlarmRoad::choose(const QString& dialog, const QString& shown, int down) {
    STEP(clickIn(dialog, shown)); // on this platform a combo box is named by what it shows
    QStringList keys;
    for (int i = 0; i < down; ++i)
        keys += QStringLiteral("Down");
    Desktop::keys(keys + QStringList{QStringLiteral("Return")});
}

void tst_AlarmRoad::pick(const QString& picker) {
    COMES(program().isActive(picker)); // the sensors have the keyboard
    Desktop::keys({QStringLiteral("Down"), QStringLiteral("Tab"), QStringLiteral("Down")});
    STEP(clickIn(picker, QStringLiteral("保存")));
}

void tst_AlarmRoad::placeOnMap() {
    const QString sensor = QStringLiteral("压力表");
    STEP(clickButton(QStringLiteral("电子地图")));
    Accessible cell;
    COMES(!(cell = program().accessible().find(QStringLiteral("地图窗口 1"))).isNull());
    QVERIFY(mapSteps::openMap(program(), cell.place(), 1));
    QRect row;
    STEP(reveal(Camera, row));
    Desktop::click(row.center());
    Desktop::keys({QStringLiteral("Right")}); // its sensors
    COMES(window().hasRow(sensor));
    STEP(reveal(sensor, row));
    const QRect canvas = mapSteps::canvas(program());
    marker_ = canvas.center() + QPoint(0, canvas.height() / 8);
    const auto kept = [this] {
        return mapSteps::markersOf(data() + QStringLiteral("/service/store.db"), QStringLiteral("CAM0001")).size();
    };
    const auto before = kept();
    STEP(dragTo(row.center(), marker_));
    BECOMES(kept(), before + 1);
    Desktop::moveMouse(canvas.topLeft());
    QVERIFY(sight::becomesStill(mapSteps::aroundMarker(marker_)));
}

void tst_AlarmRoad::makePlan() {
    const QString condition = QStringLiteral("单条件");
    const QString action = QStringLiteral("单动作");
    STEP(openFromRow(Camera, Plans));
    STEP(clickIn(Plans, QStringLiteral("新增")));
    STEP(fill(NewPlan, QStringLiteral("联动策略名称"), QStringLiteral("Relief")));
    STEP(choose(NewPlan, QStringLiteral("永久"), 1));     // 10 s
    STEP(choose(NewPlan, QStringLiteral("一级阀值"), 1)); // level 2
    STEP(clickIn(NewPlan, condition + QStringLiteral("新建")));
    STEP(pick(condition));
    STEP(clickIn(NewPlan, action + QStringLiteral("新建")));
    STEP(pick(action));
    STEP(clickIn(NewPlan, QStringLiteral("启用通知")));
    STEP(clickIn(NewPlan, QStringLiteral("保存")));
    STEP(closeTip(Saved));
    closeDialog(Plans);
}

void tst_AlarmRoad::makeRule() {
    const QString receivers = QStringLiteral("接收人");
    const QString devices = QStringLiteral("关注设备");
    STEP(openFromMenu(Rules));
    STEP(clickIn(Rules, QStringLiteral("新增")));
    STEP(fill(NewRule, QStringLiteral("通知策略名称"), QStringLiteral("Watch")));
    STEP(clickIn(NewRule, QStringLiteral("选择接收人")));
    STEP(tickRow(receivers, receivers, QStringLiteral("本机")));
    STEP(clickIn(receivers, QStringLiteral("确定")));
    STEP(clickIn(NewRule, QStringLiteral("选择关注设备")));
    STEP(tickRow(devices, devices, Camera));
    STEP(clickIn(devices, QStringLiteral("确定")));
    for (const char* const box :
         {"接收通知类型阈值报警", "接收方式短信", "接收方式APP通知", "短信接收等级二级阀值", "APP接收等级二级阀值"})
        STEP(clickIn(NewRule, QString::fromUtf8(box)));
    STEP(clickIn(NewRule, QStringLiteral("保存")));
    STEP(closeTip(Saved));
    closeDialog(Rules);
}

QStringList tst_AlarmRoad::alarms() const {
    return sqliteShell::run(program().data() + QStringLiteral("/dataBase.db"),
                            QStringLiteral("select type, context from fireLogs where fireDev = '%1';").arg(Camera));
}

QString tst_AlarmRoad::texts() const {
    QFile file(data() + QStringLiteral("/service/outbox.jsonl"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString tst_AlarmRoad::stored(const QString& pattern) const {
    QDirIterator files(data() + QStringLiteral("/disk"), {pattern}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        if (file.contains(QStringLiteral("/CAM0001/")))
            return file;
    }
    return {};
}

QString tst_AlarmRoad::notices() {
    return phone_->said();
}

void tst_AlarmRoad::everythingFollows() {
    constexpr int shortOfIt = 8000; // ms, of the 10 s that the limit must be crossed for
    STEP(startAndSignIn());
    STEP(placeOnMap());
    STEP(makePlan());
    STEP(makeRule());

    // A moment short of the duration: nothing.
    modbus_->write("set 0 90");
    QTest::qWait(shortOfIt);
    modbus_->write("set 0 20");
    QTest::qWait(shortOfIt);
    QCOMPARE(alarms(), QStringList());
    QVERIFY(!modbus_->said().contains(QStringLiteral("COIL 1")));
    QVERIFY(!notices().contains(QStringLiteral("90")));

    loudspeaker_.forget();
    modbus_->write("set 0 95");
    COMES(!alarms().isEmpty());
    COMES(isHeard());
    QVERIFY2(alarms().first().startsWith(QStringLiteral("二级阈值报警|")), qPrintable(alarms().first()));
    QVERIFY2(alarms().first().contains(QStringLiteral("95")), qPrintable(alarms().first()));
    COMES(modbus_->said().contains(QStringLiteral("COIL 1")));
    COMES(notices().contains(QStringLiteral("corvanta/") + Number));
    COMES(texts().contains(Number) && texts().contains(QStringLiteral("95")));
    const QString content = alarms().first().section(QLatin1Char('|'), 1);
    COMES(
        !window().window().find([&](const Accessible::Seen& seen) { return seen.name.endsWith(content); }).isNull());

    QVERIFY(mapSteps::blinks(mapSteps::aroundMarker(marker_)));
    Desktop::clickRight(marker_);
    STEP(chooseEntry(QStringLiteral("清除报警")));
    Desktop::moveMouse(mapSteps::canvas(program()).topLeft());
    QVERIFY(sight::becomesStill(mapSteps::aroundMarker(marker_)));

    COMES(!stored(QStringLiteral("*-CAM0001.dat")).isEmpty());
    COMES(!stored(QStringLiteral("*-2.jpg")).isEmpty());
    COMES(!stored(QStringLiteral("*-2.avi")).isEmpty());
    const ProbedVideo recording = ProbedVideo::of(stored(QStringLiteral("*-2.avi")));
    QCOMPARE(recording.problems, QString());
    QVERIFY2(recording.duration > 6 && recording.duration < 20, // s; five before the alarm and five after
             qPrintable(QString::number(recording.duration)));

    modbus_->write("set 0 20");
    COMES(modbus_->said().trimmed().endsWith(QStringLiteral("COIL 0")));
    QCOMPARE(alarms().size(), 1);
    quit();
}

QTEST_MAIN(tst_AlarmRoad)
#include "tst_AlarmRoad.moc"
