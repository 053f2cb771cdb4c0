#include "account/AccountTest.h"
#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "linkage/AlarmInbox.h"
#include "linkage/ui/AlarmCenterPage.h"
#include "linkage/ui/AlarmTableModel.h"
#include "linkage/ui/NewSet_Linkage_Dialog.h"
#include "linkage/ui/SMSManageDialog.h"
#include "linkage/ui/Set_Notify_Dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>
#include <QTreeWidget>

using corvanta::json::parseObject;
using corvanta::linkage::AlarmMessage;

namespace {

const char* const Lists = R"({"ipnclist":[
    {"ipncid":"a","nickname":"<b>门</b>%1","type":"video","authority":{"admin":true},"interfaces":[
        {"pid":1,"name":"水&位","input":[{"pid":11,"name":"高"},{"pid":12,"name":"低"}],"output":[]},
        {"pid":2,"name":"继电器","input":[],"output":[{"pid":21,"name":"泵"},{"pid":22,"name":"灯"}]}],
     "linkages":[{"linkplanid":4,"ipncid":"a","name":"旧","threshold":2,"duration":"45","logic":"or","new":1,
        "input":[{"ifpid":1,"input":99,"name":"水&位,中"}],"output":[{"ifpid":2,"output":21,"name":"o"}]}]},
    {"ipncid":"b","nickname":"无权","type":"video","authority":{"video":false}}],
    "group":[{"id":"1","name":"一楼","ipnclist":["a","b"]}]})";

const char* const Names = R"("names":{"linkplanlogic":[{"code":"and","name":"与"},{"code":"or","name":"或"}]},
    "ReportType":{"names":[{"code":"threshold","name":"阈值报警"},{"code":"offline","name":"设备离线"}]},
    "ReportMode":{"names":[{"code":"sms","name":"短信"},{"code":"app","name":"APP通知"}]})";

/// Waits for a window of this name that is open over `parent`.
QDialog* opened(QWidget& parent, const char* name) {
    QDialog* found = nullptr;
    const auto visible = [&] {
        const auto all = parent.findChildren<QDialog*>(QLatin1String(name));
        for (QDialog* const one : all)
            found = one->isVisible() ? one : found;
        return found != nullptr;
    };
    return QTest::qWaitFor(visible) ? found : (qFatal("no %s", name), nullptr);
}

void choose(QWidget& dialog, const char* combo, int index) {
    dialog.findChild<QComboBox*>(QLatin1String(combo))->setCurrentIndex(index);
}

} // namespace

class tst_LinkageDialogs : public AccountTest {
    Q_OBJECT
private slots:
    void aPlanIsMade();
    void anOldPlanIsMended();
    void aPlanIsDeleted();
    void refusalsKeepThePlan();
    void aRuleIsMade();
    void rulesAreListed();
    void textMessagesAreLeafed();
    void theCentreFollowsAndAcknowledges();
    void controlsAreNamed();

private:
    void begin() {
        sdk_.setDocument(R"({"type":"ipnclist"})", Lists);
        answer("getsysnames", ok(Names));
        answer("getlinkplan", ok());
        sdk_.sendToClient(R"({"type":"freshlist"})");
        QTRY_COMPARE(context().devices.ipncIds().size(), 2);
    }
    /// Picks a sensor and a port in the picker that is open over `editor`.
    void pick(QWidget& editor, const char* picker, int sensor, int port) {
        QDialog& dialog = *opened(editor, picker);
        choose(dialog, "sensor", sensor);
        choose(dialog, "port", port);
        click(dialog, "pickSave");
    }
};

void tst_LinkageDialogs::aPlanIsMade() {
    begin();
    answer("submitlinkplan", ok("\"linkplanid\":9"));
    NewSet_Linkage_Dialog list(context(), "a");
    show(list);
    QSignalSpy updated(&list, &NewSet_Linkage_Dialog::sig_updateSensorList);
    click(list, "planAdd");
    QDialog& editor = *opened(list, "AddAndSet_Linkage_Dialog");
    // The pickers say what is missing, one after the other.
    click(editor, "inputAdd");
    QDialog& picker = *opened(editor, "LinkageSignalConditionDialog");
    click(picker, "pickSave");
    QCOMPARE(tip(), QString("请选择传感器!"));
    choose(picker, "sensor", 0);
    click(picker, "pickSave");
    QCOMPARE(tip(), QString("请选择采集输入!"));
    choose(picker, "port", 1);
    click(picker, "pickSave");
    click(editor, "outputEdit");
    QCOMPARE(tip(), QString("请选择一个动作!"));
    editor.findChild<QTabWidget*>("planActions")->setCurrentIndex(1);
    click(editor, "outputUnionAdd");
    QDialog& together = *opened(editor, "LinkageComboxlActionDialog");
    click(together, "unionSave");
    QCOMPARE(tip(), QString("请先添加动作!"));
    click(together, "unionAdd");
    pick(together, "LinkageSignalActionDialog", 0, 1);
    choose(together, "unionOutMode", 1);
    click(together, "unionSave");
    QCOMPARE(tip(), QString("请输入执行时间间隔!"));
    type(together, "unionInterval", "250");
    click(together, "unionSave");
    QTRY_VERIFY(editor.findChild<QListWidget*>("outputUnionList")->count() == 1);
    type(editor, "planInterval", "50");
    click(editor, "planSave");
    QCOMPARE(tip(), QString("请输入正确的执行时间间隔!"));
    type(editor, "planInterval", "99");
    choose(editor, "planDuration", 3);
    choose(editor, "planThreshold", 2);
    editor.findChild<QCheckBox*>("planEnable")->setChecked(false);
    click(editor, "planSave");
    QCOMPARE(tip(), QString("请输入联动策略名称!"));
    type(editor, "planName", "\"<b>%1'");
    click(editor, "planSave");
    QCOMPARE(tip(), QString("保存成功!"));
    const QVariantMap expected = parseObject(R"({"linkplan":{"ipncid":"a","name":"\"<b>%1'","allinput":false,
        "logic":"and","disable":true,"report":false,"duration":"30s","outmode":"all","threshold":3,"interval":0,
        "input":[{"ifpid":1,"input":12,"name":"水&位,低"}],"inputunion":[],"output":[],"outputunion":[{"outputunion":
        [{"ifpid":2,"output":22,"name":"继电器,灯"}],"outmode":"loop","interval":2}]}})");
    QCOMPARE(parseObject(corvanta::json::toText(sent("submitlinkplan").value(0)))["linkplan"], expected["linkplan"]);
    QCOMPARE(log(), QStringList{"联动设置|新增联动策略|a \"<b>%1'"});
    QCOMPARE(updated.size(), 1);
    QTRY_COMPARE(sent("getlinkplan").size(), 2);
}

// A plan that names an input that is gone says so and keeps everything else.
void tst_LinkageDialogs::anOldPlanIsMended() {
    begin();
    answer("submitlinkplan", ok());
    NewSet_Linkage_Dialog list(context(), "a");
    show(list);
    auto& rows = *find<QTreeWidget>(list, "list");
    QCOMPARE(rows.topLevelItem(0)->text(2), QString("<b>门</b>%1:水&位,中(已删除),二级阀值; "));
    click(list, "planEdit");
    QCOMPARE(tip(), QString("请选择一个策略!"));
    rows.setCurrentItem(rows.topLevelItem(0));
    click(list, "planEdit");
    QDialog& editor = *opened(list, "AddAndSet_Linkage_Dialog");
    auto& inputs = *find<QListWidget>(editor, "inputList");
    QCOMPARE(inputs.item(0)->text(), QString("水&位,中(已删除); "));
    inputs.setCurrentRow(0);
    click(editor, "inputEdit");
    QDialog& picker = *opened(editor, "LinkageSignalConditionDialog");
    click(picker, "pickSave"); // the sensor is there, the input is not
    QCOMPARE(tip(), QString("请选择采集输入!"));
    choose(picker, "port", 0);
    click(picker, "pickSave");
    click(editor, "planSave");
    QCOMPARE(tip(), QString("保存成功!"));
    const QVariantMap plan = sent("submitlinkplan").value(0)["linkplan"].toMap();
    QCOMPARE(plan["linkplanid"].toInt(), 4);
    QCOMPARE(plan["new"].toInt(), 1);
    QCOMPARE(plan["duration"].toString(), QString("45"));
    QCOMPARE(plan["logic"].toString(), QString("or"));
    QCOMPARE(plan["input"].toList()[0].toMap()["input"].toInt(), 11);
}

void tst_LinkageDialogs::aPlanIsDeleted() {
    begin();
    answer("dellinkplan", ok());
    NewSet_Linkage_Dialog list(context(), "a");
    show(list);
    click(list, "planDelete");
    QCOMPARE(tip(), QString("请选择一个策略!"));
    auto& rows = *find<QTreeWidget>(list, "list");
    rows.setCurrentItem(rows.topLevelItem(0));
    click(list, "planDelete");
    QCOMPARE(tip(false), QString("确定删除联动策略?"));
    QCOMPARE(sent("dellinkplan").size(), 0);
    answer("getlinkplan", ok("\"linkplans\":[]"));
    click(list, "planDelete");
    QCOMPARE(tip(), QString("确定删除联动策略?"));
    QCOMPARE(tip(), QString("删除成功!"));
    QCOMPARE(sent("dellinkplan").value(0), (QVariantMap{{"ipncid", "a"}, {"linkplanid", 4}}));
    QTRY_COMPARE(rows.topLevelItemCount(), 0);
}

void tst_LinkageDialogs::refusalsKeepThePlan() {
    begin();
    answer("submitlinkplan",
           R"json({"retcode":2,"resp":{"state":"error","errcode":"(bad request)","text":"条件 <b>为空"}})json");
    NewSet_Linkage_Dialog list(context(), "a");
    show(list);
    click(list, "planAdd");
    QDialog& editor = *opened(list, "AddAndSet_Linkage_Dialog");
    type(editor, "planName", "n");
    click(editor, "planSave");
    QCOMPARE(tip(), QString("条件 <b>为空"));
    QVERIFY(editor.isVisible());
    QCOMPARE(find<QLineEdit>(editor, "planName")->text(), QString("n"));
    QCOMPARE(log(), QStringList());
}

void tst_LinkageDialogs::aRuleIsMade() {
    begin();
    answer("getreportrules", ok(R"("reportrules":[],"friendlist":[{"name":"甲","friendphone":"111/222"}])"));
    answer("submitreportrules", ok("\"id\":1"));
    Set_Notify_Dialog list(context());
    show(list);
    QTRY_VERIFY(find<QPushButton>(list, "ruleAdd")->isEnabled()); // names and friends are there
    click(list, "ruleAdd");
    QDialog& editor = *opened(list, "NewSet_Notify_Dialog");
    click(editor, "ruleSave");
    QCOMPARE(tip(), QString("通知策略名称不能为空!"));
    type(editor, "ruleName", "n");
    click(editor, "ruleDevicesPick");
    QCOMPARE(tip(), QString("请先选择接收人!"));
    const auto tick = [&](const char* button, int row, int rows) {
        click(editor, button);
        QDialog& picker = *opened(editor, "CheckPicker");
        auto& entries = *find<QTreeWidget>(picker, "pickList");
        QCOMPARE(entries.topLevelItemCount(), rows);
        entries.topLevelItem(row)->setCheckState(0, Qt::Checked);
        click(picker, "pickOk");
    };
    tick("ruleReceiversPick", 0, 3); // this account first, then each number of a friend
    click(editor, "ruleSave");
    QCOMPARE(tip(), QString("关注设备选择不能为空!"));
    tick("ruleDevicesPick", 0, 1); // of the other one the user has no right
    click(editor, "ruleType_threshold");
    click(editor, "ruleMode_sms");
    click(editor, "ruleSmsLevel_3");
    click(editor, "ruleSmsLevel_1");
    editor.findChild<QTabWidget*>("ruleTabs")->setCurrentIndex(1);
    find<QPlainTextEdit>(editor, "smsTemplate")->setPlainText("($1) <b>");
    click(editor, "smsTemplatePreview");
    QCOMPARE(tip(), QString("【设备名称】 <b>"));
    click(editor, "ruleSave");
    QCOMPARE(tip(), QString("保存成功!"));
    const QVariantMap expected = parseObject(R"({"name":"n","recvphones":[],"selfuse":true,"ipncids":["a"],
        "reporttype":["threshold"],"reportmode":["sms"],"smslevel":["1","3"],"applevel":[],"smstemplate":"($1) <b>",
        "apptemplate":"","enable":true})");
    QCOMPARE(sent("submitreportrules").value(0)["reportrules"].toMap(), expected);
    QTRY_COMPARE(sent("getreportrules").size(), 2);
    QCOMPARE(log(), QStringList{"通知规则|新增通知规则|n"});
}

void tst_LinkageDialogs::rulesAreListed() {
    begin();
    answer("getreportrules", ok(R"("reportrules":[{"id":7,"name":"r","recvphones":["111","9"],"selfuse":true,
        "ipncids":["a","gone"],"reporttype":["offline","?"],"reportmode":["app"],"smslevel":["1"],"applevel":["2","3"],
        "enable":false}],"friendlist":[{"name":"甲","friendphone":"111"}])"));
    answer("delreportrules", ok());
    Set_Notify_Dialog list(context());
    show(list);
    auto& rows = *find<QTreeWidget>(list, "list");
    QStringList texts;
    const auto read = [&] {
        texts.clear();
        for (int column = 0; column < 11 && rows.topLevelItemCount() == 1; ++column)
            texts += rows.topLevelItem(0)->text(column);
        return texts.value(7) == "APP通知"; // names come by themselves
    };
    QTRY_VERIFY(read());
    QCOMPARE(texts, (QStringList{"7", "1", "r", "本机, 甲, 9", "一楼", "<b>门</b>%1, gone(已删除)", "设备离线, ?",
                                 "APP通知", "一级阀值", "二级阀值, 三级阀值", "禁用"}));
    click(list, "ruleEdit");
    QCOMPARE(tip(), QString("请选择一个通知策略!"));
    click(list, "ruleDelete");
    QCOMPARE(tip(), QString("请选择要删除的通知策略!"));
    rows.setCurrentItem(rows.topLevelItem(0));
    click(list, "ruleDelete");
    QCOMPARE(tip(), QString("请确认删除!"));
    QCOMPARE(tip(), QString("删除成功!"));
    QCOMPARE(sent("delreportrules").value(0), (QVariantMap{{"reportrulesid", 7}}));
}

void tst_LinkageDialogs::textMessagesAreLeafed() {
    begin();
    answer("getpersioninfo", ok(R"("persioninfo":{"smsnum":42,"smsphone":"111","smswarn":5})"));
    answer("getsmsrecords", ok(R"("records":[{"id":30,"text":"<b>","state":"ok","kind":"alarm"},{"id":28}])"));
    answer("setphoneparam", ok());
    SMSManageDialog dialog(context());
    show(dialog);
    QTRY_COMPARE(find<QLabel>(dialog, "smsLeft")->text(), QString("42 条"));
    type(dialog, "smsPhone", "222");
    type(dialog, "smsWarn", "9");
    click(dialog, "smsSave");
    QCOMPARE(tip(), QString("保存成功!"));
    QCOMPARE(sent("setphoneparam").value(0), (QVariantMap{{"smsphone", "222"}, {"smswarn", 9}}));
    dialog.findChild<QTabWidget*>("smsTabs")->setCurrentIndex(1);
    auto& rows = *find<QTreeWidget>(dialog, "smsRecords");
    QTRY_COMPARE(rows.topLevelItemCount(), 2);
    QCOMPARE(rows.topLevelItem(0)->text(5), QString("<b>"));
    QTRY_VERIFY(find<QPushButton>(dialog, "smsNext")->isEnabled());
    answer("getsmsrecords", ok(R"("records":[])")); // nothing older: what is shown stays
    click(dialog, "smsNext");
    QTRY_COMPARE(sent("getsmsrecords").size(), 2);
    click(dialog, "smsFront");
    QTRY_COMPARE(sent("getsmsrecords").size(), 3);
    QTRY_VERIFY(!find<QPushButton>(dialog, "smsFront")->isEnabled());
    QCOMPARE(rows.topLevelItemCount(), 2);
    const auto asked = sent("getsmsrecords");
    QCOMPARE(asked[0], (QVariantMap{{"cmd", "next"}, {"recid", 0}}));
    QCOMPARE(asked[1], (QVariantMap{{"cmd", "next"}, {"recid", 28}}));
    QCOMPARE(asked[2], (QVariantMap{{"cmd", "front"}, {"recid", 30}}));
}

void tst_LinkageDialogs::theCentreFollowsAndAcknowledges() {
    begin();
    AlarmCenterPage page(context(), manager_->storage());
    page.resize(640, 320);
    show(page);
    auto& table = *find<QTableView>(page, "alarmTable");
    const auto alarm = [](const char* id, int plan) {
        return AlarmMessage::fromMap(
            {{"content", "c"},
             {"alarm", QVariantMap{{"ipncid", id},
                                   {"datetime", "2026-01-02 03:04:05"},
                                   {"trigger", QVariantMap{{"linkplanid", plan}, {"threshold", plan}}}}}});
    };
    for (int i = 0; i < 3; ++i)
        context().alarms.add(alarm("a", 1), "大门");
    context().alarms.add(alarm("gone", 2), "旧");
    QTRY_COMPARE(table.model()->rowCount(), 2);
    QCOMPARE(table.model()->index(1, AlarmTableModel::Count).data().toString(), QString("3"));
    // The chosen row stays chosen while others come.
    table.selectRow(1);
    context().alarms.add(alarm("a", 3), "大门");
    QTRY_COMPARE(table.model()->rowCount(), 3);
    QCOMPARE(table.selectionModel()->selectedRows().value(0).row(), 2);
    QSignalSpy live(&page, &AlarmCenterPage::sigLive);
    QSignalSpy playback(&page, &AlarmCenterPage::sigPlayback);
    click(page, "alarmLive");
    click(page, "alarmPlayback");
    QCOMPARE(live.value(0).value(0).toString(), QString("a"));
    QCOMPARE(playback.value(0).value(1).toDateTime(), QDateTime({2026, 1, 2}, {3, 4, 5}));
    // The way to the map is there when a map takes it.
    QVERIFY(!find<QPushButton>(page, "alarmMap")->isVisible());
    QSignalSpy map(&context().events, &AppEvents::sig_showAlarmOnMap);
    click(page, "alarmConfirm");
    QTRY_COMPARE(table.model()->rowCount(), 2);
    table.selectRow(1);
    QVERIFY(!find<QPushButton>(page, "alarmLive")->isEnabled()); // a device that is gone
    click(page, "alarmMap");
    QCOMPARE(map.value(0).value(0).toString(), QString("gone"));
    click(page, "alarmConfirmAll");
    QCOMPARE(tip(false), QString("确认全部2条报警?"));
    QCOMPARE(context().alarms.count(), qint64(2));
    click(page, "alarmConfirmAll");
    tip();
    QTRY_COMPARE(table.model()->rowCount(), 0);
    QVERIFY(find<QLabel>(page, "alarmEmpty")->isVisible());
    QCOMPARE(log(), (QStringList{"报警处理|确认报警|大门 c", "报警处理|全部确认报警|2"}));
}

void tst_LinkageDialogs::controlsAreNamed() {
    begin();
    answer("getreportrules", ok());
    answer("getpersioninfo", ok());
    answer("getsmsrecords", ok());
    NewSet_Linkage_Dialog plans(context(), "a");
    Set_Notify_Dialog rules(context());
    SMSManageDialog messages(context());
    AlarmCenterPage centre(context(), manager_->storage());
    show(plans);
    click(plans, "planAdd");
    QDialog& plan = *opened(plans, "AddAndSet_Linkage_Dialog");
    click(plan, "inputAdd");
    checkNames(*opened(plan, "LinkageSignalConditionDialog"));
    checkNames(plan);
    plan.close();
    show(rules);
    QTRY_VERIFY(find<QPushButton>(rules, "ruleAdd")->isEnabled()); // names and rules are there
    click(rules, "ruleAdd");
    checkNames(*opened(rules, "NewSet_Notify_Dialog"));
    for (QWidget* const one : QWidgetList{&plans, &rules, &messages, &centre})
        checkNames(*one);
}

QTEST_MAIN(tst_LinkageDialogs)
#include "tst_LinkageDialogs.moc"
