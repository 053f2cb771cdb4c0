#include "support/CuttingProxy.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <array>
#include <limits>

/// What runs on the thread.
class CuttingProxy::Worker final : public QObject {
public:
    explicit Worker(int peer)
        : peer_(static_cast<quint16>(peer)) {}

    int listen() {
        server_ = new QTcpServer(this);
        connect(server_, &QTcpServer::newConnection, this, &Worker::accept);
        server_->listen(QHostAddress::LocalHost);
        return server_->serverPort();
    }

    void set(Manner manner, qint64 after, Side side) {
        manner_ = manner;
        left_ = {Endless, Endless};
        left_.at(static_cast<std::size_t>(side)) = after;
        carried_ = {0, 0};
        away_ = false;
        for (QTcpSocket* const socket : findChildren<QTcpSocket*>()) {
            if (socket->property("silent").toBool() && socket->peerPort() == peer_)
                socket->abort();
        }
    }

    void end() {
        delete server_;
        for (QTcpSocket* const socket : findChildren<QTcpSocket*>())
            delete socket;
    }

    static constexpr qint64 Endless = std::numeric_limits<qint64>::max();
    bool away_ = false;
    std::array<qint64, 2> carried_{0, 0};

private:
    void accept() {
        while (QTcpSocket* const client = server_->nextPendingConnection()) {
            auto* const peer = new QTcpSocket(this);
            client->setParent(this);
            for (QTcpSocket* const socket : {client, peer})
                socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            tie(client, peer, Side::Question);
            tie(peer, client, Side::Answer);
            peer->connectToHost(QHostAddress::LocalHost, peer_);
        }
    }

    /// Carries what comes from one to the other, and its end.
    void tie(QTcpSocket* from, QTcpSocket* to, Side side) {
        connect(from, &QTcpSocket::readyRead, to, [this, from, to, side] { carry(from, to, side); });
        connect(to, &QTcpSocket::connected, from, [this, from, to, side] { carry(from, to, side); });
        const auto end = [this, from, to, side] {
            carry(from, to, side);
            from->deleteLater();
            if (from->property("silent").toBool())
                return; // who is cut off from the other does not hear of its end
            to->disconnectFromHost();
        };
        connect(from, &QTcpSocket::disconnected, to, end);
        connect(from, &QTcpSocket::errorOccurred, to, [from, end] {
            if (from->state() == QAbstractSocket::UnconnectedState)
                end();
        });
    }

    void carry(QTcpSocket* from, QTcpSocket* to, Side side) {
        if (from->property("silent").toBool() || to->state() != QAbstractSocket::ConnectedState)
            return;
        if (away_ && from->bytesAvailable() > 0)
            return cut();
        qint64& left = left_.at(static_cast<std::size_t>(side));
        const QByteArray bytes = from->read(std::min(left, from->bytesAvailable()));
        left -= left == Endless ? 0 : bytes.size();
        carried_.at(static_cast<std::size_t>(side)) += bytes.size();
        to->write(bytes);
        if (from->bytesAvailable() > 0) {
            away_ = true;
            cut();
        }
    }

    void cut() {
        for (QTcpSocket* const socket : findChildren<QTcpSocket*>()) {
            if (manner_ == Manner::Silent)
                socket->setProperty("silent", true);
            else
                socket->disconnectFromHost();
        }
    }

    const quint16 peer_;
    QTcpServer* server_ = nullptr;
    Manner manner_ = Manner::Closed;
    std::array<qint64, 2> left_{Endless, Endless}; ///< bytes of a side that are carried yet
};

CuttingProxy::CuttingProxy(int peer)
    : worker_(std::make_unique<Worker>(peer)) {
    worker_->moveToThread(&thread_);
    thread_.start();
    QMetaObject::invokeMethod(
        worker_.get(), [this] { port_ = worker_->listen(); }, Qt::BlockingQueuedConnection);
}

CuttingProxy::~CuttingProxy() {
    QMetaObject::invokeMethod(
        worker_.get(), [this] { worker_->end(); }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void CuttingProxy::takeAway(Manner manner, qint64 after, Side side) {
    QMetaObject::invokeMethod(
        worker_.get(), [&] { worker_->set(manner, after, side); }, Qt::BlockingQueuedConnection);
}

void CuttingProxy::bringBack() {
    takeAway(Manner::Closed, Worker::Endless);
}

bool CuttingProxy::isAway() const {
    bool away = false;
    QMetaObject::invokeMethod(
        worker_.get(), [&] { away = worker_->away_; }, Qt::BlockingQueuedConnection);
    return away;
}

qint64 CuttingProxy::carried(Side side) const {
    qint64 bytes = 0;
    QMetaObject::invokeMethod(
        worker_.get(), [&] { bytes = worker_->carried_.at(static_cast<std::size_t>(side)); },
        Qt::BlockingQueuedConnection);
    return bytes;
}
