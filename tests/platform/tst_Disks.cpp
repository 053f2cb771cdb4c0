#include "platform/Disks.h"
#include "platform/linux/MountTable.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <set>
#include <sstream>

using namespace corvanta::platform;

namespace {

const std::string Root = "27 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw,discard\n";
const std::string Proc = "22 27 0:21 / /proc rw,relatime - proc proc rw\n";
const std::string Memory = "30 25 0:27 / /dev/shm rw - tmpfs tmpfs rw\n";
const std::string Boot = "40 27 8:1 / /boot/efi rw - vfat /dev/sda1 rw\n";
const std::string Disk = "41 27 8:17 / /media/disk\\040one rw - ext4 /dev/sdb1 rw\n";
const std::string DiskAgain = "42 27 8:17 /inner /srv/rw/where/else rw - ext4 /dev/sdb1 rw\n";
const std::string ReadOnly = "43 27 11:0 / /media/cd ro - udf /dev/sr0 ro\n";
const std::string LockedDisk = "44 27 8:33 / /media/locked rw - ext4 /dev/sdc1 ro\n";
const std::string Home = "45 27 8:49 / /home rw master:3 propagate_from:2 - btrfs /dev/sdd1 rw,subvol=/@home\n";
const std::string Network = "46 27 0:50 / /mnt/server rw - nfs4 server:/ rw\n";
const std::string InnerOverlay = "47 27 0:51 / /var/x rw - overlay overlay rw\n";
const std::string ContainerRoot = "48 1 0:52 / / rw - overlay overlay rw\n";
const std::string Covered = "49 27 8:65 / /mnt/a rw - ext4 /dev/sde1 rw\n";
const std::string Covering = "50 27 8:81 / /mnt/a rw - xfs /dev/sdf1 rw\n";

QStringList texts(const std::vector<std::string>& from) {
    QStringList result;
    for (const std::string& text : from)
        result += QString::fromStdString(text);
    return result;
}

} // namespace

class tst_Disks : public QObject {
    Q_OBJECT

private slots:
    void selectsRoots_data();
    void selectsRoots();
    void brokenLinesAreLeftOut();
    void rootsOfThisMachine();
    void spaceAgreesWithDf();
    void spaceOfNothing();
};

void tst_Disks::selectsRoots_data() {
    QTest::addColumn<QString>("mounts");
    QTest::addColumn<QString>("home");
    QTest::addColumn<QStringList>("forbidden"); // where the user may not write
    QTest::addColumn<QStringList>("roots");
    QTest::addColumn<QString>("system");

    const auto row = [](const char* name, const std::string& mounts, const char* home, const QStringList& forbidden,
                        const QStringList& roots, const char* system) {
        QTest::newRow(name) << QString::fromStdString(mounts) << QString::fromLatin1(home) << forbidden << roots
                            << QString::fromLatin1(system);
    };
    row("root user, one disk", Proc + Root + Memory, "/root", {}, {"/"}, "/");
    row("plain user, one disk", Proc + Root, "/home/u", {"/"}, {"/home/u/"}, "/home/u/");
    row("plain user, home a disk of its own", Root + Home, "/home/u", {"/", "/home"}, {"/home/u/"}, "/home/u/");
    row("a further disk, with a blank", Root + Disk, "/root", {}, {"/", "/media/disk one/"}, "/");
    row("a disk mounted twice", Root + DiskAgain + Disk, "/root", {}, {"/", "/media/disk one/"}, "/");
    row("a disk of others", Root + Disk, "/root", {"/media/disk one"}, {"/"}, "/");
    row("boot partition", Root + Boot, "/root", {}, {"/"}, "/");
    row("read-only mount, read-only disk", Root + ReadOnly + LockedDisk, "/root", {}, {"/"}, "/");
    row("network", Root + Network, "/root", {}, {"/"}, "/");
    row("container", ContainerRoot + InnerOverlay, "/root", {}, {"/"}, "/");
    row("one mount covers another", Root + Covered + Covering, "/root", {}, {"/", "/mnt/a/"}, "/");
    row("the covering one is not ours", Root + Covered + Covering, "/root", {"/mnt/a"}, {"/"}, "/");
    row("home in memory", Memory, "/dev/shm/u", {}, {}, "/dev/shm/u/");
    row("home with a slash", Root + Home, "/home/u/", {"/", "/home"}, {"/home/u/"}, "/home/u/");
}

void tst_Disks::selectsRoots() {
    QFETCH(QString, mounts);
    QFETCH(QString, home);
    QFETCH(QStringList, forbidden);
    std::istringstream text(mounts.toStdString());
    const std::vector<Mount> table = readMounts(text);
    const auto mayWrite = [&forbidden](const std::string& folder) {
        return !forbidden.contains(QString::fromStdString(folder));
    };
    QTEST(texts(selectRoots(table, home.toStdString(), mayWrite)), "roots");
    QTEST(QString::fromStdString(rootOfHome(table, home.toStdString(), mayWrite)), "system");
}

void tst_Disks::brokenLinesAreLeftOut() {
    std::istringstream text(
        "\n27\n27 1 254:0 / / rw -\n27 1 254:0 / /x rw ext4 /dev/vda rw\n\\ \\0 \\04 - - - - -\n" + Root);
    QCOMPARE(readMounts(text).size(), std::size_t{1});
}

void tst_Disks::rootsOfThisMachine() {
    const QStringList roots = texts(driveRoots());
    QVERIFY(!roots.isEmpty());
    QVERIFY(roots.contains(QString::fromStdString(systemDrive())));
    std::set<QByteArray> devices;
    for (const QString& root : roots) {
        QVERIFY2(root.startsWith(QLatin1Char('/')) && root.endsWith(QLatin1Char('/')), qPrintable(root));
        // A file can be made there, and findmnt's neighbour stat names another volume for each.
        QTemporaryDir probe(root + QStringLiteral("corvanta-test-XXXXXX"));
        QVERIFY2(probe.isValid(), qPrintable(root));
        QProcess stat;
        stat.start(QStringLiteral("stat"), {QStringLiteral("--format=%d"), root});
        QVERIFY(stat.waitForFinished());
        QVERIFY2(devices.insert(stat.readAllStandardOutput()).second, qPrintable(root));
    }
}

void tst_Disks::spaceAgreesWithDf() {
    const QString root = QString::fromStdString(systemDrive());
    QProcess df;
    // Others write to the disk meanwhile; what never changes is compared, the rest must be of one size.
    df.start(QStringLiteral("df"), {QStringLiteral("-B1"), QStringLiteral("--output=size,avail"), root});
    QVERIFY(df.waitForFinished());
    const QStringList fields = QString::fromLatin1(df.readAllStandardOutput()).simplified().split(QLatin1Char(' '));
    const auto space = diskSpace(root.toStdString());
    QVERIFY(space.has_value());
    QCOMPARE(QString::number(space->total), fields.value(2));
    QVERIFY(space->available <= space->free && space->free <= space->total);
    const double available = fields.value(3).toDouble();
    QVERIFY(std::abs(static_cast<double>(space->available) - available) < 0.1 * static_cast<double>(space->total));
}

void tst_Disks::spaceOfNothing() {
    QVERIFY(!diskSpace("/no/such/folder").has_value());
}

QTEST_GUILESS_MAIN(tst_Disks)
#include "tst_Disks.moc"
