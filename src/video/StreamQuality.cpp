#include "video/StreamQuality.h"

namespace corvanta::video {

void StreamQuality::onOpened(int requestId, bool mainStream) {
    const auto known = streams_.find(requestId);
    if (known == streams_.end()) {
        streams_.insert(requestId, {mainStream, mainStream});
        return;
    }
    // A change that was asked for since is still under way.
    if (known->asked == known->isMain) {
        known->asked = mainStream;
    }
    known->isMain = mainStream;
}

void StreamQuality::onEnded(int requestId) {
    streams_.remove(requestId);
}

bool StreamQuality::mustAsk(int requestId, bool mainStream) {
    const auto known = streams_.find(requestId);
    if (known == streams_.end() || known->asked == mainStream) {
        return false;
    }
    known->asked = mainStream;
    return true;
}

void StreamQuality::onRefused(int requestId, bool mainStream) {
    const auto known = streams_.find(requestId);
    if (known != streams_.end() && known->asked == mainStream) {
        known->asked = known->isMain;
    }
}

QVariantMap exchangeParameters(int requestId, bool mainStream) {
    return {{QStringLiteral("reqid"), requestId}, {QStringLiteral("hd"), mainStream}};
}

} // namespace corvanta::video
