#include "device/NetworkSettings.h"

#include "base/Text.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <string>
#include <utility>

namespace ipncsdk::device {

namespace {

constexpr auto settingsKey = "net";
constexpr std::size_t longestSsid = 32; ///< bytes
constexpr std::size_t shortestPassword = 8;
constexpr std::size_t longestPassword = 63;

std::optional<std::uint32_t> addressOf(std::string_view text) {
    std::uint32_t address = 0;
    for (int part = 0; part < 4; ++part) {
        const std::size_t dot = part < 3 ? text.find('.') : text.size();
        if (dot == std::string_view::npos || dot == 0 || dot > 3 || (text[0] == '0' && dot > 1))
            return std::nullopt;
        unsigned number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + dot, number);
        if (error != std::errc() || end != text.data() + dot || number > 255)
            return std::nullopt;
        address = address << 8 | number;
        text.remove_prefix(part < 3 ? dot + 1 : dot);
    }
    return address;
}

/// The address under a key; nothing when it is missing or none.
std::optional<std::uint32_t> addressAt(const Json& message, const char* key) {
    const auto text = textAt(message, key);
    return text ? addressOf(*text) : std::nullopt;
}

bool fitTogether(const Json& message) {
    const auto ip = addressAt(message, "ip");
    const auto mask = addressAt(message, "mask");
    const auto gateway = addressAt(message, "gateway");
    if (!ip || !mask || !gateway || !addressAt(message, "dns"))
        return false;
    // A mask is ones and then zeros, and leaves room for two stations.
    const std::uint32_t hosts = ~*mask;
    if (*mask == 0 || hosts < 3 || (hosts & (hosts + 1)) != 0)
        return false;
    const auto isStation = [&](std::uint32_t address) {
        return (address & hosts) != 0 && (address & hosts) != hosts;
    };
    const bool routable = *ip >> 24 != 0 && *ip >> 24 != 127 && *ip >> 24 < 224;
    return routable && isStation(*ip) && isStation(*gateway) && (*ip & *mask) == (*gateway & *mask) &&
           *ip != *gateway;
}

std::uint32_t hashOf(const std::string& text) {
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    return hash;
}

/// A locally administered address.
std::string macOf(const std::string& ipncid) {
    const std::uint32_t hash = hashOf(ipncid);
    std::array<char, 18> text{};
    std::snprintf(text.data(), text.size(), "02:1a:%02x:%02x:%02x:%02x", hash >> 24, hash >> 16 & 255U,
                  hash >> 8 & 255U, hash & 255U);
    return text.data();
}

Json infoOf(const store::Device& device) {
    Json info = Json::parse(device.info, nullptr, false);
    return info.is_object() ? info : Json::object();
}

/// What the store keeps beside the address, an object.
Json settingsOf(const Json& info) {
    const Json* const kept = memberAt(info, settingsKey);
    return kept != nullptr && kept->is_object() ? *kept : Json::object();
}

} // namespace

bool isIpv4(std::string_view text) {
    return addressOf(text).has_value();
}

Json networkStateOf(const store::Device& device) {
    const Json info = infoOf(device);
    const Json kept = settingsOf(info);
    const std::string ip = textAt(info, "ip").value_or("0.0.0.0");
    const std::string gateway = ip.substr(0, ip.rfind('.')) + ".1";
    const Json* const wifi = memberAt(kept, "wifi");
    const Json wireless = wifi != nullptr ? *wifi : Json::object();
    const std::string ssid = textAt(wireless, "ssid").value_or("");
    const int signal = ssid.empty() ? 0 : 60 + static_cast<int>(hashOf(device.ipncid + ssid) % 40);
    return {
        {"ip", ip},
        {"mask", textAt(kept, "mask").value_or("255.255.255.0")},
        {"gateway", textAt(kept, "gateway").value_or(gateway)},
        {"dns", textAt(kept, "dns").value_or(gateway)},
        {"dhcp", flagAt(kept, "dhcp").value_or(false)},
        {"mac", macOf(device.ipncid)},
        {"wifi", {{"ssid", ssid}, {"security", textAt(wireless, "security").value_or("open")}, {"signal", signal}}}};
}

std::optional<Json> withAddresses(const store::Device& device, const Json& message) {
    const bool told = memberAt(message, "dhcp") != nullptr;
    const auto dhcp = told ? flagAt(message, "dhcp") : std::optional(false);
    if (!dhcp)
        return std::nullopt;
    Json info = infoOf(device);
    Json settings = settingsOf(info);
    settings["dhcp"] = *dhcp;
    if (!*dhcp) {
        if (!fitTogether(message))
            return std::nullopt;
        info["ip"] = message["ip"];
        for (const char* key : {"mask", "gateway", "dns"})
            settings[key] = message[key];
    }
    info[settingsKey] = std::move(settings);
    return std::make_optional(std::move(info));
}

std::optional<Json> withWireless(const store::Device& device, const Json& message) {
    const auto ssid = textAt(message, "ssid");
    const auto security = textAt(message, "security");
    const auto password = memberAt(message, "password") == nullptr ? std::string() : textAt(message, "password");
    const bool named = ssid && !ssid->empty() && ssid->size() <= longestSsid && isPlainText(*ssid, longestSsid);
    if (!named || !security || !password || !isPlainText(*password, longestPassword))
        return std::nullopt;
    const bool open = *security == "open";
    if (!open && *security != "wpa2" && *security != "wpa3")
        return std::nullopt;
    // A protected network needs its password, an open one has none.
    if (open ? !password->empty() : password->size() < shortestPassword)
        return std::nullopt;
    Json info = infoOf(device);
    Json settings = settingsOf(info);
    settings["wifi"] = {{"ssid", *ssid}, {"security", *security}};
    info[settingsKey] = std::move(settings);
    return std::make_optional(std::move(info));
}

} // namespace ipncsdk::device
