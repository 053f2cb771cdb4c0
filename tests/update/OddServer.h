#pragma once

#include <QHash>
#include <QList>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QTcpServer>

/// An HTTP server on loopback that answers as no good one does: bytes are sent as the script has them. Lives in the
/// thread of the test and serves while that waits.
class OddServer final : public QObject {
    Q_OBJECT
public:
    struct Answer {
        QByteArray bytes;       ///< the whole answer, its head included
        bool staysOpen = false; ///< the connection is kept, and nothing more comes
        int pieces = 1;         ///< in how many parts it is sent, some milliseconds apart
        bool endless = false;   ///< the last KiB is sent again and again until the client has enough
    };

    OddServer();
    QString address() const;
    /// The answers to a path, each once, the last one for ever.
    void serve(const QString& path, const QList<Answer>& answers) { answers_[path] = answers; }
    /// A file of the update, as a good server sends it.
    void serveFile(const QString& file, const QByteArray& content);
    /// The description of a version: its files, by their paths, of which only the first folder is one, with contents.
    static QByteArray descriptionOf(const QMap<QString, QByteArray>& files,
                                    const QString& updater = QStringLiteral("updater.sh"), int version = 2031);
    /// The description that is served.
    void describe(const QByteArray& json) { serveFile(QStringLiteral("versionMd5.json"), json); }

    /// Paths asked for, oldest first, without the common folder.
    const QStringList& asked() const { return asked_; }
    /// The head of the last request.
    const QByteArray& lastHead() const { return lastHead_; }
    int openConnections() const { return connections_; }

    static Answer good(const QByteArray& content, const QByteArray& headers = {});
    static Answer status(const QByteArray& line, const QByteArray& headers = {}, const QByteArray& body = {});
    static QString folder() { return QStringLiteral("/pelmux_windows_updata/Corvanta/"); }

private:
    void connected();
    void request(QTcpSocket* socket, const QByteArray& head);
    void send(QTcpSocket* socket, const Answer& answer, int piece);

    QTcpServer server_;
    QHash<QString, QList<Answer>> answers_;
    QStringList asked_;
    QByteArray lastHead_;
    int connections_ = 0;
};
