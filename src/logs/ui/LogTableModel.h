#pragma once

#include "logs/LogKinds.h"

#include <QAbstractTableModel>

#include <memory>

/// A stretch of a log's rows as a table. It shows texts where they lie and copies nothing.
class LogTableModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    using Table = corvanta::logs::Table;

    explicit LogTableModel(QObject* parent = nullptr);

    /// Shows rows `begin` to the one before `end` of `table`, which may be null: nothing at all.
    void show(std::shared_ptr<const Table> table, int begin, int end);
    const std::shared_ptr<const Table>& table() const { return table_; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::shared_ptr<const Table> table_;
    int begin_ = 0;
    int end_ = 0;
};
