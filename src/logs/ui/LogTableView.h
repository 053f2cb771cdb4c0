#pragma once

#include "logs/LogKinds.h"
#include "logs/TablePager.h"

#include <QTableView>

#include <memory>

class LogTableModel;

/// A log's rows, page by page. It has all rows and shows those of the current page.
class LogTableView final : public QTableView {
    Q_OBJECT
public:
    explicit LogTableView(QWidget* parent = nullptr);

    /// Shows page 1 of `table`, with `pageRows` rows a page.
    void setTable(std::shared_ptr<const corvanta::logs::Table> table, int pageRows);
    const std::shared_ptr<const corvanta::logs::Table>& table() const { return table_; }

    void setPageRows(int rows);
    void showPage(int page);
    void showFirst();
    void showPrevious();
    void showNext();
    void showLast();
    const TablePager& pager() const { return pager_; }

    /// Widths of the columns, px; those of columns that are not there are kept for none.
    QList<int> columnWidths() const;
    void setColumnWidths(const QList<int>& widths);
    /// Widths for an id, date-times and texts.
    void setDefaultWidths();

signals:
    void sigPageChanged(int page, int pageCount);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showRows();
    void copySelection() const;

    std::shared_ptr<const corvanta::logs::Table> table_;
    TablePager pager_;
    LogTableModel* model_;
};
