#include "base/TcpSocketManage.h"

#include "base/TaskQueue.h"

#include <QEventLoop>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>

namespace {
constexpr std::size_t SendLimit = 262144; // bytes (256 KiB) that wait to be sent before `Send` waits
// What comes is taken at once: a proxied socket with a limited read buffer loses its notification when the buffer was
// full, and falls silent. An SDK that leaves this much lying has lost the connection already.
constexpr std::size_t ReceiveLimit = 67108864; // bytes, 64 MiB
} // namespace

/// What the SDK's threads and the socket's thread share. Everything below `mutex`.
struct TcpSocketManage::Channel {
    enum class State { Connecting, Connected, ClosedByPeer, Failed };

    std::mutex mutex;
    std::condition_variable changed;
    State state = State::Connecting;
    std::string received;
    std::string outgoing;
    bool flushPosted = false;
    TaskQueue* queue = nullptr; ///< of the socket's thread, null before and after its life
    std::function<void()> read; ///< to be run in the socket's thread, as the next two
    std::function<void()> write;
    std::function<void()> quit;

    /// Has `write` run, unless that is already on its way. `mutex` is held.
    void askToWrite() {
        if (flushPosted || queue == nullptr)
            return;
        flushPosted = true;
        queue->post(write);
    }
};

namespace {

/// The socket and what it does in its thread.
template <typename Channel>
class Carrier {
public:
    Carrier(std::shared_ptr<Channel> channel, const ProxySettings& proxy)
        : channel_(std::move(channel)) {
        QNetworkProxy carrierProxy(proxy.kind == ProxySettings::Kind::Http ? QNetworkProxy::HttpProxy
                                                                           : QNetworkProxy::Socks5Proxy,
                                   QString::fromStdString(proxy.host), proxy.port);
        // A password alone would make the socket insist on signing in at a proxy that wants no names.
        if (!proxy.user.empty()) {
            carrierProxy.setUser(QString::fromStdString(proxy.user));
            carrierProxy.setPassword(QString::fromStdString(proxy.password));
        }
        socket_.setProxy(carrierProxy);
        QObject::connect(&socket_, &QTcpSocket::connected, &socket_, [this] { onConnected(); });
        QObject::connect(&socket_, &QTcpSocket::readyRead, &socket_, [this] { read(); });
        QObject::connect(&socket_, &QTcpSocket::bytesWritten, &socket_, [this] { write(); });
        QObject::connect(&socket_, &QTcpSocket::disconnected, &socket_, [this] { onEnded(); });
        QObject::connect(&socket_, &QTcpSocket::errorOccurred, &socket_, [this] { onEnded(); });
    }

    void connectTo(const std::string& host, unsigned short port) {
        socket_.connectToHost(QString::fromStdString(host), port);
    }

    void read() {
        const QByteArray block = socket_.readAll();
        const std::lock_guard lock(channel_->mutex);
        channel_->received.append(block.constData(), static_cast<std::size_t>(block.size()));
        if (channel_->received.size() > ReceiveLimit)
            channel_->state = Channel::State::Failed;
        channel_->changed.notify_all();
    }

    void write() {
        std::string block;
        {
            const std::lock_guard lock(channel_->mutex);
            channel_->flushPosted = false;
            if (channel_->state != Channel::State::Connected ||
                socket_.bytesToWrite() > static_cast<qint64>(SendLimit))
                return;
            block.swap(channel_->outgoing);
            channel_->changed.notify_all();
        }
        if (!block.empty())
            socket_.write(block.data(), static_cast<qint64>(block.size()));
    }

private:
    void onConnected() {
        socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        {
            const std::lock_guard lock(channel_->mutex);
            if (channel_->state == Channel::State::Connecting)
                channel_->state = Channel::State::Connected;
            channel_->changed.notify_all();
        }
        write();
    }

    // What arrived before the end is handed over first; only then is the end told.
    void onEnded() {
        read();
        const bool orderly = socket_.error() == QAbstractSocket::RemoteHostClosedError;
        const std::lock_guard lock(channel_->mutex);
        if (channel_->state == Channel::State::Connected && orderly)
            channel_->state = Channel::State::ClosedByPeer;
        else if (channel_->state != Channel::State::ClosedByPeer)
            channel_->state = Channel::State::Failed;
        channel_->changed.notify_all();
    }

    std::shared_ptr<Channel> channel_;
    QTcpSocket socket_;
};

} // namespace

TcpSocketManage::TcpSocketManage(ProxySettings proxy, std::function<void(TcpSocketManage*)> closed)
    : proxy_(std::move(proxy))
    , closed_(std::move(closed))
    , channel_(std::make_shared<Channel>()) {}

TcpSocketManage::~TcpSocketManage() {
    Abort();
    if (thread_.joinable())
        thread_.join();
}

bool TcpSocketManage::Connect(const std::string& host, unsigned short port, int timeoutMs) {
    if (thread_.joinable())
        return false; // one object is one connection
    thread_ = std::thread([channel = channel_, proxy = proxy_, host, port] {
        QEventLoop loop;
        TaskQueue queue;
        Carrier<Channel> carrier(channel, proxy);
        {
            const std::lock_guard lock(channel->mutex);
            if (channel->state != Channel::State::Connecting)
                return;
            channel->queue = &queue;
            channel->read = [&carrier] {
                carrier.read();
            };
            channel->write = [&carrier] {
                carrier.write();
            };
            channel->quit = [&loop] {
                loop.quit();
            };
        }
        carrier.connectTo(host, port);
        loop.exec();
        const std::lock_guard lock(channel->mutex);
        channel->queue = nullptr;
    });
    std::unique_lock lock(channel_->mutex);
    channel_->changed.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                               [this] { return channel_->state != Channel::State::Connecting; });
    return channel_->state == Channel::State::Connected;
}

int TcpSocketManage::Send(const char* data, int size) {
    int sent = 0;
    std::unique_lock lock(channel_->mutex);
    while (sent < size) {
        channel_->changed.wait(lock, [this] {
            return channel_->state != Channel::State::Connected || channel_->outgoing.size() < SendLimit;
        });
        if (channel_->state != Channel::State::Connected)
            return Failed;
        const auto room = static_cast<int>(SendLimit - channel_->outgoing.size());
        const int part = std::min(size - sent, room);
        channel_->outgoing.append(data + sent, static_cast<std::size_t>(part));
        sent += part;
        channel_->askToWrite();
    }
    return sent;
}

int TcpSocketManage::Receive(char* data, int size, int timeoutMs) {
    std::unique_lock lock(channel_->mutex);
    const bool ready = channel_->changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), [this] {
        return !channel_->received.empty() || channel_->state != Channel::State::Connected;
    });
    if (!ready)
        return TimedOut;
    if (channel_->received.empty())
        return channel_->state == Channel::State::ClosedByPeer ? Closed : Failed;
    const int taken = std::min(size, static_cast<int>(channel_->received.size()));
    std::copy_n(channel_->received.data(), taken, data);
    channel_->received.erase(0, static_cast<std::size_t>(taken));
    return taken;
}

void TcpSocketManage::Abort() {
    const std::lock_guard lock(channel_->mutex);
    channel_->state = Channel::State::Failed;
    channel_->received.clear();
    channel_->changed.notify_all();
    if (channel_->queue != nullptr)
        channel_->queue->post(channel_->quit);
}

void TcpSocketManage::Close() {
    Abort();
    if (closed_)
        closed_(this);
}
