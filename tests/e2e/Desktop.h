#pragma once

#include "e2e/GuardedProcess.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <memory>
#include <optional>

/// The display that a test runs on, as a person at it has it: windows, a mouse, a keyboard, and what is seen. A
/// window manager runs beside the test, since focus, full screen and resizing at the edges are its work.
///
/// Input is real: it enters at the X server and takes the way of a mouse's and a keyboard's. GUI thread.
class Desktop final {
public:
    /// A window that is shown.
    struct Window {
        QString id;     ///< the X server's
        qint64 process; ///< id of the process that it belongs to
        QRect place;    ///< on the screen, px
    };

    /// The longest wait for what must come, ms: a sanitized program with software GL on a busy machine is slow. Who
    /// looks for a fault may be less patient, by CORVANTA_E2E_PATIENCE.
    static const int Patience;

    Desktop() = default;
    /// Ends the window manager.
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Starts the window manager and waits until it manages; false when it does not.
    bool start();

    /// The windows whose title matches the regular expression, of one process or, with 0, of all.
    static QList<Window> windows(const QString& title, qint64 process = 0);
    /// The first of them.
    static std::optional<Window> window(const QString& title, qint64 process = 0);
    /// How many windows of a process are shown, with those that have no title: menus, what is dragged.
    static int countWindows(qint64 process);
    /// Whether such a window has the keyboard.
    static bool isActive(const QString& title, qint64 process = 0);

    /// Takes such a window to the front, as a task bar does, and asks that it be given the keyboard.
    static void activate(const QString& title, qint64 process);

    /// The place of the window that has the keyboard; nothing when none has.
    static std::optional<QRect> activePlace();

    static void moveMouse(const QPoint& place);
    /// A step of pulling something that is held: there and back between two places, in small steps. A window manager
    /// takes over some time after the press and counts from where the mouse is then, so what is pulled follows sooner
    /// or later. `steps` counts, from 0.
    static void pull(const QPoint& from, const QPoint& to, int& steps);
    static void press();
    static void release();
    static void click(const QPoint& place);
    static void clickRight(const QPoint& place);
    /// One notch of the wheel.
    static void turnWheel(const QPoint& place, bool down);
    static void doubleClick(const QPoint& place);
    /// Presses keys one after another, by their X names ("Return", "ctrl+a").
    static void keys(const QStringList& names);
    static void type(const QString& text);
    static void pressKey(const QString& name);
    static void releaseKey(const QString& name);

    /// The whole screen, px.
    static QRect screen();
    static QImage look(const QRect& area);
    /// What is seen of the whole screen.
    static QImage look();

private:
    GuardedProcess windowManager_;
};
