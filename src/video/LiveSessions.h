#pragma once

#include "video/AvMessage.h"

#include <QHash>
#include <QString>
#include <QVariantMap>

#include <optional>
#include <variant>
#include <vector>

namespace corvanta::video {

/// What the owner of the tables must do, in the order given. Everything that the tables themselves hold has been
/// changed already when the actions are returned.

/// End this request through the gateway.
struct StopRequest {
    int requestId = 0;
    friend bool operator==(const StopRequest&, const StopRequest&) = default;
};
/// Build and send the open request of this device, then tell `LiveSessions::onSent` what came of it.
struct SendOpenRequest {
    QString deviceId;
    int tileIndex = -1;
    friend bool operator==(const SendOpenRequest&, const SendOpenRequest&) = default;
};
/// Show a text in a tile; an empty text clears it.
struct ShowTileText {
    int tileIndex = -1;
    QString text;
    friend bool operator==(const ShowTileText&, const ShowTileText&) = default;
};
/// Empty the text of every tile.
struct ClearAllTexts {
    friend bool operator==(const ClearAllTexts&, const ClearAllTexts&) = default;
};
/// A stream is open: hand request id and parameters to the tile, show the device's name and the connection type in
/// the message label, mark the device open, bring back its audio if that was left on, refresh the controls if the
/// tile is the selected one.
struct StreamOpened {
    QString deviceId;
    int tileIndex = -1;
    int requestId = 0;
    QString connectionType;
    QVariantMap parameters; ///< "avparam" with "DeviceId" added
    friend bool operator==(const StreamOpened&, const StreamOpened&) = default;
};
/// The tile shows no stream any more: close it, reset the controls if it is the selected one.
struct CloseTile {
    int tileIndex = -1;
    friend bool operator==(const CloseTile&, const CloseTile&) = default;
};
/// A device has no live stream any more: mark it not open, stop its audio if that is on.
struct StreamEnded {
    QString deviceId;
    int requestId = 0;
    friend bool operator==(const StreamEnded&, const StreamEnded&) = default;
};
/// A device's preview left the table because a live video took its place or everything is being closed.
struct PreviewEnded {
    QString deviceId;
    int requestId = 0;
    friend bool operator==(const PreviewEnded&, const PreviewEnded&) = default;
};

using SessionAction = std::variant<StopRequest, SendOpenRequest, ShowTileText, ClearAllTexts, StreamOpened, CloseTile,
                                   StreamEnded, PreviewEnded>;
using SessionActions = std::vector<SessionAction>;

/// The tables that tie devices to request ids and tiles, and what each event does to them. GUI thread only.
///
/// One device's stream goes idle -> requested (`open`, `onSent`) -> opening ("avstate") -> open ("avopen") -> idle
/// (stop) or failed ("avclose"); failed differs from idle only in the text that its tile shows.
///
/// Invariants: a device in the table has a request id above 0; a tile holds at most one request, and that request is
/// the one of a device in the table.
class LiveSessions final {
public:
    /// The user, the poll or the restore opens a device's video in its tile, which must be one that is shown. Ends
    /// the tile's stream if it has one; else cancels the device's own request if it has one; else asks for a request.
    SessionActions open(const QString& deviceId, int tileIndex);

    /// What sending the open request returned. A request id of 0 or less leaves everything as it was.
    void onSent(const QString& deviceId, int tileIndex, int requestId);

    /// A report of a video request, in whatever order, for whatever request, however often.
    SessionActions onReport(const AvReport& report);

    /// Ends a device's stream, opening or open. Does nothing for a device without one.
    SessionActions stopDevice(const QString& deviceId);
    /// Ends the streams of a tile: the one that it holds and any that is being opened in it.
    SessionActions stopTile(int tileIndex);
    /// A device's place has become another tile: its session goes there, open or opening. The tile must not be that
    /// of another session when all moves are done.
    void move(const QString& deviceId, int tileIndex);
    /// Ends a device's preview alone.
    SessionActions stopPreview(const QString& deviceId);
    /// Ends every stream and every preview and empties every tile's text.
    SessionActions stopAll();

    /// Notes that a device's preview is shown, by its request id.
    void setPreview(const QString& deviceId, int requestId);

    /// The device's stored request id, or 0.
    int requestOfDevice(const QString& deviceId) const;
    /// The tile that the device's stored request belongs to, or nothing.
    std::optional<int> tileOfDevice(const QString& deviceId) const;
    /// The request id of the open stream in a tile, or 0. A request that is still opening is not the tile's yet.
    int requestOfTile(int tileIndex) const;
    /// The device whose open stream is in a tile, or an empty text.
    QString deviceOfTile(int tileIndex) const;
    bool hasPreview(const QString& deviceId) const { return previews_.contains(deviceId); }
    /// The request id of the preview that is shown or on its way, or 0.
    int requestOfPreview(const QString& deviceId) const { return previews_.value(deviceId); }
    /// Whether any stream or preview is in the tables.
    bool isAnythingShown() const { return !sessions_.isEmpty() || !previews_.isEmpty(); }
    /// Devices with a stored request, in no particular order.
    QStringList devices() const { return sessions_.keys(); }

private:
    struct Session {
        int requestId = 0;
        int tileIndex = -1;
        bool holdsTile = false; ///< open, and no later stream has been opened in the same tile
    };

    SessionActions onOpened(const AvReport& report);
    SessionActions onClosed(const AvReport& report);
    /// Takes a device out of the tables and appends what ends its stream.
    void end(const QString& deviceId, SessionActions& actions);
    void erasePreview(const QString& deviceId, SessionActions& actions);

    QHash<QString, Session> sessions_;
    QHash<QString, int> previews_; ///< device to request id
};

} // namespace corvanta::video
