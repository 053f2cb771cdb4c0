#include "linkage/NotifyRule.h"

#include "base/DeviceModel.h"
#include "linkage/Boards.h"
#include "linkage/Words.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace corvanta::linkage {
namespace {

struct ListField {
    const char* key;
    QStringList NotifyRule::*field;
};
constexpr ListField listFields[] = {
    {"recvphones", &NotifyRule::phones}, {"ipncids", &NotifyRule::ipncIds},    {"reporttype", &NotifyRule::types},
    {"reportmode", &NotifyRule::modes},  {"smslevel", &NotifyRule::smsLevels}, {"applevel", &NotifyRule::appLevels},
};

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(NotifyRule)
};

QString separator() {
    return QStringLiteral(", ");
}

} // namespace

NotifyRule NotifyRule::fromMap(const QVariantMap& map) {
    NotifyRule rule;
    rule.rest = map;
    const auto take = [&rule](const char* key) {
        return rule.rest.take(QLatin1String(key));
    };
    const QVariant number = take("id");
    if (number.isValid() && !number.isNull())
        rule.id = number.toInt();
    rule.name = take("name").toString();
    for (const ListField& entry : listFields)
        rule.*entry.field = take(entry.key).toStringList();
    rule.selfUse = take("selfuse").toBool();
    rule.smsTemplate = take("smstemplate").toString();
    rule.appTemplate = take("apptemplate").toString();
    rule.enable = take("enable").toBool();
    return rule;
}

QVariantMap NotifyRule::toMap() const {
    QVariantMap map = rest;
    if (id)
        map.insert(QStringLiteral("id"), *id);
    map.insert(QStringLiteral("name"), name);
    for (const ListField& entry : listFields)
        map.insert(QLatin1String(entry.key), this->*entry.field);
    map.insert(QStringLiteral("selfuse"), selfUse);
    map.insert(QStringLiteral("smstemplate"), smsTemplate);
    map.insert(QStringLiteral("apptemplate"), appTemplate);
    map.insert(QStringLiteral("enable"), enable);
    return map;
}

std::optional<QString> checkRule(const NotifyRule& rule) {
    if (rule.name.isEmpty())
        return Texts::tr("通知策略名称不能为空!");
    if (!rule.selfUse && rule.phones.isEmpty())
        return Texts::tr("接收人选择不能为空!");
    if (rule.ipncIds.isEmpty())
        return Texts::tr("关注设备选择不能为空!");
    if (rule.types.isEmpty())
        return Texts::tr("通知类型选择不能为空!");
    if (rule.modes.isEmpty())
        return Texts::tr("通知方式选择不能为空！!"); // both marks are what users know
    if (rule.smsLevels.isEmpty() && rule.appLevels.isEmpty())
        return Texts::tr("短信接收等级和APP接收等级\n至少选择一种!");
    return std::nullopt;
}

QString previewOf(const QString& text) {
    QString result = text;
    for (const Word& word : placeholders())
        result.replace(word.code, word.text); // no text holds another's code
    return result;
}

QList<Receiver> receiversOf(const QVariantList& friends) {
    static const QRegularExpression between(QStringLiteral("[\\s,;/|，；、]+"));
    QList<Receiver> result;
    QStringList seen;
    for (const QVariant& entry : friends) {
        const QVariantMap map = entry.toMap();
        const QString name = map.value(QStringLiteral("name")).toString();
        const QStringList phones =
            map.value(QStringLiteral("friendphone")).toString().split(between, Qt::SkipEmptyParts);
        for (const QString& phone : phones) {
            if (seen.contains(phone))
                continue;
            seen += phone;
            result += {name.isEmpty() ? phone : name, phone};
        }
    }
    return result;
}

QString receiverTexts(const NotifyRule& rule, const QList<Receiver>& receivers) {
    QStringList texts;
    if (rule.selfUse)
        texts += ownReceiver();
    for (const QString& phone : rule.phones) {
        const auto known = std::find_if(receivers.begin(), receivers.end(),
                                        [&phone](const Receiver& one) { return one.phone == phone; });
        texts += known == receivers.end() ? phone : known->name;
    }
    return texts.join(separator());
}

QString ownReceiver() {
    return Texts::tr("本机");
}

QStringList watchableDevices(const DeviceModel& devices) {
    QStringList result;
    for (const QString& ipncId : devices.ipncIds()) {
        const DeviceRecord& device = *devices.device(ipncId);
        const QVariantMap rights = device.record.value(QStringLiteral("authority")).toMap();
        const bool hasRight = std::any_of(rights.begin(), rights.end(), [](const QVariant& right) {
            // A word or a list of words below "value" are both in use beside the plain flags.
            return right.type() == QVariant::List ? !right.toList().isEmpty() : right.toBool();
        });
        if (device.isAdmin || device.record.value(QStringLiteral("admin")).toBool() || hasRight)
            result += ipncId;
    }
    return result;
}

QString deviceTexts(const NotifyRule& rule, const DeviceModel& devices) {
    QStringList texts;
    for (const QString& ipncId : rule.ipncIds) {
        const DeviceRecord* const device = devices.device(ipncId);
        texts += device == nullptr ? deletedText(ipncId) : device->displayName();
    }
    return texts.join(separator());
}

QString groupTexts(const NotifyRule& rule, const DeviceModel& devices) {
    QStringList texts;
    for (const GroupRecord& group : devices.groups()) {
        const QStringList members = devices.members(group);
        if (std::any_of(members.begin(), members.end(),
                        [&rule](const QString& member) { return rule.ipncIds.contains(member); }))
            texts += group.name;
    }
    return texts.join(separator());
}

} // namespace corvanta::linkage
