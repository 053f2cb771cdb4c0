#pragma once

#include "ipncsdk/TCPSocketDelegate.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <atomic>
#include <chrono>
#include <thread>

/// A client's transport that goes the direct way, and counts how it is used.
class DirectDelegate final : public ipncsdk::TCPSocketDelegate {
public:
    bool Connect(const std::string& host, unsigned short port, int) override {
        ++connects;
        boost::system::error_code error;
        const auto address = boost::asio::ip::make_address(host, error);
        if (!error) {
            socket_.connect({address, port}, error);
        }
        boost::system::error_code ignored;
        socket_.non_blocking(true, ignored);
        return !error;
    }
    int Send(const char* data, int size) override {
        int sent = 0;
        while (sent < size && !aborted) {
            boost::system::error_code error;
            sent += static_cast<int>(
                socket_.send(boost::asio::buffer(data + sent, static_cast<std::size_t>(size - sent)), 0, error));
            if (error == boost::asio::error::would_block) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            } else if (error) {
                return Failed;
            }
        }
        sentBytes += sent;
        return sent == size ? size : Failed;
    }
    int Receive(char* data, int size, int timeoutMs) override {
        const auto giveUp = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
        while (!aborted) {
            boost::system::error_code error;
            const auto count = socket_.receive(boost::asio::buffer(data, static_cast<std::size_t>(size)), 0, error);
            if (error == boost::asio::error::eof) {
                return Closed;
            }
            if (error != boost::asio::error::would_block) {
                receivedBytes += static_cast<long>(count);
                return error ? static_cast<int>(Failed) : static_cast<int>(count);
            }
            if (std::chrono::steady_clock::now() >= giveUp) {
                return TimedOut;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return Failed;
    }
    void Abort() override {
        callsAfterClose += closes > 0 ? 1 : 0;
        aborted = true;
    }
    void Close() override { ++closes; }

    std::atomic<int> connects{0};
    std::atomic<int> closes{0};
    std::atomic<int> callsAfterClose{0};
    std::atomic<long> sentBytes{0};
    std::atomic<long> receivedBytes{0};
    std::atomic<bool> aborted{false};

private:
    boost::asio::io_context context_;
    boost::asio::ip::tcp::socket socket_{context_};
};
