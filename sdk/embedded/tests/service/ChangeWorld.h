#pragma once

#include "FakeHub.h"
#include "Viewer.h"

#include <string>
#include <vector>

namespace ipncsdk::test {

/// What a viewer's course should be.
using Course = std::vector<std::string>;

/// An SDK on which the first account is signed in, over a hub whose light and main streams do what a test tells them.
struct ChangeWorld {
    ChangeWorld() { good = sdk.start() == emSuccess && sdk.signIn(); }

    TestSdk sdk;
    HubScript::Course& light = sdk.hub->of(media::Quality::Light);
    HubScript::Course& main = sdk.hub->of(media::Quality::Main);
    bool good = false;

    /// Waits until this many streams run.
    bool streamsAre(int count) {
        return waitFor([&] { return sdk.hub->running == count; });
    }
};

} // namespace ipncsdk::test
