#include "storage/ui/FileTableView.h"

#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QHeaderView>

#include <algorithm>
#include <array>

namespace theme = corvanta::theme;

FileTableView::FileTableView(corvanta::storage::DeviceNames nameOf, QWidget* parent)
    : QTableView(parent)
    , model_(new FileTableModel(std::move(nameOf), this)) {
    setObjectName(QStringLiteral("fileTable"));
    corvanta::worded(this, [this] {
        setAccessibleName(tr("文件列表"));
        horizontalHeader()->viewport()->update();
        viewport()->update(); // kinds of files
    });
    setModel(model_);
    setSelectionBehavior(SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false); // Tab leaves the table
    setHorizontalScrollMode(ScrollPerPixel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(theme::ControlHeight);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(48);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setSortIndicator(FileTableModel::TimeColumn, Qt::DescendingOrder);
    setSortingEnabled(true);
    setDefaultWidths();
    // A sorting keeps the current file, not the current row.
    connect(model_, &QAbstractItemModel::modelAboutToBeReset, this,
            [this] { currentFile_ = currentIndex().isValid() ? model_->fileOf(currentIndex().row()) : -1; });
    connect(horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, [this] {
        const int row = currentFile_ < 0 ? -1 : model_->rowOf(currentFile_);
        if (row >= 0)
            setCurrentIndex(model_->index(row, 0));
        else
            scrollToTop();
    });
}

void FileTableView::show(FileTableModel::Files files) {
    const int row = currentIndex().row();
    model_->show(std::move(files));
    if (row >= 0 && model_->rowCount() > 0)
        setCurrentIndex(model_->index(std::min(row, model_->rowCount() - 1), 0));
}

std::vector<int> FileTableView::selectedFiles() const {
    // By ranges: a list of indices of 200,000 rows would take longer than everything else.
    std::vector<int> rows;
    const QItemSelection ranges = selectionModel()->selection();
    for (const QItemSelectionRange& range : ranges) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (int& row : rows)
        row = model_->fileOf(row);
    return rows;
}

QList<int> FileTableView::columnWidths() const {
    QList<int> result;
    for (int column = 0; column + 1 < FileTableModel::ColumnCount; ++column)
        result += columnWidth(column);
    return result;
}

void FileTableView::setColumnWidths(const QList<int>& widths) {
    for (int column = 0; column < std::min<int>(FileTableModel::ColumnCount - 1, widths.size()); ++column) {
        if (widths[column] > 0)
            setColumnWidth(column, widths[column]);
    }
}

void FileTableView::setDefaultWidths() {
    static constexpr std::array<int, FileTableModel::ColumnCount> characters{23, 20, 12, 24, 10};
    const int unit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int column = 0; column < FileTableModel::ColumnCount; ++column)
        setColumnWidth(column, unit * characters[static_cast<std::size_t>(column)]);
}
