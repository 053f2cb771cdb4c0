#pragma once

#include <QSet>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVariant>

#include <optional>

class DeviceModel;
struct DeviceRecord;

/// The rows of the tree. Cameras and sensors leave it as what maps take, too.
class DeviceTreeModel final : public QStandardItemModel {
    Q_OBJECT
public:
    enum Role {
        IpncIdRole = Qt::UserRole + 1, ///< of a device, and of its sensors
        GroupIdRole,
        OpenRole,
        VideoRole,
        OnlineRole,
        RecordRole,
        SensorRole ///< of a sensor, its pid
    };

    using QStandardItemModel::QStandardItemModel;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
};

/// The tree of groups, devices and their sensors. Groups show how many of their devices are online; a device shows
/// whether it is online and whether its video is open. Devices and groups are moved by dragging and by the menu; the
/// tree itself changes only when the service has sent the new order. Devices and sensors are also dragged onto maps.
class DeviceTree final : public QTreeView {
    Q_OBJECT
public:
    explicit DeviceTree(QWidget* parent = nullptr);

    /// Builds the tree anew; groups that were closed stay closed, the current device stays current.
    void rebuild(const DeviceModel& devices);
    /// Empties the tree.
    void clear();
    /// Shows only devices and sensors (with their groups) whose name contains `text`. Nothing can be moved meanwhile,
    /// as the rows shown are not the places in the groups.
    void setFilter(const QString& text);
    void setVideoOpen(const QString& ipncId, bool open);
    void setRecording(const QString& ipncId, bool recording);
    /// The device, or the sensor's device, under the cursor of the tree, empty on a group.
    QString currentDevice() const;
    /// Puts the cursor of the tree on a device, if it is there.
    void select(const QString& ipncId);
    bool isEmpty() const { return model_.rowCount() == 0; }

    /// Closed groups and current device, as the settings keep them.
    QVariant state() const;
    /// Takes effect at once and for groups that come later; what is not a state changes nothing.
    void restoreState(const QVariant& state);

signals:
    /// The user opens a device's video, or ends it when it is open.
    void sigToggleVideo(QString ipncid);
    /// A single picture of the device is wanted.
    void sigPreview(QString ipncid);
    /// All videos of a group are to be opened, or ended.
    void sigOpenGroup(QString groupId, bool open);
    /// The user starts a device's recording, or stops it when it is recorded.
    void sigToggleRecording(QString ipncid);
    /// All videos of a group are to be recorded, or not any more.
    void sigRecordGroup(QString groupId, bool record);
    /// The group's devices are to have the first tiles.
    void sigDefaultGroup(QString groupId);
    /// A group is to get another name; with an empty id a new one is to be made.
    void sigEditGroup(QString groupId);
    /// The list of groups is to be shown.
    void sigManageGroups();
    /// A device is to be added, to a group if one is named.
    void sigAddDevice(QString groupId);
    void sigConfigureDevice(QString ipncid);
    /// The sensors of a device are to be set up.
    void sigSensors(QString ipncid);
    void sigRenameDevice(QString ipncid);
    /// The linkage plans of a device are to be shown.
    void sigLinkage(QString ipncid);
    void sigDeleteDevice(QString ipncid);
    /// The table of devices is to be shown.
    void sigManageDevices();
    /// A device is to stand at a place of a group, counted from 0 in the list as it will be then.
    void sigMoveDevice(QString ipncid, QString groupId, int index);
    void sigMoveGroup(QString groupId, int index);
    /// The cursor of the tree went to another device.
    void sigCurrentDevice(QString ipncid);
    /// Groups were opened or closed, or the cursor moved.
    void sigStateChanged();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    using Role = DeviceTreeModel::Role;

    /// Where something dragged would go: into a group, or (with an empty id) among the groups.
    struct Place {
        QString groupId;
        int index = 0;
    };

    void appendGroup(const QString& id, const QString& name, const QStringList& members, const DeviceModel& devices,
                     bool isDefault);
    static void appendSensors(QStandardItem& item, const DeviceRecord& device);
    static bool isSensor(const QStandardItem& item);
    void rememberClosedGroups();
    void applyClosedGroups();
    void setFlag(const QString& ipncId, Role role, bool value);
    QStandardItem* find(const QString& ipncId) const;
    QString groupId(int row) const;
    static void decorate(QStandardItem& item);
    std::optional<Place> target(const QPoint& position) const;
    const QStandardItem* itemAt(const QModelIndex& index) const;
    void deviceMenu(const QStandardItem& item, const QPoint& place);
    void groupMenu(const QStandardItem& item, const QPoint& place);

    DeviceTreeModel model_;
    QSortFilterProxyModel filter_;
    QSet<QString> closedGroups_; ///< ids; also of groups that are not there at the moment
    QSet<QString> openDevices_;  ///< ids; those whose sensors are seen
    bool isFiltered_ = false;
    QString wantedDevice_;          ///< to be current once it is there
    QPersistentModelIndex dragged_; ///< in model_
    bool building_ = false;
};
