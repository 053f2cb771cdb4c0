#pragma once

#include <QJsonObject>

#include <cstddef>
#include <optional>
#include <span>

namespace corvanta::video {

/// The bytes in the SDK's memory that a message names by its keys "data" (address) and "len" (length); nothing when
/// they cannot be right: missing, no integers, 0 or below, longer than `longest`. Valid only during the callback.
std::optional<std::span<const std::byte>> memoryOf(const QJsonObject& message, qint64 longest);

} // namespace corvanta::video
