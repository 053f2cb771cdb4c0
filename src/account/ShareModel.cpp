#include "account/ShareModel.h"

namespace {

QString textAt(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key)).toString();
}

} // namespace

QString FriendRecord::displayName() const {
    if (!remark.isEmpty())
        return remark;
    return nickname.isEmpty() ? phone : nickname;
}

FriendRecord FriendRecord::fromMap(const QVariantMap& map) {
    return {textAt(map, "friendphone"), textAt(map, "nickname"), textAt(map, "remarkname")};
}

QList<FriendRecord> FriendRecord::listOf(const QVariantList& rows) {
    QList<FriendRecord> result;
    QSet<QString> seen;
    for (const QVariant& row : rows) {
        const FriendRecord record = fromMap(row.toMap());
        if (record.phone.isEmpty() || seen.contains(record.phone))
            continue;
        seen.insert(record.phone);
        result += record;
    }
    return result;
}

ShareModel ShareModel::fromReply(const QVariantMap& resp) {
    ShareModel model;
    model.friends_ = FriendRecord::listOf(resp.value(QStringLiteral("friendlist")).toList());
    QSet<QString> seen;
    for (const QVariant& row : resp.value(QStringLiteral("ipnclist")).toList()) {
        const QVariantMap map = row.toMap();
        Device device{textAt(map, "ipncid"), textAt(map, "nickname"), textAt(map, "friendphone")};
        if (device.ipncId.isEmpty() || seen.contains(device.ipncId))
            continue;
        seen.insert(device.ipncId);
        if (device.name.isEmpty())
            device.name = textAt(map, "name");
        if (device.name.isEmpty())
            device.name = device.ipncId;
        const QVariant authority = map.value(QStringLiteral("authority"));
        const bool isAdmin =
            map.value(QStringLiteral("admin")).toBool() || authority.toMap().value(QStringLiteral("admin")).toBool();
        if (isAdmin)
            model.own_ += Device{device.ipncId, device.name, {}};
        else
            model.received_ += device;
    }
    for (const QVariant& row : resp.value(QStringLiteral("devicesharelist")).toList()) {
        const QVariantMap map = row.toMap();
        if (map.value(QStringLiteral("share")).toBool())
            model.setShared(textAt(map, "friendphone"), textAt(map, "ipncid"), true);
    }
    return model;
}

void ShareModel::setShared(const QString& friendPhone, const QString& ipncId, bool shared) {
    if (shared)
        shares_.insert({friendPhone, ipncId});
    else
        shares_.remove({friendPhone, ipncId});
}
