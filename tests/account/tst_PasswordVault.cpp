#include "account/PasswordVault.h"
#include "account/RememberedLogins.h"
#include "account/SealedText.h"
#include "database/SqlHelp.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace std::chrono_literals;
using corvanta::account::makeKey;

namespace {

/// A store that does what the test wants, later.
class ScriptedStore final : public KeyStore {
public:
    enum class Manner { Answers, Refuses, Silent, AnswersLate };

    ScriptedStore(Manner manner, QByteArray key, int& asked)
        : manner_(manner)
        , key_(std::move(key))
        , asked_(asked) {}

    void fetch(Answer answer) override {
        ++asked_;
        if (manner_ == Manner::Answers)
            answer(key_);
        else if (manner_ == Manner::Refuses)
            answer(std::nullopt);
        else if (manner_ == Manner::AnswersLate)
            QTimer::singleShot(300ms, [key = key_, answer] { answer(key); });
    }

private:
    Manner manner_;
    QByteArray key_;
    int& asked_;
};
using Manner = ScriptedStore::Manner;

} // namespace

Q_DECLARE_METATYPE(Manner)

/// What is remembered lies protected, and comes back.
class tst_PasswordVault final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void roundTrip_data();
    void roundTrip();
    void brokenRows_data();
    void brokenRows();
    void storeOfAnotherSession();
    void keyFile();
    void keyFileThatIsNone();
    void receiverGone();
    void readableRowIsReplaced();
    void rememberAndForget();

private:
    std::unique_ptr<PasswordVault> vault(Manner manner = Manner::Refuses) {
        return std::make_unique<PasswordVault>(keyFile_, std::make_unique<ScriptedStore>(manner, key_, asked_),
                                               manner == Manner::Silent || manner == Manner::AnswersLate ? 50ms
                                                                                                         : 60s);
    }
    QString protect(PasswordVault& vault, const QString& password);
    PasswordVault::Revealed reveal(PasswordVault& vault, const QString& stored);

    std::unique_ptr<QTemporaryDir> dir_;
    QString keyFile_;
    QByteArray key_ = makeKey();
    int asked_ = 0;
};

void tst_PasswordVault::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    keyFile_ = dir_->filePath(QStringLiteral("config/vault.key"));
    asked_ = 0;
}

QString tst_PasswordVault::protect(PasswordVault& vault, const QString& password) {
    std::optional<QString> result;
    vault.protect(password, this, [&result](const QString& stored) { result = stored; });
    [&result] {
        QTRY_VERIFY(result.has_value());
    }();
    return result.value_or(QString());
}

PasswordVault::Revealed tst_PasswordVault::reveal(PasswordVault& vault, const QString& stored) {
    std::optional<PasswordVault::Revealed> result;
    vault.reveal(stored, this, [&result](const PasswordVault::Revealed& revealed) { result = revealed; });
    [&result] {
        QTRY_VERIFY(result.has_value());
    }();
    return result.value_or(PasswordVault::Revealed());
}

void tst_PasswordVault::roundTrip_data() {
    QTest::addColumn<Manner>("manner");
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("usesFile");
    const QString usual = QStringLiteral("corvanta-8000");
    QTest::newRow("store") << Manner::Answers << usual << false;
    QTest::newRow("no store") << Manner::Refuses << usual << true;
    QTest::newRow("silent store") << Manner::Silent << usual << true;
    QTest::newRow("late store") << Manner::AnswersLate << usual << true;
    QTest::newRow("emoji") << Manner::Refuses << QStringLiteral("😀密码'\";--<b>") << true;
    QTest::newRow("empty") << Manner::Answers << QStringLiteral("") << false;
}

void tst_PasswordVault::roundTrip() {
    QFETCH(Manner, manner);
    QFETCH(QString, password);
    const auto first = vault(manner);
    const QString stored = protect(*first, password);
    QVERIFY(!stored.isEmpty());
    QVERIFY(password.isEmpty() || !stored.contains(password));
    QVERIFY(protect(*first, password) != stored); // nobody sees whether a password is still the same
    QTEST(QFile::exists(keyFile_), "usesFile");
    QCOMPARE(asked_, 1);
    const auto later = vault(manner); // the next start
    const auto revealed = reveal(*later, stored);
    QCOMPARE(revealed.password.value_or("none"), password);
    QVERIFY(!revealed.wasReadable);
}

void tst_PasswordVault::brokenRows_data() {
    QTest::addColumn<QString>("row");
    QTest::newRow("changed") << "file:AAAA";
    QTest::newRow("nothing behind it") << "file:";
    QTest::newRow("no base64") << "file:***";
    QTest::newRow("of another system") << "system:AAAA";
    QTest::newRow("long") << "file:" + QString(100000, QLatin1Char('A'));
}

void tst_PasswordVault::brokenRows() {
    QFETCH(QString, row);
    const auto one = vault();
    QVERIFY(!reveal(*one, QStringLiteral("corvanta-vault:") + row).password);
    QString stored = protect(*one, QStringLiteral("12345678"));
    stored[stored.size() / 2 + 10] = stored.at(stored.size() / 2 + 10) == 'A' ? 'B' : 'A';
    QVERIFY(!reveal(*one, stored).password);
}

void tst_PasswordVault::storeOfAnotherSession() {
    const QString stored = protect(*vault(Manner::Answers), QStringLiteral("12345678"));
    QVERIFY(!reveal(*vault(Manner::Refuses), stored).password); // and no crash
    key_ = makeKey();
    QVERIFY(!reveal(*vault(Manner::Answers), stored).password);
}

void tst_PasswordVault::keyFile() {
    protect(*vault(), QStringLiteral("12345678"));
    const auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner;
    const auto rights = [this] {
        return QFile::permissions(keyFile_) & ~(QFile::ReadUser | QFile::WriteUser);
    };
    QCOMPARE(rights(), ownerOnly);
    QFile file(keyFile_);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().size(), 32);
    // One that others could read is closed to them when it is next used.
    QVERIFY(QFile::setPermissions(keyFile_, ownerOnly | QFile::ReadOther | QFile::ReadGroup));
    const QString stored = protect(*vault(), QStringLiteral("12345678"));
    QCOMPARE(rights(), ownerOnly);
    QCOMPARE(reveal(*vault(), stored).password.value_or(QString()), QStringLiteral("12345678"));
}

void tst_PasswordVault::keyFileThatIsNone() {
    QVERIFY(QDir(dir_->path()).mkpath(QStringLiteral("config")));
    QFile file(keyFile_);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("short");
    file.close();
    const QString stored = protect(*vault(), QStringLiteral("12345678"));
    QCOMPARE(reveal(*vault(), stored).password.value_or(QString()), QStringLiteral("12345678"));
    // A folder in its place cannot be written over: then nothing is stored.
    QVERIFY(QFile::remove(keyFile_) && QDir().mkpath(keyFile_ + QStringLiteral("/x")));
    QCOMPARE(protect(*vault(), QStringLiteral("12345678")), QString());
}

void tst_PasswordVault::receiverGone() {
    const auto one = vault(Manner::AnswersLate);
    bool isCalled = false;
    auto receiver = std::make_unique<QObject>();
    one->protect(QStringLiteral("12345678"), receiver.get(), [&isCalled](const QString&) { isCalled = true; });
    receiver.reset();
    protect(*one, QStringLiteral("another")); // behind it in the row
    QVERIFY(!isCalled);
}

void tst_PasswordVault::readableRowIsReplaced() {
    const auto one = vault();
    SqlHelp database(dir_->filePath(QStringLiteral("dataBase.db")));
    database.savePhoneAndPassword(QStringLiteral("13800138000"), QStringLiteral("as typed"));
    RememberedLogins logins(database, *one);
    QString password;
    logins.password(QStringLiteral("13800138000"), [&password](const QString& revealed) { password = revealed; });
    QTRY_COMPARE(password, QStringLiteral("as typed"));
    QTRY_VERIFY(!database.getPhoneAndPassword().password.contains(QStringLiteral("as typed")));
    password.clear();
    logins.password(QStringLiteral("13800138000"), [&password](const QString& revealed) { password = revealed; });
    QTRY_COMPARE(password, QStringLiteral("as typed"));
}

void tst_PasswordVault::rememberAndForget() {
    const auto one = vault();
    SqlHelp database(dir_->filePath(QStringLiteral("dataBase.db")));
    {
        RememberedLogins logins(database, *one);
        logins.remember({QStringLiteral("13800138000"), QStringLiteral("12345678")});
        logins.remember({QStringLiteral("13900139000"), QStringLiteral("87654321")});
    } // the dialog is gone before the vault answers
    RememberedLogins logins(database, *one);
    QTRY_COMPARE(logins.numbers(), QStringList{QStringLiteral("13900139000")}); // one at most
    QString password;
    logins.password(QStringLiteral("13900139000"), [&password](const QString& revealed) { password = revealed; });
    QTRY_COMPARE(password, QStringLiteral("87654321"));
    logins.forget(QStringLiteral("13800138000"));
    QVERIFY(logins.isRemembered(QStringLiteral("13900139000")));
    logins.forget(QStringLiteral("13900139000"));
    QVERIFY(logins.numbers().isEmpty());
}

QTEST_GUILESS_MAIN(tst_PasswordVault)
#include "tst_PasswordVault.moc"
