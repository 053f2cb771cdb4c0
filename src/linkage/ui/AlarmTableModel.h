#pragma once

#include "linkage/AlarmInbox.h"

#include <QAbstractTableModel>

/// The alarms that nobody has acknowledged, a row each, as a table that can be sorted.
class AlarmTableModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Level, Device, Content, Count, Last, Plan, First, Columns };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows these. Rows that stay where they are are told as changed; otherwise the table is reset.
    void setAlarms(QVector<corvanta::linkage::OpenAlarm> alarms);
    const corvanta::linkage::OpenAlarm& at(int row) const { return alarms_[row]; }
    /// -1 when it is not there.
    int rowOf(const QString& key) const;

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : alarms_.size(); }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : Columns; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    static QString text(const corvanta::linkage::OpenAlarm& alarm, int column);
    void order(QVector<corvanta::linkage::OpenAlarm>& alarms) const;

    QVector<corvanta::linkage::OpenAlarm> alarms_;
    int column_ = -1; ///< sorted by; -1: as they come, the last alarm first
    Qt::SortOrder direction_ = Qt::AscendingOrder;
};
