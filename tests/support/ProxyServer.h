#pragma once

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QVariantMap>
#include <QtTest>

/// A real proxy on loopback as a process of its own, ended with the object.
class ProxyServer final {
public:
    ProxyServer() = default;
    ~ProxyServer() { stop(); }
    ProxyServer(const ProxyServer&) = delete;
    ProxyServer& operator=(const ProxyServer&) = delete;

    /// A port that nobody listens on at this moment.
    static quint16 freePort() {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return server.serverPort();
    }

    /// `kind` is "socks5" or "http". With a user's name, that and the password "secret" are wanted (SOCKS only).
    bool start(const QString& kind, const QString& user) {
        kind_ = kind;
        user_ = user;
        port_ = freePort();
        if (kind == QLatin1String("http")) {
            QFile config(dir_.filePath(QStringLiteral("tinyproxy.conf")));
            if (!config.open(QIODevice::WriteOnly))
                return false;
            config.write("Port " + QByteArray::number(port_) + "\nListen 127.0.0.1\nTimeout 60\nMaxClients 4\n");
            config.close();
            process_.start(QStringLiteral("tinyproxy"),
                           {QStringLiteral("-d"), QStringLiteral("-c"), config.fileName()});
        } else {
            QStringList arguments{QStringLiteral("-i"), QStringLiteral("127.0.0.1"), QStringLiteral("-p"),
                                  QString::number(port_)};
            if (!user.isEmpty())
                arguments << QStringLiteral("-u") << user << QStringLiteral("-P") << QStringLiteral("secret");
            process_.start(QStringLiteral("microsocks"), arguments);
        }
        return process_.waitForStarted() &&
               QTest::qWaitFor([this] { return process_.state() == QProcess::Running && answers(); }, 20000);
    }
    void stop() {
        process_.kill();
        process_.waitForFinished();
    }

    /// The program's settings for it.
    QVariantMap settings() const {
        return {{QStringLiteral("proxyHostName"), QStringLiteral("127.0.0.1")},
                {QStringLiteral("proxyPort"), port_},
                {QStringLiteral("proxyUser"), user_},
                {QStringLiteral("proxyPassword"), QStringLiteral("secret")},
                {QStringLiteral("proxyType"), kind_}};
    }

private:
    bool answers() const {
        QTcpSocket probe;
        probe.connectToHost(QHostAddress::LocalHost, port_);
        return probe.waitForConnected(200);
    }

    QTemporaryDir dir_;
    QProcess process_;
    QString kind_;
    QString user_;
    quint16 port_ = 0;
};
