#include "onvif/OnvifImaging.h"

#include "onvif/CameraProbe.h"
#include "onvif/Names.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ipncsdk::onvif {

namespace {

constexpr int most = 255;

/// In the order in which cameras want them written.
struct Setting {
    const char* name;
    const char* element;
};
constexpr std::array settings = {
    Setting{"brightness", "Brightness"},
    Setting{"saturation", "ColorSaturation"},
    Setting{"contrast", "Contrast"},
    Setting{"sharpness", "Sharpness"},
};

std::string sourceMarkup(const std::string& token) {
    return "<q:VideoSourceToken>" + xml::escaped(token) + "</q:VideoSourceToken>";
}

} // namespace

OnvifImaging::OnvifImaging(CameraSession& session)
    : session_(session) {}

Outcome<Done> OnvifImaging::begin() {
    if (!source_.empty())
        return Done{};
    const auto offered = session_.has(ns::imaging);
    if (!offered)
        return offered.failure();
    if (!*offered)
        return Failure{Refusal::NotSupported, "the camera has no image settings"};
    const auto profiles = readProfiles(session_);
    if (!profiles)
        return profiles.failure();
    const auto found = std::find_if(profiles->begin(), profiles->end(),
                                    [](const MediaProfile& profile) { return !profile.videoSource.empty(); });
    if (found == profiles->end())
        return Failure{Refusal::NotSupported, "the camera has no image settings"};
    const auto reply = session_.call(ns::imaging, "GetOptions", sourceMarkup(found->videoSource));
    if (!reply)
        return reply.failure();
    const pugi::xml_node options = xml::child(reply->content(), {ns::imaging, "ImagingOptions"});
    for (const Setting& setting : settings) {
        const pugi::xml_node range = xml::child(options, {ns::schema, setting.element});
        const auto low = xml::numberOf(xml::child(range, {ns::schema, "Min"}));
        const auto high = xml::numberOf(xml::child(range, {ns::schema, "Max"}));
        if (low && high && *low < *high)
            ranges_[setting.name] = {*low, *high};
    }
    source_ = found->videoSource;
    return Done{};
}

Outcome<OnvifImaging::Values> OnvifImaging::read() {
    if (auto begun = begin(); !begun)
        return begun.failure();
    const auto reply = session_.call(ns::imaging, "GetImagingSettings", sourceMarkup(source_));
    if (!reply)
        return reply.failure();
    const pugi::xml_node told = xml::child(reply->content(), {ns::imaging, "ImagingSettings"});
    Values values;
    for (const Setting& setting : settings) {
        const auto range = ranges_.find(setting.name);
        const auto value = xml::numberOf(xml::child(told, {ns::schema, setting.element}));
        if (range != ranges_.end() && value)
            values[setting.name] = static_cast<int>(std::lround(range->second.toUnit(*value) * most));
    }
    return values;
}

Outcome<Done> OnvifImaging::write(const Values& values) {
    if (auto begun = begin(); !begun)
        return begun;
    for (const auto& [name, value] : values) {
        if (ranges_.count(name) == 0)
            return Failure{Refusal::NotSupported, "the camera has no such image setting"};
    }
    std::string written;
    for (const Setting& setting : settings) {
        const auto value = values.find(setting.name);
        if (value == values.end())
            continue;
        const double number = ranges_.at(setting.name).fromUnit(static_cast<double>(value->second) / most);
        written +=
            std::string("<tt:") + setting.element + '>' + xml::number(number) + "</tt:" + setting.element + '>';
    }
    const auto reply = session_.call(ns::imaging, "SetImagingSettings",
                                     sourceMarkup(source_) + "<q:ImagingSettings>" + written +
                                         "</q:ImagingSettings><q:ForcePersistence>true</q:ForcePersistence>");
    if (!reply)
        return reply.failure();
    return Done{};
}

} // namespace ipncsdk::onvif
