#include "service/ConfiguredBoards.h"

#include "service/BoardRecords.h"
#include "store/Devices.h"
#include "store/Maps.h"
#include "store/Sessions.h"

namespace ipncsdk::service {

namespace {

using Kind = device::ConfigMistake::Kind;

/// The pid of the port of this name; 0 when there is none.
int pidOfName(const Json& list, const std::string& name) {
    for (const Json& port : list) {
        if (sensor::textOr(port, "name", "") == name)
            return sensor::wholeAt(port, "pid", 0);
    }
    return 0;
}

/// The board with the numbers of the one that it replaces. Numbers in the file itself mean nothing.
Json numbered(Json board, const Json& old) {
    board.erase("pid");
    if (old.is_object())
        board["pid"] = old["pid"];
    for (const char* key : {"input", "output"}) {
        if (!board.contains(key) || !board[key].is_array())
            continue;
        for (Json& port : board[key]) {
            if (!port.is_object())
                continue;
            port.erase("pid");
            const Json* const before = memberAt(old, key);
            const int pid = before != nullptr ? pidOfName(*before, sensor::textOr(port, "name", "")) : 0;
            if (pid > 0)
                port["pid"] = pid;
        }
    }
    return board;
}

Json replacedBoard(const store::Device& device, const Json& board) {
    for (const Json& known : BoardRecords(device.interfaces, device.extend).all()) {
        if (memberAt(known, "ifname") != nullptr && known["ifname"] == sensor::textOr(board, "ifname", "") &&
            known["name"] == sensor::textOr(board, "name", ""))
            return known;
    }
    return nullptr;
}

} // namespace

void enterConfiguredBoards(soci::session& sql, const std::vector<device::ConfiguredBoard>& boards,
                           const store::StoreKey& key, std::vector<device::ConfigMistake>& mistakes) {
    for (const device::ConfiguredBoard& configured : boards) {
        const auto device = store::deviceById(sql, configured.ipncid);
        if (!device) {
            mistakes.push_back({Kind::NoDevice, configured.line, configured.key + ".ipncid"});
            continue;
        }
        const Json old = opened(replacedBoard(*device, configured.board), key);
        const BoardChange change = submitBoard(sql, *device, numbered(configured.board, old), key);
        if (change.code != ServiceCode::Done) {
            mistakes.push_back({Kind::BadBoard, configured.line, configured.key + ".sensorinfo", change.text});
            continue;
        }
        const auto now = store::deviceById(sql, configured.ipncid);
        if (now && now->interfaces == device->interfaces && now->extend == device->extend)
            continue;
        store::touch(sql, device->owner);
        for (const store::AccountId account : store::friendsWith(sql, device->ipncid))
            store::touch(sql, account);
        for (const store::AccountId account : store::viewersOfMarkers(sql, {device->ipncid}))
            store::touchFiles(sql, account);
    }
}

} // namespace ipncsdk::service
