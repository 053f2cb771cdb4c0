#include "base/ConfigDocuments.h"

#include "base/JsonText.h"

#include <QDebug>

#include <ipncsdk/ZELIPNCSDK.h>

namespace corvanta::documents {

QVariantMap read(ipncsdk::ZELIPNCSDK& sdk, const QString& type) {
    std::string text;
    sdk.GetConfig(json::toText({{QStringLiteral("type"), type}}), text);
    if (text.empty()) {
        qDebug() << "!!!!!!!!!!!!!!!! GetConfig is empty ！！！！！！！！！！！！！！！！";
        return {};
    }
    return json::parseObject(text);
}

QString phoneId(ipncsdk::ZELIPNCSDK& sdk) {
    return read(sdk, QStringLiteral("phoneid")).value(QStringLiteral("phoneid")).toString();
}

} // namespace corvanta::documents
