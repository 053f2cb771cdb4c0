#include "Reader.h"

#include "e2e/Accessible.h"
#include "e2e/windows/Questions.h"

#include <QAccessible>
#include <QApplication>
#include <QDataStream>
#include <QLocalSocket>
#include <QWidget>

#include <windows.h>

namespace {

constexpr int arrivalsInterval = 20; ///< milliseconds

using Role = Accessible::Role;
using State = Accessible::State;

Role roleOf(const QAccessibleInterface& thing) {
    switch (thing.role()) {
    case QAccessible::CheckBox:
        return Role::CheckBox;
    case QAccessible::ComboBox:
        return Role::ComboBox;
    case QAccessible::Dialog:
        return Role::Dialog;
    case QAccessible::StaticText:
        return Role::Label;
    case QAccessible::List:
        return Role::List;
    case QAccessible::ListItem:
        return Role::ListItem;
    case QAccessible::MenuItem:
        return Role::MenuItem;
    case QAccessible::PopupMenu:
        return Role::PopupMenu;
    case QAccessible::Table:
        return Role::Table;
    case QAccessible::Cell:
    case QAccessible::TreeItem:
        return Role::Cell;
    case QAccessible::EditableText:
        return Role::Text;
    case QAccessible::Tree:
        return Role::Tree;
    default:
        return Role::Invalid;
    }
}

qulonglong statesOf(const QAccessibleInterface& thing) {
    const QAccessible::State state = thing.state();
    qulonglong result = 0;
    const auto set = [&result](bool is, State bit) {
        result |= is ? 1ULL << static_cast<unsigned>(bit) : 0;
    };
    set(state.active, State::Active);
    set(state.checked, State::Checked);
    set(!state.disabled, State::Enabled);
    set(state.expanded, State::Expanded);
    set(state.focused, State::Focused);
    set(!state.invisible && !state.offscreen, State::Showing);
    set(!state.invisible, State::Visible);
    return result;
}

QString idOf(QAccessibleInterface* thing) {
    return thing == nullptr ? QString() : QString::number(QAccessible::uniqueId(thing));
}

QStringList childrenOf(const QAccessibleInterface& thing) {
    QStringList result;
    for (int i = 0; i < thing.childCount(); ++i) {
        const QString id = idOf(thing.child(i));
        if (!id.isEmpty())
            result += id;
    }
    return result;
}

/// A place in the screen's own pixels: the program counts in those of a display without scaling.
QRect onScreen(const QRect& place) {
    const qreal scaling = qApp->devicePixelRatio();
    return {(QPointF(place.topLeft()) * scaling).toPoint(), (QSizeF(place.size()) * scaling).toSize()};
}

QVariant textOf(QAccessibleInterface& thing) {
    auto* const text = thing.textInterface();
    return text == nullptr ? QVariant() : text->text(0, text->characterCount());
}

QVariant numberOf(QAccessibleInterface& thing) {
    auto* const value = thing.valueInterface();
    return value == nullptr ? QVariant() : value->currentValue().toDouble();
}

QVariant tell(AccessSource::What what, QAccessibleInterface& thing) {
    switch (what) {
    case AccessSource::What::Name:
        return thing.text(QAccessible::Name);
    case AccessSource::What::Description:
        return thing.text(QAccessible::Description);
    case AccessSource::What::Role:
        return static_cast<uint>(roleOf(thing));
    case AccessSource::What::States:
        return statesOf(thing);
    case AccessSource::What::Place:
        return onScreen(thing.rect());
    case AccessSource::What::Text:
        return textOf(thing);
    case AccessSource::What::Number:
        return numberOf(thing);
    case AccessSource::What::Children:
        return childrenOf(thing);
    }
    return {};
}

[[noreturn]] void crash() {
    volatile quintptr nothing = 8; // the compiler is not to know where
    *reinterpret_cast<volatile int*>(nothing) = 1;
    abort();
}

} // namespace

Reader::Reader() {
    QAccessible::setActive(true); // what is shown keeps its ids up to date then
    connect(&server_, &QLocalServer::newConnection, this, &Reader::serve);
    server_.listen(questions::socketName(QCoreApplication::applicationPid()));
    // What a pipe has brought is told where a wait allows it, which the system's own loop does not while a window is
    // moved or resized. Timers go on there.
    connect(&arrivals_, &QTimer::timeout, this, [] { SleepEx(0, TRUE); });
    arrivals_.start(arrivalsInterval);
}

void Reader::serve() {
    QLocalSocket* const socket = server_.nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [socket] {
        QDataStream stream(socket);
        for (;;) {
            int question = 0;
            QStringList things;
            stream.startTransaction();
            stream >> question >> things;
            if (!stream.commitTransaction())
                return;
            stream << answer(question, things);
            socket->flush();
        }
    });
}

QVariantList Reader::answer(int question, const QStringList& things) {
    if (question == questions::Root)
        return {idOf(QAccessible::queryAccessibleInterface(qApp))};
    if (question == questions::OpenMenu)
        return {idOf(QAccessible::queryAccessibleInterface(QApplication::activePopupWidget()))};
    if (question == questions::Crash)
        crash();
    QVariantList result;
    for (const QString& id : things) {
        QAccessibleInterface* const thing = QAccessible::accessibleInterface(id.toUInt());
        const bool isThere = thing != nullptr && thing->isValid();
        result += isThere ? tell(static_cast<AccessSource::What>(question), *thing) : QVariant();
    }
    return result;
}

QObject* ReaderPlugin::create(const QString& /*name*/, const QString& /*specification*/) {
    return new Reader;
}
