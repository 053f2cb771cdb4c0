#include "audio/Talker.h"

#include "base/CallbackGate.h"
#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"

#include <algorithm>
#include <string>
#include <utility>

namespace audio = corvanta::audio;

Talker::Talker(SdkGateway& gateway, std::unique_ptr<SoundInput> input, QObject* parent)
    : QObject(parent)
    , gateway_(gateway)
    , input_(std::move(input)) {}

Talker::~Talker() {
    input_->close();
    gateway_.StopRequest(requestId_);
    if (gate_ != nullptr)
        gate_->close();
}

void Talker::start(const QString& ipncId) {
    if (ipncId == ipncId_)
        return;
    stop();
    if (ipncId.isEmpty())
        return;
    if (!input_->open(Format, [this](const QByteArray& samples) { send(samples); })) {
        emit sigMessage(tr("没有可用的声音输入设备"));
        return;
    }
    auto gate = std::make_shared<CallbackGate>();
    const auto onMessage = [this, gate](const std::string& text) {
        gateway_.inGui(gate, [this, text] { onReport(corvanta::json::parseObject(text)); });
    };
    const int requestId =
        gateway_.RequestMessage(corvanta::json::toText(audio::talkRequest(ipncId, Format)), onMessage, gate);
    if (requestId <= 0) {
        input_->close();
        return;
    }
    requestId_ = requestId;
    gate_ = gate;
    isOpen_ = false;
    ipncId_ = ipncId;
    emit sigChanged();
}

void Talker::stop() {
    if (ipncId_.isEmpty())
        return;
    input_->close();
    gateway_.StopRequest(std::exchange(requestId_, 0));
    gate_->close();
    gate_.reset();
    isOpen_ = false;
    ipncId_.clear();
    emit sigChanged();
}

void Talker::onReport(const QVariantMap& report) {
    const QString type = report.value(QStringLiteral("type")).toString();
    const int retcode = report.value(QStringLiteral("retcode")).toInt();
    if (type == QLatin1String("avopen") && retcode == 0) {
        isOpen_ = true;
    } else if (type == QLatin1String("avstate")) {
        isOpen_ = false; // the connection is being made again
    } else if (type == QLatin1String("avclose") || retcode != 0) {
        emit sigMessage(audio::endedText(retcode));
        stop();
    }
}

void Talker::send(const QByteArray& samples) {
    if (!isOpen_)
        return;
    // Whole samples, and no more at once than the SDK takes.
    constexpr int sampleSize = 2;
    constexpr int most = Format.rate * Format.channels * sampleSize / 2;
    for (int at = 0; at + sampleSize <= samples.size(); at += most) {
        const int length = std::min(most, samples.size() - at) / sampleSize * sampleSize;
        // The memory is read before the call returns.
        const auto address = static_cast<qint64>(reinterpret_cast<std::intptr_t>(samples.constData() + at));
        gateway_.handOver(
            corvanta::requests::directCommand(QStringLiteral("更改视频操作"), {{QStringLiteral("reqid"), requestId_},
                                                                               {QStringLiteral("audiodata"), address},
                                                                               {QStringLiteral("len"), length}}));
    }
}
