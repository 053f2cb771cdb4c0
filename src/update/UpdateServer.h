#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// Where an update server keeps what it publishes.
namespace corvanta::update {

/// The text to show when a server's address cannot be used; an empty address is well: no updates.
std::optional<QString> checkServerAddress(const QString& address);

/// Addresses below a server's. Without a usable address all are invalid.
class UpdateServer final {
public:
    /// `address` as the user entered it: http or https, a host, perhaps a port and a folder.
    explicit UpdateServer(const QString& address);

    bool isValid() const { return base_.isValid(); }
    QUrl description() const { return file(QStringLiteral("versionMd5.json")); }
    QUrl signature() const { return file(QStringLiteral("versionMd5.json.sig")); }
    /// A file of the installation, by its path relative to the installation folder. Whatever letters it has, it
    /// stays one below the server's folder.
    QUrl file(const QString& path) const;

private:
    QUrl base_;
};

} // namespace corvanta::update
