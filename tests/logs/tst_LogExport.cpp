#include "logs/LogExport.h"
#include "logs/TextExport.h"
#include "logs/XlsWorkbook.h"
#include "platform/CompoundFile.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>

#include <csignal>

using corvanta::logs::Table;
using Format = LogExport::Format;
using State = LogExport::State;

namespace {

std::shared_ptr<Table> table(const QStringList& header, const QList<QStringList>& rows) {
    auto result = std::make_shared<Table>(Table{header, LogRows(header.size())});
    for (const QStringList& row : rows)
        result->rows.append({row.begin(), row.end()});
    return result;
}

std::shared_ptr<Table> numberedTable(int rows) {
    auto result = std::make_shared<Table>(Table{{"编号", "text"}, LogRows(2)});
    for (int n = 1; n <= rows; ++n) {
        const QString number = QString::number(n);
        const QString text = QStringLiteral("第 %1 行").arg(n % 1000);
        result->rows.append({number, text});
    }
    return result;
}

State finish(LogExport& job) {
    [&job] {
        QTRY_VERIFY_WITH_TIMEOUT(job.state() != State::Running, 60000);
    }();
    return job.state();
}

} // namespace

/// What exports write, read by a reader of workbooks that is not ours, and what they leave when they do not end well.
class tst_LogExport final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void text();
    void workbookCells_data();
    void workbookCells();
    void workbookWithoutRows();
    void textsOverRecordEnds_data();
    void textsOverRecordEnds();
    void sheets_data();
    void sheets();
    void spreadsheetProgramReadsIt();
    void existingFileIsReplacedAtTheEnd();
    void placesThatRefuse_data();
    void placesThatRefuse();
    void fullDisk_data();
    void fullDisk();
    void cancelLeavesNothing_data();
    void cancelLeavesNothing();
    void writersEndWhenTold();

private:
    QString file() const { return dir_->filePath(QStringLiteral("日志 1.out")); }
    QStringList left() const { return QDir(dir_->path()).entryList(QDir::Files | QDir::Hidden); }
    State write(const std::shared_ptr<Table>& what, Format format) {
        LogExport job(what, format, file());
        return finish(job);
    }
    QJsonObject workbook(const std::shared_ptr<Table>& what);

    std::unique_ptr<QTemporaryDir> dir_;
};

void tst_LogExport::init() {
    dir_ = std::make_unique<QTemporaryDir>();
}

QJsonObject tst_LogExport::workbook(const std::shared_ptr<Table>& what) {
    if (write(what, Format::Workbook) != State::Done)
        return {};
    QProcess reader;
    reader.start(QStringLiteral(READ_XLS), {file()});
    if (!reader.waitForFinished(120000) || reader.exitCode() != 0)
        qWarning() << reader.readAllStandardError();
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}

void tst_LogExport::text() {
    QCOMPARE(write(table({"编号", "b"}, {{"1", "x , y"}, {"", "=1+1"}, {"3", "相机"}}), Format::Text), State::Done);
    QFile result(file());
    QVERIFY(result.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(result.readAll()), QStringLiteral("编号 , b,\n1 , x , y,\n , =1+1,\n3 , 相机,\n"));
    QCOMPARE(left(), QStringList{"日志 1.out"});
}

void tst_LogExport::workbookCells_data() {
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QJsonValue>("read");
    const auto same = [](const char* name, const QString& text) {
        QTest::newRow(name) << text << QJsonValue(text);
    };
    const auto number = [](const char* text, double value) {
        QTest::newRow(text) << text << QJsonValue(value);
    };
    number("7", 7);
    number("-0.5", -0.5);
    number("1e3", 1000);
    number("+12", 12);
    number(" 12 ", 12);
    number("0012", 12);
    number("13800138000", 13800138000.0);
    number("1.7976931348623157e308", 1.7976931348623157e308);
    same("too large", "1e999");
    same("not a number", "nan");
    same("infinite", "-inf");
    same("grouped", "1,234");
    same("hexadecimal", "0x10");
    same("address", "192.168.1.7");
    same("time", "2024-01-02 03:04:05");
    same("formula", "=1+1");
    same("command", "=cmd|' /C calc'!A0");
    same("Latin", QString::fromUtf8("Café ÿ"));
    same("beyond Latin", QString::fromUtf8("Āb 相机"));
    same("beyond the basic plane", QString::fromUtf8("\xF0\x9F\x93\xB7"));
    same("control characters", QString("a\x01\x1f\n\r\tb\x7f"));
    same("blank", " ");
    same("other digits", QString::fromUtf8("１２"));
    QTest::newRow("empty") << "" << QJsonValue();
    same("longest", QString(32767, 'x'));
    same("longest, wide", QString(32767, QChar(0x4E00)));
    const QString mark = QString::fromUtf16(XlsWorkbook::CutMark.data());
    QTest::newRow("too long") << QString(32768, 'x') << QJsonValue(QString(32767 - mark.size(), 'x') + mark);
    QTest::newRow("far too long") << QString(40000, QChar(0x4E00))
                                  << QJsonValue(QString(32767 - mark.size(), QChar(0x4E00)) + mark);
    // 32,760 units are kept, of which the last is the first half of a pair.
    const QString pair = QString::fromUtf8("\xF0\x9F\x93\xB7");
    const QString before(32767 - mark.size() - 1, 'x');
    QTest::newRow("cut at a pair") << before + pair.repeated(10) << QJsonValue(before + mark);
}

void tst_LogExport::workbookCells() {
    QFETCH(QString, cell);
    QFETCH(QJsonValue, read);
    const QJsonObject sheets = workbook(table({"头", cell}, {{cell, "1"}, {"中间", cell}}));
    QCOMPARE(sheets.keys(), QStringList{"sheet1"});
    const QJsonArray rows = sheets["sheet1"].toArray();
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows[0].toArray()[0].toString(), QStringLiteral("头"));
    QVERIFY(rows[0].toArray()[1].isString() || cell.isEmpty()); // the header is texts
    QCOMPARE(rows[1].toArray()[0], read);
    QCOMPARE(rows[1].toArray()[1], QJsonValue(1));
    QCOMPARE(rows[2].toArray()[0], QJsonValue("中间"));
    if (!cell.isEmpty())
        QCOMPARE(rows[2].toArray()[1], read);
}

void tst_LogExport::workbookWithoutRows() {
    const QJsonObject sheets = workbook(table({"a", "b"}, {}));
    QCOMPARE(sheets["sheet1"].toArray(), (QJsonArray{QJsonArray{"a", "b"}}));
}

void tst_LogExport::textsOverRecordEnds_data() {
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("wide");
    // A record has 8,224 bytes. Lengths round it and its half meet its end with a text's length, form and units.
    for (const int length : {4100, 4104, 4105, 4106, 4107, 8205, 8208, 8209, 8210, 8211, 8212, 8213, 20000}) {
        QTest::addRow("%d", length) << length << false;
        QTest::addRow("%d wide", length) << length << true;
    }
}

void tst_LogExport::textsOverRecordEnds() {
    QFETCH(int, length);
    QFETCH(bool, wide);
    QList<QStringList> rows;
    for (int n = 0; n < 12; ++n)
        rows += {QString(length - n, wide ? QChar(0x4E00 + n) : QChar('a' + n)),
                 n % 2 == 0 ? QString("Latin%1").arg(n) : QString("混合%1").arg(n)};
    const QJsonArray read = workbook(table({"a", "b"}, rows))["sheet1"].toArray();
    QCOMPARE(read.size(), rows.size() + 1);
    for (int n = 0; n < rows.size(); ++n)
        QCOMPARE(read[n + 1].toArray(), (QJsonArray{rows[n][0], rows[n][1]}));
}

void tst_LogExport::sheets_data() {
    QTest::addColumn<int>("rows");
    QTest::addColumn<QList<int>>("sheetRows");
    QTest::newRow("full") << 65535 << QList<int>{65536};
    QTest::newRow("one too many") << 65536 << QList<int>{65536, 2};
    QTest::newRow("three") << 131071 << QList<int>{65536, 65536, 2};
}

void tst_LogExport::sheets() {
    QFETCH(int, rows);
    QFETCH(QList<int>, sheetRows);
    const QJsonObject sheets = workbook(numberedTable(rows));
    QCOMPARE(sheets.size(), sheetRows.size());
    int number = 0;
    for (int sheet = 0; sheet < sheetRows.size(); ++sheet) {
        const QJsonArray read = sheets[QStringLiteral("sheet%1").arg(sheet + 1)].toArray();
        QCOMPARE(read.size(), sheetRows[sheet]);
        QCOMPARE(read[0].toArray(), (QJsonArray{"编号", "text"}));
        for (int row = 1; row < read.size(); ++row) {
            ++number;
            if (read[row].toArray() != QJsonArray{number, QStringLiteral("第 %1 行").arg(number % 1000)})
                QFAIL(qPrintable(QStringLiteral("row %1 of sheet %2").arg(row).arg(sheet)));
        }
    }
    QCOMPARE(number, rows);
}

// A whole spreadsheet program, where there is one.
void tst_LogExport::spreadsheetProgramReadsIt() {
    const QString program = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (program.isEmpty())
        QSKIP("no spreadsheet program here");
    QCOMPARE(write(table({"编号", "信息"}, {{"1", "=1+1"}, {"2.5", QString(20000, 'x')}, {"3", "相机"}}),
                   Format::Workbook),
             State::Done);
    QVERIFY(QFile::rename(file(), dir_->filePath("a.xls")));
    QProcess converter;
    converter.setWorkingDirectory(dir_->path());
    converter.start(program, {"-env:UserInstallation=file://" + dir_->filePath("profile"), "--headless",
                              "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76", "a.xls"});
    QVERIFY(converter.waitForFinished(120000));
    QFile result(dir_->filePath("a.csv"));
    QVERIFY2(result.open(QIODevice::ReadOnly), converter.readAllStandardError().constData());
    QCOMPARE(QString::fromUtf8(result.readAll()),
             QStringLiteral("编号,信息\n1,=1+1\n2.5,%1\n3,相机\n").arg(QString(20000, 'x')));
}

void tst_LogExport::existingFileIsReplacedAtTheEnd() {
    QFile old(file());
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    QCOMPARE(write(table({"a"}, {{"new"}}), Format::Text), State::Done);
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("a,\nnew,\n"));
    QCOMPARE(left().size(), 1);
}

void tst_LogExport::placesThatRefuse_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("format");
    for (const Format format : {Format::Text, Format::Workbook}) {
        const char* const kind = format == Format::Text ? "text" : "workbook";
        QTest::addRow("no such folder, %s", kind) << "missing/a" << int(format);
        QTest::addRow("a folder has the name, %s", kind) << "folder" << int(format);
        QTest::addRow("no new files, %s", kind) << "/proc/corvanta" << int(format);
    }
}

void tst_LogExport::placesThatRefuse() {
    QFETCH(QString, name);
    QFETCH(int, format);
    QDir(dir_->path()).mkpath(QStringLiteral("folder/inside"));
    LogExport job(numberedTable(10), Format(format), QDir(dir_->path()).filePath(name));
    QCOMPARE(finish(job), State::Failed);
    QCOMPARE(left(), QStringList());
    QVERIFY(QFileInfo::exists(dir_->filePath(QStringLiteral("folder/inside"))));
}

void tst_LogExport::fullDisk_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("limit"); ///< bytes that a file may have
    for (const int limit : {0, 1000, 70000, 300000}) {
        QTest::addRow("text, %d bytes", limit) << int(Format::Text) << limit;
        QTest::addRow("workbook, %d bytes", limit) << int(Format::Workbook) << limit;
    }
}

// Writing fails after some bytes, as on a disk without room. An old file of the name stays as it is.
void tst_LogExport::fullDisk() {
    QFETCH(int, format);
    QFETCH(int, limit);
    QFile old(file());
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.close();
    const auto what = numberedTable(30000);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
    rlimit small = usual;
    small.rlim_cur = static_cast<rlim_t>(limit);
    setrlimit(RLIMIT_FSIZE, &small);
    const State state = write(what, Format(format));
    setrlimit(RLIMIT_FSIZE, &usual);
    QCOMPARE(state, State::Failed);
    QCOMPARE(left(), QStringList{"日志 1.out"});
    QCOMPARE(old.size(), 0);
}

void tst_LogExport::cancelLeavesNothing_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<double>("part"); ///< of the steps, after which it is cancelled
    QTest::addColumn<bool>("byEnd");  ///< by ending the job, not by asking for it
    for (const double part : {0.0, 0.3, 0.7}) {
        QTest::addRow("text at %.1f", part) << int(Format::Text) << part << false;
        QTest::addRow("workbook at %.1f", part) << int(Format::Workbook) << part << false;
        QTest::addRow("workbook ended at %.1f", part) << int(Format::Workbook) << part << true;
    }
}

void tst_LogExport::cancelLeavesNothing() {
    QFETCH(int, format);
    QFETCH(double, part);
    QFETCH(bool, byEnd);
    const auto what = numberedTable(300000);
    State state = State::Cancelled;
    {
        LogExport job(what, Format(format), file());
        while (job.state() == State::Running && job.steps() < part * job.totalSteps())
            std::this_thread::yield();
        if (!byEnd) {
            job.cancel();
            state = finish(job);
        }
    }
    // It may have been quicker than its cancelling; then the file is there under its name.
    if (state == State::Done || (byEnd && !left().isEmpty()))
        QCOMPARE(left(), QStringList{"日志 1.out"});
    else
        QCOMPARE(left(), QStringList());
}

// Whoever says that it is not to go on is asked no more, and nothing more is written.
void tst_LogExport::writersEndWhenTold() {
    struct Sink final : corvanta::platform::CompoundFile {
        bool write(const void*, std::size_t size) override {
            bytes += size;
            return true;
        }
        bool close() override { return true; }
        std::size_t bytes = 0;
    };
    const auto what = numberedTable(20000);
    QList<int> asked;
    const auto goOn = [&asked](int rows) {
        asked += rows;
        return asked.size() < 3;
    };
    QByteArray text;
    QBuffer buffer(&text);
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QVERIFY(!corvanta::logs::writeText(*what, buffer, goOn));
    QCOMPARE(asked, (QList<int>{0, 512, 1024}));
    QCOMPARE(text.count('\n'), 1026);

    XlsWorkbook book({u"a"});
    for (int n = 0; n < 20000; ++n)
        book.addNumber(n);
    asked.clear();
    Sink sink;
    QVERIFY(!book.write(sink, goOn));
    QCOMPARE(asked, (QList<int>{0, 512, 1024}));
    QVERIFY(sink.bytes < 100000);
}

QTEST_GUILESS_MAIN(tst_LogExport)
#include "tst_LogExport.moc"
