#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QUrl;

namespace corvanta::map {

/// The template of a tile server's addresses, as the settings hold it: http or https, with {z}, {x} and {y} (or {-y},
/// counted from the south) behind the host, and perhaps {s} in the host, which stands for a, b and c. A value.
class TileAddress final {
public:
    static constexpr int Longest = 1024; ///< characters

    /// Nothing for what cannot be used.
    static std::optional<TileAddress> parse(const QString& text);
    /// What is wrong with it, a text for the user. An empty one is well: the map that is built in.
    static std::optional<QString> problemOf(const QString& text);

    const QString& text() const { return text_; }
    /// Whether an address lies on the server that is meant: scheme, host and port.
    bool covers(const QUrl& address) const;
    /// The servers as a page's rules name them, one after the other.
    QString sources() const { return servers_.join(QLatin1Char(' ')); }

private:
    QString text_;
    QStringList servers_; ///< "scheme://host:port"
};

} // namespace corvanta::map
