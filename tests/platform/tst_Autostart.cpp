#include "platform/Autostart.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace corvanta::platform;

class tst_Autostart : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void wholeLife();
    void startsTheProgram_data();
    void startsTheProgram();
    void doublesPercentSigns();
    void fallsBackToTheHomeFolder();
    void othersSwitchItOff();
    void reportsWhatCannotBeWritten();

private:
    QString entry() const { return folder_->filePath(QStringLiteral("autostart/corvanta.desktop")); }
    QByteArray content() const {
        QFile file(entry());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> folder_;
    QByteArray home_ = qgetenv("HOME");
};

void tst_Autostart::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", folder_->path().toLocal8Bit());
}

void tst_Autostart::cleanup() {
    qunsetenv("XDG_CONFIG_HOME");
    qputenv("HOME", home_);
}

void tst_Autostart::wholeLife() {
    QVERIFY(!isAutostartEnabled());
    QVERIFY(!setAutostart(true, "/opt/corvanta/corvanta"));
    QVERIFY(isAutostartEnabled());
    QVERIFY(content().contains("\nHidden=false\n"));
    QVERIFY2(content().contains("\nTryExec=/opt/corvanta/corvanta\n"),
             "a removed program's entry counts for nothing");
    QVERIFY(!setAutostart(false, "/opt/corvanta/corvanta"));
    QVERIFY(!isAutostartEnabled());
    QVERIFY2(content().contains("\nHidden=true\n"), "the entry stays");
    QVERIFY(!setAutostart(true, "/opt/corvanta/corvanta"));
    QVERIFY(isAutostartEnabled());
    // Nothing unfinished lies about.
    QCOMPARE(QDir(QFileInfo(entry()).path()).entryList(QDir::Files), QStringList{QStringLiteral("corvanta.desktop")});
}

void tst_Autostart::startsTheProgram_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "corvanta";
    QTest::newRow("blank") << "my corvanta";
    QTest::newRow("quotes") << R"(a"b'c)";
    QTest::newRow("shell") << "$(touch x);`id`&|>";
    QTest::newRow("backslash") << R"(a\b\\c\n\s)";
    QTest::newRow("line ends") << "a\nExec=evil\rb\tc";
    QTest::newRow("chinese") << QString::fromUtf8("监控");
}

/// The desktop's own library (GLib's GDesktopAppInfo) reads the entry and starts what it names.
void tst_Autostart::startsTheProgram() {
    QFETCH(QString, name);
    const QString program = folder_->filePath(name);
    const QString witness = folder_->filePath(QStringLiteral("witness"));
    QFile script(program);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\nprintf '%s' \"$#\" > '" + witness.toUtf8() + ".part' && mv '" + witness.toUtf8() +
                 ".part' '" + witness.toUtf8() + "'\n");
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    script.close();
    QVERIFY(!setAutostart(true, program.toStdString()));

    QProcess desktop;
    desktop.setProcessChannelMode(QProcess::MergedChannels);
    desktop.start(QStringLiteral("/usr/bin/python3"),
                  {QStringLiteral("-c"),
                   QStringLiteral("import sys\nfrom gi.repository import Gio\n"
                                  "Gio.DesktopAppInfo.new_from_filename(sys.argv[1]).launch([], None)"),
                   entry()});
    QVERIFY(desktop.waitForFinished());
    QVERIFY2(desktop.exitCode() == 0, desktop.readAll() + content());
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(witness), 30000);
    QFile arguments(witness);
    QVERIFY(arguments.open(QIODevice::ReadOnly));
    QCOMPARE(arguments.readAll(), QByteArray("0"));
}

/// GLib looks for the program under the name as it is written, doubled, and finds none; so the text is looked at.
void tst_Autostart::doublesPercentSigns() {
    QVERIFY(!setAutostart(true, "/opt/100%f/corvanta%%"));
    QVERIFY2(content().contains("\nExec=\"/opt/100%%f/corvanta%%%%\"\n"), content());
}

void tst_Autostart::fallsBackToTheHomeFolder() {
    for (const char* useless : {"", "relative/folder"}) {
        const QTemporaryDir home;
        qputenv("XDG_CONFIG_HOME", useless);
        qputenv("HOME", home.path().toLocal8Bit());
        QVERIFY(!setAutostart(true, "/opt/corvanta"));
        QVERIFY(QFile::exists(home.filePath(QStringLiteral(".config/autostart/corvanta.desktop"))));
    }
}

void tst_Autostart::othersSwitchItOff() {
    QVERIFY(!setAutostart(true, "/opt/corvanta"));
    QFile file(entry());
    QVERIFY(file.open(QIODevice::Append));
    file.write("[Desktop Action Other]\nHidden=true\n");
    file.flush();
    QVERIFY2(isAutostartEnabled(), "another group says nothing about the entry");
    file.write("[Desktop Entry]\nX-GNOME-Autostart-enabled=false\n");
    file.flush();
    QVERIFY(!isAutostartEnabled());
}

void tst_Autostart::reportsWhatCannotBeWritten() {
    QFile inTheWay(folder_->filePath(QStringLiteral("autostart")));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QVERIFY(setAutostart(true, "/opt/corvanta"));
    QVERIFY(!isAutostartEnabled());
}

QTEST_GUILESS_MAIN(tst_Autostart)
#include "tst_Autostart.moc"
