#include "onvif/OnvifImaging.h"
#include "onvif/OnvifPtz.h"
#include "support/OnvifDevice.h"

#include <QtTest>

using namespace ipncsdk::onvif;

/// Moving a camera and setting its picture; the stand-in writes down what it was told, in its own units.
class tst_OnvifControl final : public QObject {
    Q_OBJECT

private slots:
    void caps();
    void moves_data();
    void moves();
    void state();
    void presets();
    void presetsWithNames();
    void image();
    void missing_data();
    void missing();
    void rights();
};

namespace {

CameraAddress addressOf(const OnvifDevice& device) {
    return {device.host(), {"admin", "p<\u00e4>&ss"}};
}

/// "1 Gate, 7 Yard".
QString listed(OnvifPtz& ptz) {
    const auto presets = ptz.presets();
    QStringList rows;
    if (presets) {
        for (const PtzPreset& preset : *presets)
            rows << QString::number(preset.index) + ' ' + QString::fromStdString(preset.name);
    }
    return rows.join(", ");
}

QByteArray text(const QJsonObject& call) {
    return QJsonDocument(call).toJson(QJsonDocument::Compact);
}

} // namespace

void tst_OnvifControl::caps() {
    const OnvifDevice device({"prefixes"});
    CameraSession session(addressOf(device), {});
    OnvifPtz ptz(session);
    const auto caps = ptz.caps();
    QVERIFY2(caps, caps.failure().text.c_str());
    QVERIFY(caps->pan && caps->tilt && caps->zoom && caps->focus && caps->home && !caps->iris);
    QCOMPARE(caps->presets, 64);
}

void tst_OnvifControl::moves_data() {
    QTest::addColumn<QList<int>>("move"); // pan, tilt, zoom, speed
    QTest::addColumn<QByteArray>("call");
    const auto row = [](const char* name, const QList<int>& move, const char* call) {
        QTest::newRow(name) << move << QByteArray(call);
    };
    row("right", {1, 0, 0, 10}, R"({"op":"ContinuousMove","pan":1,"tilt":0,"zoom":0})");
    row("left and up, slowly", {-1, 1, 0, 2}, R"({"op":"ContinuousMove","pan":-0.2,"tilt":0.1,"zoom":0})");
    row("down and closer", {0, -1, 1, 5}, R"({"op":"ContinuousMove","pan":0,"tilt":-0.25,"zoom":0.5})");
    row("too fast", {0, 0, -1, 99}, R"({"op":"ContinuousMove","pan":0,"tilt":0,"zoom":-1})");
    row("nowhere", {0, 0, 0, 5}, R"({"op":"Stop"})");
    row("stop", {}, R"({"op":"Stop"})");
    row("far", {1}, R"({"op":"FocusMove","speed":5})");
    row("near", {-1}, R"({"op":"FocusMove","speed":-5})");
    row("focus stop", {0}, R"({"op":"FocusStop"})");
    row("home", {0, 0}, R"({"op":"GotoHomePosition"})");
}

void tst_OnvifControl::moves() {
    QFETCH(QList<int>, move);
    QFETCH(QByteArray, call);
    OnvifDevice device;
    CameraSession session(addressOf(device), {});
    OnvifPtz ptz(session);
    const auto done = move.isEmpty()     ? ptz.stop()
                      : move.size() == 1 ? ptz.focus(move[0])
                      : move.size() == 2 ? ptz.home()
                                         : ptz.move(move[0], move[1], move[2], move[3]);
    QVERIFY2(done, done.failure().text.c_str());
    QCOMPARE(text(device.nextCall()), call);
}

void tst_OnvifControl::state() {
    const OnvifDevice device;
    CameraSession session(addressOf(device), {});
    OnvifPtz ptz(session);
    auto state = ptz.state();
    QVERIFY2(state, state.failure().text.c_str());
    QCOMPARE(state->pan.value_or(9), 0.25);
    QCOMPARE(state->tilt.value_or(9), -0.25);
    QCOMPARE(state->zoom.value_or(9), 0.5);
    QCOMPARE(state->moving, std::optional(false));
    QVERIFY(ptz.move(1, 0, 0, 1));
    QCOMPARE(ptz.state()->moving, std::optional(true));
}

void tst_OnvifControl::presets() {
    OnvifDevice device;
    CameraSession session(addressOf(device), {});
    OnvifPtz ptz(session);
    QCOMPARE(listed(ptz), QString("1 Gate, 7 Yard"));
    QVERIFY(ptz.setPreset(3, "a <b> & \"c\""));
    QCOMPARE(text(device.nextCall()), QByteArray(R"({"name":"a <b> & \"c\"","op":"SetPreset","token":"3"})"));
    QVERIFY(ptz.setPreset(7, "Court"));
    QCOMPARE(listed(ptz), QString("1 Gate, 3 a <b> & \"c\", 7 Court"));
    QVERIFY(ptz.deletePreset(1));
    QVERIFY(ptz.goToPreset(7));
    QCOMPARE(ptz.goToPreset(1).failure().refusal, Refusal::Fault);
    QCOMPARE(ptz.setPreset(65, "").failure().refusal, Refusal::NotSupported);
    QCOMPARE(listed(ptz), QString("3 a <b> & \"c\", 7 Court"));
}

void tst_OnvifControl::presetsWithNames() {
    OnvifDevice device({"named-presets"});
    CameraSession session(addressOf(device), {});
    OnvifPtz ptz(session);
    QCOMPARE(listed(ptz), QString("1 Yard, 2 Gate"));
    const auto set = ptz.setPreset(9, "Roof");
    QVERIFY2(set, set.failure().text.c_str());
    QCOMPARE(device.nextCall().value("token").toString(), QString("preset-2"));
    QVERIFY(ptz.deletePreset(1));
    QCOMPARE(device.nextCall().value("token").toString(), QString("preset-a"));
    QVERIFY(ptz.goToPreset(9));
    QCOMPARE(device.nextCall().value("token").toString(), QString("preset-2"));
    // Numbers stay with what they were given to.
    QCOMPARE(listed(ptz), QString("2 Gate, 9 Roof"));
}

void tst_OnvifControl::image() {
    OnvifDevice device({"prefixes"});
    CameraSession session(addressOf(device), {});
    OnvifImaging imaging(session);
    const auto values = imaging.read();
    QVERIFY2(values, values.failure().text.c_str());
    const OnvifImaging::Values expected = {
        {"brightness", 128}, {"contrast", 100}, {"saturation", 128}, {"sharpness", 128}};
    QVERIFY(*values == expected);
    const auto written = imaging.write({{"contrast", 255}, {"saturation", 0}, {"brightness", 51}});
    QVERIFY2(written, written.failure().text.c_str());
    QCOMPARE(text(device.nextCall()),
             QByteArray(R"({"Brightness":20,"ColorSaturation":-10,"Contrast":255,"op":"SetImagingSettings"})"));
    const OnvifImaging::Values changed = {
        {"brightness", 51}, {"contrast", 255}, {"saturation", 0}, {"sharpness", 128}};
    QVERIFY(*imaging.read() == changed);
    QCOMPARE(imaging.write({{"hue", 1}}).failure().refusal, Refusal::NotSupported);
}

void tst_OnvifControl::missing_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("moves");
    QTest::addColumn<bool>("focuses");
    QTest::addColumn<bool>("pictures");
    QTest::newRow("no movement") << "no-ptz" << false << false << true;
    QTest::newRow("no image settings") << "no-imaging" << true << false << false;
}

void tst_OnvifControl::missing() {
    QFETCH(QString, mode);
    const OnvifDevice device({mode});
    CameraSession session(addressOf(device), {});
    OnvifPtz ptz(session);
    OnvifImaging imaging(session);
    const auto isMissing = [](const auto& outcome) {
        return !outcome && outcome.failure().refusal == Refusal::NotSupported;
    };
    QTEST(!isMissing(ptz.caps()), "moves");
    QTEST(!isMissing(ptz.focus(1)), "focuses");
    QTEST(!isMissing(imaging.read()), "pictures");
}

void tst_OnvifControl::rights() {
    const OnvifDevice device({"viewer"});
    CameraSession session(addressOf(device), {});
    OnvifPtz ptz(session);
    QVERIFY(ptz.state());
    // The password was right, and stays so.
    const auto refused = ptz.move(1, 0, 0, 1);
    QCOMPARE(refused.failure().refusal, Refusal::Fault);
    QCOMPARE(refused.failure().text, std::string("this account may only watch <b>"));
    QVERIFY(ptz.state());
}

QTEST_GUILESS_MAIN(tst_OnvifControl)
#include "tst_OnvifControl.moc"
