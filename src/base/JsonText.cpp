#include "base/JsonText.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace corvanta::json {

QVariantMap parseObject(const QByteArray& text, bool& ok) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    ok = error.error == QJsonParseError::NoError && document.isObject();
    return ok ? document.object().toVariantMap() : QVariantMap();
}

QVariantMap parseObject(const std::string& text) {
    bool ok = false;
    return parseObject(QByteArray::fromRawData(text.data(), static_cast<int>(text.size())), ok);
}

std::string toText(const QVariantMap& map) {
    return QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact).toStdString();
}

} // namespace corvanta::json
