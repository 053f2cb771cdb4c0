#include "media/rtsp/Relay.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/write.hpp>

#include <algorithm>
#include <array>

namespace ipncsdk::media {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;

constexpr std::chrono::milliseconds lookUpEvery{100};
constexpr std::size_t bufferSize = 65536;

} // namespace

/// The loopback's side: one listener, then one socket. What may be called from which thread stands beside it.
class Relay::Pipe {
public:
    /// The relay's thread.
    bool listen() {
        boost::system::error_code error;
        const tcp::endpoint place(asio::ip::address_v4::loopback(), 0);
        listener_.open(place.protocol(), error);
        if (!error) {
            listener_.bind(place, error);
        }
        if (!error) {
            listener_.listen(1, error);
        }
        return !error;
    }
    std::uint16_t port() const {
        boost::system::error_code error;
        return listener_.local_endpoint(error).port();
    }
    /// The relay's thread: waits for the one peer; false when stopped before. The listener is closed either way.
    bool accept(const std::atomic<bool>& stop) {
        bool accepted = false;
        bool over = false;
        listener_.async_accept(socket_, [&](const boost::system::error_code& error) {
            accepted = !error;
            over = true;
        });
        while (!stop && !over) {
            context_.run_for(lookUpEvery);
            context_.restart();
        }
        boost::system::error_code ignored;
        listener_.close(ignored);
        context_.run();
        if (accepted) {
            socket_.non_blocking(false, ignored);
            accepted_ = true;
        }
        // Whoever stops later finds the socket and shuts it down.
        return accepted && !stop;
    }

    /// One thread at a time each.
    std::size_t read(char* data, std::size_t size) {
        boost::system::error_code error;
        const std::size_t count = socket_.read_some(asio::buffer(data, size), error);
        return error ? 0 : count;
    }
    bool write(const char* data, std::size_t size) {
        boost::system::error_code error;
        asio::write(socket_, asio::buffer(data, size), error);
        return !error;
    }

    /// Any thread, at any time: ends pending reads and writes. The descriptor lives on until the end, so that no
    /// other thread can meet a number that has gone to somebody else.
    void shutdown() {
        if (accepted_) {
            boost::system::error_code ignored;
            socket_.shutdown(tcp::socket::shutdown_both, ignored);
        }
    }

private:
    asio::io_context context_;
    tcp::acceptor listener_{context_};
    tcp::socket socket_{context_};
    std::atomic<bool> accepted_{false}; ///< `socket_` is connected, and is not assigned any more
};

Relay::Relay(TCPSocketDelegate& delegate, std::string host, std::uint16_t port, std::chrono::milliseconds timeout)
    : delegate_(&delegate)
    , host_(std::move(host))
    , cameraPort_(port)
    , timeout_(timeout)
    , pipe_(std::make_unique<Pipe>())
    , thread_(&Relay::work, this) {}

Relay::~Relay() {
    stop_ = true;
    delegate_->Abort();
    pipe_->shutdown();
    thread_.join();
}

void Relay::work() {
    const auto limit = static_cast<int>(std::min<std::int64_t>(timeout_.count(), 1'000'000));
    if (stop_ || !delegate_->Connect(host_, cameraPort_, limit) || !pipe_->listen()) {
        connected_ = Connected::No;
        return;
    }
    port_ = pipe_->port();
    connected_ = Connected::Yes;
    if (!pipe_->accept(stop_)) {
        return;
    }
    std::thread upward([this] {
        std::array<char, bufferSize> buffer;
        while (!stop_) {
            const std::size_t count = pipe_->read(buffer.data(), buffer.size());
            const auto size = static_cast<int>(count);
            if (count == 0 || delegate_->Send(buffer.data(), size) != size) {
                break;
            }
        }
        delegate_->Abort();
    });
    std::array<char, bufferSize> buffer;
    while (!stop_) {
        const int count =
            delegate_->Receive(buffer.data(), static_cast<int>(buffer.size()), static_cast<int>(lookUpEvery.count()));
        const bool idle = count == TCPSocketDelegate::TimedOut;
        const bool data = count > 0 && count <= static_cast<int>(buffer.size());
        if (!idle && !(data && pipe_->write(buffer.data(), static_cast<std::size_t>(count)))) {
            break;
        }
    }
    pipe_->shutdown();
    upward.join();
}

} // namespace ipncsdk::media
