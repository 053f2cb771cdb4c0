#include "monitor/ui/tour/PlaybackTour.h"

#include "monitor/ui/Fwidget.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/PlaybackControl.h"
#include "monitor/ui/tour/TourScript.h"
#include "monitor/ui/tour/WallTour.h"
#include "playback/PlaybackSession.h"
#include "playback/ui/PlaybackPage.h"

namespace tour = corvanta::tour;

void PlaybackTour::page() {
    script_.step({QStringLiteral("the playback page"), [this] { tour::click(&window_, "playbackModule"); },
                  [this] {
                      return window_.playback().page().isVisible();
                  }});
    script_.pause(300);
    script_.picture(QStringLiteral("playback-empty"));
    script_.step({QStringLiteral("four recordings"), [this] { window_.playback().play(wall_.recorded()); },
                  [this] {
                      return window_.playback().page().session() != nullptr;
                  }});
    script_.pause(1500); // until the files have been looked through
    script_.step({QStringLiteral("they play"), [this] { window_.playback().page().session()->play(); },
                  [this] {
                      return window_.playback().page().session()->isPlaying();
                  }});
    script_.pause(3000);
    script_.picture(QStringLiteral("playback-4"));
    script_.step({QStringLiteral("nothing to play"), [this] { window_.playback().page().close(); },
                  [this] {
                      return window_.playback().page().session() == nullptr;
                  }});
    script_.step({QStringLiteral("the wall again"), [this] { tour::click(&window_, "videoModule"); },
                  [this] {
                      return window_.grid().isVisible();
                  }});
}
