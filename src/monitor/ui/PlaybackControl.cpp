#include "monitor/ui/PlaybackControl.h"

#include "monitor/Archive.h"
#include "monitor/ui/ModulePages.h"
#include "playback/PlaybackSession.h"
#include "playback/ui/PlaybackPage.h"

#include <QDateTime>

#include <chrono>

using corvanta::playback::PlaybackCamera;
using corvanta::playback::PlaybackPage;
using corvanta::playback::PlaybackSession;

PlaybackControl::PlaybackControl(ModulePages& pages, RecordingStorage& storage, QObject* parent)
    : QObject(parent)
    , pages_(pages)
    , page_(new PlaybackPage(&pages)) {
    page_->hide(); // until its module is chosen
    page_->setSnapshotPath([&storage](const PlaybackCamera& camera, const QDateTime& moment) {
        return corvanta::archive::snapshotPath(storage, camera, moment);
    });
    pages_.setMaker(Module::Playback, [page = page_](QWidget*) { return page; });
}

void PlaybackControl::play(const QVector<PlaybackCamera>& cameras) {
    pages_.showModule(Module::Playback);
    page_->play(cameras);
}

void PlaybackControl::playAt(const QVector<PlaybackCamera>& cameras, const QDateTime& time) {
    play(cameras);
    PlaybackSession* const session = page_->session();
    if (session == nullptr)
        return;
    const auto seek = [session, time] {
        session->seek(std::chrono::milliseconds(time.toMSecsSinceEpoch()));
    };
    if (session->isReady())
        seek();
    else
        connect(session, &PlaybackSession::sigReady, session, seek);
}
