#pragma once

#include "base/ProxySettings.h"

#include <ipncsdk/TCPSocketDelegate.h>

#include <functional>
#include <memory>
#include <thread>

/// Carries one connection of the SDK through the user's proxy.
///
/// Its socket (a QTcpSocket with a QNetworkProxy) lives on a thread of its own, which `Connect` starts and the
/// destructor joins. The SDK's threads talk to that thread through one small buffer each way; `Send` waits while
/// the outgoing one is full, so a slow proxy slows the sender down.
class TcpSocketManage final : public ipncsdk::TCPSocketDelegate {
public:
    /// `closed` is called once, from the SDK's thread, when the SDK is done with this object.
    TcpSocketManage(ProxySettings proxy, std::function<void(TcpSocketManage*)> closed);
    ~TcpSocketManage() override;
    TcpSocketManage(const TcpSocketManage&) = delete;
    TcpSocketManage& operator=(const TcpSocketManage&) = delete;

    bool Connect(const std::string& host, unsigned short port, int timeoutMs) override;
    int Send(const char* data, int size) override;
    int Receive(char* data, int size, int timeoutMs) override;
    void Abort() override;
    void Close() override;

private:
    struct Channel;

    ProxySettings proxy_;
    std::function<void(TcpSocketManage*)> closed_;
    std::shared_ptr<Channel> channel_;
    std::thread thread_;
};
