#pragma once

#include <QSet>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>

class DeviceModel;

/// The tree of groups and devices. Groups show how many of their devices are online; a device shows whether it is
/// online and whether its video is open.
class DeviceTree final : public QTreeView {
    Q_OBJECT
public:
    explicit DeviceTree(QWidget* parent = nullptr);

    /// Builds the tree anew; groups that were closed stay closed, the current device stays current.
    void rebuild(const DeviceModel& devices);
    /// Empties the tree.
    void clear();
    /// Shows only devices (with their groups) whose name or id contains `text`.
    void setFilter(const QString& text);
    void setVideoOpen(const QString& ipncId, bool open);
    /// The device under the cursor of the tree, empty on a group.
    QString currentDevice() const;
    bool isEmpty() const { return model_.rowCount() == 0; }

signals:
    /// The user opens a device's video, or ends it when it is open.
    void sigToggleVideo(QString ipncid);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    enum Role { IpncIdRole = Qt::UserRole + 1, GroupIdRole, OpenRole, VideoRole, OnlineRole };

    void appendGroup(const QString& id, const QString& name, const QStringList& members, const DeviceModel& devices);
    QSet<QString> closedGroups() const;
    void select(const QString& ipncId);
    QStandardItem* find(const QString& ipncId) const;
    static void decorate(QStandardItem& item);

    QStandardItemModel model_;
    QSortFilterProxyModel filter_;
};
