#include "video/MemoryMessage.h"

#include "video/AvMessage.h"

namespace corvanta::video {

namespace {

std::optional<qint64> integerAt(const QJsonObject& message, const char* key) {
    const QVariant number = message.value(QLatin1String(key)).toVariant();
    // A number that had to become a floating-point one on the way is no address.
    if (number.userType() != QMetaType::LongLong && number.userType() != QMetaType::Int)
        return std::nullopt;
    return number.toLongLong();
}

} // namespace

std::optional<std::span<const std::byte>> memoryOf(const QJsonObject& message, qint64 longest) {
    const qint64 length = integerAt(message, "len").value_or(0);
    const auto number = integerAt(message, "data");
    if (!number || length <= 0 || length > longest)
        return std::nullopt;
    const std::uint64_t address = addressFromInteger(*number, sizeof(void*)).value_or(0);
    if (address == 0)
        return std::nullopt;
    return std::span(reinterpret_cast<const std::byte*>(static_cast<std::uintptr_t>(address)),
                     static_cast<std::size_t>(length));
}

} // namespace corvanta::video
