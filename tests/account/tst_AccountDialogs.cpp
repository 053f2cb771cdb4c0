#include "account/AccountTest.h"
#include "account/ui/AddEditFriendDialog.h"
#include "account/ui/AddEditGroupDialog.h"
#include "account/ui/HeadIcons.h"
#include "account/ui/Manage_Friend_Dialog.h"
#include "account/ui/Manage_Groups_Dialog.h"
#include "account/ui/PersonalInformationDialog.h"
#include "account/ui/PhoneFlowPages.h"
#include "account/ui/Set_Authority_Dialog.h"
#include "account/ui/SmsWindow.h"
#include "base/DeviceModel.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QListWidget>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTreeWidget>

namespace {

const char* const Friends = R"("friendlist":[{"friendphone":"13900139000","nickname":"<b>甲</b>","remarkname":"同事"},
    {"friendphone":"13700137000","nickname":"乙","remarkname":""}])";
const char* const Shares =
    R"("friendlist":[{"friendphone":"13900139000","nickname":"甲"},{"friendphone":"13700137000",
    "nickname":"乙"}],"ipnclist":[{"ipncid":"a","nickname":"大门","admin":true},{"ipncid":"b","nickname":"后门",
    "admin":true},{"ipncid":"c","nickname":"邻居","friendphone":"13700137000","authority":{"video":true}}],
    "devicesharelist":[{"friendphone":"13900139000","ipncid":"a","share":true}])";
const char* const Lists = R"({"ipnclist":[],"group":[{"id":"7","name":"一楼"},{"id":"8","name":"<i>二楼</i>"}]})";

} // namespace

/// What an account manages: itself, its groups, its friends, who may see what.
class tst_AccountDialogs final : public AccountTest {
    Q_OBJECT
private slots:
    void groups();
    void groupDeletion();
    void groupEditing_data();
    void groupEditing();
    void friends();
    void friendAdding_data();
    void friendAdding();
    void friendDeletion();
    void rights();
    void rightsRefused();
    void allAtOnce();
    void nickname();
    void headPicture();
    void anotherPassword();
    void unbinding();
    void messages();

private:
    static QTreeWidget& list(const QDialog& dialog) { return *find<QTreeWidget>(dialog, "list"); }
    static QListWidgetItem* check(const QDialog& dialog, const char* name, int row) {
        return find<QListWidget>(dialog, name)->item(row);
    }
    void sendLists() {
        sdk_.setDocument(R"({"type":"ipnclist"})", Lists);
        sdk_.sendToClient(R"({"type":"freshlist"})");
        QTRY_COMPARE(context().devices.groups().size(), 2);
    }
};

void tst_AccountDialogs::groups() {
    Manage_Groups_Dialog dialog(context());
    show(dialog);
    checkNames(dialog);
    QVERIFY(find<QWidget>(dialog, "listEmpty")->isVisible());
    sendLists(); // it follows
    QTRY_COMPARE(list(dialog).topLevelItemCount(), 2);
    QCOMPARE(list(dialog).topLevelItem(1)->text(2), QStringLiteral("<i>二楼</i>"));
    QCOMPARE(list(dialog).topLevelItem(1)->text(0), QStringLiteral("8"));
    type(dialog, "listSearch", QStringLiteral("一"));
    QVERIFY(!list(dialog).topLevelItem(0)->isHidden() && list(dialog).topLevelItem(1)->isHidden());
}

void tst_AccountDialogs::groupDeletion() {
    sendLists();
    answer("delgroup", error("(group not empty)"));
    Manage_Groups_Dialog dialog(context());
    show(dialog);
    click(dialog, "groupDelete");
    QCOMPARE(tip(), QStringLiteral("请选择要删除的分组!"));
    list(dialog).selectAll();
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "groupDelete");
    QCOMPARE(tip(), QStringLiteral("目前系统不支持多选删除，请选择一个需要删除项！"));
    list(dialog).setCurrentItem(list(dialog).topLevelItem(1));
    const QString question =
        QStringLiteral("确定要删除选中的分组？确认\n该分组下设备已经删除或移动到\n其它组！否则将无法删除该分组！");
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "groupDelete");
    QCOMPARE(tip(false), question);
    QCOMPARE(sent("delgroup").size(), 0);
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "groupDelete");
    QCOMPARE(tip(), question);
    QTRY_COMPARE(sent("delgroup").size(), 1);
    QCOMPARE(tip(), QStringLiteral("分组下还有设备，无法删除!"));
    QVERIFY(log().isEmpty());
    answer("delgroup", ok());
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "groupDelete");
    tip();
    QTRY_COMPARE(sent("delgroup").size(), 2);
    QCOMPARE(tip(), QStringLiteral("删除分组成功!"));
    QCOMPARE(sent("delgroup").back().value(QStringLiteral("groupid")).toString(), QStringLiteral("8"));
    QCOMPARE(log(), QStringList{QStringLiteral("分组管理|删除分组|<i>二楼</i>")});
}

void tst_AccountDialogs::groupEditing_data() {
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tipText");
    QTest::addColumn<QString>("row");
    QTest::newRow("new") << ""
                         << "车库 😀"
                         << "保存成功!"
                         << "分组管理|新增分组|车库 😀";
    QTest::newRow("other name") << "7"
                                << "\"'; drop"
                                << "保存成功!"
                                << "分组管理|编辑分组|一楼 → \"'; drop";
    QTest::newRow("no name") << ""
                             << "  "
                             << "请输入名称!"
                             << "";
    QTest::newRow("10000") << "" << QString(10000, QLatin1Char('x')) << "名称过长，最多64个字符!"
                           << "";
}

void tst_AccountDialogs::groupEditing() {
    QFETCH(QString, id);
    QFETCH(QString, name);
    QFETCH(QString, row);
    answer("addgroup", ok());
    answer("editgroup", ok());
    QWidget parent;
    show(parent);
    AddEditGroupDialog dialog(context(), id, id.isEmpty() ? QString() : QStringLiteral("一楼"), &parent);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    checkNames(dialog);
    type(dialog, "groupName", name);
    click(dialog, "groupSave");
    QTEST(tip(), "tipText");
    QCOMPARE(dialog.isVisible(), row.isEmpty());
    const auto requests = sent(id.isEmpty() ? "addgroup" : "editgroup");
    QCOMPARE(requests.size(), row.isEmpty() ? 0 : 1);
    QCOMPARE(log(), row.isEmpty() ? QStringList() : QStringList{row});
    if (!row.isEmpty()) {
        QCOMPARE(requests.constFirst().value(QStringLiteral("name")).toString(), name);
        QCOMPARE(requests.constFirst().value(QStringLiteral("groupid")).toString(), id);
    }
}

void tst_AccountDialogs::friends() {
    answer("getfriends", ok(Friends));
    Manage_Friend_Dialog dialog(context());
    show(dialog);
    checkNames(dialog);
    QTRY_COMPARE(list(dialog).topLevelItemCount(), 2);
    QCOMPARE(list(dialog).topLevelItem(0)->text(2), QStringLiteral("<b>甲</b>"));
    // A picture is asked for once for each, and only a path of ours is named.
    QTRY_COMPARE(sent("downhead").size(), 2);
    QVERIFY(sent("downhead").constFirst().value(QStringLiteral("downpath")).toString().startsWith(dir_->path()));
    click(dialog, "friendEdit");
    QCOMPARE(tip(), QStringLiteral("请选择要编辑的好友!"));
    list(dialog).setCurrentItem(list(dialog).topLevelItem(0));
    answer("setfriendparam", ok());
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "friendEdit");
    auto* const editor = dialog.findChild<AddEditFriendDialog*>();
    QVERIFY(QTest::qWaitForWindowExposed(editor));
    checkNames(*editor);
    QVERIFY(!find<QLineEdit>(*editor, "friendPhone")->isEnabled());
    type(*editor, "friendRemark", QStringLiteral("老友"));
    click(*editor, "friendSave");
    QTRY_COMPARE(sent("getfriends").size(), 2); // the list is read again
    QCOMPARE(sent("setfriendparam").constFirst().value(QStringLiteral("remarkname")).toString(),
             QStringLiteral("老友"));
    sdk_.sendToClient(R"({"type":"freshlist"})"); // a change by somebody else
    QTRY_COMPARE(sent("getfriends").size(), 3);
}

void tst_AccountDialogs::friendAdding_data() {
    QTest::addColumn<QString>("phone");
    QTest::addColumn<QString>("remark");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("tipText");
    const QString unknown = QStringLiteral("您输入的手机号有误或者是您要添加的\n好友还未注册，请检查手机号输入或先\n"
                                           "请通知好友在该平台注册成功后再添加!");
    QTest::newRow("no phone") << ""
                              << "" << ok() << "请输入好友手机号!";
    QTest::newRow("no note") << "13600136000"
                             << "" << ok() << "请输入备注!";
    QTest::newRow("friend already") << "13900139000"
                                    << "x" << ok() << "该用户已经是您的好友,无需重复添加!";
    QTest::newRow("letters") << "1360013600a"
                             << "x" << ok() << unknown;
    QTest::newRow("40 digits") << QString(40, QLatin1Char('1')) << "x" << ok() << unknown;
    QTest::newRow("unknown") << "13600136000"
                             << "x" << error("(not phonenumber)") << unknown;
    QTest::newRow("other error") << "13600136000"
                                 << "x" << error("(store error)") << "服务器数据保存失败!";
    QTest::newRow("added") << "13600136000"
                           << "x" << ok() << "添加好友成功!";
}

void tst_AccountDialogs::friendAdding() {
    QFETCH(QString, phone);
    QFETCH(QString, remark);
    QFETCH(QByteArray, reply);
    QFETCH(QString, tipText);
    answer("addfriend", reply);
    QWidget parent;
    show(parent);
    AddEditFriendDialog dialog(context(), QList<FriendRecord>{{QStringLiteral("13900139000"), {}, {}}}, &parent);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    type(dialog, "friendPhone", phone);
    type(dialog, "friendRemark", remark);
    click(dialog, "friendSave");
    QCOMPARE(tip(), tipText);
    const bool isAdded = tipText == QStringLiteral("添加好友成功!");
    QCOMPARE(dialog.isVisible(), !isAdded);
    QCOMPARE(log().size(), isAdded ? 1 : 0);
}

void tst_AccountDialogs::friendDeletion() {
    answer("getfriends", ok(Friends));
    answer("delfriend", ok());
    Manage_Friend_Dialog dialog(context());
    show(dialog);
    QTRY_COMPARE(list(dialog).topLevelItemCount(), 2);
    click(dialog, "friendDelete");
    QCOMPARE(tip(), QStringLiteral("请选择要删除的好友!"));
    list(dialog).selectAll();
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "friendDelete");
    QCOMPARE(tip(), QStringLiteral("目前系统不支持多选删除，请选择一个需要删除项！"));
    list(dialog).setCurrentItem(list(dialog).topLevelItem(1));
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "friendDelete");
    QCOMPARE(tip(), QStringLiteral(
                        "删除该好友后，所有分享给\n该好友的设备从好友账户中解除，\n好友分享给自己的设备也被解除!"));
    QTRY_COMPARE(sent("delfriend").size(), 1);
    QCOMPARE(tip(), QStringLiteral("删除好友成功!"));
    QCOMPARE(sent("delfriend").constFirst().value(QStringLiteral("friendphone")).toString(),
             QStringLiteral("13700137000"));
    QCOMPARE(log(), QStringList{QStringLiteral("好友管理|删除好友|13700137000")});
}

void tst_AccountDialogs::rights() {
    answer("getalldevicesharelist", ok(Shares));
    answer("setfrienddeviceshare", ok());
    Set_Authority_Dialog dialog(context());
    show(dialog);
    QTRY_COMPARE(find<QListWidget>(dialog, "friendRightsList")->count(), 2);
    checkNames(dialog);
    QCOMPARE(check(dialog, "friendRightsList", 0)->checkState(), Qt::Checked);
    QCOMPARE(check(dialog, "friendRightsList", 1)->checkState(), Qt::Unchecked);
    check(dialog, "friendRightsList", 1)->setCheckState(Qt::Checked);
    QTRY_COMPARE(log(), QStringList{QStringLiteral("权限设置|分享设备给好友|b → 13900139000")});
    QCOMPARE(sent("setfrienddeviceshare").constFirst(),
             (QVariantMap{{"friendphone", "13900139000"}, {"ipncid", "b"}, {"share", true}}));
    // The other view shows the same.
    auto* const pick = find<QComboBox>(dialog, "deviceRightsPick");
    emit pick->activated(1);
    QCOMPARE(check(dialog, "deviceRightsList", 0)->checkState(), Qt::Checked);
    check(dialog, "deviceRightsList", 0)->setCheckState(Qt::Unchecked);
    QTRY_COMPARE(check(dialog, "friendRightsList", 1)->checkState(), Qt::Unchecked);
    QTRY_COMPARE(log().size(), 2);
    find<QTabWidget>(dialog, "shareTabs")->setCurrentIndex(2);
    auto* const received = find<QTreeWidget>(dialog, "received");
    QCOMPARE(received->topLevelItemCount(), 1);
    QCOMPARE(received->topLevelItem(0)->text(2), QStringLiteral("乙"));
    type(dialog, "receivedSearch", QStringLiteral("nothing"));
    QVERIFY(received->topLevelItem(0)->isHidden());
}

void tst_AccountDialogs::rightsRefused() {
    answer("getalldevicesharelist", ok(Shares));
    answer("setfrienddeviceshare", error("(not authority)"));
    Set_Authority_Dialog dialog(context());
    show(dialog);
    QTRY_COMPARE(find<QListWidget>(dialog, "friendRightsList")->count(), 2);
    check(dialog, "friendRightsList", 0)->setCheckState(Qt::Unchecked);
    QCOMPARE(tip(), QStringLiteral("没有该操作的权限!"));
    QCOMPARE(check(dialog, "friendRightsList", 0)->checkState(), Qt::Checked); // it goes back
    QVERIFY(log().isEmpty());
}

void tst_AccountDialogs::allAtOnce() {
    answer("getalldevicesharelist", ok(Shares));
    answer("setfrienddeviceshare", ok());
    Set_Authority_Dialog dialog(context());
    show(dialog);
    QTRY_COMPARE(find<QListWidget>(dialog, "friendRightsList")->count(), 2);
    auto* const all = find<QCheckBox>(dialog, "friendRightsAll");
    QVERIFY(!all->isChecked());
    all->click();
    QTRY_COMPARE(log().size(), 1); // one was shared already
    QVERIFY(all->isChecked());
    QCOMPARE(check(dialog, "friendRightsList", 1)->checkState(), Qt::Checked);
    type(dialog, "friendRightsSearch", QStringLiteral("大门"));
    all->click(); // only what is seen
    QTRY_COMPARE(log().size(), 2);
    QCOMPARE(check(dialog, "friendRightsList", 0)->checkState(), Qt::Unchecked);
    QCOMPARE(check(dialog, "friendRightsList", 1)->checkState(), Qt::Checked);
}

void tst_AccountDialogs::nickname() {
    answer("getpersioninfo", ok(R"("persioninfo":{"nickname":"<b>我</b>","phoneid":"13800138000"})"));
    answer("setphoneparam", ok());
    HeadIcons icons(context());
    PersonalInformationDialog dialog(context(), icons);
    show(dialog);
    checkNames(dialog);
    QTRY_COMPARE(find<QLineEdit>(dialog, "nickname")->text(), QStringLiteral("<b>我</b>"));
    type(dialog, "nickname", QString());
    click(dialog, "nicknameSave");
    QCOMPARE(tip(), QStringLiteral("请输入昵称!"));
    type(dialog, "nickname", QStringLiteral("新名"));
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "nicknameSave");
    QCOMPARE(tip(), QStringLiteral("设置昵称成功!"));
    QCOMPARE(log(), QStringList{QStringLiteral("账号|设置昵称|新名")});
}

void tst_AccountDialogs::headPicture() {
    answer("uploadhead", ok());
    HeadIcons icons(context());
    QSignalSpy changed(&icons, &HeadIcons::sigChanged);
    PersonalInformationDialog dialog(context(), icons);
    show(dialog);
    tip(); // nobody answers "getpersioninfo"
    const QString file = dir_->filePath(QStringLiteral("我.png"));
    dialog.takeHeadFile(file);
    QCOMPARE(tip(), QStringLiteral("图片无法读取!"));
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QVERIFY(picture.save(file));
    dialog.takeHeadFile(file);
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "headSave");
    QCOMPARE(tip(), QStringLiteral("保存头像成功!"));
    QCOMPARE(sent("uploadhead").constFirst().value(QStringLiteral("uploadpath")).toString(), file);
    QFile kept(dir_->filePath(QStringLiteral("workspaces/userinfo/13800138000/head.jpg")));
    QFile chosen(file);
    QVERIFY(kept.open(QIODevice::ReadOnly) && chosen.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), chosen.readAll()); // the file itself
    QCOMPARE(changed.size(), 1);
    QVERIFY(!icons.own().isNull());
}

void tst_AccountDialogs::anotherPassword() {
    answer("getpersioninfo", ok());
    for (const char* operation : {"changepascode", "checkmessagecode", "changephonepas"})
        answer(operation, ok());
    HeadIcons icons(context());
    PersonalInformationDialog dialog(context(), icons);
    show(dialog);
    find<QTabWidget>(dialog, "personTabs")->setCurrentIndex(1);
    auto* const pages = dialog.findChild<PhoneFlowPages*>();
    QCOMPARE(find<QLineEdit>(dialog, "flowNumber")->text(), QStringLiteral("13800138000"));
    QVERIFY(!find<QLineEdit>(dialog, "flowNumber")->isEnabled());
    click(dialog, "getCode");
    QTRY_VERIFY(pages->flow().countdown().isRunning());
    click(dialog, "flowForward");
    click(dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("验证码输入为空，请先获取验证码!"));
    type(dialog, "flowCode", QStringLiteral("123456"));
    QTRY_VERIFY(!isTipOpen());
    click(dialog, "flowForward");
    QTRY_VERIFY(find<QLineEdit>(dialog, "flowPassword")->isVisible());
    type(dialog, "flowPassword", QStringLiteral("1234567890123456"));
    type(dialog, "flowRepeated", QStringLiteral("1234567890123456"));
    click(dialog, "flowForward");
    QCOMPARE(tip(), QStringLiteral("密码修改成功！"));
    QVERIFY(dialog.isVisible());
    QVERIFY(sent("checkphone").isEmpty());
    QCOMPARE(log(), QStringList{QStringLiteral("账号|修改密码|13800138000")});
}

void tst_AccountDialogs::unbinding() {
    answer("getpersioninfo", ok());
    answer("unbindphonemode", ok());
    QWidget parent;
    show(parent);
    HeadIcons icons(context());
    PersonalInformationDialog dialog(context(), icons, &parent);
    QSignalSpy unbound(&dialog, &PersonalInformationDialog::sigUnbound);
    dialog.open();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    click(dialog, "unbind");
    QCOMPARE(tip(), QStringLiteral("确定解除和当前电脑的绑定？"));
    QTRY_COMPARE(unbound.size(), 1);
    QCOMPARE(tip(), QStringLiteral("解除绑定成功!"));
    QCOMPARE(sent("unbindphonemode").constFirst().value(QStringLiteral("phonetype")).toString(),
             QStringLiteral("pc"));
    QVERIFY(!dialog.isVisible());
}

void tst_AccountDialogs::messages() {
    SmsWindow window;
    QObject context2;
    connect(manager_.get(), &AppEvents::sig_sms, &context2,
            [&window](const QVariantMap& message) { window.add(message, nullptr); });
    sdk_.sendToClient(R"({"type":"sms","phonenumber":"13900139000","time":"2026-01-01 08:00:00",
        "text":"【监控平台】验证码：123456，60秒内有效，请勿告诉他人。"})");
    QTRY_VERIFY(window.isVisible());
    QVERIFY(!window.isModal());
    checkNames(window);
    click(window, "smsCopy");
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("123456"));
    for (int i = 0; i < SmsWindow::Most + 5; ++i)
        window.add({{"text", QString(10000, QLatin1Char('<'))}}, nullptr);
    QCOMPARE(find<QTreeWidget>(window, "messages")->topLevelItemCount(), SmsWindow::Most);
}

QTEST_MAIN(tst_AccountDialogs)
#include "tst_AccountDialogs.moc"
