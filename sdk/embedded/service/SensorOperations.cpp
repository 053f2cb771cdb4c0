#include "device/DeviceRequests.h"
#include "device/Rights.h"
#include "sensor/BoardType.h"
#include "sensor/Position.h"
#include "service/BoardRecords.h"
#include "service/Operations.h"
#include "store/Devices.h"
#include "store/Maps.h"

#include <optional>
#include <set>
#include <utility>

namespace ipncsdk::service {

namespace {

/// Runs a change of the boards of a device that the caller must administer, and has all who see it read it again.
template <typename Change>
Reply changeBoards(const OperationContext& context, const Json& params, const char* what, const Change& change) {
    const auto ipncid = textAt(params, "ipncid");
    if (!ipncid)
        return ServiceCode::BadRequest;
    BoardChange outcome;
    const ServiceCode code = context.change(what, [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*device, device::Right::Admin))
            return ServiceCode::NoRight;
        outcome = change(sql, device->device);
        context.effects.concerned.insert(device->device.owner);
        for (const store::AccountId account : store::friendsWith(sql, *ipncid))
            context.effects.concerned.insert(account);
        // Maps show the reference points of the boards on them.
        if (sensor::isPositionBoard(outcome.record))
            context.effects.concernedByFiles.merge(
                store::viewersOfMarkers(sql, {*ipncid, sensor::wholeAt(outcome.record, "pid", 0)}));
        return outcome.code;
    });
    Reply reply(code);
    if (code == ServiceCode::Done && outcome.record.is_object())
        reply.content = {{"pid", outcome.record["pid"]}, {"sensorinfo", outcome.record}};
    else if (code == outcome.code && !outcome.text.empty())
        reply.content["text"] = outcome.text;
    return reply;
}

} // namespace

Reply sensorType(const OperationContext& /*context*/, const Json& /*params*/) {
    return Reply(sensor::boardTypesDocument());
}

Reply moduleInterface(const OperationContext& context, const Json& params) {
    const auto ipncid = textAt(params, "ipncid");
    if (!ipncid)
        return ServiceCode::BadRequest;
    Json interfaces = Json::array();
    const ServiceCode code = context.database.read("read a device's interfaces", [&](soci::session& sql) {
        const auto device = device::visibleDevice(sql, context.caller.id, *ipncid, context.cameras);
        if (!device)
            return ServiceCode::UnknownDevice;
        if (!device::allows(*device, device::Right::Param))
            return ServiceCode::NoRight;
        std::set<std::string> used;
        for (const Json& board : BoardRecords(device->device.interfaces, device->device.extend).all())
            used.insert(sensor::textOr(board, "ifname", ""));
        for (const sensor::BoardType& type : sensor::boardTypes()) {
            for (int slot = 1; slot <= type.slots; ++slot) {
                const std::string name = std::string(type.name) + "-" + std::to_string(slot);
                interfaces.push_back({{"ifname", name}, {"type", type.name}, {"used", used.count(name) > 0}});
            }
        }
        return ServiceCode::Done;
    });
    return code == ServiceCode::Done ? Reply(Json{{"interfaces", std::move(interfaces)}}) : Reply(code);
}

Reply submitSensorInfo(const OperationContext& context, const Json& params) {
    const Json* const board = memberAt(params, "sensorinfo");
    if (board == nullptr || !board->is_object())
        return ServiceCode::BadRequest;
    const auto type = textAt(*board, "type");
    if (memberAt(*board, "type") != nullptr && (!type || sensor::findBoardType(*type) == nullptr))
        return ServiceCode::NotSupported;
    return changeBoards(context, params, "enter a board", [&](soci::session& sql, const store::Device& device) {
        return submitBoard(sql, device, *board, context.key);
    });
}

Reply deleteSensor(const OperationContext& context, const Json& params) {
    const int pid = sensor::wholeAt(params, "pid", 0);
    if (pid <= 0)
        return ServiceCode::BadRequest;
    return changeBoards(context, params, "delete a board", [&](soci::session& sql, const store::Device& device) {
        BoardChange change = deleteBoard(sql, device, pid);
        if (change.code == ServiceCode::Done)
            context.effects.concernedByFiles = store::removeMarkers(sql, {device.ipncid, pid});
        return change;
    });
}

Reply changeSensorInput(const OperationContext& context, const Json& params) {
    const int pid = sensor::wholeAt(params, "pid", 0);
    const Json* const input = memberAt(params, "input");
    if (pid <= 0 || input == nullptr || !input->is_object())
        return ServiceCode::BadRequest;
    return changeBoards(context, params, "change an input", [&](soci::session& sql, const store::Device& device) {
        return changeInput(sql, device, pid, *input);
    });
}

} // namespace ipncsdk::service
