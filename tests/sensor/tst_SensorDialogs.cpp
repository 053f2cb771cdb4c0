#include "account/AccountTest.h"
#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "sensor/ui/BoardDialog.h"
#include "sensor/ui/CalibrationDialog.h"
#include "sensor/ui/DataReportDialog.h"
#include "sensor/ui/PortDialog.h"
#include "sensor/ui/SensorDialog.h"
#include "sensor/ui/ThresholdDialog.h"

#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeWidget>

using namespace corvanta::sensor;
using corvanta::json::parseObject;

namespace {

const char* const Types = R"({"state":"ok","sensortypes":[{"type":"RS485","name":"串口<b>","fields":[
      {"key":"mode","name":"模式","kind":"choice","default":"rtu","choices":[{"value":"rtu","name":"RTU"},
        {"value":"tcp","name":"TCP"}]},
      {"key":"baud","name":"波特率","kind":"int","low":300,"high":115200,"default":9600,"when":{"key":"mode","is":["rtu"]}},
      {"key":"host","name":"地址","kind":"text","when":{"key":"mode","is":["tcp"]}}],
    "inputfields":[{"key":"address","name":"寄存器","kind":"int","low":0,"high":65535,"default":0}],"outputfields":[]}],
    "templates":[{"name":"温湿度","type":"RS485","board":{"name":"温湿度计","input":[{"name":"温度","unit":"℃"}]}}]})";

const char* const Lists = R"({"group":[],"ipnclist":[{"ipncid":"a","nickname":"主机","interfaces":[
    {"pid":5,"type":"RS485","ifname":"COM1","name":"<b>板</b>","unknown":"kept","params":{"mode":"rtu","baud":9600,"own":7},
     "input":[{"pid":7,"name":"温度","unit":"℃","scale":1,"secret":"kept"}],
     "output":[{"pid":8,"name":"阀"}]}]}]})";

} // namespace

/// Setting sensors up, and reports.
class tst_SensorDialogs : public AccountTest {
    Q_OBJECT

private slots:
    void aTemplateBecomesABoard();
    void whatIsNotShownSurvives();
    void badEntriesAreNotSent();
    void refusalsKeepTheDialog();
    void deletingIsAskedFor();
    void aPortIsReadNow();
    void calibrationFillsScaleAndOffset();
    void thresholdsAreStored_data();
    void thresholdsAreStored();
    void aReportGoesToItsFile();
    void aCancelledReportHasNoFile();
    void controlsAreNamed();

private:
    void begin() {
        sdk_.setDocument(R"({"type":"ipnclist"})", Lists);
        script_ = [](const std::string&) {
            return std::string(R"({"retcode":0,"resp":{"state":"ok"}})");
        };
        sdk_.onRequest = [this](const FakeSdk::Request& request) -> std::vector<std::string> {
            if (request.json.find("\"sensortype\"") != std::string::npos)
                return {std::string(R"({"retcode":0,"resp":)") + Types + "}"};
            if (request.json.find("\"moduleinterface\"") != std::string::npos)
                return {
                    R"({"retcode":0,"resp":{"state":"ok","interfaces":[{"ifname":"COM1","type":"RS485","used":true},
                    {"ifname":"COM2","type":"RS485","used":false},{"ifname":"IO","type":"IO","used":false}]}})"};
            return {script_(request.json)};
        };
        sdk_.sendToClient(R"({"type":"freshlist"})");
        QTRY_COMPARE(context().devices.ipncIds().size(), 1);
    }
    SensorTypes types() { return SensorTypes::fromReply(parseObject(std::string(Types))); }
    BoardDialog::Subject subject() {
        return {
            QStringLiteral("a"), boardsOf(*context().devices.device(QStringLiteral("a")))[0], types().types[0], {}};
    }
    InputRecord input() { return inputsOf(context().devices).value(0); }
    template <typename Dialog>
    static Dialog* shown() {
        Dialog* found = nullptr;
        const bool isThere = QTest::qWaitFor(
            [&found] { return (found = qobject_cast<Dialog*>(QApplication::activeModalWidget())) != nullptr; });
        Q_UNUSED(isThere)
        return found;
    }

    std::function<std::string(const std::string&)> script_;
};

void tst_SensorDialogs::aTemplateBecomesABoard() {
    begin();
    QWidget window;
    SensorDialog dialog(context(), QStringLiteral("a"), &window);
    show(dialog);
    auto* const add = find<QPushButton>(dialog, "boardAdd");
    QTRY_VERIFY(add->isEnabled());
    QCOMPARE(find<QTreeWidget>(dialog, "boardList")->topLevelItem(0)->text(1), QStringLiteral("串口<b>"));
    QTimer::singleShot(0, &dialog, [this] {
        auto* const board = shown<BoardDialog>();
        QVERIFY(board != nullptr);
        QCOMPARE(find<QComboBox>(*board, "boardInterface")->currentText(), QStringLiteral("COM2"));
        find<QComboBox>(*board, "field_mode")->setCurrentIndex(1);
        QVERIFY(!find<QWidget>(*board, "field_baud")->isVisibleTo(board));
        type(*board, "field_host", QStringLiteral("h'; --"));
        click(*board, "boardSave");
    });
    QTRY_VERIFY(!find<QMenu>(dialog, "boardNew")->actions().isEmpty());
    find<QMenu>(dialog, "boardNew")->actions().at(0)->trigger();
    QTRY_COMPARE(sent("submitsensorinfo").size(), 1);
    const QVariantMap info = sent("submitsensorinfo")[0]["sensorinfo"].toMap();
    QCOMPARE(sent("submitsensorinfo")[0]["ipncid"].toString(), QStringLiteral("a"));
    QVERIFY(!info.contains("pid"));
    QCOMPARE(info["name"].toString(), QStringLiteral("温湿度计"));
    QCOMPARE(info["params"].toMap()["host"].toString(), QStringLiteral("h'; --"));
    QCOMPARE(info["input"].toList().size(), 1);
    QTRY_COMPARE(log().size(), 1);
    QVERIFY(log()[0].startsWith(QStringLiteral("传感器设置|新增传感器|")));
}

void tst_SensorDialogs::whatIsNotShownSurvives() {
    begin();
    QWidget window;
    BoardDialog dialog(context(), subject(), &window);
    show(dialog);
    type(dialog, "boardName", QStringLiteral("新名"));
    click(dialog, "boardSave");
    QTRY_COMPARE(sent("submitsensorinfo").size(), 1);
    const QVariantMap info = sent("submitsensorinfo")[0]["sensorinfo"].toMap();
    QCOMPARE(info["unknown"].toString(), QStringLiteral("kept"));
    QCOMPARE(info["params"].toMap()["own"].toInt(), 7);
    QCOMPARE(info["params"].toMap()["baud"].toInt(), 9600);
    QCOMPARE(info["input"].toList()[0].toMap()["secret"].toString(), QStringLiteral("kept"));
    QCOMPARE(info["pid"].toInt(), 5);
    QTRY_VERIFY(!dialog.isVisible());
}

void tst_SensorDialogs::badEntriesAreNotSent() {
    begin();
    QWidget window;
    BoardDialog board(context(), subject(), &window);
    show(board);
    type(board, "boardName", {});
    click(board, "boardSave");
    QVERIFY(find<QLabel>(board, "problem")->isVisible());
    QCOMPARE(sent("submitsensorinfo").size(), 0);
    PortDialog port(context(),
                    {QStringLiteral("a"), parseObject(R"({"name":"n"})"), types().types[0].inputFields, true},
                    &window);
    show(port);
    for (const auto& [field, bad] : std::initializer_list<std::pair<const char*, const char*>>{
             {"portScale", "0"}, {"portOffset", "x"}, {"high1", "inf"}, {"hysteresis", "-1"}, {"portName", ""}}) {
        const QString good = find<QLineEdit>(port, field)->text();
        type(port, field, QLatin1String(bad));
        click(port, "portOk");
        QVERIFY2(port.isVisible() && find<QLabel>(port, "problem")->isVisible(), field);
        type(port, field, good);
    }
    click(port, "portOk");
    QVERIFY(!port.isVisible());
}

void tst_SensorDialogs::refusalsKeepTheDialog() {
    begin();
    script_ = [](const std::string&) {
        return std::string(R"({"retcode":2,"resp":{"state":"error","text":"<i>地址重复"}})");
    };
    QWidget window;
    BoardDialog dialog(context(), subject(), &window);
    show(dialog);
    click(dialog, "boardSave");
    QVERIFY(tip().contains(QStringLiteral("<i>地址重复"))); // the service's own words, as they are
    QVERIFY(dialog.isVisible());
    QVERIFY(log().isEmpty());
}

void tst_SensorDialogs::deletingIsAskedFor() {
    begin();
    QWidget window;
    SensorDialog dialog(context(), QStringLiteral("a"), &window);
    show(dialog);
    dialog.select(5);
    click(dialog, "boardRemove");
    QVERIFY(tip(false).contains(QStringLiteral("<b>板</b>")));
    QCOMPARE(sent("delsensor").size(), 0);
    click(dialog, "boardRemove");
    tip();
    QTRY_COMPARE(sent("delsensor").size(), 1);
    QCOMPARE(sent("delsensor")[0]["pid"].toInt(), 5);
    QTRY_COMPARE(log().size(), 1);
}

void tst_SensorDialogs::aPortIsReadNow() {
    begin();
    script_ = [](const std::string& json) {
        return std::string(
            json.find("sensorread") != std::string::npos
                ? R"({"retcode":0,"resp":{"state":"ok","sensorread":{"pid":7,"raw":400,"value":21.5,"state":1}}})"
                : R"({"retcode":31,"resp":{"state":"error"}})");
    };
    QWidget window;
    BoardDialog dialog(context(), subject(), &window);
    show(dialog);
    find<QTabWidget>(dialog, "boardTabs")->setCurrentIndex(1);
    click(dialog, "inputUse");
    auto* const list = find<QTreeWidget>(dialog, "inputList");
    QTRY_COMPARE(list->topLevelItem(0)->text(1), QStringLiteral("21.5"));
    QCOMPARE(parseObject(sdk_.requests().back().json)["setcmds"].toMap()["sensorread"].toMap()["pid"].toInt(), 7);
    QTimer::singleShot(0, &dialog, [] { tip(); }); // the question is waited for
    click(dialog, "inputRemove");
    QCOMPARE(list->topLevelItemCount(), 0);
}

void tst_SensorDialogs::calibrationFillsScaleAndOffset() {
    begin();
    script_ = [](const std::string&) {
        return std::string(
            R"({"retcode":0,"resp":{"state":"ok","sensorread":{"pid":7,"raw":4,"value":4,"state":1}}})");
    };
    QWidget window;
    CalibrationDialog dialog(context(), QStringLiteral("a"), 7, &window);
    show(dialog);
    auto* const ok = find<QAbstractButton>(dialog, "calibrationOk");
    QVERIFY(!ok->isEnabled());
    click(dialog, "read1");
    QTRY_COMPARE(find<QLineEdit>(dialog, "raw1")->text(), QStringLiteral("4"));
    type(dialog, "true1", QStringLiteral("0"));
    type(dialog, "raw2", QStringLiteral("4"));
    type(dialog, "true2", QStringLiteral("100"));
    QVERIFY(!ok->isEnabled());
    type(dialog, "raw2", QStringLiteral("20"));
    QVERIFY(ok->isEnabled());
    click(dialog, "calibrationOk");
    QCOMPARE(dialog.result().scale, 6.25);
    QCOMPARE(dialog.result().offset, -25.0);
}

void tst_SensorDialogs::thresholdsAreStored_data() {
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("sent"); // empty: refused here
    QTest::newRow("one level") << QStringList{"high2=80", "low2=-5.5", "hysteresis=2"}
                               << R"({"hysteresis":2,"thresholds":[{"high":80,"level":2,"low":-5.5}]})";
    QTest::newRow("one bound") << QStringList{"high1=80"}
                               << R"({"hysteresis":0,"thresholds":[{"high":80,"level":1,"low":null}]})";
    QTest::newRow("none") << QStringList() << R"({"hysteresis":0,"thresholds":[]})";
    QTest::newRow("crossed") << QStringList{"high1=1", "low1=2"} << QString();
    QTest::newRow("a word") << QStringList{"high3=x"} << QString();
}

void tst_SensorDialogs::thresholdsAreStored() {
    begin();
    QFETCH(QStringList, fields);
    QFETCH(QString, sent);
    QWidget window;
    ThresholdDialog dialog(context(), input(), &window);
    show(dialog);
    for (const QString& field : fields)
        type(dialog, qPrintable(field.section('=', 0, 0)), field.section('=', 1));
    click(dialog, "thresholdSave");
    if (sent.isEmpty()) {
        QVERIFY(find<QLabel>(dialog, "problem")->isVisible());
        QVERIFY(AccountTest::sent("changesensorinput").isEmpty());
        return;
    }
    QTRY_COMPARE(AccountTest::sent("changesensorinput").size(), 1);
    const QVariantMap request = AccountTest::sent("changesensorinput")[0];
    QCOMPARE(QString::fromStdString(corvanta::json::toText(request["input"].toMap())), sent);
    QCOMPARE(request["pid"].toInt(), 7);
    QTRY_VERIFY(!dialog.isVisible());
    QCOMPARE(log().size(), 1);
}

void tst_SensorDialogs::aReportGoesToItsFile() {
    begin();
    sdk_.onRequest = [](const FakeSdk::Request&) -> std::vector<std::string> {
        return {R"({"retcode":0,"resp":{"state":"progress","done":1,"total":1,
                    "sensordataresp":{"7":{"datas":[{"time":"1732233600","value":21.5,"state":0}]}}}})",
                R"({"retcode":0,"resp":{"state":"ok"}})"};
    };
    QWidget window;
    DataReportDialog dialog(context(), inputsOf(context().devices), {7}, &window);
    show(dialog);
    const QString file = dir_->filePath(QStringLiteral("r.txt"));
    dialog.exportTo(file);
    QTRY_VERIFY(QFile::exists(file));
    QTRY_VERIFY(find<QLabel>(dialog, "reportText")->text().contains(file));
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(written.readAll());
    QVERIFY2(text.contains(QStringLiteral("温度 , 21.5 , ℃ , 异常")), qPrintable(text));
    QCOMPARE(log().size(), 1);
}

void tst_SensorDialogs::aCancelledReportHasNoFile() {
    begin();
    sdk_.onRequest = [](const FakeSdk::Request&) -> std::vector<std::string> {
        return {R"({"retcode":0,"resp":{"state":"progress","done":1,"total":9}})"};
    };
    QWidget window;
    DataReportDialog dialog(context(), inputsOf(context().devices), {7}, &window);
    show(dialog);
    dialog.exportTo(dir_->filePath(QStringLiteral("r.xls")));
    QTRY_VERIFY(find<QLabel>(dialog, "reportText")->text().contains(QStringLiteral("1 / 9")));
    click(dialog, "reportClose"); // ends the work first
    QVERIFY(dialog.isVisible());
    QCOMPARE(sdk_.stopped().size(), std::size_t(1));
    click(dialog, "reportClose");
    QVERIFY(!dialog.isVisible());
    QVERIFY(QDir(dir_->path()).entryList({QStringLiteral("r.xls*")}).isEmpty());
}

void tst_SensorDialogs::controlsAreNamed() {
    begin();
    QWidget window;
    SensorDialog list(context(), QStringLiteral("a"), &window);
    BoardDialog board(context(), subject(), &window);
    PortDialog port(context(), {QStringLiteral("a"), {}, types().types[0].inputFields, true}, &window);
    ThresholdDialog thresholds(context(), input(), &window);
    DataReportDialog report(context(), {}, {}, &window);
    for (QWidget* const dialog :
         {static_cast<QWidget*>(&list), static_cast<QWidget*>(&board), static_cast<QWidget*>(&port),
          static_cast<QWidget*>(&thresholds), static_cast<QWidget*>(&report)}) {
        checkNames(*dialog);
        // As large as it will be shown: what it was given, or what it takes by itself.
        const QSize size = dialog->testAttribute(Qt::WA_Resized)
                               ? dialog->size().expandedTo(dialog->minimumSizeHint())
                               : dialog->sizeHint();
        QVERIFY2(size.height() <= 384 && size.width() <= 680, qPrintable(dialog->objectName()));
    }
}

QTEST_MAIN(tst_SensorDialogs)
#include "tst_SensorDialogs.moc"
