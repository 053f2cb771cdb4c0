#pragma once

#include "manageWidget/PtzControl.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class SdkGateway;

/// Moves one camera at a time: the timer and the messages of `PtzControl`. GUI thread.
class PtzLine final : public QObject {
    Q_OBJECT
public:
    /// `gateway` outlives it.
    explicit PtzLine(SdkGateway& gateway, QObject* parent = nullptr);
    /// Stops a camera that moves.
    ~PtzLine() override;

    /// The camera that is moved from now on; empty: none. One that moves is stopped first.
    void setDevice(const QString& ipncId);
    QString device() const { return device_; }

    void hold(const corvanta::manage::PtzMotion& motion);
    void release() { hold({}); }
    /// Stops the camera without waiting for anything.
    void stopNow();

signals:
    /// The camera refused; a text for the user.
    void sigProblem(QString text);

private:
    void send(const QVariantMap& commands);

    SdkGateway& gateway_;
    QString device_;
    int message_ = 0; ///< numbers the messages: only the reply to the newest one counts
    QElapsedTimer clock_;
    QTimer tick_;
    corvanta::manage::PtzControl control_;
};
