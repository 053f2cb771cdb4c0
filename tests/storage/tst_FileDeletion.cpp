#include "platform/RawFile.h"
#include "storage/FileDeletion.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <filesystem>

using corvanta::platform::RawFile;
using corvanta::storage::deleteStoredFile;
using corvanta::storage::Deletion;

Q_DECLARE_METATYPE(corvanta::storage::Deletion)

/// Only plain files of the data tree are deleted, whatever a path says.
class tst_FileDeletion final : public QObject {
    Q_OBJECT
private slots:
    void init() { dir_ = std::make_unique<QTemporaryDir>(); }
    void paths_data();
    void paths();
    void links_data();
    void links();
    void oneThatIsWritten();
    void folderInItsPlace();
    void manyInTheBackground();
    void cancelled();

private:
    QString drive() const { return dir_->path() + QStringLiteral("/d/"); }
    QString write(const QString& path) const {
        const QString file = dir_->path() + QLatin1Char('/') + path;
        QFile out(file);
        const bool written = QDir().mkpath(QFileInfo(file).path()) && out.open(QIODevice::WriteOnly);
        QTest::qVerify(written && out.write("x") == 1, "written", "", __FILE__, __LINE__);
        return file;
    }
    std::unique_ptr<QTemporaryDir> dir_;
};

void tst_FileDeletion::paths_data() {
    QTest::addColumn<QString>("file"); ///< that exists
    QTest::addColumn<QString>("asked");
    QTest::addColumn<Deletion>("result");
    const QString good = QStringLiteral("d/ZEL/A/Capture/2024-03-05/20240305101112.jpg");
    const auto row = [&good](const char* name, const char* asked, Deletion result, const char* file = nullptr) {
        QTest::newRow(name) << (file == nullptr ? good : QString::fromUtf8(file)) << QString::fromUtf8(asked)
                            << result;
    };
    row("picture", "d/ZEL/A/Capture/2024-03-05/20240305101112.jpg", Deletion::Deleted);
    row("recording", "d/ZEL/二 B/LocalRecord/2024-03-05/20240305101112.avi", Deletion::Deleted,
        "d/ZEL/二 B/LocalRecord/2024-03-05/20240305101112.avi");
#ifndef Q_OS_WIN // such names cannot be there
    row("markup", "d/ZEL/<b>/Image/2024-03-05/20240305101112<i>\n.jpg", Deletion::Deleted,
        "d/ZEL/<b>/Image/2024-03-05/20240305101112<i>\n.jpg");
#endif
    row("gone", "d/ZEL/A/Capture/2024-03-05/20240305101113.jpg", Deletion::Gone);
    row("day gone", "d/ZEL/A/Capture/2024-03-06/20240306101113.jpg", Deletion::Gone);
    row("climbs", "d/ZEL/A/Capture/2024-03-05/../2024-03-05/20240305101112.jpg", Deletion::Refused);
    row("climbs in place", "d/ZEL/A/Capture/../20240305101112.jpg", Deletion::Refused, "d/ZEL/A/20240305101112.jpg");
    row("stays", "d/ZEL/A/./Capture/2024-03-05/20240305101112.jpg", Deletion::Refused);
    row("twice a slash", "d/ZEL/A//Capture/2024-03-05/20240305101112.jpg", Deletion::Refused);
    row("above the day", "d/ZEL/A/Capture/20240305101112.jpg", Deletion::Refused,
        "d/ZEL/A/Capture/20240305101112.jpg");
    row("below the day", "d/ZEL/A/Capture/2024-03-05/x/20240305101112.jpg", Deletion::Refused,
        "d/ZEL/A/Capture/2024-03-05/x/20240305101112.jpg");
    row("no day", "d/ZEL/A/Capture/2024-13-05/20240305101112.jpg", Deletion::Refused,
        "d/ZEL/A/Capture/2024-13-05/20240305101112.jpg");
    row("no kind", "d/ZEL/A/Others/2024-03-05/20240305101112.jpg", Deletion::Refused,
        "d/ZEL/A/Others/2024-03-05/20240305101112.jpg");
    row("no time", "d/ZEL/A/Capture/2024-03-05/readme.jpg", Deletion::Refused,
        "d/ZEL/A/Capture/2024-03-05/readme.jpg");
    row("another drive", "e/ZEL/A/Capture/2024-03-05/20240305101112.jpg", Deletion::Refused,
        "e/ZEL/A/Capture/2024-03-05/20240305101112.jpg");
    row("another tree", "d/ZEL2/A/Capture/2024-03-05/20240305101112.jpg", Deletion::Refused,
        "d/ZEL2/A/Capture/2024-03-05/20240305101112.jpg");
    row("the day itself", "d/ZEL/A/Capture/2024-03-05/", Deletion::Refused);
}

void tst_FileDeletion::paths() {
    QFETCH(QString, file);
    QFETCH(QString, asked);
    QFETCH(Deletion, result);
    const QString there = write(file);
    QCOMPARE(deleteStoredFile(dir_->path() + QLatin1Char('/') + asked, {QString(), drive()}), result);
    QCOMPARE(QFileInfo::exists(there), result != Deletion::Deleted);
}

void tst_FileDeletion::links_data() {
    QTest::addColumn<QString>("linked"); ///< of the path, what is a link to its like elsewhere
    for (const char* const part : {"d/ZEL", "d/ZEL/A", "d/ZEL/A/Capture", "d/ZEL/A/Capture/2024-03-05",
                                   "d/ZEL/A/Capture/2024-03-05/20240305101112.jpg"})
        QTest::newRow(part) << QString::fromLatin1(part);
}

void tst_FileDeletion::links() {
#ifdef Q_OS_WIN
    QSKIP("only an administrator makes links there");
#endif
    QFETCH(QString, linked);
    const QString path = QStringLiteral("d/ZEL/A/Capture/2024-03-05/20240305101112.jpg");
    const QString real = write(QStringLiteral("elsewhere/") + path);
    const QString base = dir_->path() + QLatin1Char('/');
    QVERIFY(QDir().mkpath(QFileInfo(base + linked).path()));
    QVERIFY(QFile::link(base + QStringLiteral("elsewhere/") + linked, base + linked));
    QVERIFY(QFileInfo::exists(base + path));
    QCOMPARE(deleteStoredFile(base + path, {drive()}), Deletion::Refused);
    QVERIFY(QFileInfo::exists(real));
}

void tst_FileDeletion::oneThatIsWritten() {
    const QString path = write(QStringLiteral("d/ZEL/A/LocalRecord/2024-03-05/20240305101112.avi"));
    {
        const auto writer = RawFile::open(std::filesystem::path(path.toStdU16String()), RawFile::Access::Update);
        QVERIFY(writer != nullptr);
        QCOMPARE(deleteStoredFile(path, {drive()}), Deletion::InUse);
        QVERIFY(QFileInfo::exists(path));
    }
    QCOMPARE(deleteStoredFile(path, {drive()}), Deletion::Deleted);
}

void tst_FileDeletion::folderInItsPlace() {
    const QString path = drive() + QStringLiteral("ZEL/A/Capture/2024-03-05/20240305101112.jpg");
    QVERIFY(QDir().mkpath(path));
    QCOMPARE(deleteStoredFile(path, {drive()}), Deletion::Refused);
    QVERIFY(QFileInfo(path).isDir());
}

void tst_FileDeletion::manyInTheBackground() {
    QStringList paths;
    for (int second = 10; second < 60; ++second)
        paths += write(QStringLiteral("d/ZEL/A/Capture/2024-03-05/202403051011%1.jpg").arg(second));
    paths.insert(20, QStringLiteral("/etc/hostname"));
    FileDeletion deletion({drive()}, paths);
    deletion.start();
    deletion.join();
    QCOMPARE(deletion.done(), paths.size());
    QCOMPARE(int(deletion.results().size()), paths.size());
    for (int i = 0; i < paths.size(); ++i) {
        QCOMPARE(deletion.results()[std::size_t(i)], i == 20 ? Deletion::Refused : Deletion::Deleted);
        QVERIFY(i == 20 || !QFileInfo::exists(paths[i]));
    }
}

void tst_FileDeletion::cancelled() {
    const QString path = write(QStringLiteral("d/ZEL/A/Capture/2024-03-05/20240305101112.jpg"));
    FileDeletion deletion({drive()}, {path});
    deletion.cancel();
    deletion.start();
    deletion.join();
    QVERIFY(deletion.results().empty());
    QVERIFY(QFileInfo::exists(path));
}

QTEST_GUILESS_MAIN(tst_FileDeletion)
#include "tst_FileDeletion.moc"
