#pragma once

#include "manageWidget/PtzControl.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <string>

class OperationLog;
class SdkGateway;

/// Moves one camera at a time: the timer and the messages of `PtzControl`, and the rows of the log, one for all that
/// is held until everything is let go. GUI thread.
class PtzLine final : public QObject {
    Q_OBJECT
public:
    /// Both outlive it.
    PtzLine(SdkGateway& gateway, OperationLog& log, QObject* parent = nullptr);
    /// Stops a camera that moves.
    ~PtzLine() override;

    /// The camera that is moved from now on; empty: none. One that moves is stopped first.
    void setDevice(const QString& ipncId);
    QString device() const { return device_; }

    void hold(const corvanta::manage::PtzMotion& motion);
    void release() { hold({}); }
    /// Turns the camera to its home view.
    void home();
    /// Stops the camera without waiting for anything.
    void stopNow();

signals:
    /// The camera refused or was not heard of; a text for the user.
    void sigProblem(QString text);

private:
    void send(const QVariantMap& commands);
    void write(const QString& what, const QString& detail);
    std::string request(const QVariantMap& commands) const;

    SdkGateway& gateway_;
    OperationLog& log_;
    QString device_;
    bool isHeld_ = false;
    QString begun_;   ///< what is to be written once the camera has taken it: how a movement began
    int message_ = 0; ///< numbers the messages: only the reply to the newest one counts
    QElapsedTimer clock_;
    QTimer tick_;
    corvanta::manage::PtzControl control_;
};
