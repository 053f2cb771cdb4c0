#include "update/UpdateServer.h"

#include <QCoreApplication>

namespace corvanta::update {
namespace {

// Where clients of all versions look.
const QString Folder = QStringLiteral("/pelmux_windows_updata/Corvanta/");

QUrl baseFrom(const QString& address) {
    QUrl url(address.trimmed(), QUrl::StrictMode);
    const bool isHttp = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!isHttp || url.host().isEmpty() || url.hasQuery() || url.hasFragment() || !url.userInfo().isEmpty())
        return {};
    QString path = url.path(QUrl::FullyDecoded);
    while (path.endsWith(QLatin1Char('/')))
        path.chop(1);
    url.setPath(path, QUrl::DecodedMode);
    return url;
}

} // namespace

std::optional<QString> checkServerAddress(const QString& address) {
    if (address.trimmed().isEmpty() || baseFrom(address).isValid())
        return std::nullopt;
    return QCoreApplication::translate("UpdateServer", "更新服务器地址格式错误，例如 http://192.168.1.10:8080");
}

UpdateServer::UpdateServer(const QString& address)
    : base_(baseFrom(address)) {}

QUrl UpdateServer::file(const QString& path) const {
    if (!isValid())
        return {};
    QUrl url = base_;
    // Decoded mode: a "%", "?" or "#" in a name is part of it.
    url.setPath(base_.path(QUrl::FullyDecoded) + Folder + path, QUrl::DecodedMode);
    return url;
}

} // namespace corvanta::update
