#include "audio/SoundDevice.h"

#include <QAudioDeviceInfo>
#include <QAudioInput>
#include <QAudioOutput>
#include <QDebug>
#include <QObject>
#include <QTimer>

#include <algorithm>

using corvanta::audio::SoundFormat;

namespace {

constexpr qint64 LongestWait = 500000;  // µs of sound that may wait; more is heard too late
constexpr qint64 BufferLength = 100000; // µs inside the device
constexpr int FeedInterval = 10;        // ms

QAudioFormat systemFormat(const SoundFormat& format) {
    QAudioFormat result;
    result.setSampleRate(format.rate);
    result.setChannelCount(format.channels);
    result.setSampleSize(16);
    result.setSampleType(QAudioFormat::SignedInt);
    result.setByteOrder(QAudioFormat::LittleEndian);
    result.setCodec(QStringLiteral("audio/pcm"));
    return result;
}

class Loudspeaker final : public SoundOutput {
public:
    Loudspeaker() {
        timer_.setInterval(FeedInterval);
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, [this] { feed(); });
    }
    ~Loudspeaker() override { close(); }

    bool open(const SoundFormat& format) override {
        close();
        const QAudioDeviceInfo device = QAudioDeviceInfo::defaultOutputDevice();
        const QAudioFormat wanted = systemFormat(format);
        if (device.isNull() || !device.isFormatSupported(wanted)) {
            qDebug() << "no loudspeaker for" << format.rate << format.channels;
            return false;
        }
        output_ = std::make_unique<QAudioOutput>(device, wanted);
        output_->setBufferSize(wanted.bytesForDuration(BufferLength));
        output_->setVolume(volume_);
        sink_ = output_->start();
        if (sink_ == nullptr || output_->error() != QAudio::NoError) {
            qDebug() << "loudspeaker" << output_->error();
            close();
            return false;
        }
        mostWaiting_ = wanted.bytesForDuration(LongestWait);
        timer_.start();
        return true;
    }

    void close() override {
        timer_.stop();
        waiting_.clear();
        sink_ = nullptr;
        if (output_ != nullptr)
            output_->stop();
        output_.reset();
    }

    void play(const QByteArray& samples) override {
        if (output_ == nullptr)
            return;
        waiting_ += samples;
        if (waiting_.size() > mostWaiting_)
            waiting_.remove(0, waiting_.size() - mostWaiting_);
        feed();
    }

    void setVolume(double volume) override {
        volume_ = volume;
        if (output_ != nullptr)
            output_->setVolume(volume);
    }

private:
    void feed() {
        if (output_ == nullptr || sink_ == nullptr || waiting_.isEmpty())
            return;
        const int size = std::min(output_->bytesFree(), waiting_.size());
        if (size <= 0)
            return;
        const qint64 taken = sink_->write(waiting_.constData(), size);
        if (taken > 0)
            waiting_.remove(0, static_cast<int>(taken));
    }

    std::unique_ptr<QAudioOutput> output_;
    QIODevice* sink_ = nullptr; ///< the output's own
    QByteArray waiting_;
    int mostWaiting_ = 0; ///< bytes
    double volume_ = 1.0;
    QTimer timer_;
};

class Microphone final : public SoundInput {
public:
    ~Microphone() override { close(); }

    bool open(const SoundFormat& format, Receiver receiver) override {
        close();
        const QAudioDeviceInfo device = QAudioDeviceInfo::defaultInputDevice();
        const QAudioFormat wanted = systemFormat(format);
        if (device.isNull() || !device.isFormatSupported(wanted)) {
            qDebug() << "no microphone for" << format.rate << format.channels;
            return false;
        }
        input_ = std::make_unique<QAudioInput>(device, wanted);
        source_ = input_->start();
        if (source_ == nullptr || input_->error() != QAudio::NoError) {
            qDebug() << "microphone" << input_->error();
            close();
            return false;
        }
        QObject::connect(source_, &QIODevice::readyRead, input_.get(), [this, receiver = std::move(receiver)] {
            const QByteArray samples = source_->readAll();
            if (!samples.isEmpty())
                receiver(samples);
        });
        return true;
    }

    void close() override {
        source_ = nullptr;
        if (input_ != nullptr)
            input_->stop();
        input_.reset();
    }

private:
    std::unique_ptr<QAudioInput> input_;
    QIODevice* source_ = nullptr; ///< the input's own
};

} // namespace

std::unique_ptr<SoundOutput> systemSoundOutput() {
    return std::make_unique<Loudspeaker>();
}

std::unique_ptr<SoundInput> systemSoundInput() {
    return std::make_unique<Microphone>();
}
