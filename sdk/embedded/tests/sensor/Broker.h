#pragma once

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

namespace ipncsdk::test {

/// mosquitto on loopback as a process of its own, ended with the object; lets the user "node" in with "secret".
class Broker final {
public:
    Broker() {
        QTcpServer free;
        free.listen(QHostAddress::LocalHost);
        port = free.serverPort();
    }
    ~Broker() { stop(); }
    Broker(const Broker&) = delete;
    Broker& operator=(const Broker&) = delete;

    /// Starts it, again on the port that it had before; false when it does not serve.
    bool start() {
        const QString users = folder_.filePath("users");
        QProcess::execute("mosquitto_passwd", {"-b", "-c", users, "node", "secret"});
        QFile file(folder_.filePath("broker.conf"));
        file.open(QIODevice::WriteOnly);
        file.write("listener " + QByteArray::number(port) +
                   " 127.0.0.1\nallow_anonymous false\nuser root\npassword_file " + users.toUtf8() + "\n");
        file.close();
        process_.start("mosquitto", {"-c", file.fileName()});
        return QTest::qWaitFor(
            [this] {
                QTcpSocket probe;
                probe.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
                return probe.waitForConnected(200);
            },
            30000);
    }
    void stop() {
        process_.terminate();
        process_.waitForFinished();
    }

    /// Says something on the topic of the node.
    void publish(const char* payload) const {
        QProcess::execute("mosquitto_pub", client() + QStringList{"-q", "1", "-t", "home/node", "-m", payload});
    }
    /// Begins to listen to what is said to the node, and waits until that is so.
    void hear(QProcess& node) const {
        // It would keep what it says to itself until there is more of it.
        node.start("stdbuf",
                   QStringList{"-oL", "mosquitto_sub"} + client() + QStringList{"-d", "-t", "home/node/set"});
        QByteArray said;
        while (!said.contains("Subscribed") && node.waitForReadyRead(30000))
            said += node.readAll();
    }

    int port = 0;

private:
    QStringList client() const {
        return {"-h", "127.0.0.1", "-p", QString::number(port), "-u", "node", "-P", "secret"};
    }

    QTemporaryDir folder_;
    QProcess process_;
};

} // namespace ipncsdk::test
