#pragma once

#include <QStringList>
#include <QVariant>

#include <array>

/// How the main window begins: the setting "窗口模式", a list of texts of which each switches one thing.
struct WindowMode {
    enum class State { Normal, Maximized, FullScreen };

    State state = State::Normal;
    bool onTop = false;           ///< above all other windows
    bool hidesDeviceTree = false; ///< the grid has the whole width
    QStringList others;           ///< texts of the setting that this program does not know; they survive

    /// A list that names both states means full screen. What is no list of texts means the normal window.
    static WindowMode fromSetting(const QVariant& setting);
    QStringList toSetting() const;
};

namespace corvanta {

/// A state of the window and the text by which the setting names it, UTF-8; also its name for the user, to be
/// translated in the context "WindowMode".
struct WindowStateText {
    WindowMode::State state;
    const char* text;
};
/// In the order in which they are offered. The normal window is named by no text of the setting.
const std::array<WindowStateText, 3>& windowStates();

/// A switch of the window and its text, as above.
struct WindowSwitchText {
    bool WindowMode::*isOn;
    const char* text;
};
const std::array<WindowSwitchText, 2>& windowSwitches();

} // namespace corvanta
