#include "platform/InstanceClaim.h"
#include "platform/RuntimeFolder.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace corvanta::platform;

class tst_RuntimeFolder : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("XDG_RUNTIME_DIR"); }
    void takesTheSessionsFolder();
    void passesOverWhatCannotBeTrusted_data();
    void passesOverWhatCannotBeTrusted();
    void oneClaimAtATime();
    void claimWithoutFolder();
};

namespace {

std::string ownFolder() {
    return "/tmp/corvanta-" + std::to_string(geteuid());
}

} // namespace

void tst_RuntimeFolder::takesTheSessionsFolder() {
    const QTemporaryDir folder;
    QCOMPARE(chmod(folder.path().toLocal8Bit(), 0700), 0);
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    QCOMPARE(runtimeFolder().value_or("").string(), folder.path().toStdString());
}

void tst_RuntimeFolder::passesOverWhatCannotBeTrusted_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("not set") << QString();
    QTest::newRow("missing") << "missing";
    QTest::newRow("readable by others") << "wide";
    QTest::newRow("link") << "link";
    QTest::newRow("link with a slash") << "link/";
    QTest::newRow("a file") << "file";
    QTest::newRow("too long for a socket") << QString(100, QLatin1Char('x'));
}

void tst_RuntimeFolder::passesOverWhatCannotBeTrusted() {
    QFETCH(QString, name);
    const QTemporaryDir folder;
    const auto path = [&folder](const QString& inner) {
        return folder.filePath(inner).toLocal8Bit();
    };
    const QByteArray tooLong = path(QString(100, QLatin1Char('x')));
    QCOMPARE(mkdir(path("wide"), 0755), 0);
    QCOMPARE(mkdir(path("good"), 0700), 0);
    QCOMPARE(mkdir(tooLong, 0700), 0);
    QCOMPARE(symlink(path("good"), path("link")), 0);
    QFile file(folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    if (!name.isEmpty())
        qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit() + '/' + name.toLocal8Bit());

    const auto found = runtimeFolder();
    QVERIFY(found.has_value());
    QCOMPARE(found->string(), ownFolder());
    struct stat status {};
    QCOMPARE(stat(found->c_str(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, 0700U);
}

void tst_RuntimeFolder::oneClaimAtATime() {
    const QTemporaryDir folder;
    const std::string file = folder.filePath(QStringLiteral("lock")).toStdString();
    {
        InstanceClaim first;
        QCOMPARE(first.claim(file), InstanceClaim::Result::Ours);
        InstanceClaim second;
        QCOMPARE(second.claim(file), InstanceClaim::Result::Another);
    }
    InstanceClaim third;
    QCOMPARE(third.claim(file), InstanceClaim::Result::Ours);
}

void tst_RuntimeFolder::claimWithoutFolder() {
    InstanceClaim claim;
    QCOMPARE(claim.claim("/no/such/folder/lock"), InstanceClaim::Result::Undecided);
}

QTEST_GUILESS_MAIN(tst_RuntimeFolder)
#include "tst_RuntimeFolder.moc"
