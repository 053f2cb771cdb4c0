#include "monitor/ui/DeviceTree.h"

#include "base/DeviceModel.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "linkage/Boards.h"
#include "map/ui/SensorMimeData.h"
#include "monitor/DropRule.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>

#include <memory>
#include <utility>

namespace dropRule = corvanta::dropRule;
namespace theme = corvanta::theme;

namespace {

/// How a device's camera is drawn; red where it is recorded, else green where its video is open.
QIcon deviceIcon(bool video, bool online, bool open, bool recorded) {
    const QString drawing =
        !video ? QStringLiteral("sensor") : (online ? QStringLiteral("camera") : QStringLiteral("camera-off"));
    static QHash<QString, QIcon> cache;
    const QString key =
        drawing + QLatin1Char(open ? '+' : '-') + QLatin1Char(online ? '+' : '-') + QLatin1Char(recorded ? '+' : '-');
    auto it = cache.find(key);
    if (it == cache.end())
        it = cache.insert(key, corvanta::svgIcon(drawing, recorded ? theme::Alarm
                                                          : open   ? theme::Healthy
                                                          : online ? theme::TextOnDark
                                                                   : theme::FaintOnDark));
    return *it;
}

using enum DeviceTreeModel::Role;

} // namespace

QMimeData* DeviceTreeModel::mimeData(const QModelIndexList& indexes) const {
    std::unique_ptr<QMimeData> rows(QStandardItemModel::mimeData(indexes));
    if (rows == nullptr || indexes.isEmpty() || indexes.first().data(IpncIdRole).toString().isEmpty())
        return rows.release(); // a group
    auto dragged = std::make_unique<corvanta::map::SensorMimeData>(indexes.first().data(IpncIdRole).toString(),
                                                                   indexes.first().data(SensorRole).toString());
    for (const QString& format : rows->formats())
        dragged->setData(format, rows->data(format));
    return dragged.release(); // the drag owns it
}

DeviceTree::DeviceTree(QWidget* parent)
    : QTreeView(parent) {
    setObjectName(QStringLiteral("deviceTree"));
    corvanta::wordedName(this, [] { return tr("设备树"); });
    setHeaderHidden(true);
    setEditTriggers(NoEditTriggers);
    setUniformRowHeights(true);
    setIconSize(QSize(theme::IconSize, theme::IconSize));
    setIndentation(16);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
    setDragDropMode(InternalMove);
    setDragDropOverwriteMode(false);
    setAutoExpandDelay(600);
    filter_.setSourceModel(&model_);
    filter_.setRecursiveFilteringEnabled(true);
    filter_.setFilterCaseSensitivity(Qt::CaseInsensitive);
    setModel(&filter_);
    connect(this, &QTreeView::activated, this, [this](const QModelIndex& index) {
        const QString ipncId = index.data(IpncIdRole).toString();
        if (!ipncId.isEmpty() && index.data(VideoRole).toBool())
            emit sigToggleVideo(ipncId);
    });
    // A double click on a device opens its video; its sensors are seen by its arrow.
    setExpandsOnDoubleClick(false);
    connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.data(IpncIdRole).toString().isEmpty())
            setExpanded(index, !isExpanded(index));
    });
    const auto tell = [this] {
        if (!building_)
            emit sigStateChanged();
    };
    connect(this, &QTreeView::expanded, this, tell);
    connect(this, &QTreeView::collapsed, this, tell);
}

void DeviceTree::rebuild(const DeviceModel& devices) {
    if (!isEmpty())
        rememberClosedGroups();
    if (!currentDevice().isEmpty())
        wantedDevice_ = currentDevice();
    building_ = true;
    model_.clear();
    model_.invisibleRootItem()->setDropEnabled(true);
    for (const GroupRecord& group : devices.groups())
        appendGroup(group.id, group.name, devices.members(group), devices, &group == devices.defaultGroup());
    if (!devices.ungrouped().isEmpty())
        appendGroup(QString(), tr("未分组"), devices.ungrouped(), devices, false);
    applyClosedGroups();
    select(wantedDevice_);
    building_ = false;
}

void DeviceTree::appendGroup(const QString& id, const QString& name, const QStringList& members,
                             const DeviceModel& devices, bool isDefault) {
    auto group = std::make_unique<QStandardItem>();
    int online = 0;
    for (const QString& ipncId : members) {
        const DeviceRecord& device = *devices.device(ipncId);
        online += device.isOnline() ? 1 : 0;
        auto item = std::make_unique<QStandardItem>(device.displayName());
        item->setData(ipncId, IpncIdRole);
        item->setData(device.videoOpen, OpenRole);
        item->setData(device.isVideo(), VideoRole);
        item->setData(device.isOnline(), OnlineRole);
        item->setDropEnabled(false);
        decorate(*item);
        appendSensors(*item, device);
        group->appendRow(item.release());
    }
    group->setText(QStringLiteral("%1  %2/%3").arg(name, QString::number(online), QString::number(members.size())));
    QString tip = tr("%1：在线 %2，共 %3").arg(name, QString::number(online), QString::number(members.size()));
    if (isDefault) {
        QFont font = this->font();
        font.setBold(true);
        group->setFont(font);
        tip += QLatin1Char('\n') + tr("默认组：其设备占据最前面的窗口");
    }
    group->setToolTip(corvanta::plainToolTip(tip));
    group->setData(id, GroupIdRole);
    group->setDragEnabled(!id.isEmpty());
    group->setDropEnabled(!id.isEmpty());
    group->setIcon(corvanta::svgIcon(QStringLiteral("group"), theme::FaintOnDark));
    model_.appendRow(group.release());
}

void DeviceTree::appendSensors(QStandardItem& item, const DeviceRecord& device) {
    const auto boards = corvanta::linkage::Boards::of(device);
    for (const corvanta::linkage::Board& board : boards.all()) {
        auto sensor = std::make_unique<QStandardItem>(board.name);
        sensor->setData(device.ipncId, IpncIdRole);
        sensor->setData(QString::number(board.pid), SensorRole);
        sensor->setDropEnabled(false);
        sensor->setIcon(deviceIcon(false, device.isOnline(), false, false));
        sensor->setForeground(device.isOnline() ? theme::TextOnDark : theme::FaintOnDark);
        sensor->setToolTip(corvanta::plainToolTip(device.displayName() + QLatin1Char('\n') + board.name));
        item.appendRow(sensor.release());
    }
}

bool DeviceTree::isSensor(const QStandardItem& item) {
    return item.data(SensorRole).isValid();
}

void DeviceTree::decorate(QStandardItem& item) {
    const bool online = item.data(OnlineRole).toBool();
    const bool open = item.data(OpenRole).toBool();
    const bool recorded = item.data(RecordRole).toBool();
    item.setIcon(deviceIcon(item.data(VideoRole).toBool(), online, open, recorded));
    item.setForeground(online ? theme::TextOnDark : theme::FaintOnDark);
    QString state = open ? tr("视频已打开") : (online ? tr("在线") : tr("离线"));
    if (recorded)
        state += tr("，正在录像");
    item.setToolTip(corvanta::plainToolTip(
        QStringLiteral("%1\n%2\n%3").arg(item.text(), item.data(IpncIdRole).toString(), state)));
}

void DeviceTree::clear() {
    if (isEmpty())
        return;
    rememberClosedGroups();
    if (!currentDevice().isEmpty())
        wantedDevice_ = currentDevice();
    building_ = true;
    model_.clear();
    building_ = false;
}

void DeviceTree::setFilter(const QString& text) {
    rememberClosedGroups();
    building_ = true;
    filter_.setFilterFixedString(text);
    isFiltered_ = !text.isEmpty();
    applyClosedGroups();
    building_ = false;
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
    setFlag(ipncId, OpenRole, open);
}

void DeviceTree::setRecording(const QString& ipncId, bool recording) {
    setFlag(ipncId, RecordRole, recording);
}

void DeviceTree::setFlag(const QString& ipncId, Role role, bool value) {
    QStandardItem* const item = find(ipncId);
    if (item == nullptr || item->data(role).toBool() == value)
        return;
    item->setData(value, role);
    decorate(*item);
}

QString DeviceTree::currentDevice() const {
    return currentIndex().data(IpncIdRole).toString();
}

void DeviceTree::rememberClosedGroups() {
    if (isFiltered_) // all that was found is open then
        return;
    for (int row = 0; row < filter_.rowCount(); ++row) {
        const QModelIndex group = filter_.index(row, 0);
        const QString id = group.data(GroupIdRole).toString();
        if (isExpanded(group))
            closedGroups_.remove(id);
        else
            closedGroups_.insert(id);
        for (int device = 0; device < filter_.rowCount(group); ++device) {
            const QModelIndex index = filter_.index(device, 0, group);
            if (isExpanded(index))
                openDevices_.insert(index.data(IpncIdRole).toString());
            else
                openDevices_.remove(index.data(IpncIdRole).toString());
        }
    }
}

void DeviceTree::applyClosedGroups() {
    if (isFiltered_)
        return expandAll();
    for (int row = 0; row < filter_.rowCount(); ++row) {
        const QModelIndex group = filter_.index(row, 0);
        setExpanded(group, !closedGroups_.contains(group.data(GroupIdRole).toString()));
        for (int device = 0; device < filter_.rowCount(group); ++device) {
            const QModelIndex index = filter_.index(device, 0, group);
            setExpanded(index, openDevices_.contains(index.data(IpncIdRole).toString()));
        }
    }
}

QVariant DeviceTree::state() const {
    QStringList closed;
    for (int row = 0; row < filter_.rowCount(); ++row) {
        if (!isExpanded(filter_.index(row, 0)))
            closed += filter_.index(row, 0).data(GroupIdRole).toString();
    }
    return QVariantMap{{QStringLiteral("closed"), closed}, {QStringLiteral("current"), currentDevice()}};
}

void DeviceTree::restoreState(const QVariant& state) {
    const QVariantMap map = state.toMap();
    const QStringList closed = map.value(QStringLiteral("closed")).toStringList();
    closedGroups_ = QSet<QString>(closed.begin(), closed.end());
    wantedDevice_ = map.value(QStringLiteral("current")).toString();
    building_ = true;
    applyClosedGroups();
    select(wantedDevice_);
    building_ = false;
}

void DeviceTree::select(const QString& ipncId) {
    if (const QStandardItem* const item = ipncId.isEmpty() ? nullptr : find(ipncId))
        setCurrentIndex(filter_.mapFromSource(item->index()));
}

void DeviceTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (building_)
        return;
    emit sigCurrentDevice(currentDevice());
    emit sigStateChanged();
}

QString DeviceTree::groupId(int row) const {
    return model_.item(row)->data(GroupIdRole).toString();
}

const QStandardItem* DeviceTree::itemAt(const QModelIndex& index) const {
    return index.isValid() ? model_.itemFromIndex(filter_.mapToSource(index)) : nullptr;
}

void DeviceTree::startDrag(Qt::DropActions actions) {
    const QStandardItem* const item = itemAt(currentIndex());
    if (item == nullptr)
        return;
    dragged_ = item->index();
    QTreeView::startDrag(actions);
    dragged_ = QPersistentModelIndex();
}

void DeviceTree::dragMoveEvent(QDragMoveEvent* event) {
    QTreeView::dragMoveEvent(event); // finds the place of the indicator
    event->setAccepted(target(event->pos()).has_value());
}

void DeviceTree::dropEvent(QDropEvent* event) {
    const QStandardItem* const dragged = dragged_.isValid() ? model_.itemFromIndex(dragged_) : nullptr;
    const auto place = target(event->pos());
    // Never a move in the view's own sense: the row stays where it is until the service has said so.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setState(NoState);
    viewport()->update();
    if (dragged == nullptr || !place)
        return;
    const QString ipncId = dragged->data(IpncIdRole).toString();
    if (ipncId.isEmpty())
        emit sigMoveGroup(dragged->data(GroupIdRole).toString(), place->index);
    else
        emit sigMoveDevice(ipncId, place->groupId, place->index);
}

std::optional<DeviceTree::Place> DeviceTree::target(const QPoint& position) const {
    const QStandardItem* const dragged = dragged_.isValid() ? model_.itemFromIndex(dragged_) : nullptr;
    if (dragged == nullptr || isSensor(*dragged) || isFiltered_ || model_.rowCount() == 0)
        return std::nullopt;
    dropRule::Shape shape;
    for (int group = 0; group < model_.rowCount(); ++group)
        shape.devices.push_back(model_.item(group)->rowCount());
    shape.lastIsRest = groupId(model_.rowCount() - 1).isEmpty();
    const auto rowOf = [](const QStandardItem& item) {
        return item.parent() == nullptr ? dropRule::Row{item.row(), -1}
                                        : dropRule::Row{item.parent()->row(), item.row()};
    };
    const QModelIndex under = indexAt(position);
    const QStandardItem* const over = itemAt(under);
    if (over != nullptr && isSensor(*over))
        return std::nullopt;
    const auto side = dropIndicatorPosition() == AboveItem   ? dropRule::Side::Above
                      : dropIndicatorPosition() == BelowItem ? dropRule::Side::Below
                                                             : dropRule::Side::On;
    if (dragged->parent() == nullptr) {
        const auto overRow = over == nullptr ? std::nullopt : std::optional(rowOf(*over));
        const auto place = dropRule::placeOfGroup(shape, dragged->row(), overRow, side);
        return place ? std::optional(Place{QString(), *place}) : std::nullopt;
    }
    if (over == nullptr)
        return std::nullopt;
    const auto place = dropRule::placeOfDevice(shape, rowOf(*dragged), rowOf(*over), side, isExpanded(under));
    return place ? std::optional(Place{groupId(place->group), place->device}) : std::nullopt;
}

void DeviceTree::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    const QStandardItem* const item = itemAt(index);
    if (item == nullptr)
        return;
    const QPoint place = byMouse ? event->globalPos() : viewport()->mapToGlobal(visualRect(index).bottomLeft());
    if (item->parent() == nullptr)
        groupMenu(*item, place);
    else if (isSensor(*item))
        deviceMenu(*item->parent(), place);
    else
        deviceMenu(*item, place);
}

void DeviceTree::deviceMenu(const QStandardItem& item, const QPoint& place) {
    const QString ipncId = item.data(IpncIdRole).toString();
    const QString ownId = item.parent()->data(GroupIdRole).toString();
    const bool isVideo = item.data(VideoRole).toBool();
    const bool mayMove = !isFiltered_ && !ownId.isEmpty();
    const int row = item.row();
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("deviceMenu"));
    menu.setAccessibleName(tr("设备菜单"));
    const auto add = [](QMenu& to, const char* name, const QString& text, bool enabled, auto&& chosen) {
        QAction* const action = to.addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setEnabled(enabled);
        QObject::connect(action, &QAction::triggered, &to, std::forward<decltype(chosen)>(chosen));
    };
    add(menu, "deviceToggle", item.data(OpenRole).toBool() ? tr("关闭视频") : tr("打开视频"), isVideo,
        [this, ipncId] { emit sigToggleVideo(ipncId); });
    add(menu, "devicePreview", tr("预览图片"), isVideo, [this, ipncId] { emit sigPreview(ipncId); });
    const bool recorded = item.data(RecordRole).toBool();
    add(menu, "deviceRecord", recorded ? tr("停止录像") : tr("开始录像"), isVideo || recorded,
        [this, ipncId] { emit sigToggleRecording(ipncId); });
    menu.addSeparator();
    add(menu, "deviceUp", tr("上移"), mayMove && row > 0,
        [this, ipncId, ownId, row] { emit sigMoveDevice(ipncId, ownId, row - 1); });
    add(menu, "deviceDown", tr("下移"), mayMove && row + 1 < item.parent()->rowCount(),
        [this, ipncId, ownId, row] { emit sigMoveDevice(ipncId, ownId, row + 1); });
    QMenu* const groups = menu.addMenu(tr("移到分组"));
    groups->setObjectName(QStringLiteral("deviceGroups"));
    for (int group = 0; group < model_.rowCount(); ++group) {
        const QStandardItem* const other = model_.item(group);
        const QString otherId = other->data(GroupIdRole).toString();
        if (otherId.isEmpty() || otherId == ownId)
            continue;
        // An ampersand in a name is none that underlines.
        const QString text = other->text().replace(QLatin1Char('&'), QStringLiteral("&&"));
        add(*groups, "deviceGroup", text, true,
            [this, ipncId, otherId, end = other->rowCount()] { emit sigMoveDevice(ipncId, otherId, end); });
    }
    groups->setEnabled(!groups->isEmpty());
    menu.addSeparator();
    add(menu, "deviceConfigure", tr("设备配置"), true, [this, ipncId] { emit sigConfigureDevice(ipncId); });
    add(menu, "deviceLinkage", tr("联动设置"), true, [this, ipncId] { emit sigLinkage(ipncId); });
    add(menu, "deviceSensors", tr("传感器设置"), true, [this, ipncId] { emit sigSensors(ipncId); });
    add(menu, "deviceRename", tr("重命名"), true, [this, ipncId] { emit sigRenameDevice(ipncId); });
    add(menu, "deviceDelete", tr("删除设备"), true, [this, ipncId] { emit sigDeleteDevice(ipncId); });
    add(menu, "deviceAdd", tr("添加设备"), true, [this, ownId] { emit sigAddDevice(ownId); });
    menu.exec(place);
}

void DeviceTree::groupMenu(const QStandardItem& item, const QPoint& place) {
    const QString id = item.data(GroupIdRole).toString();
    const int row = item.row();
    const bool isReal = !id.isEmpty();
    const bool hasNext = row + 1 < model_.rowCount() && !groupId(row + 1).isEmpty();
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("groupMenu"));
    menu.setAccessibleName(tr("分组菜单"));
    const auto add = [&menu](const char* name, const QString& text, bool enabled, auto&& chosen) {
        QAction* const action = menu.addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setEnabled(enabled);
        QObject::connect(action, &QAction::triggered, &menu, std::forward<decltype(chosen)>(chosen));
    };
    add("groupOpen", tr("打开本组视频"), item.hasChildren(), [this, id] { emit sigOpenGroup(id, true); });
    add("groupClose", tr("关闭本组视频"), item.hasChildren(), [this, id] { emit sigOpenGroup(id, false); });
    add("groupRecord", tr("本组开始录像"), item.hasChildren(), [this, id] { emit sigRecordGroup(id, true); });
    add("groupStopRecord", tr("本组停止录像"), item.hasChildren(), [this, id] { emit sigRecordGroup(id, false); });
    menu.addSeparator();
    add("groupDefault", tr("设为默认组"), isReal && !item.font().bold(), [this, id] { emit sigDefaultGroup(id); });
    add("groupUp", tr("上移"), isReal && !isFiltered_ && row > 0,
        [this, id, row] { emit sigMoveGroup(id, row - 1); });
    add("groupDown", tr("下移"), isReal && !isFiltered_ && hasNext,
        [this, id, row] { emit sigMoveGroup(id, row + 1); });
    menu.addSeparator();
    add("groupNew", tr("新增分组"), !isFiltered_, [this] { emit sigEditGroup(QString()); });
    add("groupRename", tr("编辑分组"), isReal, [this, id] { emit sigEditGroup(id); });
    add("groupManage", tr("分组管理"), true, [this] { emit sigManageGroups(); });
    add("groupAddDevice", tr("添加设备"), true, [this, id] { emit sigAddDevice(id); });
    add("groupDevices", tr("设备管理"), true, [this] { emit sigManageDevices(); });
    menu.addSeparator();
    add("expandAll", tr("全部展开"), true, [this] { expandToDepth(0); });
    add("collapseAll", tr("全部收起"), true, [this] { collapseAll(); });
    menu.exec(place);
}
