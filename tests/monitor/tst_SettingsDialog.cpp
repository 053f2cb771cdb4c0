#include "SettingsDialogTest.h"
#include "base/Settings.h"
#include "platform/Autostart.h"
#include "platform/Disks.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QScrollArea>
#include <QSpinBox>
#include <QTreeWidget>
#include <QtTest>

namespace {

/// Double-clicks a file in the file dialog that is up; closes it in any case.
void chooseInFileDialog(const QString& name) {
    QWidget* const chooser = QApplication::activeModalWidget();
    auto* const view = chooser->findChild<QListView*>(QStringLiteral("listView"));
    const auto find = [&] {
        for (int row = 0; row < view->model()->rowCount(view->rootIndex()); ++row) {
            const QModelIndex index = view->model()->index(row, 0, view->rootIndex());
            if (index.data().toString() == name)
                return index;
        }
        return QModelIndex();
    };
    if (QTest::qWaitFor([&] { return find().isValid() && !view->visualRect(find()).isEmpty(); }, 30000)) {
        const QPoint place = view->visualRect(find()).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
    if (QApplication::activeModalWidget() == chooser)
        QTest::keyClick(chooser, Qt::Key_Escape);
}

} // namespace

/// The settings dialog, driven by mouse and keyboard: what it shows, what it stores, what it leaves alone.
class tst_SettingsDialog final : public SettingsDialogTest {
    Q_OBJECT
private slots:
    void everyKey_data();
    void everyKey();
    void alarmSound();
    void startPicture();
    void proxyComesAndGoes();
    void autostart();
    void autostartThatFails();
    void drivesAway();
    void wrongTypes_data();
    void wrongTypes();
    void nothingChangedWritesNothing();
    void cancelChangesNothing();
    void keepsOnWhenTheUserWantsIt();
    void applyKeepsItOpen();
    void firstProblemShowsItsPage();
    void otherPagesDoNotHinder();
    void wheelScrollsThePage();
    void everyControlHasAName();
    void tabGoesDownThePage();
};

void tst_SettingsDialog::everyKey_data() {
    QTest::addColumn<QString>("pageName");
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<QString>("input"); // empty: a click; "=": a choice; else what is typed
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char* page, const char* control, const char* input, const char* key,
                        const QVariant& value) {
        QTest::newRow(control) << QString(page) << QByteArray(control) << QString::fromUtf8(input)
                               << QString::fromUtf8(key) << value;
    };
    row("generalPage", "appName", "Watch", "APP名称", "Watch");
    row("generalPage", "companyName", "Acme & <b>Co</b>", "公司名称", "Acme & <b>Co</b>");
    row("generalPage", "restoreState", "", "是否恢复状态", false);
    row("generalPage", "windowState", "=最大化", "窗口模式", QStringList{"最大化"});
    row("generalPage", "windowSwitch0", "", "窗口模式", QStringList{"置顶"});
    row("generalPage", "windowSwitch1", "", "窗口模式", QStringList{"隐藏设备树"});
    row("generalPage", "defaultGroup", "=二楼", "默认分组", "2");
    row("startPage", "enterByItself", "", "是否自动进入软件", true);
    row("videoPage", "aspectMode", "=平铺", "画面比例", "平铺");
    row("videoPage", "longestOpeningEdit", "15", "视频打开最长时间", 15);
    row("videoPage", "longestOpening", "=不限", "视频打开最长时间", "不限");
    row("recordPage", "packingTime", "12", "录像打包时间", 12);
    row("recordPage", "driveThreshold", "4096", "磁盘跳转阈值", 4096);
    row("pollPage", "pollInterval", "3600", "轮屏时间", 3600);
    row("pollPage", "pollMode", "=轮屏图片预览", "轮屏模式", 2);
    row("alarmPage", "acceptAlarms", "", "是否接收报警", false);
    row("alarmPage", "alarmDeviceFaultSwitch", "", "是否设备异常报警", false);
    row("alarmPage", "alarmLevel1Switch", "", "是否一级阈值报警", false);
    row("alarmPage", "alarmLevel2Switch", "", "是否二级阈值报警", false);
    row("alarmPage", "alarmLevel3Switch", "", "是否三级阈值报警", false);
    row("alarmPage", "alarmOtherSwitch", "", "是否其他报警", false);
}

void tst_SettingsDialog::everyKey() {
    QFETCH(QString, pageName);
    QFETCH(QByteArray, control);
    QFETCH(QString, input);
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    QVariantMap expected = fileValues();
    expected.insert(key, value);
    open();
    dialog_->showPage(pageName);
    QVERIFY(!find<QAbstractButton>("settingsApply")->isEnabled());
    if (input.isEmpty())
        click(control);
    else if (input.startsWith(QLatin1Char('=')))
        choose(control, input.mid(1));
    else
        type(control, input);
    QVERIFY(find<QAbstractButton>("settingsApply")->isEnabled());
    QCOMPARE(settings().values().value(key), fileValues().value(key)); // not before it is asked for
    click("settingsOk");
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(applied_, QStringList{key});
    QCOMPARE(settings().get(key), value);
    QCOMPARE(fileValues(), expected); // this key alone, and what no page knows stays
    open();
    dialog_->showPage(pageName);
    click("settingsOk"); // shows what is stored, so there is nothing to store
    QCOMPARE(applied_, QStringList());
}

void tst_SettingsDialog::alarmSound() {
    const QString file = dir_->filePath(QStringLiteral("alarm 1 & 2%.wav"));
    QVERIFY(QFile(file).open(QIODevice::WriteOnly));
    open();
    page("alarmPage");
    type("alarmLevel2Path", file);
    click("settingsApply");
    QCOMPARE(applied_, QStringList{QStringLiteral("二级阈值报警")});
    QCOMPARE(fileValues().value(QStringLiteral("二级阈值报警")).toString(), file);
    // Chosen in the file dialog, which begins where the file before was.
    type("alarmOtherPath", dir_->filePath(QStringLiteral("old.ogg")));
    QTimer::singleShot(0, dialog_.get(), [&file] { chooseInFileDialog(QFileInfo(file).fileName()); });
    click("alarmOtherBrowse");
    QCOMPARE(find<QLineEdit>("alarmOtherPath")->text(), file);
    click("alarmLevel2Clear");
    click("settingsOk");
    QCOMPARE(fileValues().value(QStringLiteral("二级阈值报警")).toString(), QString());
    QCOMPARE(fileValues().value(QStringLiteral("其他报警")).toString(), file);
}

void tst_SettingsDialog::startPicture() {
    const QString good = dir_->filePath(QStringLiteral("good.png"));
    QVERIFY(QImage(40, 20, QImage::Format_RGB32).save(good));
    const QString bad = dir_->filePath(QStringLiteral("bad.png"));
    QFile damaged(bad);
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    damaged.write("\x89PNG\r\n\x1a\n no picture");
    damaged.close();
    open();
    page("startPage");
    click("showSplash");
    click("settingsApply");
    QCOMPARE(problem(), QStringLiteral("请选择启动画面图片"));
    type("splashPicturePath", bad);
    auto* const preview = find<QLabel>("splashPreview");
    QTRY_COMPARE(preview->text(), QStringLiteral("无法读取该图片"));
    click("settingsApply");
    QCOMPARE(problem(), QStringLiteral("无法读取该图片"));
    QCOMPARE(applied_, QStringList());
    type("splashPicturePath", good);
    QTRY_VERIFY(preview->pixmap(Qt::ReturnByValue).width() == 40);
    QCOMPARE(problem(), QString());
    click("settingsOk");
    QCOMPARE(fileValues().value(QStringLiteral("启动画面图片路径")).toString(), good);
    QVERIFY(fileValues().value(QStringLiteral("是否显示启动画面")).toBool());
}

void tst_SettingsDialog::proxyComesAndGoes() {
    const QString key = QStringLiteral("代理设置");
    open();
    page("networkPage");
    QVERIFY(!find<QLineEdit>("proxyHost")->isEnabled());
    click("useProxy");
    QCOMPARE(find<QLineEdit>("proxyPassword")->echoMode(), QLineEdit::Password);
    click("settingsApply");
    QCOMPARE(problem(), QStringLiteral("请录入代理服务器地址"));
    type("proxyHost", QStringLiteral(" 192.0.2.7 "));
    type("proxyPort", QStringLiteral("8080"));
    type("proxyUser", QStringLiteral("me"));
    type("proxyPassword", QStringLiteral("p w"));
    click("settingsApply");
    QCOMPARE(problem(), QString());
    const auto& proxy = settings().forSdkThreads().proxy;
    QVERIFY(proxy.has_value());
    QCOMPARE(proxy->host + "|" + proxy->user + "|" + proxy->password, std::string("192.0.2.7|me|p w"));
    QCOMPARE(proxy->port, std::uint16_t(8080));
    choose("proxyKind", QStringLiteral("HTTP"));
    click("settingsOk");
    QVERIFY(settings().forSdkThreads().proxy->kind == ProxySettings::Kind::Http);
    // Keys without a field survive a change of the others.
    QVariantMap stored = settings().get(key).toMap();
    stored.insert(QStringLiteral("proxyRealm"), 7);
    settings().set(key, stored);
    open();
    page("networkPage");
    type("proxyUser", QStringLiteral("you"));
    click("settingsApply");
    stored.insert(QStringLiteral("proxyUser"), QStringLiteral("you"));
    QCOMPARE(settings().get(key).toMap(), stored);
    click("useProxy");
    click("settingsOk");
    QCOMPARE(fileValues().value(key), QVariant(QVariantMap()));
    QVERIFY(!settings().forSdkThreads().proxy.has_value());
}

void tst_SettingsDialog::autostart() {
    using corvanta::platform::isAutostartEnabled;
    const QVariantMap before = fileValues();
    open();
    click("autostart");
    QVERIFY(!isAutostartEnabled());
    click("settingsOk");
    QVERIFY(!dialog_->isVisible());
    QVERIFY(isAutostartEnabled());
    open();
    QVERIFY(find<QCheckBox>("autostart")->isChecked());
    click("autostart");
    click("settingsOk");
    QVERIFY(!isAutostartEnabled());
    QCOMPARE(fileValues(), before); // the system keeps it
    QCOMPARE(applied_, QStringList());
}

void tst_SettingsDialog::autostartThatFails() {
    QFile inTheWay(dir_->filePath(QStringLiteral("autostart")));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    open();
    click("autostart");
    page("videoPage");
    type("longestOpeningEdit", QStringLiteral("7"));
    click("settingsOk");
    QVERIFY(dialog_->isVisible());
    QCOMPARE(problem(), QStringLiteral("无法设置随系统启动"));
    QVERIFY(find<QCheckBox>("autostart")->isVisible());
    QVERIFY(!find<QCheckBox>("autostart")->isChecked()); // shows what is so
    QCOMPARE(fileValues().value(QStringLiteral("视频打开最长时间")).toInt(), 7);
}

void tst_SettingsDialog::drivesAway() {
    const QString key = QStringLiteral("盘符列表");
    const QString here = QString::fromStdString(corvanta::platform::driveRoots().front());
    settings().set(key, QStringList{QStringLiteral("/gone/"), here});
    open();
    page("recordPage");
    auto* const table = find<QTreeWidget>("driveList");
    QCOMPARE(table->topLevelItem(0)->text(0), QStringLiteral("/gone/  (不存在)"));
    static const QRegularExpression size(QStringLiteral("^\\d+\\.\\d [KMGT]B$"));
    QVERIFY(size.match(table->topLevelItem(1)->text(1)).hasMatch());
    QVERIFY(!find<QAbstractButton>("driveUp")->isEnabled());
    click("driveDown");
    click("settingsApply");
    QCOMPARE(applied_, QStringList{key});
    QCOMPARE(settings().get(key).toStringList(), (QStringList{here, QStringLiteral("/gone/")}));
    QCOMPARE(settings().forSdkThreads().drives.front(), here.toStdString());
    // Back by the keyboard and without the drive that is here.
    QTest::keyClick(table, Qt::Key_Up);
    QTest::keyClick(table, Qt::Key_Space);
    click("settingsOk");
    QCOMPARE(fileValues().value(key).toStringList(), QStringList{QStringLiteral("/gone/")});
}

void tst_SettingsDialog::wrongTypes_data() {
    QTest::addColumn<QVariant>("value");
    QTest::newRow("null") << QVariant::fromValue(nullptr);
    QTest::newRow("text") << QVariant("中文 %1 %n <b>");
    QTest::newRow("empty text") << QVariant("");
    QTest::newRow("number") << QVariant(-7.5);
    QTest::newRow("huge number") << QVariant(1e300);
    QTest::newRow("list") << QVariant(QVariantList{1, "a", QVariantMap{{"name", 3}}, QVariantList{2}});
    QTest::newRow("map") << QVariant(
        QVariantMap{{"proxyPort", "x"}, {"ipnclist", 4}, {"proxyHostName", QVariantList{1}}});
}

void tst_SettingsDialog::wrongTypes() {
    QFETCH(QVariant, value);
    for (const char* key :
         {"APP名称",          "公司名称",         "是否恢复状态", "窗口模式", "画面比例", "视频打开最长时间",
          "录像打包时间",     "磁盘跳转阈值",     "是否接收报警", "代理设置", "盘符列表", "是否显示启动画面",
          "启动画面图片路径", "是否自动进入软件", "轮屏时间",     "轮屏列表", "轮屏模式", "默认分组",
          "是否一级阈值报警", "一级阈值报警",     "设备异常报警"})
        settings().set(QString::fromUtf8(key), value);
    settings().save();
    const QVariantMap before = fileValues();
    open();
    for (int row = 0; row < find<QListWidget>("settingsPages")->count(); ++row) {
        find<QListWidget>("settingsPages")->setCurrentRow(row);
        QCoreApplication::processEvents();
    }
    page("recordPage");
    type("packingTime", QStringLiteral("33"));
    click("settingsOk");
    QVERIFY2(!dialog_->isVisible(), qPrintable(problem()));
    QVariantMap expected = before;
    expected.insert(QStringLiteral("录像打包时间"), 33);
    QCOMPARE(fileValues(), expected);
}

void tst_SettingsDialog::nothingChangedWritesNothing() {
    const QString file = dir_->filePath(QStringLiteral("config/set.json"));
    settings().finishSaving();
    QVERIFY(QFile::remove(file));
    open();
    click("settingsOk");
    QVERIFY(!dialog_->isVisible());
    settings().finishSaving();
    QVERIFY(!QFile::exists(file));
    open();
    QTest::keyClick(dialog_.get(), Qt::Key_Escape); // without a question
    QVERIFY(!dialog_->isVisible());
    // Changed and changed back is not changed.
    open();
    click("restoreState");
    click("restoreState");
    QVERIFY(!find<QAbstractButton>("settingsApply")->isEnabled());
    QTest::keyClick(dialog_.get(), Qt::Key_Escape);
    QVERIFY(!dialog_->isVisible());
}

void tst_SettingsDialog::cancelChangesNothing() {
    const QVariantMap before = fileValues();
    for (const char* way : {"Esc", "settingsCancel", "dialogClose"}) {
        open();
        type("appName", QStringLiteral("other"));
        click("autostart");
        page("pollPage");
        click("pollByGroups");
        answer("tipOk");
        if (qstrcmp(way, "Esc") == 0)
            QTest::keyClick(dialog_.get(), Qt::Key_Escape);
        else
            click(way);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(settings().values(), before);
        QCOMPARE(fileValues(), before);
        QVERIFY(!corvanta::platform::isAutostartEnabled());
        QCOMPARE(applied_, QStringList());
    }
    QCOMPARE(questions_, 3);
}

void tst_SettingsDialog::keepsOnWhenTheUserWantsIt() {
    open();
    type("appName", QStringLiteral("other"));
    answer("tipCancel");
    QTest::keyClick(find<QLineEdit>("appName"), Qt::Key_Escape);
    QCOMPARE(questions_, 1);
    QVERIFY(dialog_->isVisible());
    QCOMPARE(find<QLineEdit>("appName")->text(), QStringLiteral("other"));
    QTest::keyClick(find<QLineEdit>("appName"), Qt::Key_Return); // Enter is "确定"
    QVERIFY(!dialog_->isVisible());
    QCOMPARE(settings().title(), QStringLiteral("other--视频监控与测量平台"));
}

void tst_SettingsDialog::applyKeepsItOpen() {
    QSignalSpy titles(&settings(), &Settings::titleChanged);
    open();
    type("appName", QStringLiteral("one"));
    click("settingsApply");
    QVERIFY(dialog_->isVisible());
    QVERIFY(!find<QAbstractButton>("settingsApply")->isEnabled());
    QCOMPARE(titles.size(), 1);
    type("appName", QStringLiteral("two"));
    click("settingsOk");
    QCOMPARE(titles.size(), 2);
    QCOMPARE(applied_, (QStringList{QStringLiteral("APP名称"), QStringLiteral("APP名称")}));
}

void tst_SettingsDialog::firstProblemShowsItsPage() {
    const QVariantMap before = fileValues();
    open();
    type("appName", QStringLiteral("  "));
    page("videoPage");
    type("longestOpeningEdit", QStringLiteral("soon"));
    click("settingsOk");
    QVERIFY(dialog_->isVisible());
    QVERIFY(find<QLineEdit>("appName")->isVisible());
    QCOMPARE(problem(), QStringLiteral("APP名称不能为空，请录入"));
    type("appName", QStringLiteral("x"));
    QCOMPARE(problem(), QString()); // it is being dealt with
    click("settingsOk");
    QVERIFY(find<QComboBox>("longestOpening")->isVisible());
    QVERIFY(problem().contains(QStringLiteral("视频打开最长时间")));
    QCOMPARE(settings().values(), before); // nothing before all is well
}

void tst_SettingsDialog::otherPagesDoNotHinder() {
    settings().set(QStringLiteral("一级阈值报警"), QStringLiteral("/gone.wav"));
    settings().set(QStringLiteral("启动画面图片路径"), QStringLiteral("/gone.png"));
    settings().set(QStringLiteral("是否显示启动画面"), true);
    settings().set(QStringLiteral("视频打开最长时间"), -5);
    open();
    page("alarmPage");
    click("acceptAlarms");
    page("startPage");
    click("enterByItself");
    click("settingsOk");
    QVERIFY2(!dialog_->isVisible(), qPrintable(problem()));
    QCOMPARE(settings().get(QStringLiteral("视频打开最长时间")).toInt(), -5);
}

void tst_SettingsDialog::wheelScrollsThePage() {
    open();
    dialog_->resize(dialog_->minimumSize());
    page("generalPage");
    QCoreApplication::processEvents();
    auto* const combo = find<QComboBox>("windowState");
    find<QLineEdit>("appName")->setFocus();
    const QPoint place = combo->rect().center();
    QWheelEvent wheel(place, combo->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(combo, &wheel);
    QCOMPARE(combo->currentIndex(), 0);
}

void tst_SettingsDialog::everyControlHasAName() {
    open();
    for (int row = 0; row < find<QListWidget>("settingsPages")->count(); ++row) {
        find<QListWidget>("settingsPages")->setCurrentRow(row);
        for (QWidget* widget : dialog_->findChildren<QWidget*>()) {
            if (!widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0)
                continue;
            if (widget->objectName().startsWith(QLatin1String("qt_")))
                continue; // a part of a control
            QVERIFY2(!widget->objectName().isEmpty(), widget->metaObject()->className());
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        }
    }
}

void tst_SettingsDialog::tabGoesDownThePage() {
    open();
    page("networkPage");
    click("useProxy");
    find<QListWidget>("settingsPages")->setFocus();
    QStringList way;
    while (way.isEmpty() || (way.last() != QLatin1String("settingsCancel") && way.size() < 20)) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        way += QApplication::focusWidget()->objectName();
    }
    QCOMPARE(way.join(QLatin1Char(' ')),
             QStringLiteral("useProxy proxyKind proxyHost proxyPort proxyUser proxyPassword "
                            "settingsOk settingsCancel"));
}

QTEST_MAIN(tst_SettingsDialog)
#include "tst_SettingsDialog.moc"
