#include "base/ui/FramedDialog.h"

#include "base/ui/DragArea.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QVariant>

namespace theme = corvanta::theme;

namespace {

/// A window manager that is still busy with the windows that closed may let the first request pass.
void giveKeyboard(QWidget& window) {
    constexpr int again = 100; // ms
    window.activateWindow();
    QTimer::singleShot(again, &window, [&window] {
        if (!window.isVisible() || QApplication::activeWindow() != nullptr)
            return;
        // Where it has the keyboard already, nothing more comes that would tell the widgets.
        if (QGuiApplication::focusWindow() == window.windowHandle())
            QApplication::setActiveWindow(&window);
        else
            window.activateWindow();
    });
}

} // namespace

FramedDialog::FramedDialog(const QString& title, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
    setWindowTitle(title);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(1, 1, 1, 1);
    outer->setSpacing(0);

    auto* strip = new DragArea(this);
    strip->setObjectName(QStringLiteral("dialogTitle"));
    auto* stripRow = new QHBoxLayout(strip);
    stripRow->setContentsMargins(3 * theme::Step, theme::Step, theme::Step, theme::Step);
    auto* label = new QLabel(title, strip);
    label->setTextFormat(Qt::PlainText);
    connect(this, &QWidget::windowTitleChanged, label, &QLabel::setText);
    stripRow->addWidget(label, 1);
    auto* close = new QToolButton(strip);
    close->setObjectName(QStringLiteral("dialogClose"));
    corvanta::wordedName(close, [] { return tr("关闭"); });
    close->setIcon(corvanta::svgIcon(QStringLiteral("close"), theme::TextOnDark));
    close->setFocusPolicy(Qt::NoFocus);
    connect(close, &QToolButton::clicked, this, &QDialog::reject);
    stripRow->addWidget(close);
    outer->addWidget(strip);

    auto* inside = new QWidget(this);
    inside->setObjectName(QStringLiteral("dialogBody"));
    auto* insideColumn = new QVBoxLayout(inside);
    insideColumn->setContentsMargins(5 * theme::Step, 5 * theme::Step, 5 * theme::Step, 4 * theme::Step);
    insideColumn->setSpacing(3 * theme::Step);
    body_ = new QVBoxLayout;
    body_->setSpacing(3 * theme::Step);
    insideColumn->addLayout(body_, 1);
    problem_ = new QLabel(inside);
    problem_->setObjectName(QStringLiteral("problem"));
    corvanta::wordedName(problem_, [] { return tr("错误信息"); });
    problem_->setTextFormat(Qt::PlainText);
    problem_->setWordWrap(true);
    problem_->hide();
    insideColumn->addWidget(problem_);
    buttonRow_ = new QWidget(inside);
    auto* buttons = new QHBoxLayout(buttonRow_);
    buttons->setContentsMargins(0, theme::Step, 0, 0);
    buttons->setSpacing(2 * theme::Step);
    buttons->addStretch(1);
    insideColumn->addWidget(buttonRow_);
    buttonRow_->hide(); // takes no room while it is empty
    outer->addWidget(inside, 1);
}

void FramedDialog::done(int result) {
    const bool hadKeyboard = isActiveWindow();
    // What a field proposes may still be open; as long as it is, no window is noticed to have the keyboard.
    if (QWidget* const popup = QApplication::activePopupWidget(); hadKeyboard && popup != nullptr)
        popup->close();
    const QPointer<FramedDialog> self(this);
    QDialog::done(result); // tells of it, and whoever hears that may close the windows below
    if (!hadKeyboard || self == nullptr)
        return;
    QWidget* below = parentWidget() == nullptr ? nullptr : parentWidget()->window();
    while (below != nullptr && !below->isVisible())
        below = below->parentWidget() == nullptr ? nullptr : below->parentWidget()->window();
    // Not when another one was opened meanwhile.
    if (below != nullptr && QApplication::activeModalWidget() == (below->isModal() ? below : nullptr))
        giveKeyboard(*below);
}

QPushButton* FramedDialog::addButton(const QString& text, const QString& objectName, bool accepting) {
    auto* button = new QPushButton(text, buttonRow_);
    button->setObjectName(objectName);
    button->setAccessibleName(text);
    button->setMinimumWidth(88);
    button->setAutoDefault(accepting);
    button->setDefault(accepting);
    button->setProperty("primary", accepting);
    buttonRow_->layout()->addWidget(button);
    buttonRow_->show();
    return button;
}

void FramedDialog::showProblem(const QString& text) {
    problem_->setText(text);
    problem_->setVisible(!text.isEmpty());
}
