#include "sensor/ui/SensorTableModel.h"

#include "base/ui/Theme.h"

#include <QDateTime>

#include <algorithm>

namespace corvanta::sensor {
namespace {

QString momentText(const std::optional<qint64>& time) {
    return time ? QDateTime::fromSecsSinceEpoch(*time).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) : QString();
}

bool sameRows(const QVector<InputRecord>& a, const QVector<InputRecord>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const InputRecord& one, const InputRecord& other) { return one.pid == other.pid; });
}

} // namespace

SensorTableModel::SensorTableModel(const InputFields& fields, QObject* parent)
    : QAbstractTableModel(parent)
    , fields_(fields) {}

void SensorTableModel::setInputs(const QVector<InputRecord>& inputs) {
    const bool isSame = sameRows(inputs_, inputs);
    if (!isSame)
        beginResetModel();
    inputs_ = inputs;
    rows_.clear();
    now_.resize(inputs_.size());
    for (int row = 0; row < inputs_.size(); ++row) {
        rows_.insert(inputs_[row].pid, row);
        now_[row] = nowOf(inputs_[row], fields_);
    }
    if (!isSame)
        endResetModel();
    else if (!inputs_.isEmpty())
        emit dataChanged(index(0, 0), index(inputs_.size() - 1, ColumnCount - 1));
}

const InputRecord* SensorTableModel::input(int row) const {
    return row >= 0 && row < inputs_.size() ? &inputs_[row] : nullptr;
}

void SensorTableModel::refresh(const QVector<int>& pids) {
    QVector<int> changed;
    for (const int pid : pids) {
        const auto row = rows_.constFind(pid);
        if (row == rows_.constEnd())
            continue;
        now_[*row] = nowOf(inputs_[*row], fields_);
        changed += *row;
    }
    std::sort(changed.begin(), changed.end());
    for (int first = 0; first < changed.size();) {
        int last = first;
        while (last + 1 < changed.size() && changed[last + 1] <= changed[last] + 1)
            ++last;
        emit dataChanged(index(changed[first], Value), index(changed[last], BeginTime));
        first = last + 1;
    }
}

int SensorTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : inputs_.size();
}

int SensorTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant SensorTableModel::text(int row, Column column) const {
    const InputRecord& input = inputs_[row];
    const InputNow& now = now_[row];
    switch (column) {
    case Number:
        return QString::number(row + 1);
    case Group:
        return input.group;
    case Device:
        return input.device;
    case Sensor:
        return input.sensor;
    case Input:
        return input.name;
    case Value:
        return now.value ? QString::number(*now.value) : QString();
    case Unit:
        return input.unit;
    case State:
        return !now.isNormal ? QString() : *now.isNormal ? tr("正常") : tr("异常");
    case ReadTime:
        return momentText(now.latest);
    case BeginTime:
        return momentText(now.earliest);
    case ColumnCount:
        break;
    }
    return {};
}

QVariant SensorTableModel::sortKey(int row, Column column) const {
    const InputNow& now = now_[row];
    switch (column) {
    case Number:
        return row;
    case Value:
        return now.value ? QVariant(*now.value) : QVariant();
    case ReadTime:
        return now.latest ? QVariant(*now.latest) : QVariant();
    case BeginTime:
        return now.earliest ? QVariant(*now.earliest) : QVariant();
    default:
        return text(row, column);
    }
}

QVariant SensorTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= inputs_.size())
        return {};
    const auto column = static_cast<Column>(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row(), column);
    case SortRole:
        return sortKey(index.row(), column);
    case PidRole:
        return inputs_[index.row()].pid;
    case Qt::TextAlignmentRole:
        return QVariant(column == Number || column == Value ? Qt::AlignRight | Qt::AlignVCenter
                                                            : Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        if (column == State && now_[index.row()].isNormal)
            return *now_[index.row()].isNormal ? theme::Healthy : theme::Alarm;
        return {};
    default:
        return {};
    }
}

QVariant SensorTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QStringList texts{tr("编号"), tr("所属分组"), tr("设备"), tr("传感器"),   tr("采集输入"),
                            tr("数值"), tr("单位"),     tr("通讯"), tr("读取时间"), tr("记录开始时间")};
    return texts.value(section);
}

SensorFilter::SensorFilter(SensorTableModel& model, QObject* parent)
    : QSortFilterProxyModel(parent)
    , model_(model) {
    setSourceModel(&model);
    setSortRole(SensorTableModel::SortRole);
    // A value that changes moves no row and is filtered by nothing; sorting again is the user's wish.
    setDynamicSortFilter(false);
}

void SensorFilter::setFilter(const QString& groupId, const QString& ipncId, const QString& text) {
    groupId_ = groupId;
    ipncId_ = ipncId;
    text_ = text;
    invalidateFilter();
}

bool SensorFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    const bool isKnown = left.data(sortRole()).isValid();
    if (isKnown != right.data(sortRole()).isValid())
        return isKnown == (sortOrder() == Qt::AscendingOrder);
    return QSortFilterProxyModel::lessThan(left, right);
}

bool SensorFilter::filterAcceptsRow(int row, const QModelIndex&) const {
    const InputRecord& input = *model_.input(row);
    if (!ipncId_.isEmpty() && input.ipncId != ipncId_)
        return false;
    if (ipncId_.isEmpty() && !groupId_.isEmpty() && input.groupId != groupId_)
        return false;
    if (text_.isEmpty())
        return true;
    return input.path().contains(text_, Qt::CaseInsensitive) || input.unit.contains(text_, Qt::CaseInsensitive) ||
           input.ipncId.contains(text_, Qt::CaseInsensitive) || QString::number(input.pid) == text_;
}

} // namespace corvanta::sensor
