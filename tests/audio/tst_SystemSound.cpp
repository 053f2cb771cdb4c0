#include "audio/Listener.h"
#include "audio/Talker.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"
#include "base/TaskQueue.h"
#include "support/FakeSdk.h"
#include "support/SoundServer.h"

#include <QTimer>
#include <QtTest>

#include <ipncsdk/ZELIPNCSDK.h>

#include <cmath>
#include <mutex>
#include <optional>

namespace {

constexpr int Patience = 60000; // ms
constexpr double Pi = 3.14159265358979323846;
constexpr double Loudness = 8000.0; ///< of the tones, in steps of a sample

QByteArray tone(double frequency, int rate, int channels, int from, int count) {
    QByteArray result(count * channels * 2, '\0');
    for (int i = 0; i < count; ++i) {
        const auto value = static_cast<qint16>(Loudness * std::sin(2 * Pi * frequency * (from + i) / rate));
        for (int channel = 0; channel < channels; ++channel)
            qToLittleEndian(value, result.data() + 2 * (i * channels + channel));
    }
    return result;
}

/// How much of a frequency is in the last fifth of a second of some sound, as the loudness of a tone; nothing when
/// there is less sound.
std::optional<double> loudness(const QByteArray& samples, int rate, double frequency) {
    const int count = rate / 5;
    if (samples.size() < 2 * count)
        return std::nullopt;
    double sine = 0;
    double cosine = 0;
    for (int i = 0; i < count; ++i) {
        const qint16 value = qFromLittleEndian<qint16>(samples.constData() + samples.size() - 2 * (count - i));
        sine += value * std::sin(2 * Pi * frequency * i / rate);
        cosine += value * std::cos(2 * Pi * frequency * i / rate);
    }
    return 2 * std::hypot(sine, cosine) / count;
}

/// The loudest of the frequencies in steps of 50 up to 2000; 0 when all is quiet.
int pitch(const QByteArray& samples, int rate) {
    int result = 0;
    double loudest = Loudness / 20;
    for (int frequency = 50; frequency <= 2000; frequency += 50) {
        const double found = loudness(samples, rate, frequency).value_or(0);
        if (found > loudest) {
            loudest = found;
            result = frequency;
        }
    }
    return result;
}

} // namespace

/// What the operator hears and says, through a real sound server.
class tst_SystemSound final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void isHeard_data();
    void isHeard();
    void volumeAndMute();
    void isSpoken();

private:
    /// Lets the camera send a tone, in pieces as they come from one, until told otherwise.
    void sing(double frequency, int rate, int channels);
    int heardPitch() { return pitch(server_.heard(), SoundServer::Rate); }

    SoundServer server_;
    FakeSdk& sdk_ = FakeSdk::instance();
    std::unique_ptr<TaskQueue> queue_;
    std::unique_ptr<SdkGateway> gateway_;
    std::unique_ptr<Listener> listener_;
    std::unique_ptr<QTimer> camera_;
    QStringList said_;
};

void tst_SystemSound::initTestCase() {
    QVERIFY(server_.start());
    server_.listen();
}

void tst_SystemSound::init() {
    sdk_.reset();
    said_.clear();
    queue_ = std::make_unique<TaskQueue>();
    gateway_ = std::make_unique<SdkGateway>(*ipncsdk::ZELIPNCSDK::GetInstance(), *queue_);
    listener_ = std::make_unique<Listener>(*gateway_, systemSoundOutput());
    connect(listener_.get(), &Listener::sigMessage, this, [this](const QString& text) { said_ += text; });
}

void tst_SystemSound::cleanup() {
    camera_.reset();
    listener_.reset();
    gateway_.reset();
    queue_.reset();
    sdk_.reset();
}

void tst_SystemSound::sing(double frequency, int rate, int channels) {
    listener_->start(QStringLiteral("c"));
    camera_ = std::make_unique<QTimer>();
    camera_->setTimerType(Qt::PreciseTimer);
    const int id = sdk_.requests().back().id;
    QElapsedTimer time;
    time.start();
    connect(camera_.get(), &QTimer::timeout, this, [this, id, frequency, rate, channels, time, sent = 0]() mutable {
        const int due = static_cast<int>(time.elapsed() * rate / 1000);
        const QByteArray samples = tone(frequency, rate, channels, sent, due - sent);
        sent = due;
        if (samples.isEmpty())
            return;
        sdk_.respond(id,
                     QStringLiteral(R"({"type":"audiodata","bits":16,"rate":%1,"channels":%2,"len":%3,"data":%4})")
                         .arg(rate)
                         .arg(channels)
                         .arg(samples.size())
                         .arg(reinterpret_cast<std::intptr_t>(samples.constData()))
                         .toStdString());
    });
    camera_->start(20);
}

void tst_SystemSound::isHeard_data() {
    QTest::addColumn<int>("frequency");
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("channels");
    QTest::newRow("telephone") << 450 << 8000 << 1;
    QTest::newRow("camera with two channels") << 1200 << 44100 << 2;
}

void tst_SystemSound::isHeard() {
    QFETCH(int, frequency);
    QFETCH(int, rate);
    QFETCH(int, channels);
    sing(frequency, rate, channels);
    QTRY_COMPARE_WITH_TIMEOUT(heardPitch(), frequency, Patience);
    listener_->stop();
    QTRY_COMPARE_WITH_TIMEOUT(heardPitch(), 0, Patience);
    QCOMPARE(said_, QStringList());
}

void tst_SystemSound::volumeAndMute() {
    const auto loud = [this] {
        return loudness(server_.heard(), SoundServer::Rate, 600).value_or(0) / Loudness;
    };
    sing(600, 16000, 1);
    QTRY_VERIFY_WITH_TIMEOUT(loud() > 0.9 && loud() < 1.1, Patience);
    listener_->setVolume(50);
    QTRY_VERIFY_WITH_TIMEOUT(loud() > 0.45 && loud() < 0.55, Patience);
    listener_->setMuted(true);
    QTRY_VERIFY_WITH_TIMEOUT(loud() < 0.001, Patience);
    listener_->setMuted(false);
    QTRY_VERIFY_WITH_TIMEOUT(loud() > 0.45 && loud() < 0.55, Patience);
}

void tst_SystemSound::isSpoken() {
    std::mutex mutex;
    QByteArray taken;
    sdk_.onConfig = [&](const std::string& text) {
        const QVariantMap command = corvanta::json::parseObject(text);
        const auto address = static_cast<std::intptr_t>(command.value(QStringLiteral("audiodata")).toLongLong());
        const std::lock_guard lock(mutex);
        taken.append(reinterpret_cast<const char*>(address), command.value(QStringLiteral("len")).toInt());
    };
    constexpr int rate = Talker::Format.rate;
    server_.speak(tone(850, rate, 1, 0, 60 * rate), rate);
    Talker talker(*gateway_, systemSoundInput());
    connect(&talker, &Talker::sigMessage, this, [this](const QString& text) { said_ += text; });
    talker.start(QStringLiteral("c"));
    QCOMPARE(said_, QStringList());
    sdk_.respond(sdk_.requests().back().id, R"({"type":"avopen","retcode":0})");
    const auto spoken = [&] {
        const std::lock_guard lock(mutex);
        return pitch(taken, rate) == 850 ? loudness(taken, rate, 850).value_or(0) / Loudness : 0.0;
    };
    QTRY_VERIFY_WITH_TIMEOUT(spoken() > 0.9 && spoken() < 1.1, Patience);
}

QTEST_GUILESS_MAIN(tst_SystemSound)
#include "tst_SystemSound.moc"
