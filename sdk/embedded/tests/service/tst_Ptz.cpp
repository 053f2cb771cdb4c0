#include "TestSdk.h"
#include "media/loop/View.h"

#include <QtTest>

#include <cmath>

using namespace ipncsdk;
using namespace ipncsdk::test;
using namespace std::chrono_literals;

/// Moving loop cameras by requests, on a clock of the test's own.
class tst_Ptz final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void capabilities();
    void movesSmoothlyAndKeepsItsLimits();
    void endsByItself();
    void stopsAndFindsItsMiddle();
    void lensMoves();
    void presetsAreKept();
    void cruises();
    void rights_data();
    void rights();
    void badInput_data();
    void badInput();

private:
    Json get(const Json& names, const std::string& ipncid = "CAM0001") {
        return sdk_->askDevice({{"ipncid", ipncid}, {"getcmds", names}});
    }
    Json value(const std::string& name) { return get(Json::array({name})).at("resp").at("getcmds").at(name); }
    double state(const std::string& key) { return value("ptzstate").at(key).get<double>(); }
    int set(const Json& values, const std::string& ipncid = "CAM0001") {
        return sdk_->askDevice({{"ipncid", ipncid}, {"setcmds", values}}).at("retcode").get<int>();
    }
    int move(int pan, int tilt, int zoom, int speed) {
        return set({{"ptzmove", {{"pan", pan}, {"tilt", tilt}, {"zoom", zoom}, {"speed", speed}}}});
    }
    /// What the readers of the camera's streams are told.
    media::View view() { return sdk_->hub->options().loopControl("CAM0001")->now().view; }

    std::unique_ptr<TestSdk> sdk_;
};

void tst_Ptz::init() {
    sdk_ = std::make_unique<TestSdk>();
    QCOMPARE(sdk_->start(), emSuccess);
    QVERIFY(sdk_->signIn());
}

void tst_Ptz::cleanup() {
    sdk_.reset();
}

void tst_Ptz::capabilities() {
    const Json caps = value("ptzcaps");
    QCOMPARE(caps, (Json{{"pan", true},
                         {"tilt", true},
                         {"zoom", true},
                         {"focus", true},
                         {"iris", true},
                         {"presets", 64},
                         {"cruises", 8}}));
    QVERIFY(view().isHome());
    QVERIFY(value("ptzmove").is_null());
    QCOMPARE(value("ptzstate"), (Json{{"pan", 0.0}, {"tilt", 0.0}, {"zoom", 0.0}, {"moving", false}, {"cruise", 0}}));
}

void tst_Ptz::movesSmoothlyAndKeepsItsLimits() {
    QCOMPARE(move(1, 1, 1, 5), 0);
    QCOMPARE(value("ptzstate").at("moving"), Json(true));
    sdk_->clock->advance(1s);
    const double after = state("pan");
    QVERIFY(after > 0.35 && after < 0.5); // it starts softly
    QVERIFY(std::abs(view().pan - after) < 1e-6);
    QVERIFY(state("tilt") > 0.35); // 1 is up
    QVERIFY(state("zoom") > 0.15 && state("zoom") < 0.3);
    sdk_->clock->advance(4s);
    QCOMPARE(state("pan"), 1.0);
    QCOMPARE(move(-1, -1, -1, 5), 0);
    sdk_->clock->advance(4s);
    QVERIFY(state("pan") < -0.85 && state("pan") > -1); // from edge to edge in some 4 s
    sdk_->clock->advance(5s);
    QCOMPARE(state("pan"), -1.0);
    QCOMPARE(state("tilt"), -1.0);
    QCOMPARE(state("zoom"), 0.0);
    QCOMPARE(value("ptzstate").at("moving"), Json(false));
}

void tst_Ptz::endsByItself() {
    QCOMPARE(move(1, 0, 0, 1), 0);
    sdk_->clock->advance(6s);
    QCOMPARE(move(1, 0, 0, 1), 0); // renewed
    sdk_->clock->advance(3s);
    QCOMPARE(move(-1, 0, 0, 1), 0);
    sdk_->clock->advance(20s);
    const double place = state("pan");
    QVERIFY(std::abs(place - -0.1) < 0.05); // nine seconds there, ten back
    QCOMPARE(value("ptzstate").at("moving"), Json(false));
    sdk_->clock->advance(20s);
    QCOMPARE(state("pan"), place);
}

void tst_Ptz::stopsAndFindsItsMiddle() {
    QCOMPARE(move(0, -1, 0, 6), 0);
    sdk_->clock->advance(1s);
    QCOMPARE(set({{"ptzstop", 1}}), 0);
    sdk_->clock->advance(1s);
    const double place = state("tilt");
    QVERIFY(place < -0.5 && place > -0.7);
    sdk_->clock->advance(9s);
    QCOMPARE(state("tilt"), place);
    QVERIFY(!view().isHome());
    QCOMPARE(set({{"ptzhome", 1}}), 0);
    QVERIFY(!view().isHome());
    sdk_->clock->advance(3s);
    QVERIFY(view().isHome());
}

void tst_Ptz::lensMoves() {
    QCOMPARE(set({{"ptzfocus", -1}, {"ptziris", 1}}), 0);
    sdk_->clock->advance(1s);
    QVERIFY(view().focus < -0.3F && view().iris > 0.3F);
    QCOMPARE(set({{"ptzfocus", 0}}), 0);
    sdk_->clock->advance(1s);
    const float blur = view().focus;
    sdk_->clock->advance(8s);
    QCOMPARE(view().focus, blur);
    QCOMPARE(view().iris, 1.0F);
}

void tst_Ptz::presetsAreKept() {
    QCOMPARE(value("ptzpresets"), Json::array());
    QCOMPARE(move(1, 0, 1, 5), 0);
    sdk_->clock->advance(1s);
    QCOMPARE(set({{"ptzstop", 1}}), 0);
    sdk_->clock->advance(1s);
    const media::View kept = view();
    QCOMPARE(set({{"ptzpresetset", {{"index", 64}, {"name", "门'\"<b>"}}}}), 0);
    QCOMPARE(set({{"ptzpresetset", {{"index", 3}, {"name", "车位"}}}}), 0);
    QCOMPARE(value("ptzpresets"),
             (Json::array({{{"index", 3}, {"name", "车位"}}, {{"index", 64}, {"name", "门'\"<b>"}}})));
    // A factory reset takes settings; where the camera looked is gone with the program.
    QCOMPARE(set({{"paradefaultcmd", 1}}), 0);
    sdk_->runtime.cleanup();
    QCOMPARE(sdk_->start(), emSuccess);
    QVERIFY(sdk_->signIn());
    QVERIFY(view().isHome());
    QCOMPARE(set({{"ptzpresetgoto", 64}}), 0);
    QCOMPARE(value("ptzstate").at("moving"), Json(true));
    sdk_->clock->advance(10s);
    QVERIFY(view() == kept);
    QCOMPARE(set({{"ptzpresetdel", 64}}), 0);
    QCOMPARE(set({{"ptzpresetgoto", 64}}), 2);
    QCOMPARE(value("ptzpresets").size(), std::size_t{1});
    QCOMPARE(get({"ptzpresets"}, "CAM0002").at("resp").at("getcmds").at("ptzpresets"), Json::array());
}

void tst_Ptz::cruises() {
    QCOMPARE(set({{"ptzpresetset", {{"index", 1}, {"name", "a"}}}}), 0);
    QCOMPARE(move(1, 0, 0, 10), 0);
    sdk_->clock->advance(5s);
    QCOMPARE(set({{"ptzpresetset", {{"index", 2}, {"name", "b"}}}}), 0);
    const Json cruise = {{"index", 2},
                         {"name", "巡"},
                         {"points", {{{"preset", 1}, {"seconds", 5}}, {{"preset", 2}, {"seconds", 20}}}}};
    QCOMPARE(set({{"ptzcruiseset", cruise}}), 0);
    QCOMPARE(value("ptzcruises"), Json::array({cruise}));
    QCOMPARE(set({{"ptzcruisestart", 1}}), 2);
    QCOMPARE(set({{"ptzcruisestart", 2}}), 0);
    QCOMPARE(value("ptzstate").at("cruise"), Json(2));
    sdk_->clock->advance(4s);
    QVERIFY(view().isHome());
    sdk_->clock->advance(6s);
    QCOMPARE(state("pan"), 1.0);
    // A round takes the stays and two ways of a good second each; days later it still goes on.
    sdk_->clock->advance(24h);
    QCOMPARE(value("ptzstate").at("cruise"), Json(2));
    QCOMPARE(move(0, 0, 1, 1), 0);
    QCOMPARE(value("ptzstate").at("cruise"), Json(0));
    QCOMPARE(set({{"ptzcruisestart", 2}}), 0);
    QCOMPARE(set({{"ptzcruisedel", 2}}), 0);
    QCOMPARE(value("ptzstate").at("cruise"), Json(0));
    QCOMPARE(set({{"ptzcruisedel", 2}}), 2);
}

void tst_Ptz::rights_data() {
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<int>("moving");
    QTest::addColumn<int>("looking");
    QTest::newRow("own") << QByteArray("CAM0001") << 0 << 0;
    QTest::newRow("own, offline") << QByteArray("CAM0061") << 10 << 10;
    QTest::newRow("shared, may move") << QByteArray("MOVES") << 0 << 0;
    QTest::newRow("shared, may not") << QByteArray("RESTS") << 6 << 6;
    QTest::newRow("not shared") << QByteArray("FRD0005") << 7 << 7;
}

void tst_Ptz::rights() {
    QFETCH(QByteArray, device);
    QFETCH(int, moving);
    QFETCH(int, looking);
    std::string id = device.toStdString();
    const bool shared = id == "MOVES" || id == "RESTS";
    if (shared) {
        const std::string may = id == "MOVES" ? "true" : "false";
        // Movement is a right of its own: neither parameters nor ownership belong to it.
        QCOMPARE(sdk_->sqlite("update shares set rights = '{\"video\":true,\"param\":false,\"ptz\":" + may +
                              "}' where ipncid = 'FRD0001'"),
                 std::string());
        id = "FRD0001";
    }
    QCOMPARE(set({{"ptzhome", 1}}, id), moving);
    QCOMPARE(get({"ptzstate", "ptzpresets"}, id).at("retcode"), Json(looking));
    if (shared)
        QCOMPARE(set({{"ptzhome", 1}, {"mirror", 1}}, id), 6);
    QCOMPARE(sdk_->command({{"type", "logout"}}).at("retcode"), Json(0));
    QCOMPARE(set({{"ptzhome", 1}}, id), 3);
}

void tst_Ptz::badInput_data() {
    QTest::addColumn<QByteArray>("setcmds");
    QTest::addColumn<int>("code");
    const auto row = [](const char* name, const char* setcmds, int code = 2) {
        QTest::newRow(name) << QByteArray(setcmds) << code;
    };
    row("move without speed", R"({"ptzmove":{"pan":1,"tilt":0,"zoom":0}})");
    row("move too fast", R"({"ptzmove":{"pan":1,"tilt":0,"zoom":0,"speed":11}})");
    row("move too far", R"({"ptzmove":{"pan":2,"tilt":0,"zoom":0,"speed":5}})");
    row("move with a text", R"({"ptzmove":{"pan":"1","tilt":0,"zoom":0,"speed":5}})");
    row("move of a number", R"({"ptzmove":1})");
    row("stop with a list", R"({"ptzstop":[]})");
    row("focus out of range", R"({"ptzfocus":2})");
    row("iris of nothing", R"({"ptziris":null})");
    row("preset 0", R"({"ptzpresetset":{"index":0,"name":"a"}})");
    row("preset 65", R"({"ptzpresetset":{"index":65,"name":"a"}})");
    row("preset without name", R"({"ptzpresetset":{"index":1}})");
    row("preset with a line feed", R"({"ptzpresetset":{"index":1,"name":"a\nb"}})");
    row("preset that is not there", R"({"ptzpresetgoto":9})");
    row("deleting what is not there", R"({"ptzpresetdel":9})");
    row("preset as a huge number", R"({"ptzpresetgoto":99999999999999999999})");
    row("cruise without points", R"({"ptzcruiseset":{"index":1,"name":"a","points":[]}})");
    row("cruise to a preset that is not there",
        R"({"ptzcruiseset":{"index":1,"name":"a","points":[{"preset":9,"seconds":5}]}})");
    row("cruise that stays too long",
        R"({"ptzcruiseset":{"index":1,"name":"a","points":[{"preset":1,"seconds":3601}]}})");
    row("cruise 9", R"({"ptzcruiseset":{"index":9,"name":"a","points":[{"preset":1,"seconds":5}]}})");
    row("an unknown movement", R"({"ptzjump":1})", 1);
    row("what can only be read", R"({"ptzcaps":1})", 1);
    row("in a list", R"(["ptzhome",{"ptzfocus":0}])", 0);
}

void tst_Ptz::badInput() {
    QFETCH(QByteArray, setcmds);
    QFETCH(int, code);
    QCOMPARE(set({{"ptzpresetset", {{"index", 1}, {"name", "a"}}}}), 0);
    QCOMPARE(set(Json::parse(setcmds.toStdString())), code);
    QVERIFY(view().isHome());
    QCOMPARE(value("ptzpresets").size(), std::size_t{1});
}

QTEST_APPLESS_MAIN(tst_Ptz)
#include "tst_Ptz.moc"
