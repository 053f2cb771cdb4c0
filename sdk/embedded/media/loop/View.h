#pragma once

#include "media/loop/Canvas.h"

namespace ipncsdk::media {

/// Where a loop camera looks, and how sharp and bright it sees. All zero is the home view: the whole scene, as it was
/// recorded.
struct View {
    float pan = 0;   ///< -1 (left end) to 1
    float tilt = 0;  ///< -1 to 1, which is up
    float zoom = 0;  ///< 0 to 1
    float focus = 0; ///< -1 (too near) to 1 (too far); 0 is sharp
    float iris = 0;  ///< -1 (closed) to 1
    friend bool operator==(const View& a, const View& b) {
        return a.pan == b.pan && a.tilt == b.tilt && a.zoom == b.zoom && a.focus == b.focus && a.iris == b.iris;
    }
    bool isHome() const { return *this == View(); }
};

/// The part of the scene that a view shows. The camera turns within its scene, so it sees less of it the further it
/// looks aside, and never anything that is not there.
Window windowOf(const View& view);

/// Softens a picture as a lens does that is `focus` away from sharp.
void defocus(Picture& picture, float focus);
/// Makes a picture brighter or darker, as an opened or closed iris does.
void expose(Picture& picture, float iris);

/// What a loop camera is doing now; asked by the readers of its streams, from any thread and for every frame.
class LoopControl {
public:
    virtual ~LoopControl() = default;
    struct State {
        bool reachable = true; ///< false while the camera restarts: its streams are lost
        View view;
        int exhibit = 0; ///< what a measuring camera is shown: 0 what it measures, 1 what it is set up with
    };
    virtual State now() const = 0;
};

} // namespace ipncsdk::media
