#include "audio/AudioMessages.h"
#include "audio/Listener.h"
#include "audio/Talker.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"
#include "base/TaskQueue.h"
#include "support/FakeSdk.h"

#include <QtTest>

#include <ipncsdk/ZELIPNCSDK.h>

#include <atomic>
#include <thread>

namespace audio = corvanta::audio;

namespace {

/// Devices that write down what they are told.
struct Told {
    QStringList calls;
    QByteArray played;
    bool works = true;
    SoundInput::Receiver receiver;
};

QString formText(const audio::SoundFormat& format) {
    return QStringLiteral("%1/%2").arg(format.rate).arg(format.channels);
}

class FakeOutput final : public SoundOutput {
public:
    explicit FakeOutput(Told& told)
        : told_(told) {}
    bool open(const audio::SoundFormat& format) override {
        told_.calls += QStringLiteral("open ") + formText(format);
        return told_.works;
    }
    void close() override { told_.calls += QStringLiteral("close"); }
    void play(const QByteArray& samples) override { told_.played += samples; }
    void setVolume(double volume) override { told_.calls += QStringLiteral("volume %1").arg(volume); }

private:
    Told& told_;
};

class FakeInput final : public SoundInput {
public:
    explicit FakeInput(Told& told)
        : told_(told) {}
    bool open(const audio::SoundFormat& format, Receiver receiver) override {
        told_.calls += QStringLiteral("open ") + formText(format);
        told_.receiver = std::move(receiver);
        return told_.works;
    }
    void close() override { told_.calls += QStringLiteral("close"); }

private:
    Told& told_;
};

QByteArray soundMessage(const QByteArray& samples, int rate = 8000, int channels = 1) {
    return R"({"type":"audiodata","bits":16,"rate":)" + QByteArray::number(rate) + R"(,"channels":)" +
           QByteArray::number(channels) + R"(,"len":)" + QByteArray::number(samples.size()) + R"(,"data":)" +
           QByteArray::number(static_cast<qint64>(reinterpret_cast<std::intptr_t>(samples.constData()))) + "}";
}

} // namespace

class tst_Audio final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void messages_data();
    void messages();
    void parameters();
    void listens();
    void oneAtATime();
    void volumeAndMute();
    void formChanges();
    void noLoudspeaker();
    void ended_data();
    void ended();
    void destroyedWhileSoundComes();
    void talks();
    void noMicrophone();
    void talkIsRefused();

private:
    int lastId() { return sdk_.requests().back().id; }
    QVariantMap lastRequest() {
        return corvanta::json::parseObject(sdk_.requests().back().json).value(QStringLiteral("avreq")).toMap();
    }
    void respond(int id, const QByteArray& message) {
        sdk_.respond(id, message.toStdString());
        queue_->drain();
    }

    FakeSdk& sdk_ = FakeSdk::instance();
    std::unique_ptr<TaskQueue> queue_;
    std::unique_ptr<SdkGateway> gateway_;
    std::unique_ptr<Listener> listener_;
    std::unique_ptr<Talker> talker_;
    Told told_;
    QStringList said_;
};

void tst_Audio::init() {
    sdk_.reset();
    told_ = Told();
    said_.clear();
    queue_ = std::make_unique<TaskQueue>();
    gateway_ = std::make_unique<SdkGateway>(*ipncsdk::ZELIPNCSDK::GetInstance(), *queue_);
    listener_ = std::make_unique<Listener>(*gateway_, std::make_unique<FakeOutput>(told_));
    talker_ = std::make_unique<Talker>(*gateway_, std::make_unique<FakeInput>(told_));
    connect(listener_.get(), &Listener::sigMessage, this, [this](const QString& text) { said_ += text; });
    connect(talker_.get(), &Talker::sigMessage, this, [this](const QString& text) { said_ += text; });
}

void tst_Audio::cleanup() {
    listener_.reset();
    talker_.reset();
    gateway_.reset();
    queue_.reset();
    sdk_.reset();
}

void tst_Audio::messages_data() {
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<int>("kind");
    static const QByteArray samples(8, 'x');
    QTest::newRow("sound") << soundMessage(samples) << 0;
    QTest::newRow("stereo") << soundMessage(samples, 48000, 2) << 0;
    QTest::newRow("half a sample") << soundMessage(QByteArray::fromRawData(samples.constData(), 7)) << 1;
    QTest::newRow("half a frame") << soundMessage(QByteArray::fromRawData(samples.constData(), 6), 8000, 2) << 1;
    QTest::newRow("no samples") << soundMessage(QByteArray()) << 1;
    QTest::newRow("no rate") << soundMessage(samples, 0) << 1;
    QTest::newRow("absurd rate") << soundMessage(samples, 1000000) << 1;
    QTest::newRow("many channels") << soundMessage(samples, 8000, 6) << 1;
    QTest::newRow("other width") << QByteArray(soundMessage(samples)).replace(R"("bits":16)", R"("bits":8)") << 1;
    QTest::newRow("address 0") << QByteArray(
                                      R"({"type":"audiodata","bits":16,"rate":8000,"channels":1,"len":8,"data":0})")
                               << 1;
    QTest::newRow("report") << QByteArray(R"({"type":"avopen","retcode":0})") << 2;
    QTest::newRow("no JSON") << QByteArray("[") << 2;
}

void tst_Audio::messages() {
    QFETCH(QByteArray, message);
    QFETCH(int, kind);
    QCOMPARE(static_cast<int>(audio::parseSoundMessage(message.toStdString()).index()), kind);
}

void tst_Audio::parameters() {
    QVERIFY(audio::canListen({{QStringLiteral("audiolisten"), 1}}));
    QVERIFY(!audio::canListen({{QStringLiteral("audiolisten"), 3}}));
    QVERIFY(!audio::canListen({}));
    QVERIFY(audio::canTalk({{QStringLiteral("audioplay"), 3}}));
    QVERIFY(!audio::canTalk({{QStringLiteral("audioplay"), 1}}));
}

void tst_Audio::listens() {
    QSignalSpy changes(listener_.get(), &Listener::sigChanged);
    listener_->start(QStringLiteral("c"));
    QCOMPARE(listener_->device(), QStringLiteral("c"));
    QCOMPARE(lastRequest().value(QStringLiteral("ipncid")).toString(), QStringLiteral("c"));
    QCOMPARE(lastRequest().value(QStringLiteral("recvaudiodata")).toBool(), true);
    const int id = lastId();
    respond(id, R"({"type":"avopen","retcode":0})");
    QByteArray samples("abcdefgh");
    respond(id, soundMessage(samples));
    samples.fill('z'); // the memory is gone after the callback
    QCOMPARE(told_.played, QByteArray("abcdefgh"));
    QVERIFY(told_.calls.contains(QStringLiteral("open 8000/1")));
    listener_->stop();
    QCOMPARE(sdk_.stopped(), std::vector<int>{id});
    QCOMPARE(told_.calls.last(), QStringLiteral("close"));
    QCOMPARE(listener_->device(), QString());
    QCOMPARE(changes.size(), 2);
    QCOMPARE(said_, QStringList());
}

void tst_Audio::oneAtATime() {
    listener_->start(QStringLiteral("a"));
    const int first = lastId();
    listener_->start(QStringLiteral("a"));
    QCOMPARE(lastId(), first);
    listener_->start(QStringLiteral("b"));
    QCOMPARE(sdk_.stopped(), std::vector<int>{first});
    QVERIFY(lastId() != first);
    QCOMPARE(listener_->device(), QStringLiteral("b"));
    sdk_.nextId = 0;
    listener_->start(QStringLiteral("c")); // not sent
    QCOMPARE(listener_->device(), QString());
}

void tst_Audio::volumeAndMute() {
    listener_->setVolume(150);
    QCOMPARE(listener_->volume(), 100);
    listener_->setVolume(40);
    QCOMPARE(told_.calls.last(), QStringLiteral("volume 0.4"));
    listener_->setMuted(true);
    QCOMPARE(told_.calls.last(), QStringLiteral("volume 0"));
    QCOMPARE(listener_->volume(), 40);
    listener_->setMuted(false);
    QCOMPARE(told_.calls.last(), QStringLiteral("volume 0.4"));
}

void tst_Audio::formChanges() {
    listener_->start(QStringLiteral("c"));
    const QByteArray samples(8, 'x');
    respond(lastId(), soundMessage(samples));
    respond(lastId(), soundMessage(samples));
    respond(lastId(), soundMessage(samples, 16000, 2));
    QCOMPARE(told_.calls.filter(QStringLiteral("open")),
             QStringList({QStringLiteral("open 8000/1"), QStringLiteral("open 16000/2")}));
}

void tst_Audio::noLoudspeaker() {
    told_.works = false;
    listener_->start(QStringLiteral("c"));
    const QByteArray samples(8, 'x');
    respond(lastId(), soundMessage(samples));
    respond(lastId(), soundMessage(samples, 16000));
    QCOMPARE(said_, QStringList{QStringLiteral("没有可用的声音输出设备")});
    QCOMPARE(listener_->device(), QStringLiteral("c"));
}

void tst_Audio::ended_data() {
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<QString>("text");
    QTest::newRow("no sound") << QByteArray(R"({"type":"avclose","retcode":7})") << QStringLiteral("该设备没有声音");
    QTest::newRow("lost") << QByteArray(R"({"type":"avclose","retcode":15})") << QStringLiteral("音频已断开(15)");
    QTest::newRow("other failure") << QByteArray(R"({"type":"x","retcode":3})") << QStringLiteral("音频已断开(3)");
}

void tst_Audio::ended() {
    QFETCH(QByteArray, report);
    QFETCH(QString, text);
    listener_->start(QStringLiteral("c"));
    respond(lastId(), report);
    QCOMPARE(listener_->device(), QString());
    QCOMPARE(said_, QStringList{text});
}

void tst_Audio::destroyedWhileSoundComes() {
    listener_->start(QStringLiteral("c"));
    const int id = lastId();
    std::atomic<bool> ends{false};
    std::thread camera([this, id, &ends] {
        const QByteArray samples(160, 'x');
        while (!ends)
            sdk_.respond(id, soundMessage(samples).toStdString());
    });
    while (told_.played.size() < 16000)
        queue_->drain();
    listener_.reset();
    ends = true;
    camera.join();
    const int played = told_.played.size();
    queue_->drain();
    QCOMPARE(told_.played.size(), played);
}

void tst_Audio::talks() {
    talker_->start(QStringLiteral("c"));
    QCOMPARE(lastRequest().value(QStringLiteral("sendaudiodata")).toBool(), true);
    QCOMPARE(lastRequest().value(QStringLiteral("rate")).toInt(), 8000);
    const int id = lastId();
    told_.receiver(QByteArray(320, 'a')); // the way is not open yet
    QVERIFY(sdk_.configs().empty());
    respond(id, R"({"type":"avopen","retcode":0})");
    told_.receiver(QByteArray(321, 'b'));
    told_.receiver(QByteArray(20000, 'c'));
    QVector<int> lengths;
    for (const std::string& config : sdk_.configs()) {
        const QVariantMap command = corvanta::json::parseObject(config);
        QCOMPARE(command.value(QStringLiteral("type")).toString(), QStringLiteral("avchange"));
        QCOMPARE(command.value(QStringLiteral("reqid")).toInt(), id);
        QVERIFY(command.value(QStringLiteral("audiodata")).toLongLong() != 0);
        lengths += command.value(QStringLiteral("len")).toInt();
    }
    QCOMPARE(lengths, QVector<int>({320, 8000, 8000, 4000}));
    respond(id, R"({"type":"avstate","state":1})"); // lost for a while
    told_.receiver(QByteArray(320, 'd'));
    QCOMPARE(sdk_.configs().size(), std::size_t(4));
    talker_->stop();
    QCOMPARE(sdk_.stopped(), std::vector<int>{id});
    QCOMPARE(told_.calls.last(), QStringLiteral("close"));
}

void tst_Audio::noMicrophone() {
    told_.works = false;
    talker_->start(QStringLiteral("c"));
    QCOMPARE(said_, QStringList{QStringLiteral("没有可用的声音输入设备")});
    QVERIFY(sdk_.requests().empty());
    QCOMPARE(talker_->device(), QString());
}

void tst_Audio::talkIsRefused() {
    talker_->start(QStringLiteral("c"));
    respond(lastId(), R"({"type":"avclose","retcode":9})");
    QCOMPARE(said_, QStringList{QStringLiteral("该设备正在与他人对讲")});
    QCOMPARE(talker_->device(), QString());
    QCOMPARE(told_.calls.last(), QStringLiteral("close"));
}

QTEST_GUILESS_MAIN(tst_Audio)
#include "tst_Audio.moc"
