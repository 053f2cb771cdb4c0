#include "logs/ui/LogTableModel.h"

#include "base/ui/PlainToolTip.h"

namespace {

constexpr int LongestShown = 512; // characters of a cell: more is wider than any screen
constexpr int LongestToolTip = 2000;

} // namespace

LogTableModel::LogTableModel(QObject* parent)
    : QAbstractTableModel(parent) {}

void LogTableModel::show(std::shared_ptr<const Table> table, int begin, int end) {
    beginResetModel();
    table_ = std::move(table);
    begin_ = begin;
    end_ = end;
    endResetModel();
}

int LogTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || table_ == nullptr ? 0 : end_ - begin_;
}

int LogTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || table_ == nullptr ? 0 : table_->header.size();
}

QVariant LogTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.column() >= table_->rows.columnCount())
        return {};
    const QStringView text = table_->rows.cell(begin_ + index.row(), index.column());
    switch (role) {
    case Qt::DisplayRole:
        return text.left(LongestShown).toString().replace(QLatin1Char('\n'), QLatin1Char(' '));
    case Qt::EditRole: // as it is, for copying
        return text.toString();
    case Qt::ToolTipRole:
        return corvanta::plainToolTip(text.left(LongestToolTip).toString());
    case Qt::TextAlignmentRole:
        return int((index.column() == 0 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant LogTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || table_ == nullptr || section >= table_->header.size())
        return {};
    if (role == Qt::DisplayRole)
        return table_->header.at(section);
    if (role == Qt::TextAlignmentRole)
        return int((section == 0 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}
