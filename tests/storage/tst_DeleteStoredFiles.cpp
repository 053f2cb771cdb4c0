#include "platform/RawFile.h"
#include "storage/StoredFilesTest.h"

#include <QApplication>
#include <QDialog>
#include <QProgressBar>

#include <filesystem>

using corvanta::platform::RawFile;

/// Deleting files from the page: what is asked, and what stays.
class tst_DeleteStoredFiles final : public StoredFilesTest {
    Q_OBJECT
private slots:
    void agreedOrNot_data();
    void agreedOrNot();
    void vanished();
    void oneThatIsWrittenStays();
};

void tst_DeleteStoredFiles::agreedOrNot_data() {
    QTest::addColumn<bool>("yes");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<int>("rows");
    QTest::newRow("one, agreed") << true << false << 1;
    QTest::newRow("one, not agreed") << false << true << 1;
    QTest::newRow("two, agreed") << true << true << 2;
    QTest::newRow("two, not agreed") << false << false << 2;
}

void tst_DeleteStoredFiles::agreedOrNot() {
    QFETCH(bool, yes);
    QFETCH(bool, byKey);
    QFETCH(int, rows);
    QStringList paths;
    for (const char* const time : {"10:00:00", "11:00:00", "12:00:00"})
        paths.prepend(add("A", "Capture", today(time), ".jpg"));
    show();
    clickRow(0);
    if (rows == 2)
        clickRow(1, Qt::ControlModifier);
    QString question;
    answer([&question, yes](QWidget* dialog) {
        question = dialog->findChild<QLabel*>(QStringLiteral("tipText"))->text();
        if (yes)
            dialog->findChild<QAbstractButton*>(QStringLiteral("tipOk"))->click();
        else
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return); // the answer that harms nothing
    });
    if (byKey)
        QTest::keyClick(&table(), Qt::Key_Delete);
    else
        press("fileDelete");
    QVERIFY(answered_);
    QVERIFY(question.contains(rows == 1 ? QFileInfo(paths[0]).fileName() : QStringLiteral("2 个文件")));
    QTRY_COMPARE(column(0).size(), yes ? 3 - rows : 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(QFileInfo::exists(paths[i]), !yes || i >= rows);
    QVERIFY(!part<QProgressBar>("filesProgress").isVisible());
    if (yes)
        QVERIFY(info().contains(QStringLiteral("已删除 %1").arg(rows)));
}

void tst_DeleteStoredFiles::vanished() {
    const QString path = add("A", "Capture", today("10:00:00"), ".jpg");
    show();
    clickRow(0);
    QVERIFY(QFile::remove(path));
    answer([](QWidget* dialog) { dialog->findChild<QAbstractButton*>(QStringLiteral("tipOk"))->click(); });
    press("fileDelete");
    QTRY_COMPARE(column(0).size(), 0);
    QVERIFY(part<QLabel>("filesEmpty").isVisible());
}

void tst_DeleteStoredFiles::oneThatIsWrittenStays() {
    const QString path = add("A", "LocalRecord", today("10:00:00"), ".avi");
    add("A", "LocalRecord", today("11:00:00"), ".avi");
    const auto writer = RawFile::open(std::filesystem::path(path.toStdU16String()), RawFile::Access::Update);
    QVERIFY(writer != nullptr);
    show();
    table().selectAll();
    QString said;
    answer([this, &said](QWidget* dialog) {
        answer([&said](QWidget* tip) {
            said = tip->findChild<QLabel*>(QStringLiteral("tipText"))->text();
            static_cast<QDialog*>(tip)->accept();
        });
        dialog->findChild<QAbstractButton*>(QStringLiteral("tipOk"))->click();
    });
    press("fileDelete");
    QTRY_VERIFY(!said.isEmpty());
    QVERIFY(said.contains(QStringLiteral("正在写入")));
    QVERIFY(QFileInfo::exists(path));
    QCOMPARE(column(0).size(), 1);
}

QTEST_MAIN(tst_DeleteStoredFiles)
#include "tst_DeleteStoredFiles.moc"
