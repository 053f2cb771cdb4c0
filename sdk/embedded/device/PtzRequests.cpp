#include "device/PtzRequests.h"

#include "base/Text.h"

#include <array>
#include <string>
#include <utility>

namespace ipncsdk::device {

namespace {

constexpr std::size_t longestName = 64;
constexpr std::size_t mostPoints = 64;
constexpr int longestStay = 3600; ///< seconds

std::optional<int> within(const std::optional<std::int64_t>& number, int low, int high) {
    return number && *number >= low && *number <= high ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::optional<std::string> nameAt(const Json& value) {
    auto name = textAt(value, "name");
    return name && isPlainText(*name, longestName) ? name : std::nullopt;
}

std::optional<PtzCommand> readMove(const Json& value) {
    const auto pan = within(integerAt(value, "pan"), -1, 1);
    const auto tilt = within(integerAt(value, "tilt"), -1, 1);
    const auto zoom = within(integerAt(value, "zoom"), -1, 1);
    const auto speed = within(integerAt(value, "speed"), 1, 10);
    if (!pan || !tilt || !zoom || !speed)
        return std::nullopt;
    return [move = PtzMove{*pan, *tilt, *zoom, *speed}](PtzDriver& driver) {
        return driver.move(move);
    };
}

std::optional<PtzCommand> readPreset(const Json& value) {
    const auto index = within(integerAt(value, "index"), 1, mostPresets);
    const auto name = nameAt(value);
    if (!index || !name)
        return std::nullopt;
    return [preset = PtzPreset{*index, *name}](PtzDriver& driver) {
        return driver.setPreset(preset);
    };
}

std::optional<PtzCommand> readCruise(const Json& value) {
    const auto index = within(integerAt(value, "index"), 1, mostCruises);
    const auto name = nameAt(value);
    const Json* const points = memberAt(value, "points");
    const bool listed = points != nullptr && points->is_array() && !points->empty() && points->size() <= mostPoints;
    if (!index || !name || !listed)
        return std::nullopt;
    PtzCruise cruise{*index, *name, {}};
    for (const Json& point : *points) {
        const auto preset = within(integerAt(point, "preset"), 1, mostPresets);
        const auto seconds = within(integerAt(point, "seconds"), 1, longestStay);
        if (!preset || !seconds)
            return std::nullopt;
        cruise.points.push_back({*preset, *seconds});
    }
    return [cruise = std::move(cruise)](PtzDriver& driver) {
        return driver.setCruise(cruise);
    };
}

/// Takes no value worth looking at.
template <ServiceCode (PtzDriver::*method)()>
std::optional<PtzCommand> readPlain(const Json& value) {
    if (value.is_structured())
        return std::nullopt;
    return [](PtzDriver& driver) {
        return (driver.*method)();
    };
}

template <ServiceCode (PtzDriver::*method)(int), int low, int high>
std::optional<PtzCommand> readNumber(const Json& value) {
    const auto number = within(integerOf(value), low, high);
    if (!number)
        return std::nullopt;
    return [number = *number](PtzDriver& driver) {
        return (driver.*method)(number);
    };
}

struct Command {
    std::string_view name;
    std::optional<PtzCommand> (*read)(const Json& value);
};

constexpr std::array commands = {
    Command{"ptzmove", readMove},
    Command{"ptzstop", readPlain<&PtzDriver::stop>},
    Command{"ptzfocus", readNumber<&PtzDriver::focus, -1, 1>},
    Command{"ptziris", readNumber<&PtzDriver::iris, -1, 1>},
    Command{"ptzhome", readPlain<&PtzDriver::home>},
    Command{"ptzpresetset", readPreset},
    Command{"ptzpresetgoto", readNumber<&PtzDriver::goToPreset, 1, mostPresets>},
    Command{"ptzpresetdel", readNumber<&PtzDriver::deletePreset, 1, mostPresets>},
    Command{"ptzcruiseset", readCruise},
    Command{"ptzcruisedel", readNumber<&PtzDriver::deleteCruise, 1, mostCruises>},
    Command{"ptzcruisestart", readNumber<&PtzDriver::startCruise, 1, mostCruises>},
    Command{"ptzcruisestop", readPlain<&PtzDriver::stopCruise>},
};

const Command* findCommand(std::string_view name) {
    for (const Command& command : commands) {
        if (command.name == name)
            return &command;
    }
    return nullptr;
}

template <typename T>
Json orNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json();
}

ServiceCode readCaps(PtzDriver& driver, Json& value) {
    PtzCaps caps;
    const ServiceCode code = driver.caps(caps);
    value = {{"pan", caps.pan},   {"tilt", caps.tilt},       {"zoom", caps.zoom},      {"focus", caps.focus},
             {"iris", caps.iris}, {"presets", caps.presets}, {"cruises", caps.cruises}};
    return code;
}

ServiceCode readState(PtzDriver& driver, Json& value) {
    PtzState state;
    const ServiceCode code = driver.state(state);
    value = {{"pan", orNull(state.pan)},
             {"tilt", orNull(state.tilt)},
             {"zoom", orNull(state.zoom)},
             {"moving", orNull(state.moving)},
             {"cruise", state.cruise}};
    return code;
}

ServiceCode readPresets(PtzDriver& driver, Json& value) {
    std::vector<PtzPreset> presets;
    const ServiceCode code = driver.presets(presets);
    value = Json::array();
    for (const PtzPreset& preset : presets)
        value.push_back({{"index", preset.index}, {"name", preset.name}});
    return code;
}

ServiceCode readCruises(PtzDriver& driver, Json& value) {
    std::vector<PtzCruise> cruises;
    const ServiceCode code = driver.cruises(cruises);
    value = Json::array();
    for (const PtzCruise& cruise : cruises) {
        Json points = Json::array();
        for (const PtzPoint& point : cruise.points)
            points.push_back({{"preset", point.preset}, {"seconds", point.seconds}});
        value.push_back({{"index", cruise.index}, {"name", cruise.name}, {"points", std::move(points)}});
    }
    return code;
}

struct Read {
    std::string_view name;
    ServiceCode (*read)(PtzDriver& driver, Json& value);
};

constexpr std::array reads = {
    Read{"ptzcaps", readCaps},
    Read{"ptzstate", readState},
    Read{"ptzpresets", readPresets},
    Read{"ptzcruises", readCruises},
};

} // namespace

bool isPtzName(std::string_view name) {
    return name.substr(0, 3) == "ptz";
}

bool isPtzCommand(std::string_view name) {
    return findCommand(name) != nullptr;
}

std::optional<PtzCommand> readPtzCommand(std::string_view name, const Json& value) {
    const Command* const command = findCommand(name);
    return command != nullptr ? command->read(value) : std::nullopt;
}

ServiceCode readPtz(PtzDriver& driver, std::string_view name, Json& value) {
    value = nullptr;
    for (const Read& row : reads) {
        if (row.name != name)
            continue;
        const ServiceCode code = row.read(driver, value);
        if (code == ServiceCode::Done)
            return code;
        value = nullptr;
        return code == ServiceCode::NotSupported ? ServiceCode::Done : code;
    }
    return ServiceCode::Done;
}

} // namespace ipncsdk::device
