#include "linkage/ui/AlarmTableModel.h"

#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"

#include <algorithm>
#include <array>
#include <utility>

namespace theme = corvanta::theme;
using corvanta::linkage::OpenAlarm;

void AlarmTableModel::setAlarms(QVector<OpenAlarm> alarms) {
    order(alarms);
    const bool same = std::equal(alarms_.begin(), alarms_.end(), alarms.begin(), alarms.end(),
                                 [](const OpenAlarm& one, const OpenAlarm& other) { return one.key == other.key; });
    if (same) {
        alarms_ = std::move(alarms);
        if (!alarms_.isEmpty())
            emit dataChanged(index(0, 0), index(alarms_.size() - 1, Columns - 1));
        return;
    }
    beginResetModel();
    alarms_ = std::move(alarms);
    endResetModel();
}

int AlarmTableModel::rowOf(const QString& key) const {
    const auto it =
        std::find_if(alarms_.begin(), alarms_.end(), [&key](const OpenAlarm& alarm) { return alarm.key == key; });
    return it == alarms_.end() ? -1 : static_cast<int>(it - alarms_.begin());
}

QString AlarmTableModel::text(const OpenAlarm& alarm, int column) {
    switch (column) {
    case Level:
        return corvanta::alarmTypeOf(alarm.level).shownText();
    case Device:
        return alarm.device;
    case Plan:
        return alarm.plan;
    case Content:
        return alarm.content.simplified();
    case Count:
        return QString::number(alarm.count);
    case First:
        return alarm.firstTime;
    case Last:
        return alarm.lastTime;
    default:
        return {};
    }
}

QVariant AlarmTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const OpenAlarm& alarm = alarms_[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return text(alarm, index.column());
    case Qt::ToolTipRole:
        return corvanta::plainToolTip(index.column() == Content ? alarm.content : text(alarm, index.column()));
    case Qt::ForegroundRole:
        // Amber for what no plan has raised; red is for alarms by a threshold.
        if (index.column() == Level)
            return alarm.level == corvanta::AlarmLevel::Other ? theme::Warning : theme::Alarm.lighter(125);
        return {};
    case Qt::TextAlignmentRole:
        return static_cast<int>((index.column() == Count ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant AlarmTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr std::array<const char*, Columns> names{
        QT_TR_NOOP("级别"),     QT_TR_NOOP("设备"),     QT_TR_NOOP("内容"),    QT_TR_NOOP("次数"),
        QT_TR_NOOP("最近时间"), QT_TR_NOOP("联动策略"), QT_TR_NOOP("首次时间")};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= Columns)
        return QAbstractTableModel::headerData(section, orientation, role);
    return tr(names[static_cast<std::size_t>(section)]);
}

void AlarmTableModel::order(QVector<OpenAlarm>& alarms) const {
    if (column_ < 0)
        return;
    const auto before = [this](const OpenAlarm& one, const OpenAlarm& other) {
        if (column_ == Count)
            return one.count < other.count;
        if (column_ == Level)
            return one.level < other.level;
        return text(one, column_).localeAwareCompare(text(other, column_)) < 0;
    };
    std::stable_sort(alarms.begin(), alarms.end(), [this, &before](const OpenAlarm& one, const OpenAlarm& other) {
        return direction_ == Qt::AscendingOrder ? before(one, other) : before(other, one);
    });
}

void AlarmTableModel::sort(int column, Qt::SortOrder direction) {
    column_ = column;
    direction_ = direction;
    setAlarms(alarms_);
}
