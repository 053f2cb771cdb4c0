#include "monitor/ui/TopBar.h"

#include "base/ui/BarButton.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace theme = corvanta::theme;

TopBar::TopBar(QWidget* parent)
    : DragArea(parent) {
    setObjectName(QStringLiteral("topBar"));
    setAccessibleName(tr("标题栏"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(3 * theme::Step, theme::Step, theme::Step, theme::Step);
    row->setSpacing(theme::Step);
    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("title"));
    title_->setTextFormat(Qt::PlainText);
    title_->setMinimumWidth(1);
    row->addWidget(title_, 1);

    account_ = addButton(QStringLiteral("accountButton"), tr("登录"), QStringLiteral("user"));
    account_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(account_, &QToolButton::clicked, this, [this] {
        if (signedIn_)
            emit sigSignOut();
        else
            emit sigSignIn();
    });
    auto* const minimize = addButton(QStringLiteral("minimizeButton"), tr("最小化"), QStringLiteral("minimize"));
    connect(minimize, &QToolButton::clicked, this, &TopBar::sigMinimize);
    fullScreen_ = addButton(QStringLiteral("fullScreenButton"), tr("全屏"), QStringLiteral("fullscreen"));
    connect(fullScreen_, &QToolButton::clicked, this, &TopBar::sigFullScreen);
    auto* const close = addButton(QStringLiteral("closeButton"), tr("退出"), QStringLiteral("close"));
    connect(close, &QToolButton::clicked, this, &TopBar::sigClose);
}

QToolButton* TopBar::addButton(const QString& objectName, const QString& text, const QString& drawing) {
    QToolButton* const button = corvanta::barButton(this, objectName, text, drawing);
    layout()->addWidget(button);
    return button;
}

void TopBar::setTitle(const QString& title) {
    titleText_ = title;
    elideTitle();
}

void TopBar::elideTitle() {
    title_->setText(title_->fontMetrics().elidedText(titleText_, Qt::ElideRight, title_->width()));
}

void TopBar::resizeEvent(QResizeEvent* event) {
    DragArea::resizeEvent(event);
    elideTitle();
}

void TopBar::setAccount(const QString& phoneNumber) {
    signedIn_ = !phoneNumber.isEmpty();
    account_->setText(signedIn_ ? phoneNumber : tr("登录"));
    account_->setAccessibleName(signedIn_ ? tr("退出登录") : tr("登录"));
    account_->setToolTip(account_->accessibleName());
    account_->setIcon(
        corvanta::svgIcon(signedIn_ ? QStringLiteral("signout") : QStringLiteral("user"), theme::TextOnDark));
}

void TopBar::setFullScreen(bool on) {
    fullScreen_->setIcon(
        corvanta::svgIcon(on ? QStringLiteral("restore") : QStringLiteral("fullscreen"), theme::TextOnDark));
    fullScreen_->setToolTip(on ? tr("退出全屏") : tr("全屏"));
    fullScreen_->setAccessibleName(fullScreen_->toolTip());
}
