#include "e2e/AccountTest.h"
#include "e2e/Sight.h"
#include "support/SqliteShell.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QtTest>

using Role = Accessible::Role;

namespace {
const QString Camera = QStringLiteral("东大门入口");
const QString Gate = QStringLiteral("园区大门");
const QString Spare = QStringLiteral("备用一号");
const QString Manage = QStringLiteral("设备管理");
const QString Adding = QStringLiteral("添加设备");
const QString Deleting = QStringLiteral("删除设备");
const QString Renaming = QStringLiteral("重命名");
const QString Devices = QStringLiteral("设备列表");
const QString Search = QStringLiteral("搜索设备");
const QString Config = QStringLiteral("设备配置");
const QString Saved = QStringLiteral("保存成功!");
const QString Card = QStringLiteral("SD卡文件");
} // namespace

/// An administrator adds, orders, configures, moves and deletes devices.
class tst_Administration final : public AccountTest {
    Q_OBJECT
private slots:
    void addsOrdersAndDeletes();
    void configures();
    void movesFiles();
    void movesTheCamera();

private:
    void openPage(const QString& page);
    void closeConfig();
    /// What a field of the configuration holds.
    QString held(const QString& field) const;
    /// The text of the group's row above a device's in the tree.
    QString groupOf(const QString& device);
    /// What the log of operations holds of devices, the oldest first: "what|detail".
    QStringList logged() const;
    /// Waits until what stands still in the camera's picture is seen elsewhere.
    void waitForMove(const QRect& part);
};

void tst_Administration::openPage(const QString& page) {
    STEP(openFromRow(Camera, Config));
    showPage(Config, QStringLiteral("设备配置分类"), page);
}

void tst_Administration::closeConfig() {
    STEP(clickIn(Config, Close));
    COMES(program().dialog(Config).isNull());
}

QString tst_Administration::held(const QString& field) const {
    return program().dialog(Config).find(Role::Text, field).text();
}

QString tst_Administration::groupOf(const QString& device) {
    QString group;
    for (const QString& row : window().rows()) {
        if (row == device)
            return group;
        if (row.contains(QStringLiteral("  ")))
            group = row;
    }
    return {};
}

QStringList tst_Administration::logged() const {
    return sqliteShell::run(program().data() + QStringLiteral("/dataBase.db"),
                            QStringLiteral("select context, context1 from operatelogs where type = '设备管理';"));
}

void tst_Administration::addsOrdersAndDeletes() {
    STEP(startAndSignIn());
    STEP(openFromMenu(Manage));
    STEP(clickIn(Manage, Adding));
    COMES(program().isActive(Adding));
    Desktop::type(QStringLiteral("SPARE001"));
    Desktop::keys({QStringLiteral("Tab")});
    Desktop::type(QStringLiteral("word-0002"));
    Desktop::keys({QStringLiteral("Return")});
    STEP(closeTip(QStringLiteral("设备验证码错误!")));
    STEP(fill(Adding, QStringLiteral("验证码"), QStringLiteral("word-0001")));
    Desktop::keys({QStringLiteral("Return")});
    STEP(closeTip(QStringLiteral("添加成功!")));
    BECOMES(groupOf(Spare), Gate + QStringLiteral("  10/10"));

    STEP(fill(Manage, Search, QStringLiteral("spare001")));
    STEP(clickRow(Manage, Devices, Spare));
    STEP(clickIn(Manage, Renaming));
    STEP(fill(Renaming, QStringLiteral("设备名称"), QStringLiteral("Pier")));
    Desktop::keys({QStringLiteral("Return")});
    COMES(window().hasRow(QStringLiteral("Pier")));
    STEP(fill(Manage, Search, QStringLiteral("pier")));
    STEP(clickRow(Manage, Devices, QStringLiteral("Pier")));
    STEP(clickIn(Manage, QStringLiteral("移到分组")));
    STEP(chooseEntry(QStringLiteral("仓库")));
    COMES(groupOf(QStringLiteral("Pier")).startsWith(QStringLiteral("仓库  ")));

    // The dragged row comes behind the one on whose lower edge it is let go.
    STEP(fill(Manage, Search, QString()));
    const Accessible dialog = program().dialog(Manage);
    Accessible behind;
    COMES(!(behind = rowIn(Manage, Devices, QStringLiteral("西大门入口"))).isNull());
    const QRect from = Program::placeInActive(dialog, rowIn(Manage, Devices, Camera));
    // The toolkit counts the place of a drop from where it believes the dialog to be.
    const QRect to = behind.place();
    STEP(dragTo(from.center(), {from.center().x(), to.bottom() - 2}));
    BECOMES(window().rows().mid(1, 3),
            (QStringList{QStringLiteral("东大门出口"), QStringLiteral("西大门入口"), Camera}));

    STEP(fill(Manage, Search, QStringLiteral("pier")));
    STEP(clickRow(Manage, Devices, QStringLiteral("Pier")));
    STEP(clickIn(Manage, QStringLiteral("删除")));
    COMES(program().isActive(Deleting));
    Desktop::keys({QStringLiteral("Return")}); // which is the safe answer
    COMES(program().dialog(Deleting).isNull());
    COMES(program().isActive(Manage));
    QVERIFY(window().hasRow(QStringLiteral("Pier")));
    STEP(clickIn(Manage, QStringLiteral("删除")));
    STEP(answer(Deleting, Delete));
    COMES(!window().hasRow(QStringLiteral("Pier")));
    STEP(closeDialog(Manage));
    const QStringList expected{
        QStringLiteral("添加设备|SPARE001 "), QStringLiteral("重命名设备|SPARE001 备用一号 → Pier"),
        QStringLiteral("移动设备|SPARE001 → 仓库 11"), QStringLiteral("移动设备|CAM0001 → 园区大门 3"),
        QStringLiteral("删除设备|SPARE001 Pier")};
    BECOMES(logged(), expected);
    quit();
}

void tst_Administration::configures() {
    STEP(startAndSignIn());
    const QString title = QStringLiteral("主码流文字内容");
    STEP(openPage(QStringLiteral("OSD")));
    STEP(fill(Config, title, QStringLiteral("North gate")));
    STEP(clickIn(Config, Save));
    STEP(closeTip(Saved));
    STEP(closeConfig());
    STEP(openPage(QStringLiteral("OSD")));
    BECOMES(held(title), QStringLiteral("North gate"));

    STEP(showPage(Config, QStringLiteral("设备配置分类"), QStringLiteral("网络")));
    const QString address = QStringLiteral("IP地址");
    BECOMES(held(address), QStringLiteral("192.168.10.11"));
    STEP(fill(Config, address, QStringLiteral("192.168.11.11")));
    STEP(clickIn(Config, QStringLiteral("保存有线网络")));
    STEP(closeTip(QStringLiteral("网关与IP地址不在同一网段!")));
    STEP(fill(Config, address, QStringLiteral("192.168.10.200")));
    STEP(clickIn(Config, QStringLiteral("保存有线网络")));
    STEP(closeTip(Saved));
    STEP(closeConfig());
    STEP(openPage(QStringLiteral("网络")));
    BECOMES(held(address), QStringLiteral("192.168.10.200"));

    STEP(showPage(Config, QStringLiteral("设备配置分类"), QStringLiteral("维护")));
    STEP(clickIn(Config, QStringLiteral("重启设备")));
    COMES(window().hasRow(Gate + QStringLiteral("  9/9")));
    STEP(answer(Tip, QStringLiteral("重启设备")));
    COMES(window().hasRow(Gate + QStringLiteral("  8/9")));
    STEP(closeTip(QStringLiteral("命令已发送，请稍候。")));
    COMES(window().hasRow(Gate + QStringLiteral("  9/9")));
    STEP(closeConfig());
    quit();
}

void tst_Administration::movesFiles() {
    const QDir files(QFileInfo(data()).path());
    const QString picture = files.filePath(QStringLiteral("card.jpg"));
    const QString firmware = files.filePath(QStringLiteral("new.bin"));
    QFile file(firmware);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("ipnc-firmware 9.8.7\n" + QByteArray(100000, 'f')) > 0);
    file.close();
    STEP(startAndSignIn());
    STEP(openPage(QStringLiteral("SD卡")));
    const QString day = QDate::currentDate().addDays(-1).toString(QStringLiteral("yyyyMMdd"));
    STEP(clickRow(Config, Card, day));
    Desktop::keys({QStringLiteral("Return")});
    QString name;
    COMES((name = [this] {
              for (const Accessible::Seen& cell : listIn(Config, Card).children()) {
                  if (cell.name.endsWith(QStringLiteral(".jpg")))
                      return cell.name;
              }
              return QString();
          }()) != QString());
    STEP(clickRow(Config, Card, name));
    STEP(clickIn(Config, QStringLiteral("下载")));
    STEP(chooseFile(QStringLiteral("保存文件"), picture));
    COMES(!program().dialog(Config).find(QStringLiteral("下载完成")).isNull());
    QVERIFY(!QImage(picture).isNull());

    STEP(showPage(Config, QStringLiteral("设备配置分类"), QStringLiteral("升级")));
    COMES(!program().dialog(Config).find(QStringLiteral("3.4.12")).isNull());
    STEP(clickIn(Config, QStringLiteral("选择文件")));
    STEP(chooseFile(QStringLiteral("选择升级文件"), firmware));
    STEP(clickIn(Config, QStringLiteral("上传并升级")));
    STEP(answer(Tip, QStringLiteral("升级")));
    COMES(!program().dialog(Config).find(QStringLiteral("升级完成")).isNull());
    COMES(!program().dialog(Config).find(QStringLiteral("9.8.7")).isNull());
    STEP(closeConfig());
    quit();
}

void tst_Administration::waitForMove(const QRect& part) {
    constexpr double much = 0.1; // of the picture; what moves in the scene by itself is less
    const QImage before = Desktop::look(part);
    COMES(sight::difference(before, Desktop::look(part)) > much);
}

void tst_Administration::movesTheCamera() {
    STEP(startAndSignIn());
    STEP(chooseLayout(QStringLiteral("四窗口"), 4));
    STEP(doubleClickRow(Camera));
    QVERIFY(sight::becomesLive(window().tile(0)));
    const QRect grid = window().grid();
    Desktop::doubleClick(window().tile(0).center());
    COMES(window().tile(0).width() > grid.width() * 3 / 4);
    QVERIFY(sight::becomesLive(window().tile(0)));
    // The houses, between the clock and the street.
    const QRect tile = window().tile(0);
    const QRect part(tile.left() + tile.width() / 8, tile.top() + tile.height() / 4, tile.width() / 2,
                     tile.height() / 4);
    const QImage home = Desktop::look(part);
    const auto button = [this](const QString& name) {
        return window().window().find(QStringLiteral("云台控制")).find(name).place().center();
    };
    Desktop::moveMouse(tile.center());
    COMES(window().window().find(QStringLiteral("云台控制")).has(Accessible::State::Showing));
    Desktop::moveMouse(button(QStringLiteral("右")));
    Desktop::press();
    STEP(waitForMove(part));
    Desktop::release();
    COMES(logged() == QStringList{QStringLiteral("移动摄像机|CAM0001 右")});
    Desktop::pressKey(QStringLiteral("Down"));
    STEP(waitForMove(part));
    Desktop::releaseKey(QStringLiteral("Down"));
    COMES(logged().size() == 2);
    QCOMPARE(logged().last(), QStringLiteral("移动摄像机|CAM0001 下"));
    Desktop::click(button(QStringLiteral("回到初始位置")));
    COMES(sight::difference(home, Desktop::look(part)) < 0.05);
    COMES(logged().size() == 3);
    QCOMPARE(logged().last(), QStringLiteral("云台回到初始位置|CAM0001"));
    quit();
}

QTEST_MAIN(tst_Administration)
#include "tst_Administration.moc"
