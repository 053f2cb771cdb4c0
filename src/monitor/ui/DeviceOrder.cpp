#include "monitor/ui/DeviceOrder.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/ui/SendAndReact.h"

#include <QDebug>

#include <algorithm>

DeviceOrder::DeviceOrder(const AppContext& context, QObject* parent)
    : QObject(parent)
    , context_(context) {}

void DeviceOrder::moveDevice(const QString& ipncId, const QString& groupId, int index) {
    const GroupRecord* const group = context_.devices.group(groupId);
    if (group == nullptr)
        return;
    qDebug() << "before index" << ipncId << context_.devices.members(*group).indexOf(ipncId);
    qDebug() << "after index" << ipncId << groupId << index;
    send(
        QStringLiteral("设置设备排序"),
        {{QStringLiteral("groupid"), groupId}, {QStringLiteral("ipncid"), ipncId}, {QStringLiteral("index"), index}});
}

void DeviceOrder::moveGroup(const QString& groupId, int index) {
    const QList<GroupRecord>& groups = context_.devices.groups();
    const auto group =
        std::find_if(groups.begin(), groups.end(), [&groupId](const GroupRecord& one) { return one.id == groupId; });
    if (group == groups.end())
        return;
    qDebug() << "before index" << groupId << static_cast<int>(group - groups.begin());
    qDebug() << "after index" << groupId << index;
    send(QStringLiteral("设置分组排序"), {{QStringLiteral("groupid"), groupId}, {QStringLiteral("index"), index}});
}

void DeviceOrder::send(const QString& operation, const QVariantMap& parameters) {
    corvanta::Reaction reaction;
    reaction.done = [this](const QVariantMap&) {
        emit context_.events.sig_updateDeviceIndex();
    };
    reaction.failed = [this](const QString& text) {
        emit sigMessage(text);
    };
    corvanta::sendAndReact(context_.gateway, corvanta::requests::accountRequest(operation, parameters), this,
                           std::move(reaction));
}
