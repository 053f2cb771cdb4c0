#include "monitor/ui/DeviceTree.h"

#include "base/DeviceModel.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QContextMenuEvent>
#include <QMenu>

namespace theme = corvanta::theme;

namespace {

QIcon deviceIcon(bool video, bool online, bool open) {
    const QString drawing =
        !video ? QStringLiteral("sensor") : (online ? QStringLiteral("camera") : QStringLiteral("camera-off"));
    static QHash<QString, QIcon> cache;
    const QString key = drawing + QLatin1Char(open ? '+' : '-') + QLatin1Char(online ? '+' : '-');
    auto it = cache.find(key);
    if (it == cache.end())
        it = cache.insert(key, corvanta::svgIcon(drawing, open     ? theme::Healthy
                                                          : online ? theme::TextOnDark
                                                                   : theme::FaintOnDark));
    return *it;
}

} // namespace

DeviceTree::DeviceTree(QWidget* parent)
    : QTreeView(parent) {
    setObjectName(QStringLiteral("deviceTree"));
    setAccessibleName(tr("设备树"));
    setHeaderHidden(true);
    setEditTriggers(NoEditTriggers);
    setUniformRowHeights(true);
    setIconSize(QSize(theme::IconSize, theme::IconSize));
    setIndentation(16);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
    filter_.setSourceModel(&model_);
    filter_.setRecursiveFilteringEnabled(true);
    filter_.setFilterCaseSensitivity(Qt::CaseInsensitive);
    setModel(&filter_);
    connect(this, &QTreeView::activated, this, [this](const QModelIndex& index) {
        const QString ipncId = index.data(IpncIdRole).toString();
        if (!ipncId.isEmpty() && index.data(VideoRole).toBool())
            emit sigToggleVideo(ipncId);
    });
}

void DeviceTree::rebuild(const DeviceModel& devices) {
    const QSet<QString> closed = closedGroups();
    const QString current = currentDevice();
    model_.clear();
    for (const GroupRecord& group : devices.groups())
        appendGroup(group.id, group.name, devices.members(group), devices);
    if (!devices.ungrouped().isEmpty())
        appendGroup(QString(), tr("未分组"), devices.ungrouped(), devices);
    expandAll();
    for (int row = 0; row < filter_.rowCount(); ++row) {
        const QModelIndex group = filter_.index(row, 0);
        if (closed.contains(group.data(GroupIdRole).toString()))
            collapse(group);
    }
    select(current);
}

void DeviceTree::appendGroup(const QString& id, const QString& name, const QStringList& members,
                             const DeviceModel& devices) {
    auto* const group = new QStandardItem;
    int online = 0;
    for (const QString& ipncId : members) {
        const DeviceRecord& device = *devices.device(ipncId);
        online += device.isOnline() ? 1 : 0;
        auto* const item = new QStandardItem(device.displayName());
        item->setData(ipncId, IpncIdRole);
        item->setData(device.videoOpen, OpenRole);
        item->setData(device.isVideo(), VideoRole);
        item->setData(device.isOnline(), OnlineRole);
        decorate(*item);
        group->appendRow(item);
    }
    group->setText(QStringLiteral("%1  %2/%3").arg(name, QString::number(online), QString::number(members.size())));
    group->setToolTip(tr("%1：在线 %2，共 %3").arg(name, QString::number(online), QString::number(members.size())));
    group->setData(id, GroupIdRole);
    group->setIcon(corvanta::svgIcon(QStringLiteral("group"), theme::FaintOnDark));
    model_.appendRow(group);
}

void DeviceTree::decorate(QStandardItem& item) {
    const bool online = item.data(OnlineRole).toBool();
    const bool open = item.data(OpenRole).toBool();
    item.setIcon(deviceIcon(item.data(VideoRole).toBool(), online, open));
    item.setForeground(online ? theme::TextOnDark : theme::FaintOnDark);
    item.setToolTip(QStringLiteral("%1\n%2\n%3")
                        .arg(item.text(), item.data(IpncIdRole).toString(),
                             open ? tr("视频已打开") : (online ? tr("在线") : tr("离线"))));
}

void DeviceTree::clear() {
    model_.clear();
}

void DeviceTree::setFilter(const QString& text) {
    filter_.setFilterFixedString(text);
    if (!text.isEmpty())
        expandAll();
}

QStandardItem* DeviceTree::find(const QString& ipncId) const {
    for (int group = 0; group < model_.rowCount(); ++group) {
        QStandardItem* const parent = model_.item(group);
        for (int row = 0; row < parent->rowCount(); ++row) {
            if (parent->child(row)->data(IpncIdRole).toString() == ipncId)
                return parent->child(row);
        }
    }
    return nullptr;
}

void DeviceTree::setVideoOpen(const QString& ipncId, bool open) {
    if (QStandardItem* const item = find(ipncId)) {
        item->setData(open, OpenRole);
        decorate(*item);
    }
}

QString DeviceTree::currentDevice() const {
    return currentIndex().data(IpncIdRole).toString();
}

QSet<QString> DeviceTree::closedGroups() const {
    QSet<QString> result;
    for (int row = 0; row < filter_.rowCount(); ++row) {
        const QModelIndex group = filter_.index(row, 0);
        if (!isExpanded(group))
            result.insert(group.data(GroupIdRole).toString());
    }
    return result;
}

void DeviceTree::select(const QString& ipncId) {
    if (const QStandardItem* const item = ipncId.isEmpty() ? nullptr : find(ipncId))
        setCurrentIndex(filter_.mapFromSource(item->index()));
}

void DeviceTree::contextMenuEvent(QContextMenuEvent* event) {
    const QModelIndex index = event->reason() == QContextMenuEvent::Mouse ? indexAt(event->pos()) : currentIndex();
    const QString ipncId = index.data(IpncIdRole).toString();
    if (ipncId.isEmpty())
        return;
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("deviceMenu"));
    const bool open = index.data(OpenRole).toBool();
    QAction* const toggle = menu.addAction(open ? tr("关闭视频") : tr("打开视频"));
    toggle->setEnabled(index.data(VideoRole).toBool());
    const QPoint place = event->reason() == QContextMenuEvent::Mouse
                             ? event->globalPos()
                             : viewport()->mapToGlobal(visualRect(index).bottomLeft());
    if (menu.exec(place) == toggle)
        emit sigToggleVideo(ipncId);
}
