#include "device/ParameterTable.h"

#include "base/Text.h"

#include <algorithm>

namespace ipncsdk::device {

namespace {

using Kind = Parameter::Kind;

constexpr Parameter flag(const char* name, bool on, bool writable = true) {
    return {name, Kind::Flag, writable, 0, 1, on ? 1 : 0, ""};
}

constexpr Parameter integer(const char* name, std::int64_t low, std::int64_t high, std::int64_t number,
                            bool writable = true) {
    return {name, Kind::Integer, writable, low, high, number, ""};
}

constexpr Parameter text(const char* name, std::int64_t longest, const char* value, bool writable = true) {
    return {name, Kind::Text, writable, 0, longest, 0, value};
}

constexpr Parameter secret(const char* name, std::int64_t longest) {
    return {name, Kind::Secret, true, 0, longest, 0, ""};
}

constexpr Parameter command(const char* name) {
    return {name, Kind::Command, true, 0, 0, 0, ""};
}

} // namespace

const std::vector<Parameter>& parameterTable() {
    static const std::vector<Parameter> table = {
        // SD card; sizes in MB
        flag("hasdisk", true, false),
        integer("sdused", 0, 1 << 24, 1834, false),
        integer("sdleft", 0, 1 << 24, 28602, false),
        flag("sdinsert", true, false),
        // FTP upload
        flag("ftpenable", false),
        flag("ftprecord", false),
        flag("ftpjpg", false),
        flag("ftpdat", false),
        text("ftpip", 255, ""),
        integer("ftpport", 1, 65535, 21),
        text("ftpusr", 64, ""),
        secret("ftppwd", 64),
        integer("ftpoffsaveday", 0, 365, 7),
        // Texts drawn into the picture, for the main (1) and the light (2) stream
        flag("datestampenable1", true),
        flag("timestampenable1", true),
        flag("logoenable1", false),
        integer("logoposition1", 0, 3, 0),
        flag("textenable1", false),
        text("detailinfo1", 64, ""),
        flag("datestampenable2", true),
        flag("timestampenable2", true),
        flag("logoenable2", false),
        integer("logoposition2", 0, 3, 0),
        flag("textenable2", false),
        text("detailinfo2", 64, ""),
        // Recording and pictures in the device; durations in seconds, packetTime in minutes
        integer("jpgpushtype", 0, 3, 0),
        flag("alarmenablejpg", false),
        flag("motionenable", false),
        flag("exttriggerinput", false),
        integer("alarmduration", 0, 3600, 10),
        flag("sdaenable", false),
        flag("sdrenable", false),
        integer("packetTime", 1, 120, 10),
        integer("recordduration", 0, 86400, 30),
        text("packetTimeName", 64, "10分钟"),
        text("schedulalarmtiming", 1000, ""),
        integer("jpgtimerduration", 0, 86400, 0),
        integer("alarmjpgformart", 0, 9, 0),
        text("alarmjpgformartname", 64, ""),
        // Coding (bitrates in kbit/s) and image
        integer("bitrate1", 64, 16384, 2048),
        integer("bitrate2", 64, 16384, 512),
        integer("framerate1", 1, 60, 25),
        integer("framerate2", 1, 60, 25),
        integer("brightness", 0, 255, 128),
        integer("contrast", 0, 255, 128),
        integer("saturation", 0, 255, 128),
        integer("sharpness", 0, 255, 128),
        integer("hue", 0, 255, 128),
        flag("mirror", false),
        flag("flip", false),
        // Versions; the device's own where it says them
        text("softwareversion", 64, "3.4.12", false),
        text("kernelversion", 64, "4.9.118", false),
        text("biosversion", 64, "2.1.0", false),
        // Commands
        command("ipcamrestartcmd"),
        command("paradefaultcmd"),
        command("sdformat"),
    };
    return table;
}

const Parameter* findParameter(std::string_view name) {
    const auto& table = parameterTable();
    const auto found = std::find_if(table.begin(), table.end(),
                                    [name](const Parameter& parameter) { return name == parameter.name; });
    return found == table.end() ? nullptr : &*found;
}

Json defaultValue(const Parameter& parameter) {
    switch (parameter.kind) {
    case Kind::Flag:
    case Kind::Integer:
        return parameter.number;
    case Kind::Text:
    case Kind::Secret:
        return parameter.text;
    case Kind::Command:
        break;
    }
    return nullptr;
}

std::optional<Json> acceptedValue(const Parameter& parameter, const Json& value) {
    switch (parameter.kind) {
    case Kind::Flag:
    case Kind::Integer: {
        if (parameter.kind == Kind::Flag && value.is_boolean())
            return std::make_optional<Json>(value.get<bool>() ? 1 : 0);
        const auto number = integerOf(value);
        if (!number || *number < parameter.low || *number > parameter.high)
            return std::nullopt;
        return std::make_optional<Json>(*number);
    }
    case Kind::Text:
    case Kind::Secret:
        if (!value.is_string() || !isPlainText(value.get<std::string>(), static_cast<std::size_t>(parameter.high)))
            return std::nullopt;
        return std::make_optional<Json>(value);
    case Kind::Command:
        if (value.is_structured())
            return std::nullopt;
        return std::make_optional<Json>(nullptr);
    }
    return std::nullopt;
}

} // namespace ipncsdk::device
