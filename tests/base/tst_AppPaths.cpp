#include "base/AppPaths.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

/// Where data lies, for programs in all kinds of places.
class tst_AppPaths final : public QObject {
    Q_OBJECT
private slots:
    void root_data();
    void root();
    void systemFolders_data();
    void systemFolders();

private:
    QTemporaryDir dir_;
};

void tst_AppPaths::root_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("isBeside");
    QTest::newRow("a folder of one's own") << dir_.path() << true;
    QTest::newRow("nothing can be made there") << dir_.filePath(QStringLiteral("missing")) << false;
    // The superuser could write there.
    QTest::newRow("a package") << QStringLiteral("/usr/lib") << false;
}

void tst_AppPaths::root() {
    QFETCH(QString, program);
    QFETCH(bool, isBeside);
    const QString home = dir_.filePath(QStringLiteral("home/data"));
    qputenv("XDG_DATA_HOME", home.toLocal8Bit());
    const QString root = AppPaths::forProgramIn(program).root();
    QCOMPARE(root, isBeside ? program : home + QStringLiteral("/corvanta"));
    QVERIFY(QDir(root).exists());
    QVERIFY(QDir(dir_.path()).entryList({QStringLiteral(".probe*")}, QDir::Files | QDir::Hidden).isEmpty());
}

void tst_AppPaths::systemFolders_data() {
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("isSystems");
    QTest::newRow("a package") << "/usr/lib/x86_64-linux-gnu/corvanta" << true;
    QTest::newRow("an administrator's") << "/usr/local/bin" << true;
    QTest::newRow("a folder put there by hand") << "/opt/corvanta" << false;
    QTest::newRow("a roundabout way") << "/home/../usr//lib/" << true;
    QTest::newRow("sources") << "/usr/src/corvanta/build" << false;
    QTest::newRow("a similar name") << "/usr2/lib" << false;
    QTest::newRow("a home") << "/home/usr/opt" << false;
    QTest::newRow("Windows") << "C:/usr/lib" << false;
}

void tst_AppPaths::systemFolders() {
    QFETCH(QString, folder);
    QFETCH(bool, isSystems);
    QCOMPARE(AppPaths::isSystemFolder(folder), isSystems);
}

QTEST_GUILESS_MAIN(tst_AppPaths)
#include "tst_AppPaths.moc"
