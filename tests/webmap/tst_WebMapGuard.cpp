#include "map/web/MapPage.h"
#include "support/CuttingProxy.h"
#include "webmap/WebMapTest.h"

#include <QApplication>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace corvanta::map;

namespace {

/// A web server on loopback that remembers what it was asked for.
class Server final : public QTcpServer {
    Q_OBJECT
public:
    Server() {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            ++connections;
            auto* const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(*socket); });
        });
    }

    QString address(const QString& path) const {
        return QStringLiteral("http://127.0.0.1:%1/%2").arg(serverPort()).arg(path);
    }

    int connections = 0;
    QStringList paths;
    QString redirect; ///< where every request is sent on; empty: the answer is a picture

private:
    void answer(QTcpSocket& socket) {
        while (socket.canReadLine()) {
            const QString line = QString::fromLatin1(socket.readLine());
            if (line.startsWith(QLatin1String("GET ")))
                paths += line.section(QLatin1Char(' '), 1, 1);
            if (line == QLatin1String("\r\n"))
                socket.write(reply());
        }
    }
    QByteArray reply() const {
        if (!redirect.isEmpty())
            return "HTTP/1.1 302 Found\r\nLocation: " + redirect.toLatin1() + "\r\nContent-Length: 0\r\n\r\n";
        const QByteArray picture = "<svg xmlns='http://www.w3.org/2000/svg' width='256' height='256'/>";
        return "HTTP/1.1 200 OK\r\nContent-Type: image/svg+xml\r\nContent-Length: " +
               QByteArray::number(picture.size()) + "\r\n\r\n" + picture;
    }
};

} // namespace

/// What the page can reach.
class tst_WebMapGuard : public WebMapTest {
    Q_OBJECT

private slots:
    void thePageReachesNobody();
    void tilesComeFromTheirServerOnly();
    void aServerCannotSendThePageOn();
    void tilesComeWhenTheNetworkIsBack_data();
    void tilesComeWhenTheNetworkIsBack();
    void cleanup() { WebMapTest::cleanup(); }

private:
    /// Tries every way out that a page has.
    void tryToReach(const QString& address);
    /// Waits until the page has been at its work for a while: whatever it could send is sent.
    void settle();
};

void tst_WebMapGuard::tryToReach(const QString& address) {
    const QString socket = QString(address).replace(QLatin1String("http:"), QLatin1String("ws:"));
    ask(QStringLiteral(R"((() => {
        const attempts = [
            () => { new Image().src = '%1image'; },
            () => { fetch('%1fetch').catch(() => 0); },
            () => { const r = new XMLHttpRequest(); r.open('GET', '%1xhr'); r.send(); },
            () => { new WebSocket('%2socket'); },
            () => { navigator.sendBeacon('%1beacon', 'x'); },
            () => { new EventSource('%1events'); },
            () => { window.open('%1window'); },
            () => { for (const [name, key] of [['script', 'src'], ['iframe', 'src'], ['object', 'data'], ['video', 'src']]) {
                const e = document.createElement(name); e[key] = '%1' + name; document.body.append(e); } },
            () => { const l = document.createElement('link'); l.rel = 'stylesheet'; l.href = '%1style';
                document.head.append(l); },
            () => { const l = document.createElement('link'); l.rel = 'prefetch'; l.href = '%1prefetch';
                document.head.append(l); },
            () => { const f = document.createElement('form'); f.action = '%1form'; document.body.append(f); f.submit(); },
            () => { const a = document.createElement('a'); a.href = '%1download'; a.download = 'x';
                document.body.append(a); a.click(); },
            () => { location.href = '%1go'; },
        ];
        for (const attempt of attempts) { try { attempt(); } catch (error) { console.log(String(error)); } }
        return true; })())")
            .arg(address, socket));
}

void tst_WebMapGuard::settle() {
    // A picture that comes from the page's own files, asked for after all the others, has come.
    for (int i = 0; i < 5; ++i) {
        ask(QStringLiteral("window.isSettled = false; { const i = new Image(); i.onload = () => setTimeout(() => {"
                           "window.isSettled = true; }, 100); i.src = 'camera.svg?' + %1; }")
                .arg(i));
        QVERIFY(becomes(QStringLiteral("window.isSettled")));
    }
}

void tst_WebMapGuard::thePageReachesNobody() {
    Server server;
    QVERIFY(open({}, {makeMarker(QStringLiteral("a"), 30, 110)}));
    tryToReach(server.address({}));
    settle();
    QCOMPARE(server.connections, 0);
    QCOMPARE(view_->page().url(), MapPage::address());
    QCOMPARE(ask(QStringLiteral("marks.length")).toInt(), 1);
}

void tst_WebMapGuard::tilesComeFromTheirServerOnly() {
    Server tiles;
    Server other;
    QVERIFY(open({tiles.address(QStringLiteral("t/{z}/{x}/{y}.svg")), {}}));
    QTRY_VERIFY_WITH_TIMEOUT(tiles.paths.contains(QStringLiteral("/t/3/6/3.svg")), 30000);
    QVERIFY(becomes(QStringLiteral("document.querySelector('img.leaflet-tile-loaded') !== null")));
    tiles.paths.clear();
    tryToReach(other.address({}));
    tryToReach(tiles.address(QStringLiteral("p-")));
    settle();
    QCOMPARE(other.connections, 0);
    // Pictures it may have; nothing else, not even of this server.
    for (const QString& path : qAsConst(tiles.paths))
        QVERIFY2(path.startsWith(QLatin1String("/t/")) || path == QLatin1String("/p-image"), qPrintable(path));
}

void tst_WebMapGuard::aServerCannotSendThePageOn() {
    Server other;
    Server tiles;
    tiles.redirect = other.address(QStringLiteral("stolen"));
    QVERIFY(open({tiles.address(QStringLiteral("{z}/{x}/{y}")), {}}));
    QTRY_VERIFY_WITH_TIMEOUT(tiles.paths.size() > 4, 30000);
    settle();
    QCOMPARE(other.connections, 0);
}

void tst_WebMapGuard::tilesComeWhenTheNetworkIsBack_data() {
    QTest::addColumn<CuttingProxy::Manner>("manner");
    QTest::addColumn<int>("after");
    QTest::newRow("closed") << CuttingProxy::Manner::Closed << 0;
    QTest::newRow("closed inside the picture") << CuttingProxy::Manner::Closed << 100;
    QTest::newRow("silent") << CuttingProxy::Manner::Silent << 0;
    QTest::newRow("silent inside the picture") << CuttingProxy::Manner::Silent << 100;
}

// Until then the map that is built in is seen.
void tst_WebMapGuard::tilesComeWhenTheNetworkIsBack() {
    QFETCH(CuttingProxy::Manner, manner);
    QFETCH(int, after);
    Server tiles;
    CuttingProxy network(tiles.serverPort());
    network.takeAway(manner, after);
    const QString address = QStringLiteral("http://127.0.0.1:%1/{z}/{x}/{y}").arg(network.port());
    QVERIFY(open({address, {}}, {makeMarker(QStringLiteral("a"), 30, 110)}));
    ask(QStringLiteral("tilePatience.first = 200; map.setZoom(map.getZoom() + 1, { animate: false }); true"));
    QTRY_VERIFY_WITH_TIMEOUT(network.isAway() && tiles.connections > 0, 30000);
    settle();
    QVERIFY(becomes(QStringLiteral("document.querySelector('canvas.leaflet-tile') !== null")));
    QVERIFY(!ask(QStringLiteral("document.querySelector('img.leaflet-tile-loaded') !== null")).toBool());
    QCOMPARE(ask(QStringLiteral("marks.length")).toInt(), 1);
    network.bringBack();
    // Those that are in view, each of them.
    QVERIFY(becomes(QStringLiteral("document.querySelectorAll('img.leaflet-tile').length > 4 &&"
                                   "document.querySelector('img.leaflet-tile:not(.leaflet-tile-loaded)') === null")));
}

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    QApplication application(argc, argv);
    tst_WebMapGuard test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_WebMapGuard.moc"
