#pragma once

#include <QStringList>
#include <QVariantMap>

#include <optional>

class DeviceModel;

namespace corvanta::linkage {

/// A rule by which the service tells people of alarms. A value. Keys that this program does not know are kept.
struct NotifyRule {
    std::optional<int> id; ///< the service's; none for a rule that was never saved
    QString name;
    QStringList phones;    ///< of friends who are told
    bool selfUse = false;  ///< the own account is told, too
    QStringList ipncIds;   ///< devices that are watched
    QStringList types;     ///< codes, of `SystemNames::reportTypes`
    QStringList modes;     ///< codes, of `SystemNames::reportModes`
    QStringList smsLevels; ///< codes, of `levels()`
    QStringList appLevels;
    QString smsTemplate;
    QString appTemplate;
    bool enable = true;
    QVariantMap rest;

    static NotifyRule fromMap(const QVariantMap& map);
    QVariantMap toMap() const;
};

/// Why a rule cannot be saved; nothing when it can. The first reason, in the order in which they are looked for.
std::optional<QString> checkRule(const NotifyRule& rule);

/// A template as it is read: placeholders replaced by what they stand for.
QString previewOf(const QString& text);

/// A friend who can be told.
struct Receiver {
    QString name;
    QString phone;
};
/// The friends of a "friendlist". The field of a friend's number may hold several: each is a receiver of its own.
QList<Receiver> receiversOf(const QVariantList& friends);
/// Who is told by a rule, by name; a number that no friend has reads as it is. The own account comes first.
QString receiverTexts(const NotifyRule& rule, const QList<Receiver>& receivers);
/// How the own account is called among the receivers.
QString ownReceiver();

/// The devices on which the user holds rights, so that rules may watch them, in the order of the list.
QStringList watchableDevices(const DeviceModel& devices);
/// Names of the watched devices, and of the groups that they are in, each once; a device that is gone reads as its
/// id, marked as deleted.
QString deviceTexts(const NotifyRule& rule, const DeviceModel& devices);
QString groupTexts(const NotifyRule& rule, const DeviceModel& devices);

} // namespace corvanta::linkage
