#pragma once

#include "app/AppManager.h"
#include "base/ui/Style.h"
#include "database/SqlHelp.h"
#include "logs/ui/Check_Log_Widget.h"
#include "logs/ui/LogTableView.h"
#include "support/FakeSdk.h"
#include "support/RecordingUi.h"

#include <QAbstractButton>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// What the tests of the log page share: the page over a real database, and an operator who clicks and reads.
class LogPageTest : public QObject {
    Q_OBJECT
protected:
    /// Adds rows to the log of a type of SqlHelp, of 2024-01-01, one a second within its first minute.
    void add(int type, int rows);
    /// Shows the page and waits for its first search.
    void show();
    /// Searches and waits for the end.
    void search();
    /// Another page over the same database, as after a restart.
    void makePage();
    template <typename T>
    T& part(const char* name) const {
        return *page_->findChild<T*>(QLatin1String(name));
    }
    void click(const char* name) { part<QAbstractButton>(name).click(); }
    LogTableView& table() const { return page_->table(); }

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<Check_Log_Widget> page_;

private:
    FakeSdk& sdk_ = FakeSdk::instance();
    RecordingUi ui_;
    std::unique_ptr<AppManager> manager_;

private slots:
    void initTestCase() { corvanta::applyStyle(); }
    void init();

protected slots: // for tests that have more to end
    void cleanup();
};
