#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "linkage/LinkagePlan.h"
#include "linkage/NotifyRule.h"
#include "linkage/Words.h"

#include <QtTest>

using namespace corvanta::linkage;
using corvanta::json::parseObject;

Q_DECLARE_METATYPE(LinkagePlan)
Q_DECLARE_METATYPE(NotifyRule)

class tst_LinkageRules final : public QObject {
    Q_OBJECT
private slots:
    void mapsSurvive_data();
    void mapsSurvive();
    void plansAreChecked_data();
    void plansAreChecked();
    void intervalsAreStored_data();
    void intervalsAreStored();
    void boardsStandInOrder();
    void plansAreShown();
    void rulesAreChecked_data();
    void rulesAreChecked();
    void templatesArePreviewed();
    void receiversAreNamed();
};

// What was read is written again, with every key that nobody here knows.
void tst_LinkageRules::mapsSurvive_data() {
    QTest::addColumn<bool>("isRule");
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("plan") << false << QByteArray(R"({"linkplanid":7,"ipncid":"a","name":"%1<b>","allinput":false,
        "logic":"or","disable":true,"report":true,"duration":"30s","threshold":3,"outmode":"loop","interval":2,"new":[1],
        "input":[{"ifpid":1,"input":11,"name":"x,y","more":{"z":1}}],
        "inputunion":[{"inputunion":[{"ifpid":1,"input":12,"name":"n"}],"logic":"or","also":true}],
        "output":[{"ifpid":2,"output":21,"name":"o"}],
        "outputunion":[{"outputunion":[],"outmode":"loop","interval":5,"kept":"k"}]})");
    QTest::newRow("plan for ever") << false << QByteArray(R"({"ipncid":"a","name":"n","allinput":true,"logic":"and",
        "disable":false,"report":false,"duration":-1,"threshold":1,"outmode":"all","interval":0,"input":[],
        "inputunion":[],"output":[],"outputunion":[]})");
    QTest::newRow("rule") << true << QByteArray(R"({"id":3,"name":"r","recvphones":["1","2"],"selfuse":true,
        "ipncids":["a"],"reporttype":["threshold"],"reportmode":["sms"],"smslevel":["1","3"],"applevel":[],
        "smstemplate":"($1) x","apptemplate":"","enable":false,"unknown":{"a":[1]}})");
}

void tst_LinkageRules::mapsSurvive() {
    QFETCH(bool, isRule);
    QFETCH(QByteArray, json);
    const QVariantMap map = parseObject(json.toStdString());
    QVERIFY(!map.isEmpty());
    const QVariantMap again = isRule ? NotifyRule::fromMap(map).toMap() : LinkagePlan::fromMap(map).toMap();
    QCOMPARE(parseObject(corvanta::json::toText(again)), map);
}

void tst_LinkageRules::plansAreChecked_data() {
    QTest::addColumn<LinkagePlan>("plan");
    QTest::addColumn<QString>("interval");
    QTest::addColumn<QString>("seconds"); // "-": no own duration
    QTest::addColumn<QString>("problem");
    const PortRef a{1, 11, {}, {}};
    const PortRef b{1, 12, {}, {}};
    const auto plan = [](const QString& name, const QList<PortRef>& inputs = {}) {
        LinkagePlan result;
        result.name = name;
        result.inputs = inputs;
        return result;
    };
    const QString same = "选择的输入不能相同!";
    const QString wrong = "请输入正确的执行时间间隔!";
    QTest::newRow("good") << plan("n", {a, b}) << ""
                          << "-"
                          << "";
    QTest::newRow("all wrong: inputs first") << plan("", {a, a}) << "50"
                                             << "" << same;
    LinkagePlan combined = plan("n", {a});
    combined.inputUnions += ConditionUnion{{b, a}, "and", {}};
    QTest::newRow("in a combination") << combined << ""
                                      << "-" << same;
    QTest::newRow("same port of another sensor") << plan("n", {a, {2, 11, {}, {}}}) << ""
                                                 << "-"
                                                 << "";
    LinkagePlan loop = plan("", {});
    loop.outMode = "loop";
    QTest::newRow("loop without interval") << loop << ""
                                           << ""
                                           << "请输入执行时间间隔!";
    QTest::newRow("interval before duration") << plan("") << "50"
                                              << "" << wrong;
    for (const char* bad : {"1", "98", " 98 "})
        QTest::addRow("interval %s", bad) << plan("n") << bad << "-" << wrong;
    for (const char* good : {"0", "99", "100", "abc", "99999999999", "-5"})
        QTest::addRow("interval %s", good) << plan("n") << good << "-"
                                           << "";
    QTest::newRow("duration before name") << plan("") << ""
                                          << ""
                                          << "请输入条件有效时长!";
    QTest::newRow("name") << plan("") << ""
                          << "60"
                          << "请输入联动策略名称!";
}

void tst_LinkageRules::plansAreChecked() {
    QFETCH(LinkagePlan, plan);
    QFETCH(QString, interval);
    QFETCH(QString, seconds);
    QFETCH(QString, problem);
    const bool own = seconds != "-";
    QCOMPARE(checkPlan(plan, {interval, own, own ? seconds : QString()}).value_or(QString()), problem);
}

void tst_LinkageRules::intervalsAreStored_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("stored");
    QTest::newRow("250") << "250" << 2;
    QTest::newRow("99") << "99" << 0;
    QTest::newRow("letters") << "abc" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("more than an int") << "99999999999" << 0;
}

void tst_LinkageRules::intervalsAreStored() {
    QFETCH(QString, typed);
    QFETCH(int, stored);
    QCOMPARE(storedInterval(typed), stored);
}

void tst_LinkageRules::boardsStandInOrder() {
    const DeviceRecord device = DeviceRecord::fromMap(parseObject(R"({"ipncid":"a","extend":{"sublist":[
        {"pid":3,"ifname":"Zig","input":[{"pid":31}]},{"name":"without number"}]},
        "interfaces":[{"pid":1,"name":"one","input":[{"pid":11,"name":"in"}],"output":[{"pid":12,"name":"out"}]},7]})"));
    const Boards boards = Boards::of(device);
    QCOMPARE(boards.all().size(), 2);
    QCOMPARE(boards.all()[0].name, QString("one"));
    QCOMPARE(boards.all()[1].name, QString("Zig"));
    QCOMPARE(boards.text({3, 31, {}, {}}, PortKind::Input), QString("Zig,31; "));
    QCOMPARE(boards.text({1, 12, {}, {}}, PortKind::Output), QString("one,out; "));
    // An output's number among the inputs is none of them.
    QCOMPARE(boards.text({1, 12, "was,called", {}}, PortKind::Input), QString("was,called(已删除); "));
    QCOMPARE(boards.text({9, 99, {}, {}}, PortKind::Input), QString("9,99(已删除); "));
}

void tst_LinkageRules::plansAreShown() {
    const DeviceRecord device = DeviceRecord::fromMap(parseObject(
        R"({"ipncid":"a","interfaces":[{"pid":1,"name":"s%2","input":[{"pid":11,"name":"i"},{"pid":12,"name":"j"}]}]})"));
    LinkagePlan plan;
    plan.inputs = {{1, 11, {}, {}}};
    plan.inputUnions = {{{{1, 11, {}, {}}, {1, 12, {}, {}}}, "or", {}}};
    plan.duration = "45";
    plan.interval = 2;
    PlanTexts texts = textsOf(plan, "门%1", Boards::of(device));
    QCOMPARE(texts.conditions, QString("门%1:s%2,i,一级阀值; 门%1:(s%2,i 或 s%2,j),一级阀值; "));
    QCOMPARE(texts.duration, QString("45s"));
    QCOMPARE(texts.interval, QString("200ms"));
    plan.threshold = 9;
    plan.duration = -1;
    texts = textsOf(plan, "d", {});
    QVERIFY(texts.conditions.startsWith("d:1,11(已删除); "));
    QCOMPARE(texts.duration, QString("永久"));
}

void tst_LinkageRules::rulesAreChecked_data() {
    QTest::addColumn<NotifyRule>("rule");
    QTest::addColumn<QString>("problem");
    // Each row mends what the one before it was refused for.
    NotifyRule rule;
    const auto row = [&rule](const char* problem) {
        QTest::newRow(*problem == 0 ? "good" : problem) << rule << problem;
    };
    row("通知策略名称不能为空!");
    rule.name = "n";
    row("接收人选择不能为空!");
    rule.selfUse = true;
    row("关注设备选择不能为空!");
    rule.ipncIds = QStringList{"a"};
    row("通知类型选择不能为空!");
    rule.types = QStringList{"threshold"};
    row("通知方式选择不能为空！!");
    rule.modes = QStringList{"sms"};
    row("短信接收等级和APP接收等级\n至少选择一种!");
    rule.appLevels = QStringList{"2"};
    row("");
    rule.selfUse = false;
    rule.phones = QStringList{"1"};
    QTest::newRow("good with a friend") << rule << "";
}

void tst_LinkageRules::rulesAreChecked() {
    QFETCH(NotifyRule, rule);
    QFETCH(QString, problem);
    QCOMPARE(checkRule(rule).value_or(QString()), problem);
}

void tst_LinkageRules::templatesArePreviewed() {
    QCOMPARE(previewOf("($1)($2)($3)($4)($5)($6)($7) ($8) $1 (($1))"),
             QString("【设备名称】【联动策略名称】【一级阀值】【传感器名称】【传感器输入名称】【报警值】【单位】"
                     " ($8) $1 (【设备名称】)"));
}

void tst_LinkageRules::receiversAreNamed() {
    const QVariantList friends =
        parseObject(
            R"({"f":[{"name":"甲","friendphone":"111, 222"},{"name":"","friendphone":"333"},{"name":"乙","friendphone":"111"},7]})")
            ["f"]
                .toList();
    const QList<Receiver> receivers = receiversOf(friends);
    QCOMPARE(receivers.size(), 3);
    NotifyRule rule;
    rule.selfUse = true;
    rule.phones = QStringList{"222", "333", "444"};
    QCOMPARE(receiverTexts(rule, receivers), QString("本机, 甲, 333, 444"));
}

QTEST_APPLESS_MAIN(tst_LinkageRules)
#include "tst_LinkageRules.moc"
