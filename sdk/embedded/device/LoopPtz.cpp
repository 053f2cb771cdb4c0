#include "device/LoopPtz.h"

#include "store/Parameters.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace ipncsdk::device {

namespace {

Json keptOf(soci::session& sql, const std::string& ipncid) {
    const auto stored = store::parametersOf(sql, ipncid);
    const auto found = stored.find(LoopPtz::storedName);
    Json kept = found != stored.end() ? Json::parse(found->second, nullptr, false) : Json::object();
    if (!kept.is_object())
        kept = Json::object();
    for (const char* key : {"presets", "cruises"}) {
        if (!kept[key].is_object())
            kept[key] = Json::object();
    }
    return kept;
}

Json toJson(const media::View& view) {
    return Json::array({view.pan, view.tilt, view.zoom, view.focus, view.iris});
}

/// The view of a kept preset; nothing when there is none, or the store holds something else.
std::optional<media::View> viewAt(const Json& kept, int index) {
    const Json* const preset = memberAt(kept["presets"], std::to_string(index).c_str());
    const Json* const view = preset != nullptr ? memberAt(*preset, "view") : nullptr;
    const bool good = view != nullptr && view->is_array() && view->size() == 5 &&
                      std::all_of(view->begin(), view->end(), [](const Json& value) { return value.is_number(); });
    if (!good)
        return std::nullopt;
    const auto at = [view](std::size_t place, float low) {
        return std::clamp((*view)[place].get<float>(), low, 1.0F);
    };
    return media::View{at(0, -1), at(1, -1), at(2, 0), at(3, -1), at(4, -1)};
}

/// A cruise as it is kept; points that are none are left out.
PtzCruise cruiseOf(int index, const Json& kept) {
    PtzCruise cruise{index, textAt(kept, "name").value_or(""), {}};
    const Json* const points = memberAt(kept, "points");
    if (points == nullptr || !points->is_array())
        return cruise;
    for (const Json& point : *points) {
        const auto preset = integerAt(point, "preset");
        const auto seconds = integerAt(point, "seconds");
        if (preset && seconds && *seconds >= 1)
            cruise.points.push_back({static_cast<int>(*preset), static_cast<int>(*seconds)});
    }
    return cruise;
}

/// Calls `each` with number and content of what is kept under `key`, in order.
template <typename Each>
void forEachKept(const Json& kept, const char* key, int most, const Each& each) {
    for (int index = 1; index <= most; ++index) {
        if (const Json* const content = memberAt(kept[key], std::to_string(index).c_str()))
            each(index, *content);
    }
}

} // namespace

LoopPtz::LoopPtz(std::string ipncid, std::shared_ptr<LoopDevice> device, store::Database& database)
    : ipncid_(std::move(ipncid))
    , device_(std::move(device))
    , database_(database) {}

ServiceCode LoopPtz::caps(PtzCaps& caps) {
    caps = {true, true, true, true, true, mostPresets, mostCruises};
    return ServiceCode::Done;
}

ServiceCode LoopPtz::state(PtzState& state) {
    const media::View view = device_->head().view();
    state = {view.pan, view.tilt, view.zoom, device_->head().isMoving(), device_->head().cruise()};
    return ServiceCode::Done;
}

ServiceCode LoopPtz::presets(std::vector<PtzPreset>& presets) {
    Json kept;
    const ServiceCode code = read(kept);
    if (code == ServiceCode::Done)
        forEachKept(kept, "presets", mostPresets, [&](int index, const Json& content) {
            presets.push_back({index, textAt(content, "name").value_or("")});
        });
    return code;
}

ServiceCode LoopPtz::cruises(std::vector<PtzCruise>& cruises) {
    Json kept;
    const ServiceCode code = read(kept);
    if (code == ServiceCode::Done)
        forEachKept(kept, "cruises", mostCruises,
                    [&](int index, const Json& content) { cruises.push_back(cruiseOf(index, content)); });
    return code;
}

ServiceCode LoopPtz::move(const PtzMove& move) {
    device_->head().move(move);
    return ServiceCode::Done;
}

ServiceCode LoopPtz::stop() {
    device_->head().stop();
    return ServiceCode::Done;
}

ServiceCode LoopPtz::focus(int direction) {
    device_->head().focus(direction);
    return ServiceCode::Done;
}

ServiceCode LoopPtz::iris(int direction) {
    device_->head().iris(direction);
    return ServiceCode::Done;
}

ServiceCode LoopPtz::home() {
    device_->head().goTo({});
    return ServiceCode::Done;
}

ServiceCode LoopPtz::setPreset(const PtzPreset& preset) {
    const media::View view = device_->head().view();
    return change([&](Json& kept) {
        kept["presets"][std::to_string(preset.index)] = {{"name", preset.name}, {"view", toJson(view)}};
        return ServiceCode::Done;
    });
}

ServiceCode LoopPtz::goToPreset(int index) {
    Json kept;
    if (const ServiceCode code = read(kept); code != ServiceCode::Done)
        return code;
    const auto view = viewAt(kept, index);
    if (!view)
        return ServiceCode::BadRequest;
    device_->head().goTo(*view);
    return ServiceCode::Done;
}

ServiceCode LoopPtz::deletePreset(int index) {
    return change([index](Json& kept) {
        return kept["presets"].erase(std::to_string(index)) > 0 ? ServiceCode::Done : ServiceCode::BadRequest;
    });
}

ServiceCode LoopPtz::setCruise(const PtzCruise& cruise) {
    return change([&](Json& kept) {
        Json points = Json::array();
        for (const PtzPoint& point : cruise.points) {
            if (!viewAt(kept, point.preset))
                return ServiceCode::BadRequest;
            points.push_back({{"preset", point.preset}, {"seconds", point.seconds}});
        }
        kept["cruises"][std::to_string(cruise.index)] = {{"name", cruise.name}, {"points", std::move(points)}};
        return ServiceCode::Done;
    });
}

ServiceCode LoopPtz::deleteCruise(int index) {
    const ServiceCode code = change([index](Json& kept) {
        return kept["cruises"].erase(std::to_string(index)) > 0 ? ServiceCode::Done : ServiceCode::BadRequest;
    });
    if (code == ServiceCode::Done && device_->head().cruise() == index)
        device_->head().stopCruise();
    return code;
}

ServiceCode LoopPtz::startCruise(int index) {
    Json kept;
    if (const ServiceCode code = read(kept); code != ServiceCode::Done)
        return code;
    const Json* const content = memberAt(kept["cruises"], std::to_string(index).c_str());
    if (content == nullptr)
        return ServiceCode::BadRequest;
    std::vector<LoopHead::Stop> stops;
    // Presets that were deleted since are passed over.
    for (const PtzPoint& point : cruiseOf(index, *content).points) {
        if (const auto view = viewAt(kept, point.preset))
            stops.push_back({*view, std::chrono::seconds(point.seconds)});
    }
    if (stops.empty())
        return ServiceCode::BadRequest;
    device_->head().startCruise(index, std::move(stops));
    return ServiceCode::Done;
}

ServiceCode LoopPtz::stopCruise() {
    device_->head().stopCruise();
    return ServiceCode::Done;
}

ServiceCode LoopPtz::read(Json& kept) {
    return database_.read("read presets", [&](soci::session& sql) {
        kept = keptOf(sql, ipncid_);
        return ServiceCode::Done;
    });
}

ServiceCode LoopPtz::change(const Change& change) {
    return database_.change("keep presets", [&](soci::session& sql) {
        Json kept = keptOf(sql, ipncid_);
        const ServiceCode code = change(kept);
        if (code == ServiceCode::Done)
            store::setParameter(sql, ipncid_, storedName, toText(kept));
        return code;
    });
}

} // namespace ipncsdk::device
