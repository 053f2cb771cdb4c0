#pragma once

#include "e2e/Accessible.h"
#include "e2e/GuardedProcess.h"

#include <QProcessEnvironment>
#include <QThread>

#include <memory>

class AccessRegistry;
struct BusPlace;

/// The accessibility bus of a test's display: a message bus of its own with the registry on it that programs enter
/// themselves in. The display tells programs where it is, and that accessibility is wanted. Programs are found by
/// their process. GUI thread.
class ScreenReader final {
public:
    ScreenReader();
    /// Ends the bus.
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// Starts the bus and takes the registry's name on it; false when that fails.
    bool start();
    /// What a program is to be started with: no other bus of the session than this.
    QProcessEnvironment environment() const;

    /// A program that has entered itself; null until then. Its children are its windows and dialogs.
    Accessible program(qint64 process) const;
    /// The menu of a program that was opened last and is open; null when none is.
    Accessible openMenu(qint64 process) const;

private:
    Accessible accessible(const BusPlace& place) const;

    GuardedProcess daemon_;
    QString address_;
    std::optional<QDBusConnection> bus_;
    QThread thread_; ///< the registry's: programs wait for its answers, whatever the test is doing
    std::unique_ptr<AccessRegistry> registry_;
};
