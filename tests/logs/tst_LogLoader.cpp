#include "database/SqlHelp.h"
#include "logs/LogLoader.h"
#include "support/SqliteShell.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

/// A long answer, read between other events.
class tst_LogLoader final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void readsEverythingInPieces();
    void stopKeepsWhatIsThere();
    void aNewQueryTakesThePlace();
    void failedQueryEndsWithoutRows();

private:
    static constexpr int Rows = 400000;
    LogQuery query(bool allTime = true) { return database_->startLogQuery(0, {}, {}, allTime, -1, -1); }

    QTemporaryDir dir_;
    std::unique_ptr<SqlHelp> database_;
};

void tst_LogLoader::init() {
    if (database_ != nullptr)
        return;
    const QString file = dir_.filePath(QStringLiteral("dataBase.db"));
    database_ = std::make_unique<SqlHelp>(file);
    sqliteShell::run(file, QStringLiteral("with recursive n(i) as (select 1 union all select i+1 from n where i<%1) "
                                          "insert into fireLogs(fireDev) select 'd'||i from n;")
                               .arg(Rows));
}

void tst_LogLoader::readsEverythingInPieces() {
    LogLoader loader;
    QSignalSpy progress(&loader, &LogLoader::sigProgress);
    QSignalSpy finished(&loader, &LogLoader::sigFinished);
    int others = 0; // events of somebody else
    QTimer other;
    connect(&other, &QTimer::timeout, this, [&others] { ++others; });
    other.start(0);
    loader.start(query());
    QVERIFY(loader.isRunning());
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(finished[0][0].toBool());
    QVERIFY(!loader.isRunning());
    QVERIFY(progress.size() >= 1);
    QVERIFY(others > progress.size());
    const LogRows rows = loader.takeRows();
    QCOMPARE(rows.rowCount(), Rows);
    QCOMPARE(rows.row(Rows - 1).mid(0, 2), (QStringList{QString::number(Rows), QStringLiteral("d%1").arg(Rows)}));
}

void tst_LogLoader::stopKeepsWhatIsThere() {
    LogLoader loader;
    QSignalSpy progress(&loader, &LogLoader::sigProgress);
    QSignalSpy finished(&loader, &LogLoader::sigFinished);
    loader.start(query());
    QTRY_VERIFY(progress.size() >= 1);
    loader.stop();
    loader.stop();
    QCOMPARE(finished.size(), 1);
    QVERIFY(!finished[0][0].toBool());
    const int count = progress.last()[0].toInt();
    const int rows = loader.takeRows().rowCount();
    QVERIFY(rows >= count && rows < Rows);
    QCOMPARE(finished.size(), 1);
}

void tst_LogLoader::aNewQueryTakesThePlace() {
    LogLoader loader;
    QSignalSpy finished(&loader, &LogLoader::sigFinished);
    loader.start(query());
    QCoreApplication::processEvents();
    loader.start(query());
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(loader.takeRows().rowCount(), Rows);
}

void tst_LogLoader::failedQueryEndsWithoutRows() {
    LogLoader loader;
    QSignalSpy finished(&loader, &LogLoader::sigFinished);
    loader.start(query(false));
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(loader.takeRows().rowCount(), 0);
}

QTEST_GUILESS_MAIN(tst_LogLoader)
#include "tst_LogLoader.moc"
