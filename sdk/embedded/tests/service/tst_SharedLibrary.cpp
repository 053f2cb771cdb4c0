#include "ipncsdk/ZELIPNCSDK.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <nlohmann/json.hpp>

#include <atomic>
#include <future>
#include <string>

using ipncsdk::ZELIPNCSDK;
using Json = nlohmann::json;

/// The library as a client sees it: one object, real streams, files below the current directory.
class tst_SharedLibrary final : public QObject {
    Q_OBJECT

private slots:
    void signInAndWatch();
};

void tst_SharedLibrary::signInAndWatch() {
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    ZELIPNCSDK* sdk = ZELIPNCSDK::GetInstance();
    QVERIFY(sdk == ZELIPNCSDK::GetInstance());
    QCOMPARE(sdk->Startup(), ipncsdk::emSuccess);
    QVERIFY(QDir::setCurrent(before)); // the root stays where it was during the call
    QVERIFY(QFile::exists(folder.filePath("service/service.db")));

    std::string text;
    QCOMPARE(sdk->GetConfig(R"({"type":"firstaccount"})", text), ipncsdk::emSuccess);
    const Json request = {{"reqtype", "urlreq"}, {"urlreq", {{"reqtype", "logon"}, {"params", Json::parse(text)}}}};
    std::promise<std::string> signedIn;
    int id = 0;
    sdk->RequestMessage(request.dump(), id, [&](const std::string& response) { signedIn.set_value(response); });
    QVERIFY(id > 0);
    QCOMPARE(Json::parse(signedIn.get_future().get()).at("retcode").get<int>(), 0);

    std::promise<Json> firstFrame;
    std::atomic<bool> had{false};
    const Json open = {{"avreq", {{"ipncid", "CAM0001"}, {"reqtype", "avreq"}, {"recvdecodeavdata", true}}}};
    sdk->RequestMessage(open.dump(), id, [&](const std::string& response) {
        const Json message = Json::parse(response);
        const bool isEnd = message.at("type") == "decodevideodata" || message.at("type") == "avclose";
        if (isEnd && !had.exchange(true))
            firstFrame.set_value(message);
    });
    const Json frame = firstFrame.get_future().get();
    QCOMPARE(frame.at("type").get<std::string>(), std::string("decodevideodata"));
    QVERIFY(frame.at("w").get<int>() > 0);
    sdk->StopRequest(id);
    QCOMPARE(sdk->Cleanup(), ipncsdk::emSuccess);
    QCOMPARE(sdk->Cleanup(), ipncsdk::emNotStarted);
}

QTEST_APPLESS_MAIN(tst_SharedLibrary)
#include "tst_SharedLibrary.moc"
