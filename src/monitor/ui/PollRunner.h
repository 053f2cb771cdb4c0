#pragma once

#include "base/AppContext.h"

#include <QObject>
#include <QTimer>

class LiveVideo;
class QWidget;

/// Runs the screen polling: at each step everything on the wall is closed and the devices of the next entry are
/// opened. GUI thread.
class PollRunner final : public QObject {
    Q_OBJECT
public:
    /// `live` outlives this object.
    PollRunner(const AppContext& context, LiveVideo& live, QObject* parent = nullptr);

    /// Whether steps are being made, or would be if somebody were signed in.
    bool isRunning() const;

    /// Who does something to the wall that the polling would undo asks first. True when no polling runs or the
    /// operator has agreed to stop it; then it is stopped.
    bool makeWay(QWidget* parent);

    /// Starts this kind of polling; stops it when it runs already.
    void toggle(int mode);

    /// Somebody has signed in and the devices are known: a polling that the settings name begins.
    void resume();
    /// Nobody is signed in: no steps are made until `resume`.
    void pause();

signals:
    void sigRunningChanged();
    /// A line for the message bar.
    void sigMessage(QString text);

public slots:
    void onPollTimeout();

private:
    AppContext context_;
    LiveVideo& live_;
    QTimer timer_;
    bool paused_ = true;
};
