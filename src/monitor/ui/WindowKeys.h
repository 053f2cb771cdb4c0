#pragma once

#include "monitor/Shortcuts.h"

#include <QObject>

#include <functional>

class QShortcut;
class QWidget;

/// The keys of the main window, installed from the one table of them. Keys that mean something else where text is
/// written work only while the given areas have the focus. GUI thread.
class WindowKeys final : public QObject {
    Q_OBJECT
public:
    /// What is called: the shortcut, and the position of the key among its keys.
    using Handler = std::function<void(corvanta::ShortcutId id, int key)>;

    /// `window`'s keys; the plain ones only inside `grid`, and those that a tree has no use for inside `tree`, too.
    WindowKeys(QWidget& window, QWidget& grid, QWidget& tree, Handler handler);

private:
    void add(QWidget& area, const corvanta::Shortcut& shortcut, Qt::ShortcutContext context);

    Handler handler_;
};
