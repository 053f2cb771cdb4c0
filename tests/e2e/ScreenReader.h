#pragma once

#include "e2e/Accessible.h"

#include <QProcessEnvironment>

#include <memory>

/// What tells a test what programs show. Programs are found by their process. GUI thread.
///
/// Linux: the accessibility bus of the test's display, with the registry on it that programs enter themselves in; the
/// display tells programs where it is, and that accessibility is wanted. Windows: a plugin of Qt's that the program
/// loads, which answers over a pipe; what stands there for the bus is not in Wine.
class ScreenReader final {
public:
    ScreenReader();
    /// Ends what it has started.
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    /// False when it cannot be had.
    bool start();
    /// What a program is to be started with.
    QProcessEnvironment environment() const;

    /// A program that has entered itself; null until then. Its children are its windows and dialogs.
    Accessible program(qint64 process) const;
    /// The menu of a program that was opened last and is open; null when none is.
    Accessible openMenu(qint64 process) const;
    /// Has a program crash by a fault that its own code could make.
    void crash(qint64 process) const;

private:
    class Impl;
    const std::unique_ptr<Impl> impl_;
};
