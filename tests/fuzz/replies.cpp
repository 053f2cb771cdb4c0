// Documents of the service and what it answers to requests.

#include "Fuzz.h"
#include "account/ShareModel.h"
#include "base/DeviceModel.h"
#include "base/InputFields.h"
#include "base/JsonText.h"
#include "base/ServerErrors.h"
#include "manageWidget/NewDevice.h"
#include "manageWidget/PtzCaps.h"
#include "map/MapRecord.h"
#include "sensor/InputRecords.h"
#include "sensor/SensorTypes.h"
#include "vision/LaserInfo.h"
#include "vision/QrPose.h"

using namespace corvanta;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QVariantMap reply = json::parseObject(fuzz::textOf(data, size));
    serverErrors::textOfReply(reply);
    serverErrors::isSuccess(reply);
    serverErrors::codeOf(reply);

    const DeviceModel devices = DeviceModel::fromDocument(reply);
    int members = devices.ungrouped().size();
    for (const GroupRecord& group : devices.groups())
        members += devices.members(group).size();
    // Groups may have the same id, whose members are then counted for each.
    fuzz::demand(members >= devices.ipncIds().size(), "every device stands somewhere in the tree");
    for (int tile = 0; tile < devices.ipncIds().size(); ++tile) {
        if (const auto device = devices.deviceOfTile(tile))
            fuzz::demand(devices.device(*device) != nullptr, "a tile's device is in the list");
    }
    const InputFields fields;
    for (const sensor::InputRecord& input : sensor::inputsOf(devices))
        sensor::nowOf(input, fields);

    const QVariantMap resp = reply.value(QStringLiteral("resp")).toMap();
    for (const QVariantMap& map : {reply, resp}) {
        ShareModel::fromReply(map);
        sensor::SensorTypes::fromReply(map);
        manage::ProbedCamera::fromReply(map);
        manage::PtzCaps::fromValue(map.value(QStringLiteral("ptzcaps")));
        for (const QVariant& entry : map.value(QStringLiteral("maps")).toList())
            map::MapRecord::fromMap(entry.toMap(), false);
        vision::LaserInfo::fromMap(map);
        vision::QrSetup::fromMap(map);
    }
    return 0;
}
