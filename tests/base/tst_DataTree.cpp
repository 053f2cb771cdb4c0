#include "base/DataTree.h"

#include <QDate>
#include <QtTest>

namespace dataTree = corvanta::dataTree;

class tst_DataTree final : public QObject {
    Q_OBJECT
private slots:
    void hostileNamesAreNoComponents_data();
    void hostileNamesAreNoComponents();
    void plainNamesStay_data();
    void plainNamesStay();
    void foldersStandInTheirPlace();
};

void tst_DataTree::hostileNamesAreNoComponents_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("up") << QStringLiteral("..");
    QTest::newRow("here") << QStringLiteral(".");
    QTest::newRow("slash") << QStringLiteral("a/b");
    QTest::newRow("back slash") << QStringLiteral("..\\b");
    QTest::newRow("drive") << QStringLiteral("C:");
    QTest::newRow("stream") << QStringLiteral("a:b");
    QTest::newRow("null") << QString(QChar(0));
    QTest::newRow("line") << QStringLiteral("a\nb");
    QTest::newRow("wildcard") << QStringLiteral("*");
    QTest::newRow("dot at the end") << QStringLiteral("camera.");
    QTest::newRow("blank at the end") << QStringLiteral("camera ");
    QTest::newRow("device") << QStringLiteral("nul");
    QTest::newRow("device with extension") << QStringLiteral("COM1.avi");
    QTest::newRow("too long") << QString(200, QChar(u'摄'));
}

void tst_DataTree::hostileNamesAreNoComponents() {
    QFETCH(QString, name);
    QVERIFY(!dataTree::pathComponent(name));
    QVERIFY(!dataTree::folder(QStringLiteral("/d/"), QStringLiteral("Image"), name, QString()));
    if (!name.isEmpty())
        QVERIFY(!dataTree::folder(QStringLiteral("/d/"), QStringLiteral("Image"), QStringLiteral("id"), name));
}

void tst_DataTree::plainNamesStay_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("id") << QStringLiteral("ZEL-0042");
    QTest::newRow("chinese") << QStringLiteral("园区大门");
    QTest::newRow("dots inside") << QStringLiteral("10.0.0.1");
    QTest::newRow("leading dot") << QStringLiteral(".hidden");
    QTest::newRow("like a device") << QStringLiteral("COM10");
}

void tst_DataTree::plainNamesStay() {
    QFETCH(QString, name);
    QCOMPARE(dataTree::pathComponent(name).value_or(QString()), name);
}

void tst_DataTree::foldersStandInTheirPlace() {
    const QString drive = QStringLiteral("D:/");
    QCOMPARE(*dataTree::folder(drive, QStringLiteral("Image"), QStringLiteral("id"), QStringLiteral("2024-03-05")),
             QStringLiteral("D:/ZEL/id/Image/2024-03-05/"));
    QCOMPARE(*dataTree::folder(drive, QStringLiteral("Inputdata"), QStringLiteral("id"), QStringLiteral("x")),
             QStringLiteral("D:/ZEL/id/Inputdata/"));
    const QString before = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
    const QString made = *dataTree::folder(drive, QStringLiteral("Capture"), QStringLiteral("id"), QString());
    const QString after = QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
    QVERIFY(made == QStringLiteral("D:/ZEL/id/Capture/%1/").arg(before) ||
            made == QStringLiteral("D:/ZEL/id/Capture/%1/").arg(after));
}

QTEST_GUILESS_MAIN(tst_DataTree)
#include "tst_DataTree.moc"
