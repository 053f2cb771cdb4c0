#include "onvif/OnvifPtz.h"

#include "onvif/Names.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ipncsdk::onvif {

namespace {

constexpr int mostPresets = 64;
constexpr int fastest = 10;
constexpr double longestMove = 10; // seconds
constexpr std::size_t longestPresetName = 64;
constexpr std::size_t longestToken = 64;

Range rangeIn(const pugi::xml_node& element, const char* name) {
    const pugi::xml_node range = xml::child(element, {ns::schema, name});
    const Range told{xml::numberOf(xml::child(range, {ns::schema, "Min"})).value_or(0),
                     xml::numberOf(xml::child(range, {ns::schema, "Max"})).value_or(0)};
    return told.low < told.high ? told : Range{};
}

bool isRange(const Range& range) {
    return range.low < range.high;
}

/// "PT10S", "PT0.5S", "PT1M": durations as cameras tell limits of movement; nothing for other ones.
std::optional<double> secondsOf(std::string_view text) {
    if (text.substr(0, 2) != "PT")
        return std::nullopt;
    text.remove_prefix(2);
    double sum = 0;
    while (!text.empty()) {
        double value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const auto used = static_cast<std::size_t>(end - text.data());
        if (error != std::errc() || used >= text.size() || !(value >= 0 && value <= 1e6))
            return std::nullopt;
        const double unit = text[used] == 'H' ? 3600 : text[used] == 'M' ? 60 : text[used] == 'S' ? 1 : 0;
        if (unit == 0)
            return std::nullopt;
        sum += value * unit;
        text.remove_prefix(used + 1);
    }
    return sum;
}

std::string profileMarkup(const MediaProfile& profile) {
    return "<q:ProfileToken>" + xml::escaped(profile.token) + "</q:ProfileToken>";
}

std::string presetMarkup(const std::string& token) {
    return "<q:PresetToken>" + xml::escaped(token) + "</q:PresetToken>";
}

std::optional<double> attributeNumber(const pugi::xml_node& element, const char* name) {
    const std::string_view text = element.attribute(name).value();
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = !text.empty() && error == std::errc() && end == text.data() + text.size();
    return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

} // namespace

double Range::fromSigned(double value) const {
    // Nothing stands for no movement, whatever the span.
    return value == 0  ? std::clamp(0.0, low, high)
           : value > 0 ? value * std::max(high, 0.0)
                       : -value * std::min(low, 0.0);
}

double Range::fromUnit(double value) const {
    return low + std::clamp(value, 0.0, 1.0) * (high - low);
}

double Range::toSigned(double value) const {
    return std::clamp((value - low) / (high - low) * 2 - 1, -1.0, 1.0);
}

double Range::toUnit(double value) const {
    return std::clamp((value - low) / (high - low), 0.0, 1.0);
}

OnvifPtz::OnvifPtz(CameraSession& session)
    : session_(session) {}

Outcome<Done> OnvifPtz::begin() {
    if (node_)
        return Done{};
    const auto offered = session_.has(ns::ptz);
    if (!offered)
        return offered.failure();
    if (!*offered)
        return Failure{Refusal::NotSupported, "the camera does not move"};
    const auto profiles = readProfiles(session_);
    if (!profiles)
        return profiles.failure();
    const auto moving = std::find_if(profiles->begin(), profiles->end(),
                                     [](const MediaProfile& profile) { return !profile.ptzNode.empty(); });
    if (moving == profiles->end())
        return Failure{Refusal::NotSupported, "the camera does not move"};
    Node node;
    node.profile = *moving;
    if (auto read = readNode(node); !read)
        return read;
    if (auto read = readTimeout(node); !read)
        return read;
    readFocus(node);
    node_ = std::move(node);
    return Done{};
}

Outcome<Done> OnvifPtz::readNode(Node& node) {
    const auto reply = session_.call(ns::ptz, "GetNodes");
    if (!reply)
        return reply.failure();
    const auto nodes = xml::children(reply->content(), {ns::ptz, "PTZNode"});
    const auto found = std::find_if(nodes.begin(), nodes.end(), [&](const pugi::xml_node& each) {
        return node.profile.ptzNode == each.attribute("token").value();
    });
    if (found == nodes.end())
        return Failure{Refusal::NotSupported, "the camera does not move"};
    const pugi::xml_node spaces = xml::child(*found, {ns::schema, "SupportedPTZSpaces"});
    const auto space = [&](const char* name) {
        return xml::child(spaces, {ns::schema, name});
    };
    node.panSpeed = rangeIn(space("ContinuousPanTiltVelocitySpace"), "XRange");
    node.tiltSpeed = rangeIn(space("ContinuousPanTiltVelocitySpace"), "YRange");
    node.zoomSpeed = rangeIn(space("ContinuousZoomVelocitySpace"), "XRange");
    node.panPlace = rangeIn(space("AbsolutePanTiltPositionSpace"), "XRange");
    node.tiltPlace = rangeIn(space("AbsolutePanTiltPositionSpace"), "YRange");
    node.zoomPlace = rangeIn(space("AbsoluteZoomPositionSpace"), "XRange");
    node.caps.pan = isRange(node.panSpeed);
    node.caps.tilt = isRange(node.tiltSpeed);
    node.caps.zoom = isRange(node.zoomSpeed);
    node.caps.home = xml::flagOf(xml::child(*found, {ns::schema, "HomeSupported"}));
    const double most = xml::numberOf(xml::child(*found, {ns::schema, "MaximumNumberOfPresets"})).value_or(0);
    node.caps.presets = static_cast<int>(std::clamp(most, 0.0, double{mostPresets}));
    return Done{};
}

Outcome<Done> OnvifPtz::readTimeout(Node& node) {
    const auto reply = session_.call(ns::ptz, "GetConfigurationOptions",
                                     "<q:ConfigurationToken>" + xml::escaped(node.profile.ptzConfiguration) +
                                         "</q:ConfigurationToken>");
    if (!reply) {
        const Refusal refusal = reply.failure().refusal;
        // The limits are a help, not a need.
        if (refusal == Refusal::Fault || refusal == Refusal::NotSupported)
            return Done{};
        return reply.failure();
    }
    const pugi::xml_node options = xml::child(reply->content(), {ns::ptz, "PTZConfigurationOptions"});
    const auto limit = [&](const char* name) {
        return secondsOf(xml::textOf(xml::descend(options, ns::schema, {"PTZTimeout", name})));
    };
    const double least = limit("Min").value_or(0);
    const double most = limit("Max").value_or(longestMove);
    node.timeout = std::max(std::min(longestMove, most), std::min(least, longestMove));
    return Done{};
}

void OnvifPtz::readFocus(Node& node) {
    const auto offered = session_.has(ns::imaging);
    if (!offered || !*offered || node.profile.videoSource.empty())
        return;
    const auto reply =
        session_.call(ns::imaging, "GetMoveOptions",
                      "<q:VideoSourceToken>" + xml::escaped(node.profile.videoSource) + "</q:VideoSourceToken>");
    if (!reply)
        return;
    const pugi::xml_node options = xml::child(reply->content(), {ns::imaging, "MoveOptions"});
    node.focusSpeed = rangeIn(xml::child(options, {ns::schema, "Continuous"}), "Speed");
    node.caps.focus = isRange(node.focusSpeed);
}

Outcome<PtzCaps> OnvifPtz::caps() {
    if (auto begun = begin(); !begun)
        return begun.failure();
    return node_->caps;
}

Outcome<PtzState> OnvifPtz::state() {
    if (auto begun = begin(); !begun)
        return begun.failure();
    const auto reply = session_.call(ns::ptz, "GetStatus", profileMarkup(node_->profile));
    if (!reply)
        return reply.failure();
    const pugi::xml_node status = xml::child(reply->content(), {ns::ptz, "PTZStatus"});
    const pugi::xml_node place = xml::descend(status, ns::schema, {"Position", "PanTilt"});
    const pugi::xml_node zoom = xml::descend(status, ns::schema, {"Position", "Zoom"});
    PtzState state;
    if (const auto x = attributeNumber(place, "x"); x && isRange(node_->panPlace))
        state.pan = node_->panPlace.toSigned(*x);
    if (const auto y = attributeNumber(place, "y"); y && isRange(node_->tiltPlace))
        state.tilt = node_->tiltPlace.toSigned(*y);
    if (const auto x = attributeNumber(zoom, "x"); x && isRange(node_->zoomPlace))
        state.zoom = node_->zoomPlace.toUnit(*x);
    for (const char* name : {"PanTilt", "Zoom"}) {
        const std::string movement = xml::textOf(xml::descend(status, ns::schema, {"MoveStatus", name}));
        if (movement == "MOVING")
            state.moving = true;
        else if (movement == "IDLE" && !state.moving)
            state.moving = false;
    }
    return state;
}

std::string OnvifPtz::velocity(int pan, int tilt, int zoom, int speed) const {
    const double part = static_cast<double>(std::clamp(speed, 1, fastest)) / fastest;
    const auto axis = [part](int direction, const Range& range) {
        return xml::number(range.fromSigned(direction * part));
    };
    std::string text;
    if (node_->caps.pan || node_->caps.tilt)
        text += "<tt:PanTilt x=\"" + axis(pan, node_->panSpeed) + "\" y=\"" + axis(tilt, node_->tiltSpeed) + "\"/>";
    if (node_->caps.zoom)
        text += "<tt:Zoom x=\"" + axis(zoom, node_->zoomSpeed) + "\"/>";
    return text;
}

Outcome<Done> OnvifPtz::perform(const char* operation, const std::string& arguments) {
    const auto reply = session_.call(ns::ptz, operation, profileMarkup(node_->profile) + arguments);
    if (!reply)
        return reply.failure();
    return Done{};
}

Outcome<Done> OnvifPtz::move(int pan, int tilt, int zoom, int speed) {
    if (auto begun = begin(); !begun)
        return begun;
    if (pan == 0 && tilt == 0 && zoom == 0)
        return stop();
    const PtzCaps& caps = node_->caps;
    if ((pan != 0 && !caps.pan) || (tilt != 0 && !caps.tilt) || (zoom != 0 && !caps.zoom))
        return Failure{Refusal::NotSupported, "the camera does not move this way"};
    return perform("ContinuousMove", "<q:Velocity>" + velocity(pan, tilt, zoom, speed) +
                                         "</q:Velocity><q:Timeout>PT" + xml::number(node_->timeout) +
                                         "S</q:Timeout>");
}

Outcome<Done> OnvifPtz::stop() {
    if (auto begun = begin(); !begun)
        return begun;
    return perform("Stop", "<q:PanTilt>true</q:PanTilt><q:Zoom>true</q:Zoom>");
}

Outcome<Done> OnvifPtz::focus(int direction) {
    if (auto begun = begin(); !begun)
        return begun;
    if (!node_->caps.focus)
        return Failure{Refusal::NotSupported, "the camera's focus does not move"};
    const std::string source =
        "<q:VideoSourceToken>" + xml::escaped(node_->profile.videoSource) + "</q:VideoSourceToken>";
    const std::string focus = "<q:Focus><tt:Continuous><tt:Speed>" +
                              xml::number(node_->focusSpeed.fromSigned(direction)) +
                              "</tt:Speed></tt:Continuous></q:Focus>";
    const auto reply = direction == 0 ? session_.call(ns::imaging, "Stop", source)
                                      : session_.call(ns::imaging, "Move", source + focus);
    if (!reply)
        return reply.failure();
    return Done{};
}

Outcome<Done> OnvifPtz::home() {
    if (auto begun = begin(); !begun)
        return begun;
    return node_->caps.home ? perform("GotoHomePosition")
                            : Outcome<Done>(Failure{Refusal::NotSupported, "the camera has no home position"});
}

std::optional<int> OnvifPtz::numberFor(const std::string& token) {
    for (const auto& [index, known] : presetTokens_) {
        if (known == token)
            return index;
    }
    int index = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), index);
    const bool own = error == std::errc() && end == token.data() + token.size() && index >= 1 && index <= mostPresets;
    if (!own || presetTokens_.count(index) > 0) {
        for (index = 1; presetTokens_.count(index) > 0; ++index) {
        }
    }
    if (index > mostPresets)
        return std::nullopt;
    presetTokens_.emplace(index, token);
    return index;
}

Outcome<std::vector<PtzPreset>> OnvifPtz::presets() {
    if (auto begun = begin(); !begun)
        return begun.failure();
    const auto reply = session_.call(ns::ptz, "GetPresets", profileMarkup(node_->profile));
    if (!reply)
        return reply.failure();
    std::map<std::string, std::string> named; // by token
    for (const pugi::xml_node& preset : xml::children(reply->content(), {ns::ptz, "Preset"})) {
        std::string token = preset.attribute("token").value();
        if (!token.empty() && token.size() <= longestToken)
            named.emplace(std::move(token),
                          xml::plain(xml::textOf(xml::child(preset, {ns::schema, "Name"})), longestPresetName));
    }
    // What is gone gives its number free, before new ones look for theirs.
    std::erase_if(presetTokens_, [&](const auto& each) { return named.count(each.second) == 0; });
    std::map<int, std::string> numbered;
    for (const auto& [token, name] : named) {
        if (const auto index = numberFor(token))
            numbered.emplace(*index, name);
    }
    std::vector<PtzPreset> presets;
    presets.reserve(numbered.size());
    for (auto& [index, name] : numbered)
        presets.push_back({index, name});
    return presets;
}

Outcome<std::string> OnvifPtz::presetToken(int index) {
    // Somebody else may have set or taken away some.
    if (const auto read = presets(); !read)
        return read.failure();
    const auto found = presetTokens_.find(index);
    if (found == presetTokens_.end())
        return Failure{Refusal::Fault, "there is no such preset"};
    return found->second;
}

Outcome<Done> OnvifPtz::setPreset(int index, const std::string& name) {
    if (auto begun = begin(); !begun)
        return begun;
    if (index < 1 || index > mostPresets || node_->caps.presets == 0)
        return Failure{Refusal::NotSupported, "the camera has no such preset"};
    const auto known = presetToken(index);
    if (!known && known.failure().refusal != Refusal::Fault)
        return known.failure();
    const std::string arguments =
        profileMarkup(node_->profile) + "<q:PresetName>" + xml::escaped(name) + "</q:PresetName>";
    // Cameras that number their presets take the number of a new one; the others choose a token themselves.
    auto reply =
        session_.call(ns::ptz, "SetPreset", arguments + presetMarkup(known ? *known : std::to_string(index)));
    if (!reply && !known && reply.failure().refusal == Refusal::Fault)
        reply = session_.call(ns::ptz, "SetPreset", arguments);
    if (!reply)
        return reply.failure();
    const std::string token = xml::textOf(xml::child(reply->content(), {ns::ptz, "PresetToken"}));
    if (!token.empty() && token.size() <= longestToken)
        presetTokens_.insert_or_assign(index, token);
    return Done{};
}

Outcome<Done> OnvifPtz::goToPreset(int index) {
    if (auto begun = begin(); !begun)
        return begun;
    const auto token = presetToken(index);
    return token ? perform("GotoPreset", presetMarkup(*token)) : Outcome<Done>(token.failure());
}

Outcome<Done> OnvifPtz::deletePreset(int index) {
    if (auto begun = begin(); !begun)
        return begun;
    const auto token = presetToken(index);
    if (!token)
        return token.failure();
    auto done = perform("RemovePreset", presetMarkup(*token));
    if (done)
        presetTokens_.erase(index);
    return done;
}

} // namespace ipncsdk::onvif
