#include "map/web/FailurePane.h"

#include "base/ui/Theme.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta::map {

FailurePane::FailurePane(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("mapFailure"));
    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, theme::Tile);
    colours.setColor(QPalette::WindowText, theme::TextOnLight);
    setPalette(colours);
    auto* const column = new QVBoxLayout(this);
    column->setSpacing(2 * theme::Step);
    column->addStretch();
    reason_ = new QLabel(this);
    reason_->setObjectName(QStringLiteral("mapFailureReason"));
    reason_->setTextFormat(Qt::PlainText);
    reason_->setAlignment(Qt::AlignCenter);
    reason_->setWordWrap(true);
    column->addWidget(reason_);
    reload_ = new QPushButton(this);
    reload_->setObjectName(QStringLiteral("mapReload"));
    column->addWidget(reload_, 0, Qt::AlignHCenter);
    column->addStretch();
    setFocusProxy(reload_);
    setWords();
    connect(reload_, &QPushButton::clicked, this, &FailurePane::sigReload);
}

void FailurePane::setWords() {
    setAccessibleName(tr("地图无法显示"));
    reload_->setText(tr("重新加载"));
    reload_->setAccessibleName(reload_->text());
}

void FailurePane::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setWords();
}

void FailurePane::setReason(const QString& reason) {
    reason_->setText(reason);
    reason_->setAccessibleName(reason);
}

} // namespace corvanta::map
