#include "logs/ui/LogTableView.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "logs/ui/LogTableModel.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>
#include <array>

namespace theme = corvanta::theme;

LogTableView::LogTableView(QWidget* parent)
    : QTableView(parent)
    , model_(new LogTableModel(this)) {
    setObjectName(QStringLiteral("logTable"));
    corvanta::wordedName(this, [] { return tr("日志列表"); });
    setModel(model_);
    setSelectionBehavior(SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false); // Tab leaves the table
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(theme::ControlHeight);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(48);
}

void LogTableView::setTable(std::shared_ptr<const corvanta::logs::Table> table, int pageRows) {
    table_ = std::move(table);
    pager_.setRowCount(table_ == nullptr ? 0 : table_->rows.rowCount());
    setPageRows(pageRows);
}

void LogTableView::setPageRows(int rows) {
    pager_.setPageRows(rows);
    showRows();
}

void LogTableView::showPage(int page) {
    pager_.showPage(page);
    showRows();
}

void LogTableView::showFirst() {
    pager_.showFirst();
    showRows();
}

void LogTableView::showPrevious() {
    pager_.showPrevious();
    showRows();
}

void LogTableView::showNext() {
    pager_.showNext();
    showRows();
}

void LogTableView::showLast() {
    pager_.showLast();
    showRows();
}

void LogTableView::showRows() {
    model_->show(table_, pager_.beginRow(), pager_.endRow());
    scrollToTop();
    emit sigPageChanged(pager_.currentPage(), pager_.pageCount());
}

QList<int> LogTableView::columnWidths() const {
    QList<int> result;
    for (int column = 0; column < model_->columnCount(); ++column)
        result += isColumnHidden(column) ? 0 : columnWidth(column);
    return result;
}

void LogTableView::setColumnWidths(const QList<int>& widths) {
    for (int column = 0; column < std::min(model_->columnCount(), widths.size()); ++column) {
        if (widths[column] > 0)
            setColumnWidth(column, widths[column]);
    }
}

void LogTableView::setDefaultWidths() {
    static constexpr std::array<int, 6> characters{10, 16, 23, 23, 36, 36}; // id, who, when, kind or when, what
    const int unit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int column = 0; column < std::min<int>(model_->columnCount(), characters.size()); ++column)
        setColumnWidth(column, unit * characters[static_cast<std::size_t>(column)]);
}

void LogTableView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else
        QTableView::keyPressEvent(event);
}

void LogTableView::copySelection() const {
    QStringList lines;
    const QModelIndexList rows = selectionModel()->selectedRows();
    for (const QModelIndex& row : rows) {
        QStringList cells;
        for (int column = 0; column < model_->columnCount(); ++column)
            cells += row.sibling(row.row(), column).data(Qt::EditRole).toString();
        lines += cells.join(QLatin1Char('\t'));
    }
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
