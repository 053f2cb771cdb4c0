// Against buses of its own: with services that agree, refuse or are missing, and with one that never says anything.

#include "platform/KeepAwake.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using corvanta::platform::KeepAwake;

namespace {

const QByteArray NoBus = "unix:path=/no/such/bus";

struct Service {
    QString name;
    QString path;
    QString interface;
    QString arguments;
    QString results;
    QString code;
};

const Service ScreenSaver{QStringLiteral("org.freedesktop.ScreenSaver"),
                          QStringLiteral("/org/freedesktop/ScreenSaver"),
                          QStringLiteral("org.freedesktop.ScreenSaver"),
                          QStringLiteral("ss"),
                          QStringLiteral("u"),
                          QStringLiteral("ret = 7")};
const Service Refusing{ScreenSaver.name,      ScreenSaver.path,    ScreenSaver.interface,
                       ScreenSaver.arguments, ScreenSaver.results, QStringLiteral("raise RuntimeError('not today')")};
const Service Login{QStringLiteral("org.freedesktop.login1"),
                    QStringLiteral("/org/freedesktop/login1"),
                    QStringLiteral("org.freedesktop.login1.Manager"),
                    QStringLiteral("ssss"),
                    QStringLiteral("h"),
                    QStringLiteral("ret = dbus.types.UnixFd(open('/dev/null'))")};

/// A message bus of the test's own, and the services on it.
class TestBus final {
public:
    TestBus() {
        // Without a file of its own the bus would read the machine's, which knows services to start.
        QFile config(folder_.filePath(QStringLiteral("bus.conf")));
        config.open(QIODevice::WriteOnly);
        config.write("<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
                     "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
                     "<busconfig><listen>unix:dir=" +
                     folder_.path().toUtf8() +
                     "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                     "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n");
        config.close();
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--config-file=") + config.fileName(), QStringLiteral("--nofork"),
                       QStringLiteral("--print-address=1")});
        while (!daemon_.canReadLine() && daemon_.waitForReadyRead(30000)) {
        }
        address_ = daemon_.readLine().trimmed();
    }

    ~TestBus() {
        for (const auto& service : services_)
            end(*service);
        end(daemon_);
    }

    const QByteArray& address() const { return address_; }

    /// Starts a service; its process prints every call that it gets.
    QProcess& add(const Service& service) {
        auto& process = *services_.emplace_back(std::make_unique<QProcess>());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromLatin1(address_));
        environment.insert(QStringLiteral("PYTHONUNBUFFERED"), QStringLiteral("1"));
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral("/usr/bin/python3"),
                      {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--session"), service.name,
                       service.path, service.interface});
        const bool isThere = QTest::qWaitFor([&] { return addInhibit(service); }, 60000);
        if (!isThere)
            qWarning() << "no" << service.name << process.readAll();
        return process;
    }

private:
    bool addInhibit(const Service& service) const {
        QProcess send;
        const auto text = [](const QString& value) {
            return QStringLiteral("string:") + value;
        };
        send.start(QStringLiteral("dbus-send"),
                   {QStringLiteral("--bus=") + QString::fromLatin1(address_), QStringLiteral("--print-reply"),
                    QStringLiteral("--dest=") + service.name, service.path,
                    QStringLiteral("org.freedesktop.DBus.Mock.AddMethod"), text(service.interface),
                    text(QStringLiteral("Inhibit")), text(service.arguments), text(service.results),
                    text(service.code)});
        return send.waitForFinished() && send.exitCode() == 0;
    }

    static void end(QProcess& process) {
        process.terminate();
        if (!process.waitForFinished())
            process.kill();
    }

    QTemporaryDir folder_;
    QProcess daemon_;
    QByteArray address_;
    std::vector<std::unique_ptr<QProcess>> services_;
};

} // namespace

class tst_KeepAwake : public QObject {
    Q_OBJECT

private slots:
    void init();
    void askedServicesAgree();
    void refusalIsNoError();
    void loginManagerAlone();
    void withoutServices();
    void withoutBus();
    void busThatSaysNothing();
};

void tst_KeepAwake::init() {
    qputenv("DBUS_SESSION_BUS_ADDRESS", NoBus);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", NoBus);
}

void tst_KeepAwake::askedServicesAgree() {
    TestBus bus;
    QProcess& service = bus.add(ScreenSaver);
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    const KeepAwake keepAwake;
    QVERIFY2(keepAwake.active(), keepAwake.description().c_str());
    QByteArray log;
    QTRY_VERIFY_WITH_TIMEOUT((log += service.readAll()).contains("Inhibit \"corvanta\""), 30000);
}

void tst_KeepAwake::refusalIsNoError() {
    TestBus bus;
    bus.add(Refusing);
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    const KeepAwake keepAwake;
    QVERIFY(!keepAwake.active());
    QVERIFY2(QByteArray(keepAwake.description().c_str()).contains("not today"), keepAwake.description().c_str());
}

void tst_KeepAwake::loginManagerAlone() {
    TestBus bus;
    QProcess& service = bus.add(Login);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", bus.address());
    const KeepAwake keepAwake;
    QVERIFY2(keepAwake.active(), keepAwake.description().c_str());
    QByteArray log;
    QTRY_VERIFY_WITH_TIMEOUT((log += service.readAll()).contains("Inhibit \"idle\" \"corvanta\""), 30000);
    QVERIFY(log.contains("\"block\""));
}

void tst_KeepAwake::withoutServices() {
    const TestBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address());
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", bus.address());
    const KeepAwake keepAwake;
    QVERIFY(!keepAwake.active());
    QVERIFY(!keepAwake.description().empty());
}

void tst_KeepAwake::withoutBus() {
    const KeepAwake keepAwake;
    QVERIFY(!keepAwake.active());
    QVERIFY(!keepAwake.description().empty());
}

void tst_KeepAwake::busThatSaysNothing() {
    const QTemporaryDir folder;
    QLocalServer silent;
    QVERIFY(silent.listen(folder.filePath(QStringLiteral("bus"))));
    const QByteArray address = "unix:path=" + folder.filePath(QStringLiteral("bus")).toUtf8();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", address);
    QElapsedTimer timer;
    timer.start();
    const KeepAwake keepAwake;
    // The bus library by itself waits for more than twenty seconds.
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!keepAwake.active());
}

QTEST_GUILESS_MAIN(tst_KeepAwake)
#include "tst_KeepAwake.moc"
