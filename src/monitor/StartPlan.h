#pragma once

#include <QString>

class Settings;

/// What the settings say about the program's start page.
struct StartPlan {
    bool isShown = false;
    QString picture;             ///< path of its picture
    bool entersByItself = false; ///< without the user, after a while

    static StartPlan fromSettings(const Settings& settings);
};
