#include "base/DeviceModel.h"

#include "base/DataTree.h"

#include <QDebug>
#include <QSet>

namespace {

QVariant take(QVariantMap& map, const char* key) {
    return map.take(QLatin1String(key));
}
QVariant at(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key));
}

QList<int> pidsOf(const QVariantList& entries) {
    QList<int> result;
    for (const QVariant& entry : entries)
        result += at(entry.toMap(), "pid").toInt();
    return result;
}

QList<InterfaceIndex> indexOf(const QVariantList& entries) {
    QList<InterfaceIndex> result;
    for (const QVariant& entry : entries)
        result += InterfaceIndex::fromMap(entry.toMap());
    return result;
}

} // namespace

GroupRecord GroupRecord::fromMap(const QVariantMap& map) {
    return {at(map, "id").toString(), at(map, "name").toString(), at(map, "ipnclist").toStringList()};
}

InterfaceIndex InterfaceIndex::fromMap(const QVariantMap& map) {
    return {at(map, "pid").toInt(), pidsOf(at(map, "input").toList()), pidsOf(at(map, "output").toList())};
}

// Two forms are in use: the list of sub-devices below "extend", and beside it.
QVariantList DeviceRecord::subDevices() const {
    const QVariantList below = at(at(record, "extend").toMap(), "sublist").toList();
    return below.isEmpty() ? at(record, "sublist").toList() : below;
}

QString DeviceRecord::displayName() const {
    if (!nickname().isEmpty())
        return nickname();
    const QString name = at(record, "name").toString();
    return name.isEmpty() ? ipncId : name;
}

DeviceRecord DeviceRecord::fromMap(const QVariantMap& map) {
    DeviceRecord result;
    result.record = map;
    result.ipncId = at(map, "ipncid").toString();
    result.interfaces = take(result.record, "interfaces").toList();
    result.linkages = take(result.record, "linkages").toList();
    result.interfaceIndex = indexOf(result.interfaces);
    result.subDeviceIndex = indexOf(result.subDevices());
    if (result.isVideo()) {
        // A word or a list of words below "value" are both in use beside the plain flag.
        const QVariantMap authority = at(map, "authority").toMap();
        const QVariant admin = at(authority, "admin");
        result.isAdmin = admin.toBool() || at(authority, "value").toString() == QLatin1String("admin");
        result.qrInfo = at(at(map, "info").toMap(), "QRinfo").toMap();
    }
    return result;
}

DeviceModel DeviceModel::fromDocument(const QVariantMap& document, const QString& defaultGroup) {
    DeviceModel model;
    model.defaultGroup_ = defaultGroup;
    model.groupList_ = at(document, "group").toList();
    for (const QVariant& group : qAsConst(model.groupList_))
        model.addGroup(GroupRecord::fromMap(group.toMap()));
    const QVariantList records = at(document, "ipnclist").toList();
    for (const QVariant& entry : records)
        model.addDevice(DeviceRecord::fromMap(entry.toMap()));
    model.assignGroups();
    model.assignTiles();
    return model;
}

void DeviceModel::addGroup(const GroupRecord& added) {
    // Members are known by their group's id: two groups of one id would both show all of them.
    if (added.id.isEmpty() || group(added.id) != nullptr)
        qDebug() << "group without an id of its own left out" << added.id << added.name;
    else
        groups_ += added;
}

void DeviceModel::addDevice(const DeviceRecord& device) {
    const QString id = device.ipncId;
    if (id.isEmpty()) {
        qDebug() << "device without ipncid left out";
        return;
    }
    if (devices_.contains(id)) {
        qDebug() << "second device of the same ipncid left out" << id;
        return;
    }
    // It can be watched; only what would be stored under its name is refused, where the folder is made.
    if (!corvanta::dataTree::pathComponent(id))
        qDebug() << "device id cannot name a folder" << id;
    order_ += id;
    devices_.insert(id, device);
}

void DeviceModel::assignGroups() {
    QSet<QString> listed;
    for (const GroupRecord& group : qAsConst(groups_)) {
        QStringList& members = members_[group.id];
        for (const QString& id : group.ipncIds) {
            if (devices_.contains(id) && !listed.contains(id)) {
                members += id;
                listed.insert(id);
            }
        }
    }
    for (const QString& id : qAsConst(order_)) {
        if (listed.contains(id))
            continue;
        const auto own = members_.find(devices_.constFind(id)->groupId());
        (own == members_.end() ? ungrouped_ : *own) += id;
    }
}

void DeviceModel::assignTiles() {
    QStringList order;
    if (const GroupRecord* first = defaultGroup())
        order += members(*first);
    for (const GroupRecord& group : groups_)
        order += members(group);
    order += ungrouped();
    int next = 0;
    for (const QString& id : qAsConst(order)) {
        DeviceRecord& device = devices_[id];
        if (device.tileIndex < 0)
            device.tileIndex = next++;
    }
}

const DeviceRecord* DeviceModel::device(const QString& ipncId) const {
    const auto it = devices_.constFind(ipncId);
    return it == devices_.constEnd() ? nullptr : &*it;
}

const GroupRecord* DeviceModel::group(const QString& groupId) const {
    for (const GroupRecord& group : groups_) {
        if (group.id == groupId)
            return &group;
    }
    return nullptr;
}

const GroupRecord* DeviceModel::defaultGroup() const {
    if (const GroupRecord* chosen = group(defaultGroup_))
        return chosen;
    return groups_.isEmpty() ? nullptr : &groups_.first();
}

std::optional<QString> DeviceModel::deviceOfTile(int tileIndex) const {
    for (const QString& id : order_) {
        if (devices_.constFind(id)->tileIndex == tileIndex)
            return id;
    }
    return std::nullopt;
}

void DeviceModel::setVideoOpen(const QString& ipncId, bool open) {
    const auto it = devices_.find(ipncId);
    if (it != devices_.end())
        it->videoOpen = open;
}

QVariantMap DeviceModel::deviceMap() const {
    QVariantMap result;
    for (const QString& id : order_)
        result.insert(id, devices_.constFind(id)->record);
    return result;
}
