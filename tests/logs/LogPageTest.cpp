#include "logs/LogPageTest.h"

#include "support/SqliteShell.h"

#include <QSignalSpy>

#include <array>

void LogPageTest::init() {
    sdk_.reset();
    dir_ = std::make_unique<QTemporaryDir>();
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    makePage();
}

void LogPageTest::cleanup() {
    page_.reset();
    manager_.reset();
}

void LogPageTest::makePage() {
    page_ = std::make_unique<Check_Log_Widget>(manager_->context());
    page_->resize(700, 400);
}

void LogPageTest::add(int type, int rows) {
    static const std::array<const char*, 4> inserts{
        "fireLogs(fireDev,startDate,type,context) select 'cam'||i,'2024-01-01T00:00:'||printf('%02d',i%60)||"
        "'.000','t','c'||i",
        "loginLogs(loginUser,loginDate,startDate) select 'u'||i,'2024-01-01T00:00:00.000','2024-01-01T00:00:'||"
        "printf('%02d',i%60)||'.000'",
        "operatelogs(user,startDate,type,context,context1) select 'u'||i,'2024-01-01T00:00:'||printf('%02d',i%60)"
        "||'.000','t','c'||i,'d'",
        "errlogs(user,startDate,type,context) select 'u'||i,'2024-01-01T00:00:'||printf('%02d',i%60)||'.000','t',"
        "'c'||i"};
    sqliteShell::run(dir_->filePath("dataBase.db"),
                     QStringLiteral("with recursive n(i) as (select 1 union all select i+1 from n where i<%1) insert "
                                    "into %2 from n;")
                         .arg(rows)
                         .arg(inserts[std::size_t(type)]));
}

void LogPageTest::show() {
    QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
    page_->show();
    QVERIFY(QTest::qWaitForWindowExposed(page_.get()));
    QTRY_COMPARE(results.size(), 1);
}

void LogPageTest::search() {
    QSignalSpy results(page_.get(), &Check_Log_Widget::sigResult);
    click("searchButton");
    QTRY_COMPARE(results.size(), 1);
}
