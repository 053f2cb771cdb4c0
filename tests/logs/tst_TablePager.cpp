#include "logs/TablePager.h"

#include <QtTest>

/// The pages of a table: a table's size, what is asked of it, what is then shown.
class tst_TablePager final : public QObject {
    Q_OBJECT
private slots:
    void steps_data();
    void steps();
};

void tst_TablePager::steps_data() {
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("steps"); ///< nN: N rows a page, pN: page N; f, <, >, l: first, previous, next, last
    QTest::addColumn<QString>("shown"); ///< page/pages begin..end
    const auto row = [](const char* name, int rows, const char* steps, const char* shown) {
        QTest::newRow(name) << rows << steps << shown;
    };
    row("nothing set", 45, "", "1/1 0..45");
    row("a remainder", 45, "n20", "1/3 0..20");
    row("its last page", 45, "n20 p3", "3/3 40..45");
    row("no remainder", 40, "n20 l", "2/2 20..40");
    row("one page, just full", 20, "n20 l", "1/1 0..20");
    row("one row more", 21, "n20 l", "2/2 20..21");
    row("next behind the end", 45, "n20 l >", "3/3 40..45");
    row("previous before the beginning", 45, "n20 <", "1/3 0..20");
    row("there and back", 45, "n20 > > <", "2/3 20..40");
    row("first", 45, "n20 l f", "1/3 0..20");
    row("no such page", 45, "n20 p2 p0 p4 p-1", "2/3 20..40");
    row("other size begins anew", 45, "n20 p3 n10", "1/5 0..10");
    row("all on one", 45, "n20 p3 n0", "1/1 0..45");
    row("fewer than none", 45, "n20 n-5", "1/1 0..45");
    row("no pages among all", 45, "n0 p1 >", "1/1 0..45");
    row("more than there are", 45, "n2147483647", "1/1 0..45");
    row("no rows", 0, "n20 p1 > l f", "1/1 0..0");
    row("close to the largest number", 2147483647, "n2147483646 l", "2/2 2147483646..2147483647");
}

void tst_TablePager::steps() {
    QFETCH(int, rows);
    QFETCH(QString, steps);
    QFETCH(QString, shown);
    TablePager pager;
    pager.setRowCount(7); // of an earlier table
    pager.setPageRows(2);
    pager.setRowCount(rows);
    for (const QString& step : steps.split(' ', Qt::SkipEmptyParts)) {
        const int number = step.mid(1).toInt();
        switch (step[0].toLatin1()) {
        case 'n':
            pager.setPageRows(number);
            break;
        case 'p':
            pager.showPage(number);
            break;
        case 'f':
            pager.showFirst();
            break;
        case 'l':
            pager.showLast();
            break;
        case '<':
            pager.showPrevious();
            break;
        default:
            pager.showNext();
        }
    }
    QCOMPARE(QStringLiteral("%1/%2 %3..%4")
                 .arg(pager.currentPage())
                 .arg(pager.pageCount())
                 .arg(pager.beginRow())
                 .arg(pager.endRow()),
             shown);
}

QTEST_GUILESS_MAIN(tst_TablePager)
#include "tst_TablePager.moc"
