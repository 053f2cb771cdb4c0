#include "monitor/ui/tour/TourUpdateServer.h"

#include "update/Version.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTimer>

#include <memory>

namespace update = corvanta::update;

namespace {

constexpr int LargeSize = 24 << 20; // bytes
constexpr int Piece = 96 << 10;     // bytes
constexpr int PieceTime = 50;       // ms
const QByteArray Small = "corvanta\n";

QByteArray head(int size) {
    return "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + QByteArray::number(size) + "\r\n\r\n";
}

} // namespace

TourUpdateServer::TourUpdateServer(QObject* parent)
    : QObject(parent) {
    connect(&server_, &QTcpServer::newConnection, this, [this] {
        QTcpSocket* const socket = server_.nextPendingConnection();
        const auto request = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, request] {
            *request += socket->readAll();
            if (request->contains("\r\n\r\n"))
                answer(*socket, *request);
        });
    });
}

QString TourUpdateServer::address() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(server_.serverPort());
}

QByteArray TourUpdateServer::description() const {
    const QByteArray md5 = QCryptographicHash::hash(Small, QCryptographicHash::Md5).toHex();
    const QJsonObject file{{QStringLiteral("fileName"), QStringLiteral("corvanta-guide.pdf")},
                           {QStringLiteral("Md5"), QString::fromLatin1(md5)}};
    const QJsonObject folder{{QStringLiteral("fileName"), QStringLiteral("guide")},
                             {QStringLiteral("sublist"), QJsonArray{file}}};
    return QJsonDocument(QJsonObject{{QStringLiteral("LatestVerison"), update::BuiltInVersion + 1},
                                     {QStringLiteral("UpdateEXEname"), update::UpdaterName},
                                     {QStringLiteral("Md5List"), QJsonArray{folder}}})
        .toJson();
}

void TourUpdateServer::answer(QTcpSocket& socket, const QByteArray& request) {
    if (request.contains("versionMd5.json")) {
        socket.write(head(description().size()) + description());
        socket.disconnectFromHost();
    } else if (!isLarge_) {
        socket.write(head(Small.size()) + Small);
        socket.disconnectFromHost();
    } else {
        socket.write(head(LargeSize));
        auto* const timer = new QTimer(&socket);
        connect(timer, &QTimer::timeout, &socket, [&socket] { socket.write(QByteArray(Piece, ' ')); });
        timer->start(PieceTime);
    }
}
