#pragma once

#include <QVariantMap>

#include <string>

/// The edge between JSON texts and values. Every message, request and document of the SDK passes here.
namespace corvanta::json {

/// The object in `text` (UTF-8). Text that is not JSON, or not an object, is an empty map.
/// Integers keep 64 bits, so addresses stay exact. Any thread.
QVariantMap parseObject(const std::string& text);

/// The same, telling apart an empty object from what could not be read: `ok` is false for the latter.
QVariantMap parseObject(const QByteArray& text, bool& ok);

/// `map` as compact UTF-8 JSON.
std::string toText(const QVariantMap& map);

} // namespace corvanta::json
