#include "base/DataTree.h"
#include "storage/RecordingStorage.h"
#include "storage/StoredFilesTest.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QHeaderView>

#include <algorithm>

namespace storage = corvanta::storage;

/// The list of files: its order, its names, and how many it can be.
class tst_FileTable final : public StoredFilesTest {
    Q_OBJECT
private slots:
    void sorts_data();
    void sorts();
    void widthsAreRemembered();
    void hostileNames();
    void manyRows();
};

void tst_FileTable::sorts_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("first"); ///< the files' sizes as they come after one click
    QTest::newRow("time") << int(FileTableModel::TimeColumn) << QStringList{"1 B", "30 B", "2 B"};
    QTest::newRow("device") << int(FileTableModel::DeviceColumn) << QStringList{"30 B", "1 B", "2 B"};
    QTest::newRow("kind") << int(FileTableModel::KindColumn) << QStringList{"2 B", "1 B", "30 B"};
    QTest::newRow("size") << int(FileTableModel::SizeColumn) << QStringList{"1 B", "2 B", "30 B"};
}

void tst_FileTable::sorts() {
    QFETCH(int, column);
    QFETCH(QStringList, first);
    add("B", "Image", today("10:00:00"), ".jpg", 1);
    add("A", "LocalRecord", today("11:00:00"), ".avi", 30);
    add("走", "Capture", today("12:00:00"), ".jpg", 2);
    show();
    clickRow(1);
    const QString current = table().currentIndex().data().toString();
    clickHeader(column);
    if (column == FileTableModel::DeviceColumn)
        QCOMPARE(this->column(column), (QStringList{"大门", "走", "走廊 2"}));
    else
        QCOMPARE(this->column(FileTableModel::SizeColumn), first);
    // Who had chosen a file still has it.
    QCOMPARE(table().model()->index(table().currentIndex().row(), 0).data().toString(), current);
    const QStringList ascending = this->column(FileTableModel::SizeColumn);
    clickHeader(column);
    QStringList descending = this->column(FileTableModel::SizeColumn);
    std::reverse(descending.begin(), descending.end());
    QCOMPARE(descending, ascending);
}

void tst_FileTable::widthsAreRemembered() {
    add("A", "Capture", today("10:00:00"), ".jpg");
    show();
    table().horizontalHeader()->resizeSection(FileTableModel::NameColumn, 333);
    page_ = std::make_unique<StoredFilesPage>(manager_->context(), manager_->storage());
    QCOMPARE(table().columnWidth(FileTableModel::NameColumn), 333);
}

void tst_FileTable::hostileNames() {
#ifdef Q_OS_WIN
    QSKIP("such names cannot be there");
#endif
    const QString id = QStringLiteral("<img src=x> %1 %2");
    const QString path = add(id, "Capture", today("10:00:00"), "<b>%1\n\u202Egnp.exe.jpg", 0);
    show();
    const QString name = column(FileTableModel::NameColumn).value(0);
    QVERIFY(name.contains(QStringLiteral("<b>%1")));
    QVERIFY(!name.contains('\n') && !name.contains(QChar(0x202e)));
    QCOMPARE(column(FileTableModel::DeviceColumn), QStringList{id});
    const auto tip = table().model()->index(0, FileTableModel::NameColumn).data(Qt::ToolTipRole).toString();
    QVERIFY(!tip.contains(QStringLiteral("<b>%1")) && tip.contains(QStringLiteral("&lt;b&gt;")));
    clickRow(0);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), path);
    answer([](QWidget* dialog) {
        const auto& text = *dialog->findChild<QLabel*>(QStringLiteral("pictureText"));
        QCOMPARE(text.textFormat(), Qt::PlainText);
        QVERIFY(text.text().contains(QStringLiteral("<img src=x> %1 %2")));
        static_cast<QDialog*>(dialog)->reject();
    });
    QTest::keyClick(&table(), Qt::Key_Return);
    QVERIFY(answered_);
    activate();
    answer([](QWidget* dialog) {
        QVERIFY(!dialog->findChild<QLabel*>(QStringLiteral("tipText"))->text().contains("%1\n\u202E"));
        dialog->findChild<QAbstractButton*>(QStringLiteral("tipOk"))->click();
    });
    QTest::keyClick(&table(), Qt::Key_Delete);
    QTRY_VERIFY(!QFileInfo::exists(path));
}

void tst_FileTable::manyRows() {
    constexpr int Rows = 200000;
    std::vector<storage::FileRecord> records;
    const QDateTime begin(QDate(2024, 3, 5), QTime(0, 0));
    for (int i = 0; i < Rows; ++i) {
        storage::FileRecord record;
        record.time = begin.addSecs((i * 7919LL) % Rows);
        record.name = record.time.toString(QStringLiteral("yyyyMMddhhmmss")) + QStringLiteral(".jpg");
        record.path = QStringLiteral("/d/") + record.name;
        record.size = (i * 104729LL) % 1000003;
        record.kind = corvanta::dataTree::kindsByDay()[i % 2];
        record.ipncid = QString::number(i % 64);
        records.push_back(record);
    }
    FileTableView view([](const QString& id) { return id; });
    view.resize(600, 400);
    view.show(std::make_shared<const storage::FoundFiles>(std::move(records)));
    QCOMPARE(view.model()->rowCount(), Rows);
    for (int column = 0; column < FileTableModel::ColumnCount; ++column) {
        for (const auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            view.sortByColumn(column, order);
            QCOMPARE(view.model()->rowCount(), Rows);
            std::vector<bool> seen(Rows, false);
            for (int row = 0; row < Rows; ++row)
                seen[std::size_t(view.files().fileOf(row))] = true;
            QVERIFY(std::all_of(seen.begin(), seen.end(), [](bool is) { return is; }));
            QCOMPARE(view.files().rowOf(view.files().fileOf(12345)), 12345);
        }
    }
    view.selectAll();
    QCOMPARE(view.selectedFiles().size(), std::size_t(Rows));
}

QTEST_MAIN(tst_FileTable)
#include "tst_FileTable.moc"
