#include "storage/ui/FileTableModel.h"

#include "base/SizeText.h"
#include "base/ui/PlainToolTip.h"

#include <QDir>

#include <algorithm>
#include <array>

using corvanta::storage::FileRecord;
using corvanta::storage::FoundFiles;
namespace fileTexts = corvanta::storage::fileTexts;

FileTableModel::FileTableModel(corvanta::storage::DeviceNames nameOf, QObject* parent)
    : QAbstractTableModel(parent)
    , nameOf_(std::move(nameOf))
    , files_(std::make_shared<const FoundFiles>()) {}

void FileTableModel::show(Files files) {
    beginResetModel();
    files_ = std::move(files);
    arrange();
    endResetModel();
}

void FileTableModel::renameDevices() {
    if (rowCount() > 0)
        emit dataChanged(index(0, DeviceColumn), index(rowCount() - 1, DeviceColumn));
}

int FileTableModel::rowOf(int file) const {
    const auto row = std::find(order_.begin(), order_.end(), file);
    return row == order_.end() ? -1 : static_cast<int>(row - order_.begin());
}

int FileTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(order_.size());
}

int FileTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString FileTableModel::text(const FileRecord& file, int column) const {
    switch (column) {
    case TimeColumn:
        return fileTexts::time(file);
    case DeviceColumn:
        return fileTexts::oneLine(nameOf_(file.ipncid));
    case KindColumn:
        return fileTexts::kind(file.kind);
    case NameColumn:
        return fileTexts::oneLine(file.name);
    default:
        return corvanta::sizeText(file.size);
    }
}

QVariant FileTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const FileRecord& file = files_->at(fileOf(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return text(file, index.column());
    case Qt::ToolTipRole:
        return corvanta::plainToolTip(index.column() == DeviceColumn
                                          ? fileTexts::oneLine(file.ipncid)
                                          : fileTexts::oneLine(QDir::toNativeSeparators(file.path), 2000));
    case Qt::TextAlignmentRole:
        return headerData(index.column(), Qt::Horizontal, role);
    default:
        return {};
    }
}

QVariant FileTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::DisplayRole) {
        const std::array<QString, ColumnCount> names{tr("时间"), tr("设备"), tr("类别"), tr("文件名"), tr("大小")};
        return names[static_cast<std::size_t>(section)];
    }
    if (role == Qt::TextAlignmentRole)
        return int((section == SizeColumn ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

void FileTableModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= ColumnCount)
        return;
    beginResetModel();
    sortColumn_ = column;
    sortOrder_ = order;
    arrange();
    endResetModel();
}

void FileTableModel::arrange() {
    static constexpr std::array<FoundFiles::Order, ColumnCount> orders{
        FoundFiles::Order::Time, FoundFiles::Order::Device, FoundFiles::Order::Kind, FoundFiles::Order::Name,
        FoundFiles::Order::Size};
    order_ =
        files_->ordered(orders[static_cast<std::size_t>(sortColumn_)], sortOrder_ == Qt::DescendingOrder, nameOf_);
}
