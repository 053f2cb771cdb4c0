#pragma once

#include <QHash>
#include <QVariantMap>

namespace corvanta::video {

/// Which of the running streams is the main one (large, dear) and which the light one, and when that is to be
/// changed. A tile that becomes big wants the main stream, and the light one again when it shrinks. GUI thread only.
class StreamQuality final {
public:
    /// A stream has opened, or has changed over to what was asked for.
    void onOpened(int requestId, bool mainStream);
    void onEnded(int requestId);

    /// Whether the change must be sent: the stream neither is what is wanted nor has been asked to be. An unknown
    /// request is never changed.
    bool mustAsk(int requestId, bool mainStream);

    /// The device could not do what was asked; the stream goes on as it was, and may be asked again.
    void onRefused(int requestId, bool mainStream);

private:
    struct Stream {
        bool isMain = false;
        bool asked = false; ///< the last that was asked for, `isMain` when nothing was
    };
    QHash<int, Stream> streams_; ///< by request id
};

/// The parameters of the change-video-operation that exchanges a running request's stream.
QVariantMap exchangeParameters(int requestId, bool mainStream);

} // namespace corvanta::video
