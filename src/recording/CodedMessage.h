#pragma once

#include <QString>
#include <QVariantMap>

#include <cstddef>
#include <span>
#include <string_view>
#include <variant>

namespace corvanta::recording {

/// A coded frame in the SDK's memory; valid only during the callback whose message named it.
struct CodedFrame {
    std::span<const std::byte> data;
};

/// A frame message that must not be followed: its address or length cannot be right.
struct CodedFrameRefused {
    QString reason; ///< English, for the debug stream
};

/// Any message that is no frame, as it came; an empty map when the text was no JSON object.
using CodedMessage = std::variant<CodedFrame, CodedFrameRefused, QVariantMap>;

/// The longest frame that is taken, bytes.
constexpr qint64 LongestFrame = 64 << 20;

/// Parses one message of a recording request's callback. Touches nothing but its argument, so any number of SDK
/// threads may be in it at once.
CodedMessage parseCodedMessage(std::string_view json);

/// Name of the operation that starts a recording; tags the reports that come back.
QString recordOperation();

/// The request for a device's coded main stream: {"avreq": {...}}.
QVariantMap recordRequest(const QString& deviceId);

} // namespace corvanta::recording
