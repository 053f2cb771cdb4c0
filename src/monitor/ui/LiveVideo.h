#pragma once

#include "base/AppContext.h"
#include "base/CallbackGate.h"
#include "video/LiveSessions.h"

#include <QObject>

#include <map>
#include <memory>

class Fwidget;

/// Opens and ends the live videos of the grid: carries out what the session tables decide, and brings the SDK's
/// pictures and reports to the tiles. GUI thread.
///
/// Every request has a gate of its own, closed when the request ends; so a tile has one writer at a time, and no
/// picture reaches the grid after this object is gone.
class LiveVideo final : public QObject {
    Q_OBJECT
public:
    /// The grid outlives this object.
    LiveVideo(const AppContext& context, Fwidget& grid, QObject* parent = nullptr);
    /// Ends every stream.
    ~LiveVideo() override;

    /// Opens a device's video in its tile, or ends it when it is open. A device whose tile is not shown is refused
    /// with a message.
    void open(const QString& ipncId);
    void stopDevice(const QString& ipncId);
    void stopTile(int tileIndex);
    void stopAll();
    bool isOpen(const QString& ipncId) const { return sessions_.requestOfDevice(ipncId) > 0; }

    /// A report of an open-video request; the map as `sigReport` carried it.
    void onReport(const QVariantMap& report);

    /// The operation's name, by which its reports are told from others.
    static QString operation();

signals:
    /// A report arrived for `operation()`; whoever receives it hands it to `onReport` in the GUI thread.
    void sigReport(QString operation, QVariant report);
    /// A line for the message bar.
    void sigMessage(QString text);
    /// A device's video was opened or has ended.
    void sigOpenChanged(QString ipncId, bool open);

private:
    void apply(const corvanta::video::SessionActions& actions);
    void carryOut(const corvanta::video::StopRequest& action);
    void carryOut(const corvanta::video::SendOpenRequest& action);
    void carryOut(const corvanta::video::ShowTileText& action);
    void carryOut(const corvanta::video::ClearAllTexts& action);
    void carryOut(const corvanta::video::StreamOpened& action);
    void carryOut(const corvanta::video::CloseTile& action);
    void carryOut(const corvanta::video::StreamEnded& action);
    void carryOut(const corvanta::video::PreviewEnded& action);
    void closeGate(int requestId);

    AppContext context_;
    Fwidget& grid_;
    corvanta::video::LiveSessions sessions_;
    std::map<int, std::shared_ptr<CallbackGate>> gates_; ///< by request id
};
