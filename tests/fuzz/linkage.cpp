// Linkage plans, notification rules and alarms, as the service and devices send them.

#include "Fuzz.h"
#include "base/DeviceModel.h"
#include "base/JsonText.h"
#include "linkage/AlarmMessage.h"
#include "linkage/LinkagePlan.h"
#include "linkage/NotifyRule.h"

using namespace corvanta;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QVariantMap message = json::parseObject(fuzz::textOf(data, size));
    linkage::AlarmMessage::fromMap(message);

    const DeviceModel devices = DeviceModel::fromDocument(message);
    const DeviceRecord* const device = devices.isEmpty() ? nullptr : devices.device(devices.ipncIds().first());
    const linkage::Boards boards = device == nullptr ? linkage::Boards() : linkage::Boards::of(*device);
    QVariantList plans = message.value(QStringLiteral("linkages")).toList();
    plans.append(message);
    for (const linkage::LinkagePlan& plan : linkage::LinkagePlan::listOf(plans)) {
        linkage::textsOf(plan, QStringLiteral("device"), boards);
        linkage::checkPlan(plan, {});
        const QVariantMap stored = plan.toMap();
        fuzz::demand(linkage::LinkagePlan::fromMap(stored).toMap() == stored,
                     "a plan that was stored is read as it was");
    }
    const linkage::NotifyRule rule = linkage::NotifyRule::fromMap(message);
    linkage::checkRule(rule);
    linkage::previewOf(rule.smsTemplate);
    linkage::deviceTexts(rule, devices);
    linkage::groupTexts(rule, devices);
    linkage::receiverTexts(rule, linkage::receiversOf(message.value(QStringLiteral("friendlist")).toList()));
    const QVariantMap stored = rule.toMap();
    fuzz::demand(linkage::NotifyRule::fromMap(stored).toMap() == stored, "a rule that was stored is read as it was");
    return 0;
}
