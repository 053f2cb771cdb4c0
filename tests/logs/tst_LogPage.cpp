#include "logs/LogPageTest.h"
#include "logs/ui/ExportDialog.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabBar>
#include <QToolButton>

/// The log page over a real database, driven as an operator does.
class tst_LogPage final : public LogPageTest {
    Q_OBJECT
private slots:
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
    void everyControlHasNames();
    void fitsTheSmallestWindow();

private:
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
    QString info() const { return part<QLabel>("pageInfo").text(); }
};

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
    makePage();
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
