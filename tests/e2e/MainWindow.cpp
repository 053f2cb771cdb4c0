#include "e2e/MainWindow.h"

#include <QRegularExpression>

using Role = Accessible::Role;
using State = Accessible::State;

MainWindow::MainWindow(const Accessible& program) {
    for (const Accessible::Seen& window : program.children()) {
        if (!window.thing.find(QStringLiteral("主窗口")).isNull())
            frame_ = window.thing;
    }
    titleBar_ = frame_.find(QStringLiteral("标题栏"));
    messageBar_ = frame_.find(QStringLiteral("消息栏"));
    tree_ = frame_.find(QStringLiteral("设备树"));
    search_ = frame_.find(QStringLiteral("搜索设备"));
    grid_ = frame_.find([](const Accessible::Seen& seen) {
        return seen.name == QStringLiteral("视频窗口") && seen.role != Role::Label;
    });
    static const QRegularExpression tileName(QStringLiteral("^视频窗口 \\d+$"));
    for (const Accessible::Seen& child : grid_.children()) {
        if (tileName.match(child.name).hasMatch())
            tiles_ += child.thing;
    }
}

QPoint MainWindow::handle() const {
    // The title's text takes the room that buttons leave; it is no control.
    const Accessible title = titleBar_.find([](const Accessible::Seen& seen) { return seen.role == Role::Label; });
    return title.place().center();
}

Accessible MainWindow::button(const QString& name) const {
    for (const Accessible& bar : {titleBar_, messageBar_, grid_}) {
        if (const Accessible found = bar.find(name); !found.isNull())
            return found;
    }
    return {};
}

QString MainWindow::message() const {
    return messageBar_.find([](const Accessible::Seen& seen) { return seen.role == Role::Label; }).name();
}

QStringList MainWindow::rows() const {
    QStringList result;
    for (const Accessible::Seen& row : tree_.children()) {
        if (row.role == Role::Cell)
            result += row.name;
    }
    return result;
}

Accessible MainWindow::row(const QString& name) const {
    for (const Accessible::Seen& row : tree_.children()) {
        if (row.role == Role::Cell && (row.name == name || row.name.startsWith(name + QStringLiteral("  "))))
            return row.thing;
    }
    return {};
}

QVector<int> MainWindow::shownTiles() const {
    const QVector<bool> shown = Accessible::have(tiles_, State::Visible);
    QVector<int> result;
    for (int i = 0; i < shown.size(); ++i) {
        if (shown[i])
            result += i;
    }
    return result;
}

int MainWindow::tileOfDevice(const QString& name) const {
    return Accessible::descriptions(tiles_).indexOf(name);
}

QString MainWindow::textOfTile(int index) const {
    for (const Accessible::Seen& child : tiles_.value(index).children()) {
        if (child.role == Role::Label && child.thing.has(State::Visible))
            return child.name;
    }
    return {};
}

int MainWindow::focusedTile() const {
    return Accessible::have(tiles_, State::Focused).indexOf(true);
}
