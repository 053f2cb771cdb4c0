#include "monitor/ui/TopBar.h"

#include "base/ui/BarButton.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "monitor/ui/VolumePopup.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QStyle>
#include <QToolButton>

#include <utility>

namespace theme = corvanta::theme;

namespace {
constexpr int NarrowWidth = 860; // px
constexpr int MostCounted = 999; // on a button
} // namespace

TopBar::TopBar(QWidget* parent)
    : DragArea(parent) {
    setObjectName(QStringLiteral("topBar"));
    corvanta::wordedName(this, [] { return tr("标题栏"); });
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(3 * theme::Step, theme::Step, theme::Step, theme::Step);
    row->setSpacing(theme::Step);
    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("title"));
    title_->setTextFormat(Qt::PlainText);
    title_->setMinimumWidth(1);
    row->addWidget(title_, 1);
    modulesRow_ = new QHBoxLayout;
    modulesRow_->setSpacing(theme::Step);
    row->addLayout(modulesRow_);
    row->addSpacing(3 * theme::Step);

    poll_ = addButton(
        QStringLiteral("pollButton"), [] { return tr("开始轮屏"); }, QStringLiteral("poll"));
    poll_->setCheckable(true);
    connect(poll_, &QToolButton::clicked, this, [this] {
        poll_->setChecked(!poll_->isChecked()); // ticked by what runs, not by the click
        emit sigPoll();
    });
    sound_ = addButton(
        QStringLiteral("soundButton"), [] { return tr("音量"); }, QStringLiteral("sound"));
    sound_->setCheckable(true);
    volume_ = new VolumePopup(this);
    connect(sound_, &QToolButton::clicked, this, [this] {
        sound_->setChecked(!sound_->isChecked()); // says what is heard, not what was clicked
        volume_->showUnder(*sound_);
    });
    connect(volume_, &VolumePopup::sigVolume, this, &TopBar::sigVolume);
    connect(volume_, &VolumePopup::sigMuted, this, &TopBar::sigMuted);
    auto* const settings = addButton(
        QStringLiteral("settingsButton"), [] { return tr("软件设置"); }, QStringLiteral("settings"));
    connect(settings, &QToolButton::clicked, this, &TopBar::sigSettings);
    auto* const help = addButton(
        QStringLiteral("helpButton"), [] { return tr("帮助"); }, QStringLiteral("help"));
    helpMenu_ = makeHelpMenu();
    connect(help, &QToolButton::clicked, this,
            [this, help] { helpMenu_->popup(help->mapToGlobal(QPoint(0, help->height()))); });
    account_ = addButton(
        QStringLiteral("accountButton"), [] { return tr("登录"); }, QStringLiteral("user"));
    account_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(account_, &QToolButton::clicked, this, [this] {
        if (number_.isEmpty())
            emit sigSignIn();
        else
            accountMenu_->popup(account_->mapToGlobal(QPoint(0, account_->height())));
    });
    accountMenu_ = makeAccountMenu();
    auto* const minimize = addButton(
        QStringLiteral("minimizeButton"), [] { return tr("最小化"); }, QStringLiteral("minimize"));
    connect(minimize, &QToolButton::clicked, this, &TopBar::sigMinimize);
    fullScreen_ = addButton(
        QStringLiteral("fullScreenButton"), [] { return tr("全屏"); }, QStringLiteral("fullscreen"));
    connect(fullScreen_, &QToolButton::clicked, this, &TopBar::sigFullScreen);
    auto* const close = addButton(
        QStringLiteral("closeButton"), [] { return tr("退出"); }, QStringLiteral("close"));
    connect(close, &QToolButton::clicked, this, &TopBar::sigClose);
    // What says a state, behind the names that the buttons have said by themselves.
    corvanta::worded(this, [this] {
        showAccount();
        showFullScreen();
        showPolling();
        showSound();
    });
}

QMenu* TopBar::makeHelpMenu() {
    auto* const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("helpMenu"));
    corvanta::wordedName(menu, [] { return tr("帮助"); });
    QAction* const keys = menu->addAction(QString());
    corvanta::wordedText(keys, [] { return tr("快捷键"); });
    keys->setObjectName(QStringLiteral("helpKeys"));
    connect(keys, &QAction::triggered, this, &TopBar::sigHelp);
    QAction* const update = menu->addAction(QString());
    corvanta::wordedText(update, [] { return tr("检测更新"); });
    update->setObjectName(QStringLiteral("helpUpdate"));
    connect(update, &QAction::triggered, this, &TopBar::sigUpdate);
    return menu;
}

QMenu* TopBar::makeAccountMenu() {
    auto* const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("accountMenu"));
    corvanta::wordedName(menu, [] { return tr("账号"); });
    const auto add = [this, menu](corvanta::Text text, const char* objectName, AccountEntry entry) {
        QAction* const action = menu->addAction(QString());
        corvanta::wordedText(action, std::move(text));
        action->setObjectName(QLatin1String(objectName));
        connect(action, &QAction::triggered, this, [this, entry] { emit sigAccount(entry); });
    };
    add([] { return tr("个人信息"); }, "accountPerson", AccountEntry::Person);
    add([] { return tr("好友管理"); }, "accountFriends", AccountEntry::Friends);
    add([] { return tr("分组管理"); }, "accountGroups", AccountEntry::Groups);
    add([] { return tr("权限设置"); }, "accountRights", AccountEntry::Rights);
    menu->addSeparator();
    add([] { return tr("设备管理"); }, "accountDevices", AccountEntry::Devices);
    add([] { return tr("通知规则"); }, "accountNotices", AccountEntry::Notices);
    add([] { return tr("短信管理"); }, "accountTextMessages", AccountEntry::TextMessages);
    menu->addSeparator();
    add([] { return tr("退出登录"); }, "accountSignOut", AccountEntry::SignOut);
    return menu;
}

QToolButton* TopBar::addButton(const QString& objectName, corvanta::Text text, const QString& drawing) {
    QToolButton* const button = corvanta::barButton(this, objectName, std::move(text), drawing);
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
    // The title comes first: who is signed in stands in the tool tip, too, and pages that are not there can wait.
    const bool isNarrow = width() < NarrowWidth;
    account_->setToolButtonStyle(isNarrow ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    for (QToolButton* const module : qAsConst(modules_))
        module->setVisible(!isNarrow || module->isEnabled());
    elideTitle();
}

void TopBar::setAccount(const QString& phoneNumber) {
    number_ = phoneNumber;
    showAccount();
}

void TopBar::setHead(const QIcon& head) {
    head_ = head;
    showAccount();
}

void TopBar::showAccount() {
    const bool signedIn = !number_.isEmpty();
    account_->setText(signedIn ? number_ : tr("登录"));
    account_->setAccessibleName(signedIn ? tr("账号") : tr("登录"));
    account_->setToolTip(corvanta::plainToolTip(signedIn ? tr("账号") + QLatin1Char('\n') + number_ : tr("登录")));
    account_->setIcon(signedIn && !head_.isNull() ? head_
                                                  : corvanta::svgIcon(QStringLiteral("user"), theme::TextOnDark));
}

void TopBar::setFullScreen(bool on) {
    isFullScreen_ = on;
    showFullScreen();
}

void TopBar::showFullScreen() {
    const bool on = isFullScreen_;
    fullScreen_->setIcon(
        corvanta::svgIcon(on ? QStringLiteral("restore") : QStringLiteral("fullscreen"), theme::TextOnDark));
    fullScreen_->setToolTip(on ? tr("退出全屏") : tr("全屏"));
    fullScreen_->setAccessibleName(fullScreen_->toolTip());
}

void TopBar::setPolling(bool on) {
    poll_->setChecked(on);
    showPolling();
}

void TopBar::showPolling() {
    const bool on = poll_->isChecked();
    poll_->setToolTip(on ? tr("停止轮屏") : tr("开始轮屏"));
    poll_->setAccessibleName(poll_->toolTip());
}

void TopBar::setSound(int volume, bool muted, const QString& state) {
    volume_->setValues(volume, muted);
    soundState_ = state;
    sound_->setChecked(!state.isEmpty());
    sound_->setIcon(
        corvanta::svgIcon(muted ? QStringLiteral("sound-off") : QStringLiteral("sound"), theme::TextOnDark));
    sound_->setAccessibleDescription(state);
    showSound();
}

void TopBar::showSound() {
    sound_->setToolTip(
        corvanta::plainToolTip(soundState_.isEmpty() ? tr("音量") : tr("音量") + QLatin1Char('\n') + soundState_));
}

void TopBar::addModule(int number, const QString& objectName, corvanta::Text text, const QString& drawing) {
    QToolButton* const button = corvanta::barButton(this, objectName, text, drawing);
    button->setCheckable(true);
    modulesRow_->addWidget(button);
    modules_.insert(number, button);
    corvanta::worded(button, [this, number, button, text = std::move(text)] {
        button->setProperty("moduleName", text());
        setBadge(number, button->property("count").toLongLong());
    });
    connect(button, &QToolButton::clicked, this, [this, number] {
        setModule(number);
        emit sigModule(number);
    });
}

void TopBar::setBadge(int number, qint64 count) {
    QToolButton* const module = modules_.value(number);
    if (module == nullptr)
        return;
    module->setProperty("count", count);
    const QString name = module->property("moduleName").toString();
    const QString figure =
        count > MostCounted ? QString::number(MostCounted) + QLatin1Char('+') : QString::number(count);
    module->setText(count > 0 ? figure : name);
    module->setToolButtonStyle(count > 0 ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
    module->setProperty("badge", count > 0);
    module->style()->unpolish(module);
    module->style()->polish(module);
    const QString text = count > 0 ? name + QLatin1Char(' ') + QString::number(count) : name;
    module->setToolTip(text);
    module->setAccessibleDescription(count > 0 ? text : QString());
}

void TopBar::setModule(int number) {
    for (auto module = modules_.begin(); module != modules_.end(); ++module)
        module.value()->setChecked(module.key() == number);
}
