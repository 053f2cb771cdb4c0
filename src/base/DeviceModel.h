#pragma once

#include <QHash>
#include <QStringList>
#include <QVariantMap>

#include <optional>

/// A group of devices as the service sends it. "id", "name", and the members in display order.
struct GroupRecord {
    QString id;
    QString name;
    QStringList ipncIds;

    static GroupRecord fromMap(const QVariantMap& map);
};

/// The ids of one interface or sub-device and of its inputs and outputs, by which sensor data is found.
struct InterfaceIndex {
    int pid = 0;
    QList<int> inputs;
    QList<int> outputs;

    static InterfaceIndex fromMap(const QVariantMap& map);
};

/// One device. `record` holds every key that the service sent, except "linkages" and "interfaces" which stand
/// beside it, so that keys that this program does not know survive.
struct DeviceRecord {
    QString ipncId;
    QVariantMap record;
    QVariantList interfaces;
    QVariantList linkages;
    QList<InterfaceIndex> interfaceIndex;
    QList<InterfaceIndex> subDeviceIndex;
    bool isAdmin = false;   ///< of a camera: the signed-in account administers it
    QVariantMap qrInfo;     ///< of a camera: its QR-code calibration
    bool videoOpen = false; ///< a live video of it is open now; kept by the client
    int tileIndex = -1;     ///< its tile in the grid

    QString nickname() const { return record.value(QStringLiteral("nickname")).toString(); }
    /// What the user reads: the nickname, else the device's own name, else its id.
    QString displayName() const;
    bool isVideo() const { return record.value(QStringLiteral("type")).toString() == QLatin1String("video"); }
    bool isOnline() const { return record.value(QStringLiteral("online")).toBool(); }
    /// Radio nodes, soft interfaces and the like, which have inputs and outputs as interfaces do.
    QVariantList subDevices() const;
    QString groupId() const { return record.value(QStringLiteral("groupid")).toString(); }

    static DeviceRecord fromMap(const QVariantMap& map);
};

/// The devices and groups of the signed-in account: a value, replaced as a whole whenever the service announces a
/// change.
///
/// Tile indices: the members of the default group come first, in their order, then every other device in tree
/// order, counting from 0. The default group is the first one unless `setDefaultGroup` names another.
class DeviceModel final {
public:
    DeviceModel() = default;

    /// From the document {"ipnclist": [...], "group": [...]}. Records of either without an id, and later ones with
    /// an id seen before, are left out with one debug line each.
    static DeviceModel fromDocument(const QVariantMap& document, const QString& defaultGroup = {});

    const QList<GroupRecord>& groups() const { return groups_; }
    /// In the order of the document.
    const QStringList& ipncIds() const { return order_; }
    /// Null for an unknown id.
    const DeviceRecord* device(const QString& ipncId) const;
    const GroupRecord* group(const QString& groupId) const;
    /// The members of a group that exist, in display order: those it lists, then those that no group lists and that
    /// name it themselves. A device is a member of one group at most.
    QStringList members(const GroupRecord& group) const { return members_.value(group.id); }
    /// Devices that belong to no group of the list.
    const QStringList& ungrouped() const { return ungrouped_; }
    /// Null when there are no groups.
    const GroupRecord* defaultGroup() const;
    /// The device that owns a tile.
    std::optional<QString> deviceOfTile(int tileIndex) const;

    void setVideoOpen(const QString& ipncId, bool open);

    bool isEmpty() const { return order_.isEmpty(); }
    /// The lists in the form in which they are handed to receivers of `sig_updateList(QVariantList,QVariantMap)`.
    QVariantList groupList() const { return groupList_; }
    QVariantMap deviceMap() const;

private:
    void addGroup(const GroupRecord& added);
    void addDevice(const DeviceRecord& device);
    void assignGroups();
    void assignTiles();

    QList<GroupRecord> groups_;
    QVariantList groupList_;
    QStringList order_;
    QHash<QString, DeviceRecord> devices_;
    QString defaultGroup_;
    QHash<QString, QStringList> members_; ///< group id to device ids
    QStringList ungrouped_;
};
