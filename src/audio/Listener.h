#pragma once

#include "audio/SoundDevice.h"

#include <QObject>
#include <QString>

#include <memory>

class CallbackGate;
class SdkGateway;

/// Lets one device be heard at a time, by a request of its own beside its video. GUI thread; threads of the SDK only
/// copy samples.
class Listener final : public QObject {
    Q_OBJECT
public:
    /// The gateway outlives this object.
    Listener(SdkGateway& gateway, std::unique_ptr<SoundOutput> output, QObject* parent = nullptr);
    /// Ends the request.
    ~Listener() override;

    /// Listens to a device, and to no other any more.
    void start(const QString& ipncId);
    void stop();
    /// The device that is heard, or is to be; empty when none is.
    const QString& device() const { return ipncId_; }

    /// 0 to 100. What is muted keeps its volume.
    void setVolume(int percent);
    void setMuted(bool muted);
    int volume() const { return volume_; }
    bool isMuted() const { return muted_; }

signals:
    /// Another device is heard, or none.
    void sigChanged();
    /// A line for the message bar.
    void sigMessage(QString text);

private:
    void onReport(const QVariantMap& report);
    void onSound(const corvanta::audio::SoundFormat& format, const QByteArray& samples);
    void applyVolume();

    SdkGateway& gateway_;
    std::unique_ptr<SoundOutput> output_;
    std::shared_ptr<CallbackGate> gate_; ///< of the request; null without one
    int requestId_ = 0;
    QString ipncId_;
    corvanta::audio::SoundFormat format_; ///< that the output plays; no rate: it is closed
    bool outputFailed_ = false;           ///< said once a request
    int volume_ = 100;
    bool muted_ = false;
};
