#include "manageWidget/DeviceTable.h"

#include "base/DeviceModel.h"

#include <QMimeData>

#include <array>
#include <utility>

namespace {

const QString DragType = QStringLiteral("application/x-corvanta-device");

QString rightsText(const DeviceRecord& device) {
    if (device.isAdmin)
        return DeviceTable::tr("管理");
    static constexpr std::array<std::pair<const char*, const char*>, 4> names{
        {{"video", QT_TRANSLATE_NOOP("DeviceTable", "视频")},
         {"record", QT_TRANSLATE_NOOP("DeviceTable", "录像")},
         {"ptz", QT_TRANSLATE_NOOP("DeviceTable", "云台")},
         {"param", QT_TRANSLATE_NOOP("DeviceTable", "参数")}}};
    const QVariantMap authority = device.record.value(QStringLiteral("authority")).toMap();
    QStringList rights;
    for (const auto& [key, text] : names) {
        if (authority.value(QLatin1String(key)).toBool())
            rights += DeviceTable::tr(text);
    }
    return rights.join(DeviceTable::tr("、"));
}

} // namespace

void DeviceTable::setDevices(const DeviceModel& devices) {
    beginResetModel();
    rows_.clear();
    for (const GroupRecord& group : devices.groups())
        addRows(devices, devices.members(group), group.id, group.name);
    addRows(devices, devices.ungrouped(), {}, tr("未分组"));
    endResetModel();
}

void DeviceTable::addRows(const DeviceModel& devices, const QStringList& members, const QString& groupId,
                          const QString& groupName) {
    for (const QString& ipncId : members) {
        const DeviceRecord& device = *devices.device(ipncId);
        const QVariantMap info = device.record.value(QStringLiteral("info")).toMap();
        rows_ += Row{ipncId,
                     device.displayName(),
                     groupId,
                     groupName,
                     device.isOnline(),
                     info.value(QStringLiteral("model")).toString(),
                     info.value(QStringLiteral("ip")).toString(),
                     info.value(QStringLiteral("softwareversion")).toString(),
                     rightsText(device)};
    }
}

QString DeviceTable::ipncId(int row) const {
    return row >= 0 && row < rows_.size() ? rows_[row].ipncId : QString();
}

int DeviceTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_.size();
}

int DeviceTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

QString DeviceTable::text(int row, int column) const {
    const Row& one = rows_[row];
    switch (column) {
    case Position:
        return QString::number(row + 1);
    case Name:
        return one.name;
    case Number:
        return one.ipncId;
    case Group:
        return one.group;
    case Online:
        return one.online ? tr("在线") : tr("离线");
    case Model:
        return one.model;
    case Address:
        return one.address;
    case Firmware:
        return one.firmware;
    case Rights:
        return one.rights;
    default:
        return {};
    }
}

QVariant DeviceTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rows_.size())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row(), index.column());
    case SortRole:
        return index.column() == Position ? QVariant(index.row()) : QVariant(text(index.row(), index.column()));
    case Qt::TextAlignmentRole:
        return int((index.column() == Position ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant DeviceTable::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr std::array<const char*, Columns> titles{
        QT_TR_NOOP("序号"), QT_TR_NOOP("名称"), QT_TR_NOOP("设备编号"), QT_TR_NOOP("分组"), QT_TR_NOOP("状态"),
        QT_TR_NOOP("型号"), QT_TR_NOOP("地址"), QT_TR_NOOP("固件版本"), QT_TR_NOOP("权限")};
    if (orientation != Qt::Horizontal || section < 0 || section >= Columns)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter); // the mark of the order stands at the right end
    if (role != Qt::DisplayRole)
        return {};
    return tr(titles[static_cast<std::size_t>(section)]);
}

Qt::ItemFlags DeviceTable::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!dragging_)
        return usual;
    return index.isValid() ? usual | Qt::ItemIsDragEnabled : Qt::ItemIsDropEnabled;
}

QStringList DeviceTable::mimeTypes() const {
    return {DragType};
}

QMimeData* DeviceTable::mimeData(const QModelIndexList& indexes) const {
    auto* const data = new QMimeData; // the drag owns it
    if (!indexes.isEmpty())
        data->setData(DragType, ipncId(indexes.constFirst().row()).toUtf8());
    return data;
}

bool DeviceTable::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int,
                               const QModelIndex& parent) {
    if (action != Qt::MoveAction || !dragging_ || !data->hasFormat(DragType))
        return false;
    const int before = row >= 0 ? row : parent.isValid() ? parent.row() : rows_.size();
    const QString moved = QString::fromUtf8(data->data(DragType));
    const Place place = placeBefore(before, moved);
    if (!place.groupId.isEmpty())
        emit sigMove(moved, place.groupId, place.index);
    return false; // the row stays until the service has said so
}

DeviceTable::Place DeviceTable::placeBefore(int row, const QString& moved) const {
    if (rows_.isEmpty())
        return {};
    const int above = qBound(0, row, rows_.size()) - 1;
    const QString groupId = rows_[qMax(0, above)].groupId;
    int index = 0;
    for (int one = 0; one <= above; ++one) {
        if (rows_[one].groupId == groupId && rows_[one].ipncId != moved)
            ++index;
    }
    return {groupId, index};
}
