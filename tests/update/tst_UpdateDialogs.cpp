#include "account/AccountTest.h"
#include "base/Settings.h"
#include "monitor/ui/TopBar.h"
#include "monitor/ui/UpdateControl.h"
#include "update/OddServer.h"
#include "update/Version.h"
#include "update/ui/CheckUpdateVersionDialog.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace keys = corvanta::keys;
namespace update = corvanta::update;

namespace {

constexpr int Long = 60000; // ms

QByteArray described(int version) {
    return OddServer::descriptionOf({{QStringLiteral("update-test-file"), "new"}}, QStringLiteral("no-such-updater"),
                                    version);
}

} // namespace

/// What is asked and told around an update, at the start and in the dialog, against a real server.
class tst_UpdateDialogs final : public AccountTest {
    Q_OBJECT
public:
    tst_UpdateDialogs() { qputenv("TMPDIR", temp_.path().toUtf8()); }

private slots:
    void dialogTexts_data();
    void dialogTexts();
    void packagesAreLeftAlone();
    void dialogOffersAgain();
    void atTheStart_data();
    void atTheStart();
    void ignoredVersion();
    void backgroundUpdate();
    void cancelInTheMiddle();
    void failure();

private:
    /// A window as the main window is; once it is shown the check at the start begins.
    struct Window {
        explicit Window(const AppContext& context)
            : control(*new UpdateControl(context, *new TopBar(&widget), widget)) {
            auto* const column = new QVBoxLayout(&widget);
            column->addWidget(widget.findChild<TopBar*>());
            column->addWidget(control.makeProgressView(&widget));
            widget.resize(680, 384);
            widget.show();
        }
        QWidget& progress() { return *find<QWidget>(widget, "updateProgress"); }

        QWidget widget;
        UpdateControl& control; ///< the widget's
    };

    QString folder() const { return temp_.path() + QStringLiteral("/Corvanta"); }
    /// What the server says from now on; it is the one of the settings.
    void describe(OddServer& server, const QByteArray& description) {
        server.describe(description);
        context().settings.set(keys::UpdateServer, server.address());
    }
    QVariant stored(const QString& key) {
        context().settings.finishSaving();
        Settings settings(dir_->filePath("config/set.json"));
        settings.load();
        return settings.get(key);
    }

    QTemporaryDir temp_;
};

void tst_UpdateDialogs::dialogTexts_data() {
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("text");
    QTest::newRow("this version") << described(2030) << QStringLiteral("当前已经是最新版本!");
    QTest::newRow("an old one") << described(12) << QStringLiteral("当前已经是最新版本!");
    QTest::newRow("newer") << described(2031) << QStringLiteral("检测到新版本!");
    QTest::newRow("a page") << QByteArray("<html/>") << QStringLiteral("服务器地址错误或JSON格式错误!");
    QTest::newRow("no address") << QByteArray()
                                << QStringLiteral("尚未设置更新服务器，请在“软件设置”的“软件更新”中填写地址!");
}

void tst_UpdateDialogs::dialogTexts() {
    QFETCH(QByteArray, answer);
    OddServer server;
    if (!answer.isEmpty())
        describe(server, answer);
    update::UpdateDownload download(temp_.path(), update::DownloadFolder(folder()));
    CheckUpdateVersionDialog dialog(context(), download);
    show(dialog);
    checkNames(dialog);
    QCOMPARE(find<QLabel>(dialog, "currentVersion")->text(), QStringLiteral("1.2.23"));
    QCOMPARE(find<QLabel>(dialog, "versionNumber")->text(), QStringLiteral("2030"));
    click(dialog, "checkUpdate");
    const bool isQuestion = answer == described(2031);
    QTEST(tip(!isQuestion), "text");
    QVERIFY(find<QPushButton>(dialog, "checkUpdate")->isEnabled());
    QVERIFY(!context().settings.get(keys::IgnoredVersion).isValid()); // "not now" is not "never"
    QCOMPARE(download.state(), update::UpdateDownload::State::Idle);
}

// Where the system's packages lie the dialog asks nobody, and no description begins a download.
void tst_UpdateDialogs::packagesAreLeftAlone() {
    OddServer server;
    describe(server, described(2031));
    update::UpdateDownload download(QStringLiteral("/usr/lib/corvanta"), update::DownloadFolder(folder()));
    CheckUpdateVersionDialog dialog(context(), download);
    show(dialog);
    checkNames(dialog);
    QCOMPARE(find<QLabel>(dialog, "newestVersion")->text(), update::packageManagerText());
    QVERIFY(!find<QPushButton>(dialog, "checkUpdate")->isEnabled());
    download.start(context().versionCheck.server(), std::make_shared<update::UpdateDescription>());
    QCOMPARE(download.state(), update::UpdateDownload::State::Idle);
    QVERIFY(server.asked().isEmpty());
}

// An ignored version is offered in the dialog all the same.
void tst_UpdateDialogs::dialogOffersAgain() {
    context().settings.set(keys::IgnoredVersion, 2031);
    OddServer server;
    describe(server, described(2031));
    server.serveFile("update-test-file", "new");
    update::UpdateDownload download(temp_.path(), update::DownloadFolder(folder()));
    CheckUpdateVersionDialog dialog(context(), download);
    show(dialog);
    click(dialog, "checkUpdate");
    QCOMPARE(tip(), QStringLiteral("检测到新版本!"));
    QTRY_COMPARE_WITH_TIMEOUT(download.state(), update::UpdateDownload::State::Ready, Long);
    QVERIFY(!find<QPushButton>(dialog, "checkUpdate")->isEnabled());
    QVERIFY(find<QWidget>(dialog, "updateProgress")->isVisible());
    click(dialog, "updateCancel");
    QVERIFY(!find<QWidget>(dialog, "updateProgress")->isVisible());
    QVERIFY(find<QPushButton>(dialog, "checkUpdate")->isEnabled());
}

void tst_UpdateDialogs::atTheStart_data() {
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("ignored");
    QTest::addColumn<QString>("text");
    QTest::newRow("this version") << described(2030) << 0 << "";
    QTest::newRow("an ignored one") << described(2031) << 2031 << "";
    QTest::newRow("a newer one than was ignored") << described(2032) << 2031 << QStringLiteral("检测到新版本!");
    QTest::newRow("no description") << QByteArray("[]") << 0 << QStringLiteral("服务器地址错误或JSON格式错误!");
    QTest::newRow("a hostile one") << described(2031).replace("update-test-file", "../x") << 0
                                   << QStringLiteral("更新描述文件不合法(文件名非法)，已拒绝更新!");
}

void tst_UpdateDialogs::atTheStart() {
    QFETCH(QByteArray, answer);
    QFETCH(int, ignored);
    QFETCH(QString, text);
    context().settings.set(keys::IgnoredVersion, ignored);
    OddServer server;
    describe(server, answer);
    QSignalSpy done(&context().versionCheck, &update::VersionCheck::sigDone);
    {
        Window window(context());
        QTRY_COMPARE_WITH_TIMEOUT(done.size(), 1, Long);
        if (text.isEmpty())
            QVERIFY(!isTipOpen());
        else
            QCOMPARE(tip(text != QStringLiteral("检测到新版本!")), text);
        // Only the first time that the window is shown.
        window.widget.hide();
        window.widget.show();
        QCoreApplication::processEvents();
        QVERIFY(!context().versionCheck.isRunning());
    }
    // Without an address nothing is asked and nothing is told.
    context().settings.set(keys::UpdateServer, QString());
    const Window window(context());
    QCoreApplication::processEvents();
    QVERIFY(!context().versionCheck.isRunning());
    QVERIFY(!isTipOpen());
    QCOMPARE(server.asked().size(), 1);
}

void tst_UpdateDialogs::ignoredVersion() {
    OddServer server;
    describe(server, described(2031));
    {
        // Closing the question leaves it open.
        const Window window(context());
        QTRY_VERIFY_WITH_TIMEOUT(isTipOpen(), Long);
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        QTRY_VERIFY(!isTipOpen());
        QVERIFY(!context().settings.get(keys::IgnoredVersion).isValid());
    }
    const Window window(context());
    QCOMPARE(tip(false), QStringLiteral("检测到新版本!"));
    QCOMPARE(stored(keys::IgnoredVersion).toInt(), 2031);
    QCOMPARE(server.asked(), (QStringList{"versionMd5.json", "versionMd5.json"}));
}

void tst_UpdateDialogs::backgroundUpdate() {
    OddServer server;
    describe(server, described(2031));
    server.serveFile("update-test-file", "new");
    Window window(context());
    QVERIFY(!window.progress().isVisible());
    QCOMPARE(tip(), QStringLiteral("检测到新版本!"));
    QCOMPARE(tip(), QStringLiteral("下载完成!"));
    // It is handed over to an updater that is neither here nor there.
    QVERIFY(tip().contains("no-such-updater"));
    QVERIFY(!window.progress().isVisible());
    QCOMPARE(log().filter(QStringLiteral("软件更新")).size(), 1);
    // Once more, by the dialog, and not installed in the end.
    window.control.openDialog();
    QTRY_VERIFY(QApplication::activeModalWidget() != nullptr);
    click(*QApplication::activeModalWidget(), "checkUpdate");
    QCOMPARE(tip(), QStringLiteral("检测到新版本!"));
    QTRY_VERIFY_WITH_TIMEOUT(isTipOpen(), Long);
    QVERIFY(QFile::exists(folder() + "/update-test-file"));
    QCOMPARE(tip(false), QStringLiteral("下载完成!"));
    QVERIFY(!QFile::exists(folder()));
}

void tst_UpdateDialogs::cancelInTheMiddle() {
    OddServer server;
    describe(server, described(2031));
    server.serve(OddServer::folder() + "update-test-file", {{"HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nn", true}});
    Window window(context());
    QCOMPARE(tip(), QStringLiteral("检测到新版本!"));
    const auto* const file = find<QLabel>(window.widget, "updateFile");
    QTRY_VERIFY_WITH_TIMEOUT(file->accessibleName().contains("update-test-file"), Long);
    checkNames(window.progress());
    QVERIFY(window.progress().isVisible());
    click(window.widget, "updateCancel");
    QVERIFY(!window.progress().isVisible());
    QVERIFY(!QFileInfo::exists(folder()));
    QVERIFY(!isTipOpen());
}

void tst_UpdateDialogs::failure() {
    OddServer server;
    describe(server, described(2031));
    Window window(context());
    QCOMPARE(tip(), QStringLiteral("检测到新版本!"));
    const QString told = tip();
    QVERIFY2(told.contains("update-test-file") && told.contains(QStringLiteral("Http请求返回未发现文件404")),
             qPrintable(told));
    QVERIFY(!window.progress().isVisible());
}

QTEST_MAIN(tst_UpdateDialogs)
#include "tst_UpdateDialogs.moc"
