#include "account/KeyStore.h"
#include "account/PasswordVault.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace std::chrono_literals;

namespace {

/// A process that is ended with the object.
class Helper final {
public:
    bool start(const QString& program, const QStringList& arguments) {
        process_.start(program, arguments);
        return process_.waitForStarted(-1);
    }
    QProcess& process() { return process_; }
    void end() {
        process_.kill();
        process_.waitForFinished(-1);
    }
    ~Helper() { end(); }

private:
    QProcess process_;
};

} // namespace

/// The key of the remembered sign-in in a secret service that is not ours: a keyring on a message bus of its own.
class tst_SecretService final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void keepsTheKey();
    void withoutTheService();
    void cleanupTestCase();

private:
    std::unique_ptr<PasswordVault> vault() {
        return std::make_unique<PasswordVault>(keyFile(), systemKeyStore(), 60s);
    }
    QString keyFile() const { return dir_.filePath(QStringLiteral("vault.key")); }
    QString protect();
    std::optional<QString> reveal(const QString& stored);

    QTemporaryDir dir_;
    Helper bus_;
    Helper keyring_;
    QString protected_;
};

void tst_SecretService::initTestCase() {
    // Everything that the keyring keeps lies in the test's folder.
    for (const char* const name : {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
        qputenv(name, QFile::encodeName(dir_.path()));
    QVERIFY(
        bus_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=" CORVANTA_SESSION_BUS),
                                                   QStringLiteral("--nofork"), QStringLiteral("--print-address")}));
    QTRY_VERIFY_WITH_TIMEOUT(bus_.process().canReadLine() || bus_.process().waitForReadyRead(100), 60000);
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.process().readLine().trimmed());
    QVERIFY(keyring_.start(
        QStringLiteral("gnome-keyring-daemon"),
        {QStringLiteral("--foreground"), QStringLiteral("--unlock"), QStringLiteral("--components=secrets")}));
    keyring_.process().write("master");
    keyring_.process().closeWriteChannel();
    const auto isOnTheBus = [] {
        QProcess ask;
        ask.start(QStringLiteral("dbus-send"),
                  {QStringLiteral("--session"), QStringLiteral("--print-reply"),
                   QStringLiteral("--dest=org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                   QStringLiteral("org.freedesktop.DBus.NameHasOwner"),
                   QStringLiteral("string:org.freedesktop.secrets")});
        return ask.waitForFinished(-1) && ask.readAllStandardOutput().contains("true");
    };
    QTRY_VERIFY_WITH_TIMEOUT(isOnTheBus(), 60000);
}

QString tst_SecretService::protect() {
    const auto keeper = vault();
    std::optional<QString> stored;
    keeper->protect(QStringLiteral("pä \"ss<1>"), this, [&stored](const QString& text) { stored = text; });
    [&stored] {
        QTRY_VERIFY_WITH_TIMEOUT(stored.has_value(), 90000);
    }();
    return stored.value_or(QString());
}

std::optional<QString> tst_SecretService::reveal(const QString& stored) {
    const auto keeper = vault();
    std::optional<PasswordVault::Revealed> revealed;
    keeper->reveal(stored, this, [&revealed](const PasswordVault::Revealed& told) { revealed = told; });
    [&revealed] {
        QTRY_VERIFY_WITH_TIMEOUT(revealed.has_value(), 90000);
    }();
    return revealed ? revealed->password : std::nullopt;
}

void tst_SecretService::keepsTheKey() {
    protected_ = protect();
    QVERIFY(!protected_.isEmpty());
    QVERIFY(!protected_.contains(QStringLiteral("ss<1>")));
    // The next start asks the service for the key that it has, and no key lies in a file.
    QCOMPARE(reveal(protected_), std::optional(QStringLiteral("pä \"ss<1>")));
    QVERIFY(!QFileInfo::exists(keyFile()));
}

void tst_SecretService::withoutTheService() {
    keyring_.end(); // the bus stays: a session that ends takes its programs along
    // What was sealed with the service's key can't be read; what is remembered now lies under a file's key.
    QCOMPARE(reveal(protected_), std::optional<QString>());
    const QString sealed = protect();
    QCOMPARE(reveal(sealed), std::optional(QStringLiteral("pä \"ss<1>")));
    QCOMPARE(QFileInfo(keyFile()).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

void tst_SecretService::cleanupTestCase() {
    keyring_.end();
    bus_.end();
}

QTEST_GUILESS_MAIN(tst_SecretService)
#include "tst_SecretService.moc"
