#include "store/AddableDevices.h"

#include <soci/soci.h>

#include <utility>

namespace ipncsdk::store {

std::optional<Device> waitingDevice(soci::session& sql, const std::string& ipncid) {
    Device device;
    sql << "select ipncid, name, type, scene, phase, info, interfaces, extend, video from waitingdevices"
           " where ipncid = :device",
        soci::into(device.ipncid), soci::into(device.name), soci::into(device.type), soci::into(device.scene),
        soci::into(device.phase), soci::into(device.info), soci::into(device.interfaces), soci::into(device.extend),
        soci::into(device.video), soci::use(ipncid, "device");
    device.origin = "loop";
    return sql.got_data() ? std::make_optional(device) : std::nullopt;
}

std::vector<Device> waitingDevices(soci::session& sql) {
    std::string id;
    std::vector<std::string> ids;
    {
        soci::statement statement =
            (sql.prepare << "select ipncid from waitingdevices order by ipncid", soci::into(id));
        statement.execute();
        while (statement.fetch())
            ids.push_back(id);
    }
    std::vector<Device> devices;
    for (const std::string& each : ids) {
        if (auto device = waitingDevice(sql, each))
            devices.push_back(std::move(*device));
    }
    return devices;
}

void insertWaiting(soci::session& sql, const Device& device) {
    sql << "insert into waitingdevices (ipncid, name, type, scene, phase, info, interfaces, extend, video)"
           " values (:device, :name, :type, :scene, :phase, :info, :interfaces, :extend, :video)",
        soci::use(device.ipncid, "device"), soci::use(device.name, "name"), soci::use(device.type, "type"),
        soci::use(device.scene, "scene"), soci::use(device.phase, "phase"), soci::use(device.info, "info"),
        soci::use(device.interfaces, "interfaces"), soci::use(device.extend, "extend"),
        soci::use(device.video, "video");
}

void removeWaiting(soci::session& sql, const std::string& ipncid) {
    sql << "delete from waitingdevices where ipncid = :device", soci::use(ipncid, "device");
}

std::string deviceWord(soci::session& sql, const std::string& ipncid) {
    std::string word;
    sql << "select word from devicewords where ipncid = :device", soci::into(word), soci::use(ipncid, "device");
    return word;
}

void setDeviceWord(soci::session& sql, const std::string& ipncid, const std::string& word) {
    sql << "delete from devicewords where ipncid = :device", soci::use(ipncid, "device");
    sql << "insert into devicewords (ipncid, word) values (:device, :word)", soci::use(ipncid, "device"),
        soci::use(word, "word");
}

bool isIdTaken(soci::session& sql, const std::string& ipncid) {
    for (const char* statement : {"select count(*) from devices where lower(ipncid) = lower(:device)",
                                  "select count(*) from waitingdevices where lower(ipncid) = lower(:device)"}) {
        long long count = 0;
        sql << statement, soci::into(count), soci::use(ipncid, "device");
        if (count > 0)
            return true;
    }
    return false;
}

std::string sealedCamera(soci::session& sql, const std::string& ipncid) {
    std::string sealed;
    sql << "select sealed from netcameras where ipncid = :device", soci::into(sealed), soci::use(ipncid, "device");
    return sealed;
}

std::vector<std::string> addedCameraIds(soci::session& sql) {
    std::vector<std::string> ids;
    const soci::rowset<std::string> rows = sql.prepare << "select ipncid from netcameras order by ipncid";
    for (const std::string& ipncid : rows)
        ids.push_back(ipncid);
    return ids;
}

void insertSealedCamera(soci::session& sql, const std::string& ipncid, const std::string& sealed) {
    sql << "insert into netcameras (ipncid, sealed) values (:device, :sealed)", soci::use(ipncid, "device"),
        soci::use(sealed, "sealed");
}

} // namespace ipncsdk::store
