#pragma once

#include <QAbstractTableModel>
#include <QVector>

class DeviceModel;

/// The devices of the account as a table, one a row, in the order of groups and members. Rows are dragged to another
/// place; the table itself changes only when the service has sent the new order. GUI thread.
class DeviceTable final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Position, Name, Number, Group, Online, Model, Address, Firmware, Rights, Columns };

    using QAbstractTableModel::QAbstractTableModel;

    void setDevices(const DeviceModel& devices);
    QString ipncId(int row) const;

    /// Whether a drag takes hold: only where the rows shown are the places in the groups.
    void setDragging(bool on) { dragging_ = on; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

    /// Where a device would go that stands before `row` afterwards: the group of the row above (of the one below at
    /// a group's top), and the place in it, counted without the device.
    struct Place {
        QString groupId;
        int index = 0;
    };
    Place placeBefore(int row, const QString& moved) const;

    static constexpr int SortRole = Qt::UserRole + 1; ///< what a column is sorted by

signals:
    /// A device was dropped at a place of a group.
    void sigMove(QString ipncid, QString groupId, int index);

private:
    struct Row {
        QString ipncId;
        QString name;
        QString groupId;
        QString group;
        bool online = false;
        QString model;
        QString address;
        QString firmware;
        QString rights;
    };
    QString text(int row, int column) const;
    void addRows(const DeviceModel& devices, const QStringList& members, const QString& groupId,
                 const QString& groupName);

    QVector<Row> rows_;
    bool dragging_ = true;
};
