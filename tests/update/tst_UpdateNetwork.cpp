#include "support/CuttingProxy.h"
#include "update/Nginx.h"
#include "update/UpdateTest.h"

#include <QCryptographicHash>

using namespace corvanta::update;
using updateFiles::read;
using updateFiles::write;
using Manner = CuttingProxy::Manner;

namespace {

constexpr int Limit = 20000; ///< ms; for what ends at once, or after some tenths of a second of silence
constexpr int Parts = 6;

} // namespace

/// The update server's network goes away in the middle: while a connection is agreed upon, in a description, in a
/// file.
class tst_UpdateNetwork final : public UpdateTest {
    Q_OBJECT
private slots:
    void initTestCase();
    void cutAnywhere_data();
    void cutAnywhere();

private:
    Nginx nginx_;
    QByteArray content_;
};

void tst_UpdateNetwork::initTestCase() {
    QVERIFY(nginx_.start());
    for (int n = 0; n < 20000; ++n) // nothing that the server could make much smaller
        content_ += QCryptographicHash::hash(QByteArray::number(n), QCryptographicHash::Md5);
    write(nginx_.folder() + "/lib/changed.dll", content_);
    write(nginx_.folder() + "/versionMd5.json", OddServer::descriptionOf({{"lib/changed.dll", content_}}));
}

void tst_UpdateNetwork::cutAnywhere_data() {
    QTest::addColumn<bool>("isSecure");
    QTest::addColumn<Manner>("manner");
    QTest::newRow("http, closed") << false << Manner::Closed;
    QTest::newRow("http, silent") << false << Manner::Silent;
    QTest::newRow("https, closed") << true << Manner::Closed;
    QTest::newRow("https, silent") << true << Manner::Silent;
}

void tst_UpdateNetwork::cutAnywhere() {
    QFETCH(bool, isSecure);
    QFETCH(Manner, manner);
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.addCaCertificates(QSslCertificate::fromPath(nginx_.certificate()));
    QSslConfiguration::setDefaultConfiguration(trusting);
    const QUrl server(isSecure ? nginx_.secureAddress() : nginx_.address());
    CuttingProxy network(server.port());
    const QString address = QStringLiteral("%1://127.0.0.1:%2").arg(server.scheme()).arg(network.port());
    const int patience = manner == Manner::Silent ? 300 : Long;

    network.bringBack();
    const CheckResult whole = check(address);
    QVERIFY2(whole.state == CheckResult::State::Newer, qPrintable(whole.problem));
    const qint64 length = network.carried();
    for (int part = 0; part < Parts; ++part) {
        network.takeAway(manner, length * part / Parts);
        QElapsedTimer time;
        time.start();
        const CheckResult cut = check(address, std::nullopt, patience);
        QCOMPARE(cut.state, CheckResult::State::Failed);
        QCOMPARE(cut.problem, QStringLiteral("服务器地址错误或JSON格式错误!"));
        QVERIFY(time.elapsed() < Limit);
        network.bringBack();
        QCOMPARE(check(address).state, CheckResult::State::Newer);
    }

    const auto downloads = [&] {
        download_->setLimits({Long});
        download_->start(UpdateServer(address), whole.description);
        const bool isReady = waitFor(State::Ready);
        const bool isWhole = read(fetched("lib/changed.dll")) == content_;
        download_->cancel();
        return isReady && isWhole;
    };
    network.bringBack();
    QVERIFY(downloads());
    const qint64 fileLength = network.carried();
    for (int part = 0; part < Parts; ++part) {
        download_->setLimits({patience});
        failed_->clear();
        network.takeAway(manner, fileLength * part / Parts);
        QElapsedTimer time;
        time.start();
        download_->start(UpdateServer(address), whole.description);
        QTRY_COMPARE_WITH_TIMEOUT(failed_->size(), 1, Long);
        QVERIFY(time.elapsed() < Limit);
        const QString told = failed_->first().first().toString();
        QVERIFY2(told.contains("changed.dll"), qPrintable(told));
        QCOMPARE(told.contains(QStringLiteral("服务器响应超时")), manner == Manner::Silent);
        // What came is thrown away, and nothing of it is installed.
        QVERIFY(nothingLeft());
        QCOMPARE(read(installed("lib/changed.dll")), QByteArray("old"));
        QCOMPARE(download_->state(), State::Idle);
        network.bringBack();
        QVERIFY(downloads());
    }
}

QTEST_GUILESS_MAIN(tst_UpdateNetwork)
#include "tst_UpdateNetwork.moc"
