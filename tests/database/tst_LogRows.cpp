#include "database/LogRows.h"

#include <QtTest>

/// Rows of texts kept closely: what goes in comes out, whatever its length.
class tst_LogRows final : public QObject {
    Q_OBJECT
private slots:
    void texts_data();
    void texts();
    void manyRowsStayWhereTheyAre();
};

void tst_LogRows::texts_data() {
    QTest::addColumn<QStringList>("row");
    QTest::newRow("plain") << QStringList{"1", "相机", "2024-01-01 00:00:00"};
    QTest::newRow("empty") << QStringList{"", "", ""};
    QTest::newRow("empty at the end") << QStringList{"a", "", ""};
    QTest::newRow("zero inside") << QStringList{QString(QChar(0)) + "b", "", "c"};
    QTest::newRow("surrogates") << QStringList{QString::fromUtf8("\xF0\x9F\x93\xB7"), QString(QChar(0xD800)), "x"};
    QTest::newRow("longer than a block") << QStringList{"a", QString(600000, 'x'), QString(3, 'y')};
}

void tst_LogRows::texts() {
    QFETCH(QStringList, row);
    LogRows rows(3);
    for (int n = 0; n < 3; ++n)
        rows.append({row[0], row[1], row[2]});
    QCOMPARE(rows.rowCount(), 3);
    for (int n = 0; n < 3; ++n)
        QCOMPARE(rows.row(n), row);
}

void tst_LogRows::manyRowsStayWhereTheyAre() {
    LogRows rows(2);
    rows.append({u"first", u"row"});
    const QStringView first = rows.cell(0, 0);
    for (int n = 1; n < 200000; ++n)
        rows.append({QString::number(n), u"text"});
    QCOMPARE(first.utf16(), rows.cell(0, 0).utf16());
    for (const int n : {1, 65535, 65536, 131072, 199999})
        QCOMPARE(rows.row(n), (QStringList{QString::number(n), "text"}));
    const LogRows moved = std::move(rows);
    QCOMPARE(moved.cell(0, 0).toString(), QStringLiteral("first"));
}

QTEST_GUILESS_MAIN(tst_LogRows)
#include "tst_LogRows.moc"
