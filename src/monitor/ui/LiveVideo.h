#pragma once

#include "base/AppContext.h"
#include "base/CallbackGate.h"
#include "video/LiveSessions.h"
#include "video/PreviewMessage.h"
#include "video/StreamQuality.h"

#include <QMap>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <atomic>
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
    /// Opens what was open before the program ended: like `open`, by what the layout shows when no tile is zoomed,
    /// and without a message for those that have no place.
    void restore(const QStringList& ipncIds);
    /// Shows a single picture of a device in its tile, anew if there is one already. Does nothing while a live video
    /// of it is open or opening.
    void openPreview(const QString& ipncId);
    /// A newer picture for a device whose preview is shown; nothing for others.
    void refreshPreview(const QString& ipncId);
    /// The devices may have other tiles now, or be gone: running videos go with their device to its tile, and end
    /// with it.
    void followDevices();
    void stopDevice(const QString& ipncId);
    void stopTile(int tileIndex);
    void stopAll();
    bool isOpen(const QString& ipncId) const { return sessions_.requestOfDevice(ipncId) > 0; }
    bool hasPreview(const QString& ipncId) const { return sessions_.hasPreview(ipncId); }
    bool isAnythingShown() const { return sessions_.isAnythingShown(); }
    /// The devices whose live videos are open or opening, by tile.
    QMap<int, QString> openVideos() const;

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
    /// Says in the tile when nothing has been heard of a request for as long as replies are waited for. The request
    /// goes on: what comes late is shown.
    void watchSilence(int requestId, const std::shared_ptr<std::atomic<int>>& tileIndex);
    /// Takes from a tile what was written there of a device that it does not belong to any more.
    void clearFailures();
    void sendPreview(const QString& ipncId, int tileIndex);
    void onPreview(const QString& ipncId, int tileIndex, int requestId, const corvanta::video::PreviewReply& reply);
    void adjustQuality();

    AppContext context_;
    Fwidget& grid_;
    corvanta::video::LiveSessions sessions_;
    struct Stream {
        std::shared_ptr<CallbackGate> gate;
        std::shared_ptr<std::atomic<int>> tileIndex; ///< where its pictures go; read on threads of the SDK
    };
    std::map<int, Stream> streams_;    ///< by request id; previews have no tile here
    QHash<QString, int> previewTiles_; ///< by device, of those in the table of previews
    QMap<int, QString> failures_;      ///< by tile, the device whose failure may be written there
    QSet<int> unheard_;                ///< requests that have said nothing yet
    QHash<int, bool> opensMain_;       ///< by request id, until it is open: whether the main stream was asked for
    corvanta::video::StreamQuality quality_;
    QTimer qualityDelay_; ///< who looks at one tile after another does not want each in full
};
