#include "base/TcpSocketManage.h"
#include "support/CuttingProxy.h"
#include "support/ProxyServer.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <atomic>
#include <thread>

/// A server that sends back what it gets, on a thread of its own.
class Echo final {
public:
    Echo() {
        std::atomic<quint16> listening{0};
        thread_ = std::thread([this, &listening] {
            QTcpServer server;
            server.listen(QHostAddress::LocalHost);
            listening = server.serverPort();
            while (!stop_) {
                // Several may come at once.
                if (!server.hasPendingConnections() && !server.waitForNewConnection(20))
                    continue;
                const std::unique_ptr<QTcpSocket> peer(server.nextPendingConnection());
                while (!stop_ && peer->state() == QAbstractSocket::ConnectedState) {
                    // Writing reads too, so what is there already must not be waited for.
                    if (peer->bytesAvailable() == 0 && !peer->waitForReadyRead(20))
                        continue;
                    const QByteArray got = peer->readAll();
                    peer->write(got);
                    while (peer->bytesToWrite() > 0 && peer->waitForBytesWritten(1000)) {
                    }
                    if (got.endsWith("\nquit"))
                        peer->disconnectFromHost();
                }
            }
        });
        while (listening == 0)
            std::this_thread::yield();
        port = listening;
    }
    ~Echo() {
        stop_ = true;
        thread_.join();
    }
    quint16 port = 0;

private:
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

class tst_TcpSocketManage final : public QObject {
    Q_OBJECT
private slots:
    void realProxiesCarryEverything_data();
    void realProxiesCarryEverything();
    void failuresAreTold_data();
    void failuresAreTold();
    void abortEndsWhatWaits();
    void theNetworkGoesAway_data();
    void theNetworkGoesAway();
};

void tst_TcpSocketManage::realProxiesCarryEverything_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("user");
    QTest::newRow("socks5") << QStringLiteral("socks5") << QString();
    QTest::newRow("socks5 with password") << QStringLiteral("socks5") << QStringLiteral("viewer");
    QTest::newRow("http") << QStringLiteral("http") << QString();
}

void tst_TcpSocketManage::realProxiesCarryEverything() {
#ifdef Q_OS_WIN
    QSKIP("the proxies are programs of Debian");
#endif
    QFETCH(QString, kind);
    QFETCH(QString, user);
    const Echo echo;
    ProxyServer proxy;
    QVERIFY(proxy.start(kind, user));

    std::atomic<int> closed{0};
    TcpSocketManage connection(ProxySettings::fromMap(proxy.settings()), [&closed](TcpSocketManage*) { ++closed; });
    QVERIFY(connection.Connect("127.0.0.1", echo.port, 10000));

    // More than all buffers together, both ways at once.
    std::string sent(3'000'000, '\0');
    for (std::size_t n = 0; n < sent.size(); ++n)
        sent[n] = static_cast<char>(n * 31 + n / 977);
    sent += "\nquit";
    std::thread sender(
        [&] { QCOMPARE(connection.Send(sent.data(), static_cast<int>(sent.size())), int(sent.size())); });
    std::string received;
    std::array<char, 10'000> block{};
    int got = 0;
    while (received.size() < sent.size() && (got = connection.Receive(block.data(), int(block.size()), 10000)) > 0)
        received.append(block.data(), static_cast<std::size_t>(got));
    sender.join();
    QCOMPARE(received.size(), sent.size());
    QVERIFY(received == sent);
    QCOMPARE(connection.Receive(block.data(), int(block.size()), 10000), int(ipncsdk::TCPSocketDelegate::Closed));
    connection.Close();
    QCOMPARE(closed.load(), 1);
}

void tst_TcpSocketManage::failuresAreTold_data() {
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("silent");
    QTest::newRow("nobody listens") << QStringLiteral("127.0.0.1") << false;
    QTest::newRow("no such host") << QStringLiteral("no-such-host.invalid") << false;
    QTest::newRow("proxy says nothing") << QStringLiteral("127.0.0.1") << true;
}

void tst_TcpSocketManage::failuresAreTold() {
    QFETCH(QString, host);
    QFETCH(bool, silent);
    QTcpServer mute; // accepts, and never answers
    QVERIFY(mute.listen(QHostAddress::LocalHost));
    TcpSocketManage connection(
        ProxySettings::fromMap({{QStringLiteral("proxyHostName"), host},
                                {QStringLiteral("proxyPort"), silent ? mute.serverPort() : ProxyServer::freePort()}}),
        {});
    QVERIFY(!connection.Connect("127.0.0.1", 9, silent ? 300 : 10000));
    char byte = 'x';
    QCOMPARE(connection.Send(&byte, 1), int(ipncsdk::TCPSocketDelegate::Failed));
    connection.Close();
}

void tst_TcpSocketManage::abortEndsWhatWaits() {
    QTcpServer mute;
    QVERIFY(mute.listen(QHostAddress::LocalHost));
    TcpSocketManage connection(ProxySettings::fromMap({{QStringLiteral("proxyHostName"), QStringLiteral("127.0.0.1")},
                                                       {QStringLiteral("proxyPort"), mute.serverPort()}}),
                               {});
    std::atomic<bool> ended{false};
    std::thread waiting([&] {
        connection.Connect("127.0.0.1", 9, 600000);
        ended = true;
    });
    QTRY_VERIFY(mute.hasPendingConnections());
    connection.Abort();
    waiting.join();
    QVERIFY(ended);
}

void tst_TcpSocketManage::theNetworkGoesAway_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("user");
    QTest::addColumn<CuttingProxy::Manner>("manner");
    for (const auto manner : {CuttingProxy::Manner::Closed, CuttingProxy::Manner::Silent}) {
        const char* const how = manner == CuttingProxy::Manner::Closed ? "closed" : "silent";
        QTest::addRow("socks5, %s", how) << QStringLiteral("socks5") << QString() << manner;
        QTest::addRow("socks5 with password, %s", how)
            << QStringLiteral("socks5") << QStringLiteral("viewer") << manner;
        QTest::addRow("http, %s", how) << QStringLiteral("http") << QString() << manner;
    }
}

// At any byte that a proxy says before it lets anything through, and then inside of what it carries.
void tst_TcpSocketManage::theNetworkGoesAway() {
#ifdef Q_OS_WIN
    QSKIP("the proxies are programs of Debian");
#endif
    QFETCH(QString, kind);
    QFETCH(QString, user);
    QFETCH(CuttingProxy::Manner, manner);
    const bool isSilent = manner == CuttingProxy::Manner::Silent;
    const Echo echo;
    ProxyServer proxy;
    QVERIFY(proxy.start(kind, user));
    QVariantMap settings = proxy.settings();
    CuttingProxy network(settings[QStringLiteral("proxyPort")].toInt());
    settings[QStringLiteral("proxyPort")] = network.port();
    const ProxySettings way = ProxySettings::fromMap(settings);
    std::array<char, 100> block{};
    const auto carries = [&](TcpSocketManage& connection) {
        return connection.Connect("127.0.0.1", echo.port, 10000) && connection.Send("hello\nquit", 10) == 10 &&
               connection.Receive(block.data(), int(block.size()), 10000) > 0;
    };
    {
        TcpSocketManage connection(way, {});
        QVERIFY(connection.Connect("127.0.0.1", echo.port, 10000));
    }
    const qint64 length = network.carried();
    QVERIFY(length >= 12);
    for (qint64 after = 0; after<length; after += length> 20 ? 7 : 1) {
        network.takeAway(manner, after);
        TcpSocketManage connection(way, {});
        QElapsedTimer time;
        time.start();
        QVERIFY(!connection.Connect("127.0.0.1", echo.port, isSilent ? 200 : 60000));
        QVERIFY(time.elapsed() < 20000);
        QVERIFY(network.isAway());
        connection.Abort();
        QCOMPARE(connection.Send("x", 1), int(ipncsdk::TCPSocketDelegate::Failed));
        network.bringBack();
        TcpSocketManage again(way, {});
        QVERIFY(carries(again));
    }
    TcpSocketManage connection(way, {});
    QVERIFY(connection.Connect("127.0.0.1", echo.port, 10000));
    network.takeAway(manner, 3);
    QCOMPARE(connection.Send("hello", 5), 5);
    std::string received;
    int got = 0;
    while ((got = connection.Receive(block.data(), int(block.size()), isSilent ? 500 : 60000)) > 0)
        received.append(block.data(), static_cast<std::size_t>(got));
    QCOMPARE(received, std::string("hel"));
    QCOMPARE(got, isSilent ? int(ipncsdk::TCPSocketDelegate::TimedOut) : int(ipncsdk::TCPSocketDelegate::Closed));
}

QTEST_GUILESS_MAIN(tst_TcpSocketManage)
#include "tst_TcpSocketManage.moc"
