#include "base/RequestBuilder.h"

#include "base/JsonText.h"
#include "base/RequestTables.h"

#include <QDebug>

#include <algorithm>

namespace corvanta::requests {
namespace {

const QString ReqType = QStringLiteral("reqtype");
const QString Type = QStringLiteral("type");
const QString IpncId = QStringLiteral("ipncid");
const QString CmdList = QStringLiteral("cmdlist");

template <typename Entry>
const Entry* find(const QList<Entry>& table, const QString& operation) {
    const auto it = std::find_if(table.begin(), table.end(),
                                 [&operation](const Entry& entry) { return entry.operation == operation; });
    if (it == table.end()) {
        qDebug() << "no request is known as" << operation;
        return nullptr;
    }
    return &*it;
}

QVariantMap accountDocument(const AccountEntry& entry, QVariantMap parameters) {
    if (entry.binding)
        parameters.insert(QStringLiteral("phonetype"), QStringLiteral("pc"));
    QVariantMap inner{{QStringLiteral("params"), parameters}};
    inner.insert(entry.underReqtype ? ReqType : QStringLiteral("clienttype"), entry.value);
    if (entry.forUser)
        inner.insert(QStringLiteral("useloginphone"), QStringLiteral("phonenumber"));
    if (entry.changes)
        inner.insert(QStringLiteral("code"), 1);
    return {{ReqType, QStringLiteral("urlreq")}, {QStringLiteral("urlreq"), inner}};
}

QVariantMap deviceMessage(const DeviceEntry& entry, const QVariantMap& parameters) {
    using Form = DeviceEntry::Form;
    QVariantMap document = parameters;
    document.insert(ReqType, QStringLiteral("p2pmsg"));
    if (entry.form == Form::Read) {
        document.insert(QStringLiteral("getcmds"), entry.names);
    } else if (entry.form == Form::WriteList) {
        document.insert(QStringLiteral("setcmds"), document.take(CmdList));
    } else if (entry.form == Form::WriteNamed) {
        const QString name = entry.names.constFirst();
        const QVariant value = document.contains(name) ? document.take(name) : QVariant(1);
        document.insert(QStringLiteral("setcmds"), QVariantMap{{name, value}});
    }
    return document;
}

QVariantMap serverDocument(const DeviceEntry& entry, const QVariantMap& parameters) {
    const QString type = entry.names.constFirst();
    QVariantMap inner{{Type, type}};
    if (entry.form == DeviceEntry::Form::ServerOf)
        inner.insert(IpncId, parameters.value(IpncId));
    else
        inner.insert(type, parameters);
    return {{ReqType, QStringLiteral("serverreq")}, {QStringLiteral("serverreq"), inner}};
}

} // namespace

std::string directCommand(const QString& operation, const QVariantMap& parameters) {
    const DirectEntry* entry = find(directTable(), operation);
    if (entry == nullptr)
        return {};
    QVariantMap document = parameters;
    document.insert(Type, entry->type);
    return json::toText(document);
}

std::string accountRequest(const QString& operation, const QVariantMap& parameters) {
    const AccountEntry* entry = find(accountTable(), operation);
    return entry == nullptr ? std::string() : json::toText(accountDocument(*entry, parameters));
}

std::string deviceRequest(const QString& operation, const QVariantMap& parameters) {
    using Form = DeviceEntry::Form;
    const DeviceEntry* entry = find(deviceTable(), operation);
    if (entry == nullptr)
        return {};
    switch (entry->form) {
    case Form::Read:
    case Form::WriteList:
    case Form::WriteNamed:
    case Form::Pass:
        return json::toText(deviceMessage(*entry, parameters));
    case Form::Server:
    case Form::ServerOf:
        return json::toText(serverDocument(*entry, parameters));
    case Form::Account: {
        const AccountEntry account{
            .operation = entry->operation, .value = entry->names.constFirst(), .forUser = true, .changes = true};
        return json::toText(accountDocument(account, parameters));
    }
    case Form::Own: {
        QVariantMap document = parameters;
        document.insert(ReqType, entry->names.constFirst());
        return json::toText(document);
    }
    }
    return {};
}

} // namespace corvanta::requests
