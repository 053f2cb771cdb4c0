#pragma once

#include <QProcess>
#include <QTcpServer>
#include <QtTest>

#include <string>

/// The test camera (tests/support/rtsp-server.py) as a process of its own, ended with the object.
class RtspServer final {
public:
    explicit RtspServer(QStringList arguments = {})
        : arguments_(std::move(arguments)) {}
    ~RtspServer() { stop(); }
    RtspServer(const RtspServer&) = delete;
    RtspServer& operator=(const RtspServer&) = delete;

    /// Starts it, again on the port that it had before; false when it does not serve.
    bool start() {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(CORVANTA_RTSP_SERVER, arguments_ + QStringList{"--port", QString::number(port_)});
        while (process_.waitForReadyRead(60000)) {
            const QByteArray line = process_.readLine();
            if (line.startsWith("PORT ")) {
                port_ = line.mid(5).trimmed().toInt();
                return true;
            }
        }
        return false;
    }
    /// The same on the port of another one that has ended.
    bool startAt(int port) {
        port_ = port;
        return start();
    }
    void stop() {
        process_.kill();
        process_.waitForFinished(60000);
    }
    int port() const { return port_; }
    std::string url(const char* path, const char* pair = "") const {
        return std::string("rtsp://") + pair + "127.0.0.1:" + std::to_string(port_) + path;
    }

private:
    const QStringList arguments_;
    QProcess process_;
    int port_ = 0;
};
