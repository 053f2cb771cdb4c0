#include "update/OddServer.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

#include <memory>

OddServer::OddServer() {
    if (!server_.listen(QHostAddress::LocalHost))
        qFatal("no port");
    connect(&server_, &QTcpServer::newConnection, this, &OddServer::connected);
}

QString OddServer::address() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(server_.serverPort());
}

OddServer::Answer OddServer::good(const QByteArray& content, const QByteArray& headers) {
    return status("200 OK", headers + "Content-Length: " + QByteArray::number(content.size()) + "\r\n", content);
}

OddServer::Answer OddServer::status(const QByteArray& line, const QByteArray& headers, const QByteArray& body) {
    return {"HTTP/1.1 " + line + "\r\n" + headers + "Connection: close\r\n\r\n" + body};
}

void OddServer::serveFile(const QString& file, const QByteArray& content) {
    serve(folder() + file, {good(content)});
}

void OddServer::connected() {
    while (QTcpSocket* const socket = server_.nextPendingConnection()) {
        ++connections_;
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            --connections_;
            socket->deleteLater();
        });
        const auto head = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, head] {
            *head += socket->readAll();
            if (head->contains("\r\n\r\n"))
                request(socket, *head);
        });
    }
}

void OddServer::request(QTcpSocket* socket, const QByteArray& head) {
    lastHead_ = head;
    const QString path = QUrl::fromPercentEncoding(head.split(' ').value(1));
    asked_ += path.startsWith(folder()) ? path.mid(folder().size()) : path;
    QList<Answer>& answers = answers_[path];
    const Answer answer =
        answers.isEmpty() ? status("404 Not Found", "Content-Length: 4\r\n", "none") : answers.first();
    if (answers.size() > 1)
        answers.removeFirst();
    send(socket, answer, 0);
}

void OddServer::send(QTcpSocket* socket, const Answer& answer, int piece) {
    const int size = (answer.bytes.size() + answer.pieces - 1) / answer.pieces;
    socket->write(answer.bytes.mid(piece * size, size));
    const QPointer<QTcpSocket> guarded(socket);
    if (piece + 1 < answer.pieces) {
        QTimer::singleShot(5, this, [this, guarded, answer, piece] {
            if (guarded != nullptr)
                send(guarded, answer, piece + 1);
        });
    } else if (answer.endless) {
        const QByteArray block = answer.bytes.right(1024).repeated(64);
        connect(socket, &QTcpSocket::bytesWritten, this, [socket, block] {
            if (socket->bytesToWrite() < block.size())
                socket->write(block);
        });
    } else if (!answer.staysOpen) {
        socket->disconnectFromHost();
    }
}

QByteArray OddServer::descriptionOf(const QMap<QString, QByteArray>& files, const QString& updater, int version) {
    QJsonArray list;
    QMap<QString, QJsonArray> folders;
    for (auto it = files.begin(); it != files.end(); ++it) {
        const QByteArray sum = QCryptographicHash::hash(it.value(), QCryptographicHash::Md5).toHex();
        const QJsonObject entry{{QStringLiteral("fileName"), it.key().section('/', -1)},
                                {QStringLiteral("Md5"), QString::fromLatin1(sum)}};
        if (it.key().contains('/'))
            folders[it.key().section('/', 0, 0)] += entry;
        else
            list += entry;
    }
    for (auto it = folders.begin(); it != folders.end(); ++it)
        list += QJsonObject{{QStringLiteral("fileName"), it.key()}, {QStringLiteral("sublist"), it.value()}};
    return QJsonDocument(QJsonObject{{QStringLiteral("LatestVerison"), version},
                                     {QStringLiteral("UpdateEXEname"), updater},
                                     {QStringLiteral("Md5List"), list}})
        .toJson(QJsonDocument::Compact);
}
