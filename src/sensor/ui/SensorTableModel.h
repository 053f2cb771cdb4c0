#pragma once

#include "sensor/InputRecords.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QSortFilterProxyModel>

namespace corvanta::sensor {

/// Every input with its newest value. Live values change the cells that they change, nothing else: ten thousand
/// inputs stay fluid.
class SensorTableModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Number, Group, Device, Sensor, Input, Value, Unit, State, ReadTime, BeginTime, ColumnCount };
    enum Role { SortRole = Qt::UserRole + 1, PidRole };

    /// `fields` outlives the model.
    explicit SensorTableModel(const InputFields& fields, QObject* parent = nullptr);

    /// Keeps the rows, with all that is chosen in views, where only what the inputs say has changed.
    void setInputs(const QVector<InputRecord>& inputs);
    const QVector<InputRecord>& inputs() const { return inputs_; }
    /// Null for a row that is none.
    const InputRecord* input(int row) const;
    /// What is known of these inputs has changed.
    void refresh(const QVector<int>& pids);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVariant text(int row, Column column) const;
    QVariant sortKey(int row, Column column) const;

    const InputFields& fields_;
    QVector<InputRecord> inputs_;
    QVector<InputNow> now_; ///< of the same row
    QHash<int, int> rows_;  ///< by pid
};

/// The rows of a group, of a device, and those in which a text occurs.
class SensorFilter final : public QSortFilterProxyModel {
    Q_OBJECT
public:
    explicit SensorFilter(SensorTableModel& model, QObject* parent = nullptr);

    /// Empty ones let all through; a device counts before its group.
    void setFilter(const QString& groupId, const QString& ipncId, const QString& text);

protected:
    /// What is not known comes last, whichever way is sorted.
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    const SensorTableModel& model_;
    QString groupId_;
    QString ipncId_;
    QString text_;
};

} // namespace corvanta::sensor
