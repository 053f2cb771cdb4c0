#include "monitor/ui/MessageBar.h"

#include "base/ui/BarButton.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "monitor/Layouts.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVariant>

#include <utility>

namespace theme = corvanta::theme;

MessageBar::MessageBar(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("bottomBar"));
    corvanta::wordedName(this, [] { return tr("消息栏"); });
    setAttribute(Qt::WA_StyledBackground);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(3 * theme::Step, theme::Step, theme::Step, theme::Step);
    row->setSpacing(theme::Step);
    label_ = new QLabel(this);
    label_->setObjectName(QStringLiteral("messageLabel"));
    label_->setTextFormat(Qt::PlainText);
    label_->setMinimumWidth(1);
    row->addWidget(label_, 1);

    for (const corvanta::Layout& layout : corvanta::layouts()) {
        if (!layout.hasButton)
            continue;
        QToolButton* const button = addButton(
            QStringLiteral("layout%1").arg(layout.tiles),
            [text = layout.menuText] { return QCoreApplication::translate("Fwidget", text); },
            QStringLiteral("%1_pic").arg(layout.tiles));
        button->setCheckable(true);
        button->setProperty("rows", layout.rows);
        button->setProperty("columns", layout.columns);
        connect(button, &QToolButton::clicked, this, [this, layout] { emit sigLayout(layout.rows, layout.columns); });
        layoutButtons_ += button;
    }
    QToolButton* const stopAll = addButton(
        QStringLiteral("stopAll"), [] { return tr("关闭所有视频"); }, QStringLiteral("stop-all"));
    connect(stopAll, &QToolButton::clicked, this, &MessageBar::sigStopAll);
}

QToolButton* MessageBar::addButton(const QString& objectName, corvanta::Text text, const QString& drawing) {
    QToolButton* const button = corvanta::barButton(this, objectName, std::move(text), drawing);
    layout()->addWidget(button);
    return button;
}

void MessageBar::showMessage(const QString& text) {
    text_ = text;
    elide();
}

void MessageBar::elide() {
    // One line, whatever was sent; blanks stay, some texts are built of columns.
    QString line = text_;
    line.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    label_->setText(label_->fontMetrics().elidedText(line, Qt::ElideRight, label_->width()));
    label_->setToolTip(label_->text() == line ? QString() : corvanta::plainToolTip(text_));
    label_->setAccessibleName(text_);
}

void MessageBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    elide();
}

void MessageBar::setLayoutShown(int rows, int columns) {
    for (QToolButton* button : qAsConst(layoutButtons_))
        button->setChecked(button->property("rows").toInt() == rows &&
                           button->property("columns").toInt() == columns);
}
