#include "e2e/ProgramTest.h"
#include "update/OddServer.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {
const QString UpdateDialog = QStringLiteral("检测更新");
const QString UpdaterName = QStringLiteral("corvanta-test-updater");
const QString Ignore = QStringLiteral("忽略该版本");
const QString Install = QStringLiteral("现在安装");
const QString InBackground = QStringLiteral("后台更新");
const QString Cancel = QStringLiteral("取消更新");
} // namespace

/// The whole way of an update: found at the start, fetched behind the wall, handed to an updater that is started with
/// both folders while the program ends.
class tst_Updating final : public ProgramTest {
    Q_OBJECT
private slots:
    void handedOver();
    void ignoredAndCancelled();

private:
    /// The program's settings name the server.
    void useServer(const OddServer& server);
    QString installation() const { return QFileInfo(QStringLiteral(CORVANTA_PROGRAM)).path(); }
    QString fetched() const { return program().temporaryFolder() + QStringLiteral("/Corvanta"); }
};

void tst_Updating::useServer(const OddServer& server) {
    QVERIFY(QDir().mkpath(data() + QStringLiteral("/config")));
    QFile file(data() + QStringLiteral("/config/set.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(QJsonObject{{QStringLiteral("更新服务器"), server.address()}}).toJson());
}

void tst_Updating::handedOver() {
    const QByteArray told = program().temporaryFolder().toUtf8() + "/told";
    const QByteArray updater = "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + told + ".part'\nmv '" + told + ".part' '" +
                               told + "'\nrm -f \"$0\"\n";
    const QMap<QString, QByteArray> files{{UpdaterName, updater},
                                          {QStringLiteral("corvanta-test-file"), QByteArray(500000, 'x')}};
    OddServer server;
    server.describe(OddServer::descriptionOf(files, UpdaterName));
    for (auto it = files.begin(); it != files.end(); ++it)
        server.serveFile(it.key(), it.value());
    useServer(server);
    QVERIFY(program().start());
    STEP(answer(Tip, InBackground));
    STEP(answer(Tip, Install));
    QCOMPARE(program().exitCode().value_or(-1), 0);
    COMES(QFile::exists(QString::fromUtf8(told)));
    QFile file(QString::fromUtf8(told));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), fetched() + '\n' + installation() + '\n');
    // What was fetched waits for the updater, of which the stand-in has removed itself.
    QFile copied(fetched() + QStringLiteral("/corvanta-test-file"));
    QVERIFY(copied.open(QIODevice::ReadOnly));
    QCOMPARE(copied.readAll(), files[QStringLiteral("corvanta-test-file")]);
    COMES(!QFile::exists(installation() + '/' + UpdaterName));
    QVERIFY(!QFile::exists(installation() + QStringLiteral("/corvanta-test-file")));
}

void tst_Updating::ignoredAndCancelled() {
    OddServer server;
    server.describe(OddServer::descriptionOf({{QStringLiteral("corvanta-test-file"), "new"}}, UpdaterName));
    server.serve(OddServer::folder() + QStringLiteral("corvanta-test-file"),
                 {{"HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nn", true}});
    useServer(server);
    QVERIFY(program().start());
    STEP(answer(Tip, Ignore));
    BECOMES(program().stored(QStringLiteral("ignoreVersion")).toInt(), 2031);
    COMES(!(window() = MainWindow(program().accessible())).isNull());
    COMES(Program::isActive(window().window()));
    STEP(quit());
    // It is not mentioned at the next start, and offered by the dialog.
    STEP(start());
    STEP(clickButton(QStringLiteral("帮助")));
    STEP(chooseEntry(UpdateDialog));
    COMES(program().isActive(UpdateDialog));
    BECOMES(server.asked().size(), 2);
    STEP(clickIn(UpdateDialog, UpdateDialog));
    STEP(answer(Tip, InBackground));
    Accessible cancel;
    COMES(!(cancel = program().dialog(UpdateDialog).find(Cancel)).isNull() &&
          cancel.has(Accessible::State::Showing) && QDir(fetched()).exists());
    STEP(clickIn(UpdateDialog, Cancel));
    COMES(!cancel.has(Accessible::State::Showing));
    QVERIFY(!QDir(fetched()).exists());
    STEP(answer(UpdateDialog, QStringLiteral("关闭")));
    STEP(quit());
}

QTEST_MAIN(tst_Updating)
#include "tst_Updating.moc"
