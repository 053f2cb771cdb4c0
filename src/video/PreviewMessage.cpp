#include "video/PreviewMessage.h"

#include "video/AvMessage.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

namespace corvanta::video {

namespace {

constexpr qint64 largestJpeg = qint64{64} << 20; // bytes; no preview comes near
constexpr int unreadable = -1;

} // namespace

std::string previewRequest(const QString& deviceId, int width) {
    const QJsonObject request{
        {QStringLiteral("reqtype"), QStringLiteral("preview")},
        {QStringLiteral("ipncid"), deviceId},
        {QStringLiteral("width"), width},
    };
    return QJsonDocument(request).toJson(QJsonDocument::Compact).toStdString();
}

std::string previewRequest(const QString& url, const QString& user, const QString& password, int width) {
    QJsonObject request{
        {QStringLiteral("reqtype"), QStringLiteral("preview")},
        {QStringLiteral("url"), url},
        {QStringLiteral("width"), width},
    };
    if (!user.isEmpty()) {
        request.insert(QStringLiteral("user"), user);
        request.insert(QStringLiteral("password"), password);
    }
    return QJsonDocument(request).toJson(QJsonDocument::Compact).toStdString();
}

PreviewReply readPreview(std::string_view json) {
    if (json.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return {unreadable, {}, QStringLiteral("too long")};
    const QByteArray bytes = QByteArray::fromRawData(json.data(), static_cast<int>(json.size()));
    const QJsonObject message = QJsonDocument::fromJson(bytes).object();
    const int retcode = message.value(QLatin1String("retcode")).toInt(unreadable);
    if (retcode != 0)
        return {retcode, {}, {}};
    const QVariant data = message.value(QLatin1String("data")).toVariant();
    const qint64 length = message.value(QLatin1String("len")).toVariant().toLongLong();
    const bool isInteger = data.userType() == QMetaType::LongLong || data.userType() == QMetaType::Int;
    const auto address = isInteger ? addressFromInteger(data.toLongLong(), sizeof(void*)) : std::nullopt;
    if (!address || *address == 0 || length <= 0 || length > largestJpeg)
        return {unreadable, {}, QStringLiteral("address or length cannot be right")};
    const auto* first = reinterpret_cast<const char*>(static_cast<std::uintptr_t>(*address));
    return {0, std::string(first, static_cast<std::size_t>(length)), {}};
}

} // namespace corvanta::video
