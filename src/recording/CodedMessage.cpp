#include "recording/CodedMessage.h"

#include "video/MemoryMessage.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

namespace corvanta::recording {

CodedMessage parseCodedMessage(std::string_view json) {
    if (json.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return QVariantMap();
    const QByteArray bytes = QByteArray::fromRawData(json.data(), static_cast<int>(json.size()));
    const QJsonObject message = QJsonDocument::fromJson(bytes).object();
    if (message.value(QLatin1String("type")).toString() != QLatin1String("videodata"))
        return message.toVariantMap();
    const auto data = video::memoryOf(message, LongestFrame);
    if (!data)
        return CodedFrameRefused{QStringLiteral("coded frame refused: address or length")};
    return CodedFrame{*data};
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
