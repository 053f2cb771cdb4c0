#pragma once

#include "base/AppContext.h"
#include "logs/LogLoader.h"

#include <QVariant>
#include <QWidget>

class LogTableView;
class PageBar;
class QLabel;
class QStackedWidget;
class QTabBar;
class serchFormLog;

/// The log module: four logs in tabs, a search form, the found rows page by page, and their export.
///
/// A search reads all rows that match, in pieces between other events; there is one result at a time, that of the
/// current tab.
class Check_Log_Widget final : public QWidget {
    Q_OBJECT
public:
    explicit Check_Log_Widget(const AppContext& context, QWidget* parent = nullptr);
    ~Check_Log_Widget() override;

    LogTableView& table() const { return *table_; }
    bool isSearching() const { return loader_.isRunning(); }

public slots:
    /// Searches as the form says. What is being read for an earlier search is dropped.
    void onSerchForm();
    /// An event of the page bar (base/ui/PageBar.h says which there are).
    void onPageForm(const QString& event, const QVariant& value);
    void setTabPage(int type);
    void setSearchComboxIndex(int type);
    /// Everything shown, widths and rows a page as at first.
    void onDefaultLayout();
    /// The menu of what is shown, under the mouse.
    void onOutMenu();
    /// Asks for a format and a file and exports the rows that were found.
    void onOutportMenu();
    /// Shows or hides the search form, the page bar, the column of ids.
    void onMenuCheck1(bool shown);
    void onMenuCheck2(bool shown);
    void onMenuCheck3(bool shown);

signals:
    /// A search has ended and its rows are shown.
    void sigResult();
    /// The search form was shown or hidden.
    void sigVisible(bool visible);
    /// A search is for this log.
    void sig_setTabPage(int type);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void build();
    void connectParts();
    void showRows(bool complete);
    QString emptyText() const;
    void applyWidths();
    void keepWidths();
    void exportAs(const QString& format);
    int currentType() const;

    AppContext context_;
    LogLoader loader_;
    QTabBar* tabs_ = nullptr;
    serchFormLog* form_ = nullptr;
    QStackedWidget* stack_ = nullptr;
    LogTableView* table_ = nullptr;
    QLabel* empty_ = nullptr;
    PageBar* pages_ = nullptr;
    bool searchedOnce_ = false;
    bool idsShown_ = true;
    bool settingWidths_ = false; ///< widths change by us, not by the user
};
