#include "video/LiveSessions.h"

#include <QDebug>

namespace corvanta::video {

SessionActions LiveSessions::open(const QString& deviceId, int tileIndex) {
    SessionActions actions;
    erasePreview(deviceId, actions);
    const QString shownDevice = deviceOfTile(tileIndex);
    if (!shownDevice.isEmpty()) {
        end(shownDevice, actions);
    } else if (sessions_.contains(deviceId)) {
        end(deviceId, actions);
    } else {
        actions.emplace_back(SendOpenRequest{deviceId, tileIndex});
    }
    return actions;
}

void LiveSessions::onSent(const QString& deviceId, int tileIndex, int requestId) {
    if (requestId <= 0) {
        qDebug() << "open video request not sent" << deviceId;
        return;
    }
    sessions_.insert(deviceId, {requestId, tileIndex, false});
}

SessionActions LiveSessions::onReport(const AvReport& report) {
    switch (report.kind) {
    case AvReport::Kind::State:
        return {ShowTileText{report.tileIndex, openingText(report.state)}};
    case AvReport::Kind::Open:
        return onOpened(report);
    case AvReport::Kind::Close:
        return onClosed(report);
    case AvReport::Kind::Other:
        break;
    }
    return {};
}

SessionActions LiveSessions::onOpened(const AvReport& report) {
    auto session = sessions_.find(report.deviceId);
    if (session == sessions_.end()) {
        qWarning() << "not save reqid" << report.deviceId;
        if (report.requestId <= 0) {
            qDebug() << "avopen without a request id ignored" << report.deviceId;
            return {};
        }
        session = sessions_.insert(report.deviceId, {report.requestId, report.tileIndex, false});
    }
    if (session->requestId != report.requestId) {
        qDebug("reqid not equeal");
        return {};
    }
    for (Session& other : sessions_) {
        other.holdsTile = other.holdsTile && other.tileIndex != report.tileIndex;
    }
    session->tileIndex = report.tileIndex;
    session->holdsTile = true;

    QVariantMap parameters = report.parameters;
    parameters.insert(QStringLiteral("DeviceId"), report.deviceId);
    return {ShowTileText{report.tileIndex, openedText()},
            StreamOpened{report.deviceId, report.tileIndex, report.requestId, report.connectionType, parameters}};
}

SessionActions LiveSessions::onClosed(const AvReport& report) {
    const auto session = sessions_.constFind(report.deviceId);
    if (session == sessions_.constEnd()) {
        qDebug("!!!!!!!!!!!!!!avclose not save reqid");
        return {};
    }
    if (session->requestId != report.requestId) {
        qDebug() << "!!!!!!!!!!!!!!reqid not equeal" << session->requestId << report.requestId;
        return {};
    }
    SessionActions actions;
    // A stream that another one has replaced in its tile goes without a trace there.
    const int heldBy = requestOfTile(report.tileIndex);
    if (heldBy == 0 || heldBy == report.requestId) {
        actions.emplace_back(ShowTileText{report.tileIndex, failedText(report.retcode)});
        actions.emplace_back(CloseTile{report.tileIndex});
    }
    sessions_.remove(report.deviceId);
    actions.emplace_back(StreamEnded{report.deviceId, report.requestId});
    erasePreview(report.deviceId, actions);
    return actions;
}

SessionActions LiveSessions::stopDevice(const QString& deviceId) {
    SessionActions actions;
    end(deviceId, actions);
    erasePreview(deviceId, actions);
    return actions;
}

SessionActions LiveSessions::stopTile(int tileIndex) {
    SessionActions actions;
    for (const QString& deviceId : sessions_.keys()) {
        if (sessions_.value(deviceId).tileIndex == tileIndex) {
            end(deviceId, actions);
            erasePreview(deviceId, actions);
        }
    }
    return actions;
}

void LiveSessions::move(const QString& deviceId, int tileIndex) {
    const auto session = sessions_.find(deviceId);
    if (session != sessions_.end()) {
        session->tileIndex = tileIndex;
    }
}

SessionActions LiveSessions::stopPreview(const QString& deviceId) {
    SessionActions actions;
    erasePreview(deviceId, actions);
    return actions;
}

SessionActions LiveSessions::stopAll() {
    SessionActions actions;
    for (const QString& deviceId : sessions_.keys()) {
        end(deviceId, actions);
    }
    for (const QString& deviceId : previews_.keys()) {
        erasePreview(deviceId, actions);
    }
    actions.emplace_back(ClearAllTexts{});
    return actions;
}

void LiveSessions::setPreview(const QString& deviceId, int requestId) {
    previews_.insert(deviceId, requestId);
}

int LiveSessions::requestOfDevice(const QString& deviceId) const {
    return sessions_.value(deviceId).requestId;
}

std::optional<int> LiveSessions::tileOfDevice(const QString& deviceId) const {
    const auto session = sessions_.constFind(deviceId);
    return session == sessions_.constEnd() ? std::nullopt : std::optional(session->tileIndex);
}

int LiveSessions::requestOfTile(int tileIndex) const {
    return sessions_.value(deviceOfTile(tileIndex)).requestId;
}

QString LiveSessions::deviceOfTile(int tileIndex) const {
    for (auto session = sessions_.constBegin(); session != sessions_.constEnd(); ++session) {
        if (session->holdsTile && session->tileIndex == tileIndex) {
            return session.key();
        }
    }
    return {};
}

void LiveSessions::end(const QString& deviceId, SessionActions& actions) {
    const auto found = sessions_.constFind(deviceId);
    if (found == sessions_.constEnd()) {
        return;
    }
    const Session session = *found;
    sessions_.erase(found);
    actions.emplace_back(StopRequest{session.requestId});
    // A tile that a later stream has taken over keeps that stream's text and picture.
    if (requestOfTile(session.tileIndex) == 0) {
        actions.emplace_back(ShowTileText{session.tileIndex, {}});
        actions.emplace_back(CloseTile{session.tileIndex});
    }
    actions.emplace_back(StreamEnded{deviceId, session.requestId});
}

void LiveSessions::erasePreview(const QString& deviceId, SessionActions& actions) {
    const auto preview = previews_.constFind(deviceId);
    if (preview == previews_.constEnd()) {
        return;
    }
    actions.emplace_back(PreviewEnded{deviceId, *preview});
    previews_.erase(preview);
}

} // namespace corvanta::video
