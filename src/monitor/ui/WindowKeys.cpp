#include "monitor/ui/WindowKeys.h"

#include <QShortcut>
#include <QWidget>

using corvanta::ShortcutId;

namespace {

/// Whether the tile that has the focus deals with the key by itself.
bool isOfTheTile(ShortcutId id) {
    return id == ShortcutId::ToggleVideo || id == ShortcutId::StopTile || id == ShortcutId::ZoomTile;
}

/// Whether a tree needs the key for its own rows.
bool isOfTheTree(ShortcutId id) {
    return id == ShortcutId::ToggleVideo || id == ShortcutId::MoveSelection || id == ShortcutId::ZoomTile;
}

} // namespace

WindowKeys::WindowKeys(QWidget& window, QWidget& grid, QWidget& tree, Handler handler)
    : QObject(&window)
    , handler_(std::move(handler)) {
    for (const corvanta::Shortcut& shortcut : corvanta::shortcuts()) {
        if (!shortcut.isPlainKey) {
            add(window, shortcut, Qt::WindowShortcut);
            continue;
        }
        if (!isOfTheTile(shortcut.id))
            add(grid, shortcut, Qt::WidgetWithChildrenShortcut);
        if (!isOfTheTree(shortcut.id))
            add(tree, shortcut, Qt::WidgetWithChildrenShortcut);
    }
}

void WindowKeys::add(QWidget& area, const corvanta::Shortcut& shortcut, Qt::ShortcutContext context) {
    int position = 0;
    for (const QString& key : shortcut.keys) {
        auto* const installed = new QShortcut(QKeySequence(key, QKeySequence::PortableText), &area);
        installed->setContext(context);
        connect(installed, &QShortcut::activated, this,
                [this, id = shortcut.id, position] { handler_(id, position); });
        ++position;
    }
}
