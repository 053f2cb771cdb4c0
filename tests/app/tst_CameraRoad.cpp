#include "app/AppManager.h"
#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "support/ProxyServer.h"
#include "support/RecordingUi.h"
#include "support/RtspServer.h"
#include "video/AvMessage.h"
#include "video/AvRequest.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <ipncsdk/ZELIPNCSDK.h>

#include <mutex>

namespace requests = corvanta::requests;
namespace video = corvanta::video;

/// The client's core over the real SDK: a network camera, served by a program of others, reached directly and through
/// real proxies.
class tst_CameraRoad final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void picturesArrive_data();
    void picturesArrive();
    void failuresHaveTheirCode_data();
    void failuresHaveTheirCode();
    void aCameraThatComesBackIsShownAgain();
    void mistakesAreSaidAndTheRestIsServed();

private:
    struct Stream {
        std::mutex mutex;
        std::vector<QVariantMap> reports; ///< below mutex
        int pictures = 0;                 ///< below mutex
    };
    void start(const QByteArray& camera, const QVariantMap& proxy = {});
    std::shared_ptr<Stream> open();
    static QVariantMap report(Stream& stream, const QString& type);
    static int pictures(Stream& stream);
    QByteArray camera(const char* path, const char* user = "", const char* password = "") const;

    const QTemporaryDir ears_;
    RtspServer server_{{"--user", "viewer", "--password", "secret", "--ears", ears_.path()}};
    RecordingUi ui_;
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<AppManager> manager_;
    QStringList notices_;
};

void tst_CameraRoad::initTestCase() {
    QVERIFY(server_.start());
}

void tst_CameraRoad::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(dir_->path()));
    notices_.clear();
}

void tst_CameraRoad::cleanup() {
    manager_.reset();
    QDir::setCurrent(QDir::rootPath());
}

QByteArray tst_CameraRoad::camera(const char* path, const char* user, const char* password) const {
    return "{\"ipncid\":\"porch\",\"name\":\"Porch\",\"main\":\"" + QByteArray::fromStdString(server_.url(path)) +
           "\",\"user\":\"" + user + "\",\"password\":\"" + password + "\",\"group\":\"\"}";
}

void tst_CameraRoad::start(const QByteArray& camera, const QVariantMap& proxy) {
    QDir().mkpath(QStringLiteral("config"));
    QFile config(QStringLiteral("config/service.json"));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write("{\n\"store\":\"service/service.db\",\n\"cameras\":[\n" + camera + "\n]}\n");
    config.close();
    manager_ = std::make_unique<AppManager>(AppPaths(dir_->path()), ui_, *ipncsdk::ZELIPNCSDK::GetInstance());
    connect(manager_.get(), &AppEvents::sig_MessageBar, this, [this](const QString& text) { notices_ += text; });
    manager_->context().settings.set(corvanta::keys::Proxy, proxy);
    const QVariantMap account = manager_->context().gateway.document(QStringLiteral("firstaccount"));
    QVERIFY(!account.isEmpty());
    manager_->context().gateway.request(requests::accountRequest(QStringLiteral("登录账号"), account), this, {});
    QTRY_VERIFY_WITH_TIMEOUT(!manager_->context().devices.isEmpty(), 60000);
}

std::shared_ptr<tst_CameraRoad::Stream> tst_CameraRoad::open() {
    auto stream = std::make_shared<Stream>();
    manager_->RequestMessage(
        corvanta::json::toText(video::openVideoRequest(QStringLiteral("porch"), true, QStringLiteral("1"))),
        [stream](const std::string& text) {
            const video::AvMessage message = video::parseAvMessage(text);
            const std::lock_guard lock(stream->mutex);
            if (const auto* frame = std::get_if<video::AvFrame>(&message))
                stream->pictures += frame->size.width == 320 && frame->size.height == 240 ? 1 : 0;
            else if (const auto* map = std::get_if<video::AvReportMap>(&message))
                stream->reports.push_back(*map);
        });
    return stream;
}

QVariantMap tst_CameraRoad::report(Stream& stream, const QString& type) {
    const std::lock_guard lock(stream.mutex);
    for (auto it = stream.reports.rbegin(); it != stream.reports.rend(); ++it) {
        if (it->value(QStringLiteral("type")).toString() == type)
            return *it;
    }
    return {};
}

int tst_CameraRoad::pictures(Stream& stream) {
    const std::lock_guard lock(stream.mutex);
    return stream.pictures;
}

void tst_CameraRoad::picturesArrive_data() {
    QTest::addColumn<QString>("proxyKind");
    QTest::addColumn<QString>("proxyUser");
    QTest::addColumn<QString>("contype");
    QTest::newRow("directly") << QString() << QString() << QStringLiteral("RTSP/TCP");
    QTest::newRow("socks5") << QStringLiteral("socks5") << QString() << QStringLiteral("RTSP/PROXY");
    QTest::newRow("socks5 with password")
        << QStringLiteral("socks5") << QStringLiteral("me") << QStringLiteral("RTSP/PROXY");
    QTest::newRow("http") << QStringLiteral("http") << QString() << QStringLiteral("RTSP/PROXY");
}

void tst_CameraRoad::picturesArrive() {
    QFETCH(QString, proxyKind);
    QFETCH(QString, proxyUser);
    QFETCH(QString, contype);
    ProxyServer proxy;
    if (!proxyKind.isEmpty())
        QVERIFY(proxy.start(proxyKind, proxyUser));
    start(camera("/hears-pcmu", "viewer", "secret"), proxyKind.isEmpty() ? QVariantMap() : proxy.settings());
    const DeviceRecord* const device = manager_->context().devices.device(QStringLiteral("porch"));
    QVERIFY(device != nullptr && device->isVideo() && device->isOnline() && device->isAdmin);
    const auto stream = open();
    QTRY_VERIFY_WITH_TIMEOUT(pictures(*stream) > 30, 60000);
    const QVariantMap opened = report(*stream, QStringLiteral("avopen"));
    QCOMPARE(opened.value(QStringLiteral("contype")).toString(), contype);
    const QVariantMap parameters = opened.value(QStringLiteral("avparam")).toMap();
    QCOMPARE(parameters.value(QStringLiteral("weidth")).toInt(), 320);
    QCOMPARE(parameters.value(QStringLiteral("framerate")).toInt(), 25);
    // Whether it can be talked to is asked beside the stream, on the same road.
    QTRY_COMPARE_WITH_TIMEOUT(report(*stream, QStringLiteral("avopen"))
                                  .value(QStringLiteral("avparam"))
                                  .toMap()
                                  .value(QStringLiteral("audioplay"))
                                  .toInt(),
                              3, 60000);
    const int id = opened.value(QStringLiteral("reqid")).toInt();
    QVERIFY(id > 0);
    manager_->StopRequest(id);
    const int after = pictures(*stream);
    QTest::qWait(0);
    QCOMPARE(pictures(*stream), after); // at once
}

void tst_CameraRoad::failuresHaveTheirCode_data() {
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("password");
    QTest::addColumn<bool>("deadProxy");
    QTest::addColumn<int>("code");
    QTest::newRow("wrong password") << QByteArray("/live") << QByteArray("wrong") << false << 12;
    QTest::newRow("no such stream") << QByteArray("/gone") << QByteArray("secret") << false << 11;
    QTest::newRow("other codec") << QByteArray("/h265") << QByteArray("secret") << false << 13;
    QTest::newRow("proxy is not there") << QByteArray("/live") << QByteArray("secret") << true << 16;
}

void tst_CameraRoad::failuresHaveTheirCode() {
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, password);
    QFETCH(bool, deadProxy);
    QFETCH(int, code);
    const QVariantMap proxy{{QStringLiteral("proxyHostName"), QStringLiteral("127.0.0.1")},
                            {QStringLiteral("proxyPort"), ProxyServer::freePort()}};
    start(camera(path, "viewer", password), deadProxy ? proxy : QVariantMap());
    const auto stream = open();
    QTRY_VERIFY_WITH_TIMEOUT(!report(*stream, QStringLiteral("avclose")).isEmpty(), 60000);
    QCOMPARE(report(*stream, QStringLiteral("avclose")).value(QStringLiteral("retcode")).toInt(), code);
    QCOMPARE(pictures(*stream), 0);
}

void tst_CameraRoad::aCameraThatComesBackIsShownAgain() {
    RtspServer own;
    QVERIFY(own.start());
    start("{\"ipncid\":\"porch\",\"name\":\"Porch\",\"main\":\"" + QByteArray::fromStdString(own.url("/live")) +
          "\"}");
    const auto stream = open();
    QTRY_VERIFY_WITH_TIMEOUT(pictures(*stream) > 5, 60000);
    own.stop();
    QTRY_COMPARE_WITH_TIMEOUT(report(*stream, QStringLiteral("avstate")).value(QStringLiteral("state")).toInt(), 1,
                              60000);
    const int before = pictures(*stream);
    QVERIFY(own.start()); // on the same port
    QTRY_VERIFY_WITH_TIMEOUT(pictures(*stream) > before + 5, 90000);
    QVERIFY(report(*stream, QStringLiteral("avclose")).isEmpty());
}

void tst_CameraRoad::mistakesAreSaidAndTheRestIsServed() {
    start(camera("/live", "viewer", "secret") +
          ",\n{\"ipncid\":\"../etc\",\"name\":\"x\",\"main\":\"rtsp://127.0.0.1/x\"}"
          ",\n{\"ipncid\":\"file\",\"name\":\"x\",\"main\":\"file:../../etc/passwd\"}");
    QVERIFY(manager_->context().devices.device(QStringLiteral("porch")) != nullptr);
    QVERIFY(manager_->context().devices.device(QStringLiteral("file")) == nullptr);
    QTRY_VERIFY(!notices_.isEmpty());
    const QString all = notices_.join(QLatin1Char('\n'));
    QVERIFY2(all.contains(QStringLiteral("5")) && all.contains(QStringLiteral("ipncid")), qPrintable(all));
    QVERIFY2(all.contains(QStringLiteral("6")) && all.contains(QStringLiteral("main")), qPrintable(all));
}

QTEST_GUILESS_MAIN(tst_CameraRoad)
#include "tst_CameraRoad.moc"
