#include "recording/CodedMessage.h"

#include "video/AvMessage.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <limits>
#include <optional>

namespace corvanta::recording {

namespace {

std::optional<qint64> integerAt(const QJsonObject& message, const char* key) {
    const QVariant number = message.value(QLatin1String(key)).toVariant();
    // A number that had to become a floating-point one on the way is no address.
    if (number.userType() != QMetaType::LongLong && number.userType() != QMetaType::Int)
        return std::nullopt;
    return number.toLongLong();
}

} // namespace

CodedMessage parseCodedMessage(std::string_view json) {
    if (json.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return QVariantMap();
    const QByteArray bytes = QByteArray::fromRawData(json.data(), static_cast<int>(json.size()));
    const QJsonObject message = QJsonDocument::fromJson(bytes).object();
    if (message.value(QLatin1String("type")).toString() != QLatin1String("videodata"))
        return message.toVariantMap();
    const auto length = integerAt(message, "len");
    if (!length || *length <= 0 || *length > LongestFrame)
        return CodedFrameRefused{QStringLiteral("coded frame refused: length")};
    const auto number = integerAt(message, "data");
    const auto address = number ? video::addressFromInteger(*number, sizeof(void*)) : std::nullopt;
    if (!address || *address == 0)
        return CodedFrameRefused{QStringLiteral("coded frame refused: address")};
    return CodedFrame{{reinterpret_cast<const std::byte*>(static_cast<std::uintptr_t>(*address)),
                       static_cast<std::size_t>(*length)}};
}

QString recordOperation() {
    return QStringLiteral("开始录像");
}

QVariantMap recordRequest(const QString& deviceId) {
    // Recordings take as long to open as they need: no "maxopentime".
    const QVariantMap keys{{QStringLiteral("ipncid"), deviceId},
                           {QStringLiteral("hd"), true},
                           {QStringLiteral("recvavdata"), true},
                           {QStringLiteral("reqtype"), QStringLiteral("avreq")}};
    return {{QStringLiteral("avreq"), keys}};
}

} // namespace corvanta::recording
