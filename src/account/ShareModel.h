#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QVariantMap>

/// A friend of the account.
struct FriendRecord {
    QString phone;
    QString nickname;
    QString remark; ///< the user's own note

    /// What the user reads: the note, else the nickname, else the number.
    QString displayName() const;
    static FriendRecord fromMap(const QVariantMap& map);
    /// The friends of a "friendlist"; rows without a number and a second one of the same number are left out.
    static QList<FriendRecord> listOf(const QVariantList& rows);
};

/// Who may see what: the account's friends, its devices, and which are shared with whom. Both views of the rights
/// show this one model. A value.
class ShareModel final {
public:
    struct Device {
        QString ipncId;
        QString name;
        QString owner; ///< a friend's number; empty for the account's own
    };

    ShareModel() = default;
    /// From the reply to "getalldevicesharelist"; what is missing or of another type counts as empty.
    static ShareModel fromReply(const QVariantMap& resp);

    const QList<FriendRecord>& friends() const { return friends_; }
    /// Those that the account may share.
    const QList<Device>& ownDevices() const { return own_; }
    /// Those that friends share with the account.
    const QList<Device>& receivedDevices() const { return received_; }

    bool isShared(const QString& friendPhone, const QString& ipncId) const {
        return shares_.contains({friendPhone, ipncId});
    }
    void setShared(const QString& friendPhone, const QString& ipncId, bool shared);

private:
    QList<FriendRecord> friends_;
    QList<Device> own_;
    QList<Device> received_;
    QSet<QPair<QString, QString>> shares_; ///< friend and device
};
