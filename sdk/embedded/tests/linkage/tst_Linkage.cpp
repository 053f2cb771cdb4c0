#include "linkage/FaultWatch.h"
#include "linkage/LinkageEngine.h"
#include "linkage/PlanParser.h"

#include <QtTest>

#include <cmath>

using namespace ipncsdk;
using namespace ipncsdk::linkage;

/// Plans from the first reading to the last switch, with a set clock.
class tst_Linkage final : public QObject {
    Q_OBJECT

private slots:
    void life_data();
    void life();
    void changesOfPlans();
    void fightOfTwoPlans();
    void loneLoopIsNoFight();
    void refusedPlans_data();
    void refusedPlans();
    void faultsAreToldOnce();
};

namespace {

using Time = LinkageEngine::Time;

constexpr auto boards = R"([{"pid":90,"type":"RS485","name":"表","input":[
  {"pid":1,"name":"压力","unit":"MPa","hysteresis":1,"thresholds":[{"level":1,"high":5,"low":-5},
   {"level":2,"high":8,"low":null},{"level":3,"high":10}]},
  {"pid":2,"name":"温度","thresholds":[{"level":1,"high":5}]},
  {"pid":3,"name":"门","thresholds":[]}],
 "output":[{"pid":11},{"pid":12},{"pid":13}]}])";

Time at(double seconds) {
    return Time(std::chrono::hours(1)) + std::chrono::milliseconds(std::llround(seconds * 1000));
}

LinkedDevice deviceWith(const std::vector<Json>& documents) {
    LinkedDevice device{"CAM1", portsOf(Json::parse(boards), Json::object()), {}};
    std::string fault;
    for (Json document : documents) {
        document["linkplanid"] = static_cast<int>(device.plans.size()) + 1;
        document.emplace("name", "P");
        device.plans.push_back(parsePlan(document, fault).value());
    }
    return device;
}

/// What the engine did, as "A1/2" (plan 1 raised an alarm of level 2, "A1/1low" by a low value) and "11+", "11-".
std::string told(LinkageEngine& engine) {
    const LinkageEffects effects = engine.takeEffects();
    std::string text;
    for (const Raised& raised : effects.alarms)
        text += " A" + std::to_string(raised.planId) + "/" + std::to_string(raised.level) + (raised.low ? "low" : "");
    for (const Switching& change : effects.switches)
        text += " " + std::to_string(change.output) + (change.on ? "+" : "-");
    return text;
}

/// Runs "seconds pid=value pid=x;..." ("x": does not answer) and returns what happened, as "seconds what;...".
std::string run(LinkageEngine& engine, const QByteArray& script) {
    std::string happened;
    for (const QByteArray& step : script.split(';')) {
        const QList<QByteArray> words = step.trimmed().split(' ');
        const Time now = at(words.front().toDouble());
        for (int i = 1; i < words.size(); ++i) {
            const QList<QByteArray> parts = words[i].split('=');
            engine.take({{parts[0].toInt(), {}, parts[1].toDouble(), parts[1] != "x"}}, now);
        }
        engine.advance(now);
        const std::string text = told(engine);
        if (!text.empty())
            happened += (happened.empty() ? "" : "; ") + words.front().toStdString() + text;
    }
    return happened;
}

Json input(int pid) {
    return {{"ifpid", 90}, {"input", pid}, {"name", "x"}};
}
Json output(int pid) {
    return {{"ifpid", 90}, {"output", pid}, {"name", "x"}};
}

} // namespace

void tst_Linkage::life_data() {
    QTest::addColumn<QByteArray>("plan");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char* name, const char* plan, const char* script, const char* expected) {
        QTest::newRow(name) << QByteArray(plan) << QByteArray(script) << QByteArray(expected);
    };
    const char* const one = R"("duration":-1,"input":[{"input":1}],"output":[{"output":11}])";
    const char* const held = R"("duration":"30s","input":[{"input":1}])";
    row("at once, and once until it cleared", one, "0 1=5; 1 1=5.1; 2 1=6; 3 1=4; 4 1=5.1",
        "1 A1/1 11+; 3 11-; 4 A1/1 11+");
    row("hysteresis", one, "0 1=6; 1 1=4.5; 2 1=5.5; 3 1=4.1; 4 1=4; 5 1=5", "0 A1/1 11+; 4 11-");
    row("a value below the low limit", one, "0 1=-6; 1 1=-4.5; 2 1=-4", "0 A1/1low 11+; 2 11-");
    row("a jump is told with its level", one, "0 1=9; 1 1=11; 2 1=0", "0 A1/2 11+; 2 11-");
    row("a silent input holds nothing", one, "0 1=6; 1 1=x; 2 1=4.5", "0 A1/1 11+; 1 11-");
    row("the plan's level or higher", R"("duration":-1,"threshold":2,"input":[{"input":1}])",
        "0 1=7; 1 1=9; 2 1=7.5; 3 1=7; 4 1=12", "1 A1/2; 4 A1/3");
    row("just short of the duration", held, "0 1=6; 29.999 1=6; 29.999 1=0; 60", "");
    row("just the duration", held, "0 1=6; 29.999; 30; 31 1=7; 90", "30 A1/1");
    row("the break comes late to be handled", held, "0 1=6; 30.5 1=0", "30.5 A1/1");
    row("trembling begins the duration anew", held, "0 1=6; 20 1=4; 21 1=6; 50.9; 51", "51 A1/1");
    row("trembling inside the hysteresis does not", held, "0 1=6; 20 1=4.5; 30", "30 A1/1");
    row("a silent moment does", held, "0 1=6; 20 1=x; 20.1 1=6; 49; 50.1", "50.1 A1/1");
    row("digits alone", R"("duration":"45","input":[{"input":1}])", "0 1=6; 44.9; 45", "45 A1/1");
    row("or", R"("logic":"or","input":[{"input":1},{"input":2}],"output":[{"output":11}])",
        "0 1=6; 1 2=6; 2 1=0; 3 2=0", "0 A1/1 11+; 3 11-");
    row("and", R"("logic":"and","input":[{"input":1},{"input":2}],"output":[{"output":11}])",
        "0 1=6; 1 2=6; 2 1=0; 3 1=6", "1 A1/1 11+; 2 11-; 3 A1/1 11+");
    row("a single one and a combined one",
        R"("logic":"and","input":[{"input":3}],"inputunion":[{"logic":"or","inputunion":[{"input":1},{"input":2}]}])",
        "0 1=6 2=6 3=99", "");
    row("combined and", R"("logic":"or","inputunion":[{"logic":"and","inputunion":[{"input":1},{"input":2}]}])",
        "0 1=6; 1 2=6", "1 A1/1");
    row("all inputs that have thresholds", R"("allinput":true,"logic":"and")", "0 1=6; 1 2=6", "1 A1/1");
    row("all inputs of the level", R"("allinput":true,"logic":"and","threshold":2)", "0 1=9", "0 A1/2");
    row("disabled", R"("disable":true,"input":[{"input":1}],"output":[{"output":11}])", "0 1=12", "");
    row("an input that is gone", R"("logic":"and","input":[{"input":1},{"input":7}])", "0 1=6 7=99", "");
    row("loop of actions",
        R"("outmode":"loop","interval":2,"input":[{"input":1}],"output":[{"output":11},{"output":12},{"output":13}])",
        "0 1=6; 0.1; 0.2; 0.4; 0.6; 0.8 1=0; 1.0",
        "0 A1/1 11+; 0.2 11- 12+; 0.4 12- 13+; 0.6 13- 11+; 0.8 11- 12+ 12-");
    row("an interval of nothing counts as 100 ms",
        R"("outmode":"loop","interval":0,"input":[{"input":1}],"output":[{"output":11},{"output":12}])",
        "0 1=6; 0.09; 0.1; 0.2", "0 A1/1 11+; 0.1 11- 12+; 0.2 12- 11+");
    row("combined loop beside a single action",
        R"("outmode":"all","input":[{"input":1}],"output":[{"output":11}],
          "outputunion":[{"outmode":"loop","interval":10,"outputunion":[{"output":12},{"output":13}]}])",
        "0 1=6; 1; 2; 2.5 1=0", "0 A1/1 11+ 12+; 1 12- 13+; 2 13- 12+; 2.5 11- 12-");
    row("turns slept through are one", R"("outmode":"loop","interval":1,"input":[{"input":1}],
          "output":[{"output":11},{"output":12}])",
        "0 1=6; 3600.1", "0 A1/1 11+; 3600.1 11- 12+");
}

void tst_Linkage::life() {
    QFETCH(QByteArray, plan);
    QFETCH(QByteArray, script);
    QFETCH(QByteArray, expected);
    LinkageEngine engine;
    engine.setDevices({deviceWith({Json::parse("{" + plan.toStdString() + "}")})}, at(-1));
    QCOMPARE(run(engine, script), expected.toStdString());
}

void tst_Linkage::changesOfPlans() {
    const Json first = {{"duration", "30s"}, {"input", {input(1)}}, {"output", {output(11)}}};
    const Json second = {{"input", {input(1)}}, {"output", {output(11), output(12)}}};
    LinkageEngine engine;
    engine.setDevices({deviceWith({first, second})}, at(0));
    QCOMPARE(run(engine, "1 1=6; 20"), std::string("1 A2/1 11+ 12+"));
    // What stays goes on: the first one's thirty seconds, and the output that both want.
    engine.setDevices({deviceWith({first})}, at(21));
    QCOMPARE(told(engine), std::string(" 11- 12-"));
    QCOMPARE(run(engine, "30.9; 31"), std::string("31 A1/1 11+"));
    // A plan that is new finds what was read before.
    engine.setDevices({deviceWith({first, second})}, at(40));
    QCOMPARE(told(engine), std::string(" A2/1 12+"));
    // Another threshold judges the last value.
    LinkedDevice device = deviceWith({first, second});
    device.ports.inputs.at(1).thresholds = {{1, 20.0, std::nullopt}};
    engine.setDevices({device}, at(41));
    QCOMPARE(told(engine), std::string(" 11- 12-"));
    engine.setDevices({deviceWith({first, second})}, at(42));
    QCOMPARE(told(engine), std::string(" A2/1 11+ 12+"));
    // Removed while active, the device with it.
    engine.setDevices({}, at(43));
    QCOMPARE(told(engine), std::string(" 11- 12-"));
    QVERIFY(!engine.nextDue());
    // An input that is gone is said once.
    LinkedDevice gone = deviceWith({first});
    gone.ports.inputs.erase(1);
    engine.setDevices({gone}, at(44));
    engine.setDevices({gone}, at(45));
    QCOMPARE(engine.takeEffects().logLines.size(), std::size_t{1});
}

void tst_Linkage::fightOfTwoPlans() {
    const Json first = {{"name", "甲"}, {"input", {input(1)}}, {"output", {output(11)}}};
    const Json second = {{"name", "乙"}, {"input", {input(2)}}, {"output", {output(11), output(12)}}};
    LinkageEngine engine;
    engine.setDevices({deviceWith({first, second})}, at(0));
    double time = 1;
    const auto round = [&] {
        engine.take({{1, {}, 6.0, true}}, at(time += 0.1));
        engine.take({{1, {}, 0.0, true}}, at(time += 0.1));
        engine.take({{2, {}, 6.0, true}}, at(time += 0.1));
        engine.take({{2, {}, 0.0, true}}, at(time += 0.1));
    };
    for (int i = 0; i < 5; ++i)
        round();
    QVERIFY(engine.takeEffects().notices.empty());
    engine.take({{1, {}, 6.0, true}}, at(time += 0.1)); // the 21st
    const LinkageEffects effects = engine.takeEffects();
    QCOMPARE(effects.logLines.size(), std::size_t{1});
    QCOMPARE(effects.notices.size(), std::size_t{1});
    QVERIFY(effects.notices.front().find("甲") != std::string::npos);
    QVERIFY(effects.notices.front().find("乙") != std::string::npos);
    QCOMPARE(effects.switches.back().output, 11);
    QVERIFY(!effects.switches.back().on);
    round();
    QCOMPARE(told(engine), std::string());
    // Reading the plans again releases nothing, a change of one does.
    engine.setDevices({deviceWith({first, second})}, at(time += 1));
    engine.take({{1, {}, 6.0, true}}, at(time += 1));
    QCOMPARE(told(engine), std::string());
    Json changed = second;
    changed["output"] = {output(12)};
    engine.setDevices({deviceWith({first, changed})}, at(time += 1));
    QCOMPARE(told(engine), std::string(" A1/1 11+"));
    // The same often, but slower.
    LinkageEngine slow;
    slow.setDevices({deviceWith({first, second})}, at(0));
    for (int i = 0; i < 40; ++i) {
        slow.take({{1 + i % 2, {}, 6.0, true}}, at(time += 0.5));
        slow.take({{1 + i % 2, {}, 0.0, true}}, at(time += 0.51));
    }
    QVERIFY(slow.takeEffects().notices.empty());
}

void tst_Linkage::loneLoopIsNoFight() {
    const Json loop = {
        {"outmode", "loop"}, {"interval", 1}, {"input", {input(1)}}, {"output", {output(11), output(12)}}};
    LinkageEngine engine;
    engine.setDevices({deviceWith({loop})}, at(0));
    engine.take({{1, {}, 6.0, true}}, at(0));
    for (double time = 0; time < 30; time += 0.1)
        engine.advance(at(time));
    const LinkageEffects effects = engine.takeEffects();
    QVERIFY(effects.notices.empty());
    QVERIFY(effects.switches.size() > 500);
}

void tst_Linkage::refusedPlans_data() {
    QTest::addColumn<QByteArray>("plan");
    QTest::addColumn<QByteArray>("part"); // of the sentence; empty: taken
    const auto row = [](const char* name, const char* plan, const char* part) {
        QTest::newRow(name) << QByteArray(plan) << QByteArray(part);
    };
    row("good", R"("name":"a","input":[{"input":1}])", "");
    row("pids as text", R"("name":"a","input":[{"input":"1"}],"output":[{"output":"11"}])", "");
    row("without a name", R"("input":[{"input":1}])", "名称");
    row("a blank name", R"("name":"  ","input":[{"input":1}])", "名称");
    row("without conditions", R"("name":"a")", "条件");
    row("an empty combined condition", R"("name":"a","inputunion":[{"logic":"and","inputunion":[]}])", "条件");
    row("an empty combined action", R"("name":"a","allinput":true,"outputunion":[{}])", "动作");
    row("one input twice", R"("name":"a","input":[{"input":1},{"input":1}])", "不能相同");
    row("level 0", R"("name":"a","allinput":true,"threshold":0)", "阀值");
    row("level 4", R"("name":"a","allinput":true,"threshold":4)", "阀值");
    row("9 seconds", R"("name":"a","allinput":true,"duration":"9s")", "时长");
    row("a day and more", R"("name":"a","allinput":true,"duration":86401)", "时长");
    row("no duration", R"("name":"a","allinput":true,"duration":"soon")", "时长");
    row("minutes", R"("name":"a","allinput":true,"duration":"10m")", "时长");
    row("a negative interval", R"("name":"a","allinput":true,"interval":-1)", "间隔");
    row("inputs of another type", R"("name":"a","input":{"input":1})", "格式");
    row("a flag of another type", R"("name":"a","allinput":"yes")", "格式");
    row("an input that is not there", R"("name":"a","input":[{"input":7}])", "采集输入 7");
    row("an output that is an input", R"("name":"a","allinput":true,"output":[{"output":1}])", "控制输出 1");
}

void tst_Linkage::refusedPlans() {
    QFETCH(QByteArray, plan);
    QFETCH(QByteArray, part);
    std::string fault;
    const auto parsed = parsePlan(Json::parse("{" + plan.toStdString() + "}"), fault);
    QCOMPARE(parsed.has_value(), fault.empty());
    if (parsed)
        fault = missingPortFault(*parsed, portsOf(Json::parse(boards), Json::object()));
    QCOMPARE(fault.empty(), part.isEmpty());
    QVERIFY2(fault.find(part.toStdString()) != std::string::npos, fault.c_str());
}

void tst_Linkage::faultsAreToldOnce() {
    FaultWatch<int> watch{std::chrono::seconds(10)};
    watch.note(1, false, at(0)); // never seen well
    watch.note(2, true, at(0));
    watch.note(2, false, at(1));
    watch.note(2, false, at(5));
    QVERIFY(watch.due(at(10.9)).empty());
    QCOMPARE(watch.due(at(11)), std::vector<int>{2});
    watch.note(2, false, at(12));
    QVERIFY(watch.due(at(100)).empty());
    watch.note(2, true, at(101));
    watch.note(2, false, at(102));
    watch.note(2, true, at(103));
    QVERIFY(watch.due(at(200)).empty());
    watch.note(2, false, at(201));
    watch.forget(2);
    QVERIFY(watch.due(at(300)).empty());
}

QTEST_APPLESS_MAIN(tst_Linkage)
#include "tst_Linkage.moc"
