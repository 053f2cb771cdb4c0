#include "app/AppManager.h"
#include "base/ui/PageBar.h"
#include "base/ui/Style.h"
#include "database/SqlHelp.h"
#include "logs/ui/Check_Log_Widget.h"
#include "logs/ui/ExportDialog.h"
#include "logs/ui/LogTableView.h"
#include "logs/ui/serchFormLog.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"
#include "support/SqliteShell.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

/// The log page over a real database, driven as an operator does.
class tst_LogPage final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { corvanta::applyStyle(); }
    void init();
    void cleanup();
    void firstVisitShowsTheAlarms();
    void tabsSearchTheirLog();
    void formSearchesItsLog();
    void rangeFilters_data();
    void rangeFilters();
    void pages();
    void rowsOfAPage();
    void stoppedSearchShowsWhatWasRead();
    void searchWhileSearching();
    void menuHidesAndRestores();
    void widthsAreRemembered();
    void calendarKeepsTheTimeOfDay();
    void copiesRows();
    void exports_data();
    void exports();
    void exportCanBeCalledOff_data();
    void exportCanBeCalledOff();
    void existingFileIsAskedFor();
    void everyControlHasNames();
    void fitsTheSmallestWindow();

private:
    void add(int type, int rows) {
        static const std::array<const char*, 4> inserts{
            "fireLogs(fireDev,startDate,type,context) select 'cam'||i,'2024-01-01T00:00:'||printf('%02d',i%60)||"
            "'.000','t','c'||i",
            "loginLogs(loginUser,loginDate,startDate) select 'u'||i,'2024-01-01T00:00:00.000','2024-01-01T00:00:'||"
            "printf('%02d',i%60)||'.000'",
            "operatelogs(user,startDate,type,context,context1) select 'u'||i,'2024-01-01T00:00:'||printf('%02d',i%60)"
            "||'.000','t','c'||i,'d'",
            "errlogs(user,startDate,type,context) select 'u'||i,'2024-01-01T00:00:'||printf('%02d',i%60)||'.000','t',"
            "'c'||i"};
        sqliteShell::run(
            dir_->filePath("dataBase.db"),
            QStringLiteral("with recursive n(i) as (select 1 union all select i+1 from n where i<%1) insert "
                           "into %2 from n;")
                .arg(rows)
                .arg(inserts[std::size_t(type)]));
    }
    void show();
    void search();
    template <typename T>
    T& part(const char* name) const {
        return *page_->findChild<T*>(QLatin1String(name));
    }
    void click(const char* name) { part<QAbstractButton>(name).click(); }
    QStringList ids() const {
        QStringList result;
        for (int row = 0; row < table().model()->rowCount(); ++row)
            result += table().model()->index(row, 0).data().toString();
        return result;
    }
    QStringList header() const {
        QStringList result;
        for (int column = 0; column < table().model()->columnCount(); ++column)
            result += table().model()->headerData(column, Qt::Horizontal).toString();
        return result;
    }
    LogTableView& table() const { return page_->table(); }
    QString info() const { return part<QLabel>("pageInfo").text(); }
    /// Deals with the modal windows to come, one function each; `finished` tells that all were there.
    void answer(std::vector<std::function<void(QWidget*)>> answers);
    static void saveAs(QWidget* chooser, const QString& name);

    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;
    std::unique_ptr<Check_Log_Widget> page_;
    std::vector<std::function<void(QWidget*)>> answers_;
    QTimer answering_;
};

void tst_LogPage::init() {
    sdk_.reset();
    dir_ = std::make_unique<QTemporaryDir>();
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    page_ = std::make_unique<Check_Log_Widget>(manager_->context());
    page_->resize(700, 400);
}

void tst_LogPage::cleanup() {
    answering_.stop();
    page_.reset();
    manager_.reset();
}

void tst_LogPage::show() {
    QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
    page_->show();
    QVERIFY(QTest::qWaitForWindowExposed(page_.get()));
    QTRY_COMPARE(results.size(), 1);
}

void tst_LogPage::search() {
    QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
    click("searchButton");
    QTRY_COMPARE(results.size(), 1);
}

void tst_LogPage::answer(std::vector<std::function<void(QWidget*)>> answers) {
    answers_ = std::move(answers);
    answering_.disconnect();
    connect(&answering_, &QTimer::timeout, this, [this, last = QPointer<QWidget>()]() mutable {
        QWidget* const modal = QApplication::activeModalWidget();
        if (modal == nullptr || modal == last || answers_.empty() ||
            modal->objectName() == QLatin1String("ExportProgress"))
            return;
        last = modal;
        const auto next = answers_.front();
        answers_.erase(answers_.begin());
        next(modal);
    });
    answering_.start(5);
}

void tst_LogPage::saveAs(QWidget* chooser, const QString& name) {
    auto* const files = chooser->findChild<QFileDialog*>();
    files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
    static_cast<QDialog*>(files)->accept();
}

void tst_LogPage::firstVisitShowsTheAlarms() {
    add(SqlHelp::FireLog, 3);
    show();
    QCOMPARE(ids(), (QStringList{"1", "2", "3"}));
    QCOMPARE(header(), (QStringList{"编号", "报警设备ID/IP", "报警时间", "报警类型", "报警信息"}));
    QCOMPARE(table().model()->index(1, 2).data().toString(), QStringLiteral("2024-01-01 00:00:02"));
    QCOMPARE(info(), QStringLiteral("共 3 条"));
    // Coming back does not search again.
    QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
    page_->hide();
    page_->show();
    QVERIFY(!page_->isSearching());
    QCOMPARE(results.size(), 0);
}

void tst_LogPage::tabsSearchTheirLog() {
    for (int type = 0; type < 4; ++type)
        add(type, type + 1);
    show();
    QStringList tabs;
    auto& bar = part<QTabBar>("logTabs");
    for (int type = 0; type < bar.count(); ++type)
        tabs += bar.tabText(type);
    QCOMPARE(tabs, (QStringList{"报警日志", "登陆日志", "操作日志", "错误日志"}));
    const QList<QStringList> headers{{"编号", "报警设备ID/IP", "报警时间", "报警类型", "报警信息"},
                                     {"编号", "用户登录名", "登入时间", "登出时间"},
                                     {"编号", "操作用户", "操作时间", "操作类型", "操作信息", "附加信息"},
                                     {"编号", "用户名", "发生时间", "错误类型", "错误信息"}};
    for (const int type : {2, 1, 3, 0}) {
        QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
        bar.setCurrentIndex(type);
        QTRY_COMPARE(results.size(), 1);
        QCOMPARE(ids().size(), type + 1);
        QCOMPARE(header(), headers[type]);
        QCOMPARE(part<QComboBox>("logType").currentIndex(), type);
    }
}

void tst_LogPage::formSearchesItsLog() {
    add(SqlHelp::ErrorLog, 2);
    show();
    QSignalSpy tabs(page_.get(), &Check_Log_Widget::sig_setTabPage);
    part<QComboBox>("logType").setCurrentIndex(SqlHelp::ErrorLog);
    QCOMPARE(part<QTabBar>("logTabs").currentIndex(), 0); // until the search
    search();
    QCOMPARE(tabs.size(), 1);
    QCOMPARE(tabs[0][0].toInt(), int(SqlHelp::ErrorLog));
    QCOMPARE(part<QTabBar>("logTabs").currentIndex(), int(SqlHelp::ErrorLog));
    QCOMPARE(ids().size(), 2);
    // The same by keyboard.
    QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
    page_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(page_.get()));
    part<QCheckBox>("allTime").setFocus();
    QTest::keyClick(&part<QCheckBox>("allTime"), Qt::Key_Return);
    QTRY_COMPARE(results.size(), 1);
}

void tst_LogPage::rangeFilters_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("ids");
    QTest::newRow("alarms") << int(SqlHelp::FireLog) << "";
    QTest::newRow("logins") << int(SqlHelp::LoginLog) << "2 3 4";
    QTest::newRow("operations") << int(SqlHelp::OperateLog) << "2 3 4";
    QTest::newRow("errors") << int(SqlHelp::ErrorLog) << "2 3 4";
}

void tst_LogPage::rangeFilters() {
    QFETCH(int, type);
    QFETCH(QString, ids);
    add(type, 9);
    show();
    part<QComboBox>("logType").setCurrentIndex(type);
    part<QCheckBox>("allTime").setChecked(false);
    part<QDateTimeEdit>("startTime").setDateTime(QDateTime(QDate(2024, 1, 1), QTime(0, 0, 1)));
    part<QDateTimeEdit>("endTime").setDateTime(QDateTime(QDate(2024, 1, 1), QTime(0, 0, 5)));
    search();
    QCOMPARE(this->ids().join(' '), ids);
    QCOMPARE(part<QLabel>("logEmpty").isVisible(), ids.isEmpty());
    part<QCheckBox>("allTime").setChecked(true);
    search();
    QCOMPARE(this->ids().size(), 9);
}

void tst_LogPage::pages() {
    add(SqlHelp::FireLog, 45);
    show();
    page_->onPageForm("pageRowCount", 20);
    QCOMPARE(ids().size(), 20);
    QCOMPARE(part<QLabel>("pageCount").text(), QStringLiteral("/ 3"));
    QVERIFY(!part<QToolButton>("previousPage").isEnabled());
    click("lastPage");
    QCOMPARE(ids(), (QStringList{"41", "42", "43", "44", "45"}));
    page_->onPageForm("nextPage", {});
    QCOMPARE(ids().size(), 5);
    QVERIFY(!part<QToolButton>("nextPage").isEnabled());
    click("previousPage");
    QCOMPARE(ids().constFirst(), QStringLiteral("21"));
    click("firstPage");
    page_->onPageForm("prePage", {});
    QCOMPARE(ids().constFirst(), QStringLiteral("1"));
    click("nextPage");
    QCOMPARE(ids().constFirst(), QStringLiteral("21"));
    part<QSpinBox>("pageNumber").setValue(3);
    QCOMPARE(ids().constFirst(), QStringLiteral("41"));
    page_->onPageForm("setPageRow", 99);
    page_->onPageForm("nothing known", 1);
    QCOMPARE(ids().constFirst(), QStringLiteral("41"));
}

void tst_LogPage::rowsOfAPage() {
    add(SqlHelp::FireLog, 130);
    show();
    QCOMPARE(ids().size(), 50);
    auto& rows = part<QComboBox>("pageRows");
    rows.setCurrentIndex(rows.findData(100));
    QCOMPARE(ids().size(), 100);
    search(); // a new search keeps it
    QCOMPARE(ids().size(), 100);
    rows.setCurrentIndex(rows.findData(0));
    QCOMPARE(ids().size(), 130);
    QCOMPARE(part<QLabel>("pageCount").text(), QStringLiteral("/ 1"));
}

void tst_LogPage::stoppedSearchShowsWhatWasRead() {
    show();
    add(SqlHelp::FireLog, 400000);
    QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
    click("searchButton");
    QTRY_VERIFY(info().contains(QStringLiteral("正在读取")) && info() != QStringLiteral("正在读取 0 条..."));
    QVERIFY(!part<QToolButton>("exportButton").isEnabled());
    page_->onPageForm("export", {}); // opens nothing: there is nothing yet
    click("searchButton");           // is "停止" now
    QCOMPARE(results.size(), 1);
    QVERIFY(info().startsWith(QStringLiteral("已停止")));
    const int rows = table().table()->rows.rowCount();
    QVERIFY(rows > 0 && rows < 400000);
    QCOMPARE(ids().size(), 50);
}

void tst_LogPage::searchWhileSearching() {
    show();
    add(SqlHelp::FireLog, 400000);
    add(SqlHelp::ErrorLog, 7);
    QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
    click("searchButton");
    QCoreApplication::processEvents();
    QVERIFY(page_->isSearching());
    part<QTabBar>("logTabs").setCurrentIndex(SqlHelp::ErrorLog);
    QTRY_COMPARE(results.size(), 1);
    QCOMPARE(ids().size(), 7);
    QVERIFY(!page_->isSearching());
    // One that is under way when the page goes ends with it.
    part<QTabBar>("logTabs").setCurrentIndex(SqlHelp::FireLog);
    page_.reset();
}

void tst_LogPage::menuHidesAndRestores() {
    add(SqlHelp::FireLog, 60);
    show();
    QSignalSpy visible(page_.get(), &Check_Log_Widget::sigVisible);
    const auto choose = [this](const QString& text) {
        QTimer::singleShot(0, this, [text] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            for (QAction* const action : menu->actions()) {
                if (action->text() == text)
                    action->trigger();
            }
            menu->close();
        });
        click("logMenu");
    };
    choose(QStringLiteral("查询条件"));
    choose(QStringLiteral("分页栏"));
    choose(QStringLiteral("编号列"));
    QVERIFY(part<QWidget>("searchForm").isHidden());
    QVERIFY(part<QWidget>("pageBar").isHidden());
    QVERIFY(table().isColumnHidden(0));
    QCOMPARE(visible.size(), 1);
    QVERIFY(!visible[0][0].toBool());
    part<QTabBar>("logTabs").setCurrentIndex(SqlHelp::ErrorLog);
    QTRY_VERIFY(!page_->isSearching());
    QVERIFY(table().isColumnHidden(0));
    page_->onPageForm("pageRowCount", 20);
    choose(QStringLiteral("恢复默认布局"));
    QVERIFY(part<QWidget>("searchForm").isVisible());
    QVERIFY(part<QWidget>("pageBar").isVisible());
    QVERIFY(!table().isColumnHidden(0));
}

void tst_LogPage::widthsAreRemembered() {
    add(SqlHelp::FireLog, 3);
    show();
    const int usual = table().columnWidth(2);
    table().horizontalHeader()->resizeSection(2, 333);
    part<QTabBar>("logTabs").setCurrentIndex(SqlHelp::OperateLog);
    QTRY_VERIFY(!page_->isSearching());
    QCOMPARE(table().columnWidth(2), usual);
    page_ = std::make_unique<Check_Log_Widget>(manager_->context()); // as after a restart
    page_->resize(700, 400);
    show();
    QCOMPARE(table().columnWidth(2), 333);
    page_->onDefaultLayout();
    QCOMPARE(table().columnWidth(2), usual);
    search();
    QCOMPARE(table().columnWidth(2), usual);
}

void tst_LogPage::calendarKeepsTheTimeOfDay() {
    show();
    part<QCheckBox>("allTime").setChecked(false);
    auto& start = part<QDateTimeEdit>("startTime");
    start.setDateTime(QDateTime(QDate(2024, 5, 6), QTime(7, 8, 9)));
    click("startTimeCalendar");
    QWidget* const calendar = QApplication::activePopupWidget()->findChild<QWidget*>(QStringLiteral("calendar"));
    QVERIFY(calendar != nullptr);
    QMetaObject::invokeMethod(calendar, "clicked", Q_ARG(QDate, QDate(2024, 5, 20)));
    QCOMPARE(start.dateTime(), QDateTime(QDate(2024, 5, 20), QTime(7, 8, 9)));
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

void tst_LogPage::copiesRows() {
    add(SqlHelp::FireLog, 3);
    show();
    table().selectRow(1);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("2\tcam2\t2024-01-01 00:00:02\tt\tc2"));
}

void tst_LogPage::exports_data() {
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file"); ///< that is there afterwards; empty: none
    QTest::newRow("text") << "txt"
                          << "a.txt"
                          << "a.txt";
    QTest::newRow("upper case") << "txt"
                                << "A.TXT"
                                << "A.TXT";
    QTest::newRow("no suffix") << "txt"
                               << "a"
                               << "a.txt";
    QTest::newRow("other suffix") << "txt"
                                  << "a.xls"
                                  << "a.xls.txt";
    QTest::newRow("workbook") << "xls"
                              << "b.c"
                              << "b.c.xls";
    QTest::newRow("nowhere") << "txt"
                             << "missing/a.txt"
                             << "";
}

void tst_LogPage::exports() {
    QFETCH(QString, format);
    QFETCH(QString, name);
    QFETCH(QString, file);
    add(SqlHelp::FireLog, 120);
    show();
    QString tip;
    answer({[format](QWidget* dialog) {
                QVERIFY(qobject_cast<ExportDialog*>(dialog) != nullptr);
                dialog->findChild<QAbstractButton*>(format + "Format")->click();
                dialog->findChild<QAbstractButton*>("exportOk")->click();
            },
            [this, name](QWidget* chooser) {
                QCOMPARE(chooser->windowTitle(), QStringLiteral("Open File"));
                QCOMPARE(chooser->findChild<QFileDialog*>()->directory().canonicalPath(),
                         QDir(dir_->path()).canonicalPath());
                if (name.contains('/')) { // the folder goes while the dialog is open
                    QVERIFY(QDir(dir_->path()).mkdir("missing"));
                    saveAs(chooser, dir_->filePath(name));
                    QVERIFY(QDir(dir_->path()).rmdir("missing"));
                    return;
                }
                saveAs(chooser, dir_->filePath(name));
            },
            [&tip](QWidget* dialog) {
                tip = dialog->windowTitle() + '|' + dialog->findChild<QLabel*>("tipText")->text();
                static_cast<QDialog*>(dialog)->accept();
            }});
    click("exportButton");
    QVERIFY(answers_.empty());
    QCOMPARE(tip, file.isEmpty() ? QStringLiteral("提示|导出失败!") : QStringLiteral("提示|导出成功!"));
    if (file.isEmpty())
        return;
    QFile result(dir_->filePath(file));
    QVERIFY(result.open(QIODevice::ReadOnly));
    const QByteArray content = result.readAll();
    if (format == "txt") // all rows, not those of the page
        QCOMPARE(content.count('\n'), 121);
    else
        QVERIFY(content.startsWith("\xD0\xCF\x11\xE0"));
}

void tst_LogPage::exportCanBeCalledOff_data() {
    QTest::addColumn<bool>("atFormat");
    QTest::newRow("at the format") << true;
    QTest::newRow("at the file") << false;
}

void tst_LogPage::exportCanBeCalledOff() {
    QFETCH(bool, atFormat);
    add(SqlHelp::FireLog, 1);
    show();
    const auto reject = [](QWidget* dialog) {
        static_cast<QDialog*>(dialog)->reject();
    };
    const auto accept = [](QWidget* dialog) {
        static_cast<QDialog*>(dialog)->accept();
    };
    if (atFormat)
        answer({reject});
    else
        answer({accept, reject});
    click("exportButton");
    QVERIFY(answers_.empty());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(QDir(dir_->path()).entryList({"*.txt*", "*.xls*"}), QStringList());
}

void tst_LogPage::existingFileIsAskedFor() {
    add(SqlHelp::FireLog, 1);
    show();
    QFile old(dir_->filePath("a.txt"));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    for (const bool replace : {false, true}) {
        std::vector<std::function<void(QWidget*)>> answers{
            [](QWidget* dialog) { static_cast<QDialog*>(dialog)->accept(); },
            [this](QWidget* chooser) { saveAs(chooser, dir_->filePath("a")); },
            [replace](QWidget* question) {
                QVERIFY(question->findChild<QLabel*>("tipText")->text().contains("a.txt"));
                question->findChild<QAbstractButton*>(replace ? "tipOk" : "tipCancel")->click();
            }};
        if (replace)
            answers.emplace_back([](QWidget* tip) { static_cast<QDialog*>(tip)->accept(); });
        answer(std::move(answers));
        click("exportButton");
        QVERIFY(answers_.empty());
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll() == "old", !replace);
        old.close();
    }
}

void tst_LogPage::everyControlHasNames() {
    show();
    ExportDialog dialog;
    for (QWidget* const top : {static_cast<QWidget*>(page_.get()), static_cast<QWidget*>(&dialog)}) {
        for (QWidget* const widget : top->findChildren<QWidget*>()) {
            const bool isControl = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
                                   qobject_cast<QAbstractSpinBox*>(widget) ||
                                   qobject_cast<QAbstractItemView*>(widget) || qobject_cast<QTabBar*>(widget);
            const bool isInner = widget->objectName().startsWith("qt_") || qobject_cast<QHeaderView*>(widget) ||
                                 qobject_cast<QComboBox*>(widget->parentWidget()->parentWidget()) ||
                                 qobject_cast<QTabBar*>(widget->parentWidget()) ||
                                 widget->inherits("QTableCornerButton");
            if (!isControl || isInner)
                continue;
            QVERIFY2(!widget->objectName().isEmpty(), widget->metaObject()->className());
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
        }
    }
}

// Beside the device tree in the smallest window this is what is left.
void tst_LogPage::fitsTheSmallestWindow() {
    add(SqlHelp::FireLog, 1000);
    page_->resize(456, 300);
    show();
    page_->onPageForm("pageRowCount", 20);
    QCOMPARE(page_->size(), QSize(456, 300));
    for (const char* name :
         {"logTabs", "logType", "allTime", "searchButton", "startTime", "endTime", "endTimeCalendar", "pageRows",
          "firstPage", "pageNumber", "lastPage", "exportButton", "logMenu"}) {
        const auto& widget = part<QWidget>(name);
        const QRect place(widget.mapTo(page_.get(), QPoint()), widget.size());
        QVERIFY2(page_->rect().contains(place), name);
        QVERIFY2(widget.width() >= std::min(widget.minimumSizeHint().width(), 64), name);
    }
    QVERIFY(table().viewport()->height() > 3 * 28);
}

QTEST_MAIN(tst_LogPage)
#include "tst_LogPage.moc"
