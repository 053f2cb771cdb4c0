#pragma once

#include "audio/SoundDevice.h"

#include <QObject>
#include <QString>

#include <memory>

class CallbackGate;
class SdkGateway;

/// Brings the microphone to one device at a time. GUI thread.
class Talker final : public QObject {
    Q_OBJECT
public:
    /// The gateway outlives this object.
    Talker(SdkGateway& gateway, std::unique_ptr<SoundInput> input, QObject* parent = nullptr);
    /// Ends the request.
    ~Talker() override;

    /// Talks to a device, and to no other any more. Without a microphone nothing is asked of the device.
    void start(const QString& ipncId);
    void stop();
    /// The device that is talked to, or is to be; empty when none is.
    const QString& device() const { return ipncId_; }

    /// What the microphone is recorded as.
    static constexpr corvanta::audio::SoundFormat Format{8000, 1};

signals:
    void sigChanged();
    /// A line for the message bar.
    void sigMessage(QString text);

private:
    void onReport(const QVariantMap& report);
    void send(const QByteArray& samples);

    SdkGateway& gateway_;
    std::unique_ptr<SoundInput> input_;
    std::shared_ptr<CallbackGate> gate_; ///< of the request; null without one
    int requestId_ = 0;
    bool isOpen_ = false; ///< the device takes samples
    QString ipncId_;
};
