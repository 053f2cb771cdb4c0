#include "monitor/ui/DevicePanel.h"

#include "base/ui/BarButton.h"
#include "base/ui/FaintHint.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "monitor/ui/DeviceTree.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <QVariant>

namespace theme = corvanta::theme;

DevicePanel::DevicePanel(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("devicePanel"));
    corvanta::wordedName(this, [] { return tr("设备"); });
    setAttribute(Qt::WA_StyledBackground);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(2 * theme::Step, 2 * theme::Step, 0, theme::Step);
    column->setSpacing(theme::Step);

    column->addLayout(makeHead());
    stack_ = new QStackedWidget(this);
    tree_ = new DeviceTree(stack_);
    stack_->addWidget(tree_);
    stack_->addWidget(makeEmptyState());
    column->addWidget(stack_, 1);

    connect(search_, &QLineEdit::textChanged, tree_, &DeviceTree::setFilter);
    corvanta::worded(this, [this] { showWhatFits(); });
}

QLayout* DevicePanel::makeHead() {
    auto* const head = new QHBoxLayout;
    head->setContentsMargins(0, 0, theme::Step, 0);
    search_ = new QLineEdit(this);
    search_->setObjectName(QStringLiteral("deviceSearch"));
    corvanta::wordedName(search_, [] { return tr("搜索设备"); });
    corvanta::wordedHint(search_, [] { return tr("搜索设备"); });
    search_->addAction(corvanta::svgIcon(QStringLiteral("search"), theme::FaintOnDark), QLineEdit::LeadingPosition);
    search_->setClearButtonEnabled(true);
    corvanta::faintHint(*search_);
    head->addWidget(search_, 1);
    QToolButton* const refresh = corvanta::barButton(
        this, QStringLiteral("refreshDevices"), [] { return tr("刷新设备列表"); }, QStringLiteral("refresh"));
    connect(refresh, &QToolButton::clicked, this, &DevicePanel::sigRefresh);
    head->addWidget(refresh);
    return head;
}

QWidget* DevicePanel::makeEmptyState() {
    auto* const empty = new QWidget(stack_);
    auto* const column = new QVBoxLayout(empty);
    emptyText_ = new QLabel(empty);
    emptyText_->setObjectName(QStringLiteral("emptyState"));
    emptyText_->setAlignment(Qt::AlignCenter);
    emptyText_->setWordWrap(true);
    signIn_ = new QPushButton(empty);
    corvanta::wordedText(signIn_, [] { return tr("登录"); });
    signIn_->setObjectName(QStringLiteral("emptySignIn"));
    corvanta::wordedName(signIn_, [] { return tr("登录"); });
    signIn_->setProperty("onDark", true);
    connect(signIn_, &QPushButton::clicked, this, &DevicePanel::sigSignIn);
    column->addStretch(1);
    column->addWidget(emptyText_);
    column->addSpacing(2 * theme::Step);
    column->addWidget(signIn_, 0, Qt::AlignCenter);
    column->addStretch(2);
    return empty;
}

void DevicePanel::setSignedIn(bool signedIn) {
    signedIn_ = signedIn;
    showWhatFits();
}

void DevicePanel::rebuild(const DeviceModel& devices) {
    tree_->rebuild(devices);
    showWhatFits();
}

void DevicePanel::clear() {
    tree_->clear();
    showWhatFits();
}

void DevicePanel::startSearch() {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

void DevicePanel::showWhatFits() {
    stack_->setCurrentIndex(tree_->isEmpty() ? 1 : 0);
    emptyText_->setText(signedIn_ ? tr("还没有设备") : tr("登录后显示设备"));
    signIn_->setVisible(!signedIn_);
}
