#pragma once

#include "base/JsonText.h"
#include "store/Devices.h"

#include <optional>
#include <string_view>

namespace ipncsdk::device {

/// True for four numbers from 0 to 255 with dots between them, without leading zeros.
bool isIpv4(std::string_view text);

/// What "netstate" tells of a device; made up from its id where nobody has set anything.
Json networkStateOf(const store::Device& device);

/// The device's "info" with the addresses of a "setnet"; nothing when they make no sense: they are none, the mask has
/// gaps, the gateway is outside the net. Addresses may be missing with "dhcp".
std::optional<Json> withAddresses(const store::Device& device, const Json& message);

/// The device's "info" with the wireless network of an "apconfig"; nothing when it is none. The password is checked
/// and not kept: nothing here reads it.
std::optional<Json> withWireless(const store::Device& device, const Json& message);

} // namespace ipncsdk::device
