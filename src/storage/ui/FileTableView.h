#pragma once

#include "storage/ui/FileTableModel.h"

#include <QTableView>

/// The found files as a list, sorted by a click on a column's header.
class FileTableView final : public QTableView {
    Q_OBJECT
public:
    explicit FileTableView(corvanta::storage::DeviceNames nameOf, QWidget* parent = nullptr);

    FileTableModel& files() const { return *model_; }
    /// Shows other files; the current row stays where it is.
    void show(FileTableModel::Files files);
    /// The selected files, in the order of their rows.
    std::vector<int> selectedFiles() const;

    /// Widths of the columns but the last, px.
    QList<int> columnWidths() const;
    void setColumnWidths(const QList<int>& widths);

private:
    void setDefaultWidths();

    FileTableModel* model_;
    int currentFile_ = -1; ///< while the rows change
};
