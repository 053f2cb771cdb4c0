#pragma once

#include "base/AppContext.h"
#include "video/LiveSessions.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <atomic>
#include <memory>

class CallbackGate;
class ItemVideo;
class QLabel;

namespace corvanta::playback {
struct Picture;
} // namespace corvanta::playback

namespace corvanta::video {

/// The live video of a device outside the wall: one tile, a line that says how its stream comes along, and a request
/// of its own, so that the wall's stays as it is. It is the light stream, which the videos of alarms are made of too.
/// Nothing is opened before `toggle`; the request ends with the pane. GUI thread.
class LivePane final : public QWidget {
    Q_OBJECT
public:
    LivePane(const AppContext& context, const QString& ipncId, QWidget* parent);
    ~LivePane() override;

    ItemVideo& tile() const { return *tile_; }
    /// The stream is open or being opened.
    bool isOpen() const;

public slots:
    /// Opens the video, or ends it.
    void toggle();
    void stop();
    /// Has the next picture of the stream delivered by `sigCaptured`, in its full size and with the colours that the
    /// tile shows. The next one and not the last: what the user sees when asking is not older than that. Without an
    /// open stream, or when it brings none within some seconds, `sigCaptureFailed` says so.
    void capture();

signals:
    void sigOpenChanged(bool isOpen);
    /// 32 bits of colour without transparency.
    void sigCaptured(const QImage& picture);
    void sigCaptureFailed(const QString& text);

private:
    void onReport(const QVariantMap& report);
    void showText(const QString& text);
    void deliver(const playback::Picture& picture);
    void failCapture();
    void apply(const SessionActions& actions);
    void carryOut(const StopRequest& action);
    void carryOut(const SendOpenRequest& action);
    void carryOut(const ShowTileText& action);
    void carryOut(const ClearAllTexts& action);
    void carryOut(const StreamOpened& action);
    void carryOut(const CloseTile& action);
    void carryOut(const StreamEnded& action);
    void carryOut(const PreviewEnded& action);

    AppContext context_;
    const QString ipncId_;
    ItemVideo* tile_;
    QLabel* state_;
    LiveSessions sessions_;
    std::shared_ptr<CallbackGate> gate_; ///< of the request that runs; null without one
    std::atomic<bool> isWanted_{false};  ///< the next picture is to be copied; asked on threads of the SDK
    QTimer patience_;                    ///< runs while a captured picture is awaited
};

} // namespace corvanta::video
