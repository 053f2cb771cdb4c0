#include "service/BoardRecords.h"

#include "sensor/BoardCheck.h"
#include "sensor/SampleQuery.h"
#include "sensor/SoftExpression.h"
#include "service/LinkageRecords.h"
#include "store/AddableDevices.h"
#include "store/Boards.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

namespace ipncsdk::service {

namespace {

using sensor::wholeAt;

constexpr auto sealedStart = "sealed:";
constexpr std::array portLists = {"input", "output"};
constexpr std::array changeable = {"name", "unit", "isupload", "scale", "offset", "hysteresis", "thresholds"};

Json parsed(const std::string& text, const Json& otherwise) {
    Json value = Json::parse(text, nullptr, false);
    return value.type() == otherwise.type() ? value : otherwise;
}

bool isSublist(const Json& board) {
    const auto type = sensor::textOr(board, "type", "");
    return type == "SOFT" || type == "ZIGBEE";
}

bool isBoard(const Json& board, int pid) {
    return board.is_object() && wholeAt(board, "pid", 0) == pid;
}

Json* passwordOf(Json& board) {
    if (!board.is_object() || !board.contains("params") || !board["params"].is_object())
        return nullptr;
    const auto found = board["params"].find("password");
    return found != board["params"].end() && found->is_string() ? &*found : nullptr;
}

bool isFilled(const Json& text) {
    return !text.get_ref<const std::string&>().empty();
}

BoardChange refused(ServiceCode code, std::string text = {}) {
    return {code, std::move(text), {}};
}

void keep(soci::session& sql, const store::Device& device, const BoardRecords& records) {
    store::setDeviceBoards(sql, device.ipncid, toText(records.interfaces()), toText(records.extend()));
}

int highestPid(const BoardRecords& records) {
    int highest = 0;
    for (const Json& record : records.all()) {
        const sensor::Board board = sensor::boardOf(record);
        highest = std::max(highest, board.pid);
        for (const auto* ports : {&board.inputs, &board.outputs}) {
            for (const sensor::Port& port : *ports)
                highest = std::max(highest, port.pid);
        }
    }
    return highest;
}

/// The highest pid of all devices, those included that wait for an owner.
int highestPid(soci::session& sql) {
    int highest = 0;
    for (const store::DeviceBoards& device : store::allBoards(sql))
        highest = std::max(highest, highestPid(BoardRecords(device.interfaces, device.extend)));
    for (const store::Device& device : store::waitingDevices(sql))
        highest = std::max(highest, highestPid(BoardRecords(device.interfaces, device.extend)));
    return highest;
}

/// What computed inputs take their values from.
using Sources = std::map<int, std::vector<int>>;

bool leadsTo(const Sources& sources, int from, int target, std::set<int>& seen) {
    const auto found = sources.find(from);
    if (found == sources.end() || !seen.insert(from).second)
        return false;
    return std::any_of(found->second.begin(), found->second.end(),
                       [&](int next) { return next == target || leadsTo(sources, next, target, seen); });
}

/// Says what is wrong with the inputs that a computed board names: they must be there, belong to the same owner, and
/// not depend on what is computed of them.
std::string sourcesComplaint(soci::session& sql, const store::Device& device, const Json& record) {
    const sensor::Board changed = sensor::boardOf(record);
    std::set<int> known;
    Sources sources;
    const auto take = [&](const sensor::Board& board) {
        for (const sensor::Port& input : board.inputs) {
            known.insert(input.pid);
            sensor::SoftExpression expression;
            if (board.type == "SOFT" && expression.parse(sensor::textOr(input.params, "expression", "")).empty())
                sources[input.pid] = expression.inputs();
        }
    };
    for (const store::DeviceBoards& other : store::allBoards(sql)) {
        for (const Json& board : BoardRecords(other.interfaces, other.extend).all()) {
            if (other.owner == device.owner && wholeAt(board, "pid", 0) != changed.pid)
                take(sensor::boardOf(board));
        }
    }
    take(changed);
    for (const sensor::Port& input : changed.inputs) {
        for (const int source : sources[input.pid]) {
            if (known.count(source) == 0)
                return input.name + ": 表达式中的采集输入 i" + std::to_string(source) + " 不存在";
        }
        std::set<int> seen;
        if (leadsTo(sources, input.pid, input.pid, seen))
            return input.name + ": 表达式循环引用采集输入 i" + std::to_string(input.pid);
    }
    return {};
}

/// Whether there is room for the board, and its interface is free.
BoardChange roomFor(const BoardRecords& records, const Json& record) {
    const bool isNew = records.board(wholeAt(record, "pid", 0)).is_null();
    if (isNew && records.all().size() >= sensor::mostBoards)
        return refused(ServiceCode::Limit, "一个设备最多 " + std::to_string(sensor::mostBoards) + " 个传感器");
    static const std::set<std::string> single = {"RS232", "IO", "VIDEO", "QR", "LASER"};
    const std::string type = sensor::textOr(record, "type", "");
    for (const Json& other : records.all()) {
        if (single.count(type) > 0 && other["ifname"] == record["ifname"] && other["pid"] != record["pid"])
            return refused(ServiceCode::BadRequest, "接口 " + sensor::textOr(record, "ifname", "") + " 已被使用");
    }
    return {};
}

bool anyInPlans(soci::session& sql, const std::string& ipncid, const std::vector<int>& pids) {
    const std::set<int> used = portsUsedByPlans(sql, ipncid);
    return std::any_of(pids.begin(), pids.end(), [&](int pid) { return used.count(pid) > 0; });
}

} // namespace

BoardRecords::BoardRecords(const std::string& interfaces, const std::string& extend)
    : interfaces_(parsed(interfaces, Json::array()))
    , extend_(parsed(extend, Json::object())) {}

void BoardRecords::forEachList(const std::function<void(Json& list)>& function) {
    function(interfaces_);
    Json& sublist = extend_["sublist"];
    if (!sublist.is_array())
        sublist = Json::array();
    function(sublist);
}

std::vector<Json> BoardRecords::all() const {
    std::vector<Json> boards;
    const Json* const sublist = memberAt(extend_, "sublist");
    for (const Json* list : {&interfaces_, sublist}) {
        if (list == nullptr || !list->is_array())
            continue;
        for (const Json& board : *list) {
            if (board.is_object())
                boards.push_back(board);
        }
    }
    return boards;
}

Json BoardRecords::board(int pid) const {
    for (Json& board : all()) {
        if (pid > 0 && isBoard(board, pid))
            return std::move(board);
    }
    return nullptr;
}

void BoardRecords::put(const Json& board) {
    const int pid = wholeAt(board, "pid", 0);
    bool found = false;
    forEachList([&](Json& list) {
        for (Json& entry : list) {
            if (isBoard(entry, pid)) {
                entry = board;
                found = true;
            }
        }
    });
    if (!found)
        (isSublist(board) ? extend_["sublist"] : interfaces_).push_back(board);
}

void BoardRecords::remove(int pid) {
    forEachList([pid](Json& list) {
        Json rest = Json::array();
        for (Json& board : list) {
            if (!isBoard(board, pid))
                rest.push_back(std::move(board));
        }
        list = std::move(rest);
    });
}

void BoardRecords::forEachPort(const std::function<void(Json& port, bool isInput)>& function) {
    forEachList([&](Json& list) {
        for (Json& board : list) {
            for (const char* key : portLists) {
                if (!board.is_object() || !board.contains(key) || !board[key].is_array())
                    continue;
                for (Json& port : board[key]) {
                    if (port.is_object())
                        function(port, key == portLists.front());
                }
            }
        }
    });
}

Json opened(Json board, const store::StoreKey& key) {
    if (Json* const password = passwordOf(board)) {
        const auto text = password->get<std::string>();
        if (text.rfind(sealedStart, 0) == 0)
            *password = key.open(text.substr(std::string(sealedStart).size())).value_or("");
    }
    return board;
}

void showToClients(BoardRecords& records, const sensor::LatestValues& latest, bool deviceOnline) {
    for (Json board : records.all()) {
        if (Json* const password = passwordOf(board); password != nullptr && isFilled(*password))
            *password = sensor::secretMask;
        if (isSublist(board))
            board["online"] = deviceOnline;
        if (sensor::isPlant(sensor::boardOf(board)))
            board["params"]["mode"] = "plant";
        records.put(board);
    }
    records.forEachPort([&](Json& port, bool isInput) {
        const auto reading = latest.of(wholeAt(port, "pid", 0));
        // Of an output nothing is known before it was written.
        if (!isInput && !reading)
            return;
        port["state"] = reading && reading->normal && deviceOnline ? 1 : 0;
        port["value"] = reading ? reading->value : 0.0;
        if (reading)
            port["time"] = sensor::toMilliseconds(reading->time) / 1000;
    });
}

BoardChange submitBoard(soci::session& sql, const store::Device& device, const Json& submitted,
                        const store::StoreKey& key) {
    BoardRecords records(device.interfaces, device.extend);
    const bool names = memberAt(submitted, "pid") != nullptr;
    const Json old = names ? opened(records.board(wholeAt(submitted, "pid", 0)), key) : Json();
    if (names && old.is_null())
        return refused(ServiceCode::UnknownInput);
    const int used = highestPid(sql);
    sensor::CheckedBoard checked = sensor::checkBoard(submitted, old, [&] { return store::takePid(sql, used); });
    if (!checked.wrong.empty())
        return refused(checked.tooMany ? ServiceCode::Limit : ServiceCode::BadRequest, checked.wrong);
    if (BoardChange room = roomFor(records, checked.record); room.code != ServiceCode::Done)
        return room;
    if (anyInPlans(sql, device.ipncid, checked.removed))
        return refused(ServiceCode::InUse);
    if (std::string wrong = sourcesComplaint(sql, device, checked.record); !wrong.empty())
        return refused(ServiceCode::BadRequest, std::move(wrong));
    if (Json* const password = passwordOf(checked.record); password != nullptr && isFilled(*password)) {
        const auto sealed = key.seal(password->get<std::string>());
        if (!sealed)
            return refused(ServiceCode::StoreError);
        *password = sealedStart + *sealed;
    }
    records.put(checked.record);
    keep(sql, device, records);
    if (Json* const password = passwordOf(checked.record); password != nullptr && isFilled(*password))
        *password = sensor::secretMask;
    return {ServiceCode::Done, {}, std::move(checked.record)};
}

BoardChange deleteBoard(soci::session& sql, const store::Device& device, int pid) {
    BoardRecords records(device.interfaces, device.extend);
    const Json record = records.board(pid);
    if (record.is_null())
        return refused(ServiceCode::UnknownInput);
    const sensor::Board board = sensor::boardOf(record);
    std::vector<int> pids;
    for (const auto* ports : {&board.inputs, &board.outputs}) {
        for (const sensor::Port& port : *ports)
            pids.push_back(port.pid);
    }
    if (anyInPlans(sql, device.ipncid, pids))
        return refused(ServiceCode::InUse);
    // Its numbers must not come back with another meaning.
    store::takePid(sql, highestPid(sql));
    records.remove(pid);
    keep(sql, device, records);
    return {};
}

BoardChange changeInput(soci::session& sql, const store::Device& device, int pid, const Json& changes) {
    BoardRecords records(device.interfaces, device.extend);
    BoardChange change = refused(ServiceCode::UnknownInput);
    records.forEachPort([&](Json& port, bool isInput) {
        if (!isInput || wholeAt(port, "pid", 0) != pid)
            return;
        Json changed = port;
        for (const char* key : changeable) {
            if (const Json* const value = memberAt(changes, key))
                changed[key] = *value;
        }
        const std::string wrong = sensor::completeInput(changed);
        change = wrong.empty() ? BoardChange{} : refused(ServiceCode::BadRequest, wrong);
        if (wrong.empty())
            port = std::move(changed);
    });
    if (change.code == ServiceCode::Done)
        keep(sql, device, records);
    return change;
}

} // namespace ipncsdk::service
