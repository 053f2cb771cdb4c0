#pragma once

#include "storage/FoundFiles.h"
#include "storage/ui/FileTexts.h"

#include <QAbstractTableModel>

#include <memory>

/// Found files as a table: time, device, kind, name, size. It shows the files where they lie; sorting orders numbers.
class FileTableModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    using Files = std::shared_ptr<const corvanta::storage::FoundFiles>;

    enum Column { TimeColumn, DeviceColumn, KindColumn, NameColumn, SizeColumn, ColumnCount };

    explicit FileTableModel(corvanta::storage::DeviceNames nameOf, QObject* parent = nullptr);

    /// Shows other files, in the order of the last `sort`; `files` is not null.
    void show(Files files);
    /// The names of devices are others now.
    void renameDevices();

    const Files& files() const { return files_; }
    /// A row's file as its position among the files, and back (-1: none).
    int fileOf(int row) const { return order_[static_cast<std::size_t>(row)]; }
    int rowOf(int file) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// What was selected is no more.
    void sort(int column, Qt::SortOrder order) override;

private:
    QString text(const corvanta::storage::FileRecord& file, int column) const;
    void arrange();

    corvanta::storage::DeviceNames nameOf_;
    Files files_;
    std::vector<int> order_; ///< for each row the file
    int sortColumn_ = TimeColumn;
    Qt::SortOrder sortOrder_ = Qt::DescendingOrder;
};
