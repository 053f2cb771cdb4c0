#include "audio/Listener.h"

#include "base/CallbackGate.h"
#include "base/JsonText.h"
#include "base/SdkGateway.h"

#include <QDebug>

#include <algorithm>
#include <atomic>
#include <string>
#include <utility>

namespace audio = corvanta::audio;

Listener::Listener(SdkGateway& gateway, std::unique_ptr<SoundOutput> output, QObject* parent)
    : QObject(parent)
    , gateway_(gateway)
    , output_(std::move(output)) {}

Listener::~Listener() {
    gateway_.StopRequest(requestId_);
    if (gate_ != nullptr)
        gate_->close();
}

void Listener::start(const QString& ipncId) {
    if (ipncId == ipncId_)
        return;
    stop();
    if (ipncId.isEmpty())
        return;
    auto gate = std::make_shared<CallbackGate>();
    auto refusalTold = std::make_shared<std::atomic<bool>>(false);
    // On a thread of the SDK: samples are copied, everything else is handed on as the text it came as.
    const auto onMessage = [this, gate, refusalTold](const std::string& text) {
        const audio::SoundMessage message = audio::parseSoundMessage(text);
        if (const auto* block = std::get_if<audio::SoundBlock>(&message)) {
            std::string samples(reinterpret_cast<const char*>(block->samples.data()), block->samples.size());
            gateway_.inGui(gate, [this, format = block->format, samples = std::move(samples)] {
                onSound(format, QByteArray(samples.data(), static_cast<int>(samples.size())));
            });
        } else if (const auto* refused = std::get_if<audio::SoundRefused>(&message)) {
            if (!refusalTold->exchange(true))
                qDebug() << refused->reason;
        } else {
            gateway_.inGui(gate, [this, text] { onReport(corvanta::json::parseObject(text)); });
        }
    };
    const int requestId =
        gateway_.RequestMessage(corvanta::json::toText(audio::listenRequest(ipncId)), onMessage, gate);
    if (requestId <= 0)
        return;
    requestId_ = requestId;
    gate_ = gate;
    ipncId_ = ipncId;
    outputFailed_ = false;
    emit sigChanged();
}

void Listener::stop() {
    if (ipncId_.isEmpty())
        return;
    gateway_.StopRequest(std::exchange(requestId_, 0));
    gate_->close();
    gate_.reset();
    output_->close();
    format_ = {};
    ipncId_.clear();
    emit sigChanged();
}

void Listener::onReport(const QVariantMap& report) {
    const int retcode = report.value(QStringLiteral("retcode")).toInt();
    const bool isEnd = report.value(QStringLiteral("type")).toString() == QLatin1String("avclose") || retcode != 0;
    if (!isEnd)
        return;
    emit sigMessage(audio::endedText(retcode));
    stop();
}

void Listener::onSound(const audio::SoundFormat& format, const QByteArray& samples) {
    if (format != format_) {
        format_ = format;
        applyVolume();
        const bool opened = output_->open(format);
        if (!opened && !std::exchange(outputFailed_, true))
            emit sigMessage(tr("没有可用的声音输出设备"));
    }
    output_->play(samples);
}

void Listener::setVolume(int percent) {
    volume_ = std::clamp(percent, 0, 100);
    applyVolume();
}

void Listener::setMuted(bool muted) {
    muted_ = muted;
    applyVolume();
}

void Listener::applyVolume() {
    output_->setVolume(muted_ ? 0.0 : volume_ / 100.0);
}
