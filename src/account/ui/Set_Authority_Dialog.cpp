#include "account/ui/Set_Authority_Dialog.h"

#include "account/AccountLog.h"
#include "account/ui/AccountForm.h"
#include "account/ui/ShareView.h"
#include "base/AppEvents.h"
#include "base/SdkGateway.h"
#include "base/ui/FaintHint.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace account = corvanta::account;
namespace theme = corvanta::theme;

namespace {
const QSize Usual(600, 480); // px
} // namespace

Set_Authority_Dialog::Set_Authority_Dialog(const AppContext& context, QWidget* parent)
    : FramedDialog(tr("权限设置"), parent)
    , context_(context) {
    setObjectName(QStringLiteral("Set_Authority_Dialog"));
    setAccessibleName(tr("权限设置"));
    setSizeGripEnabled(true);
    auto* const tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("shareTabs"));
    tabs->setAccessibleName(tr("权限设置"));
    body()->addWidget(tabs, 1);
    addViews(*tabs);
    tabs->addTab(makeReceived(tabs), tr("接收分享"));
    // Not the default button: Return chooses in the fields of the pages.
    connect(addButton(tr("关闭"), QStringLiteral("shareClose"), false), &QPushButton::clicked, this,
            &QDialog::accept);
    // What others share or take back is seen here at once.
    connect(&context_.events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this,
            &Set_Authority_Dialog::reload);
    resize(Usual);
    showModel();
    reload();
}

void Set_Authority_Dialog::addViews(QTabWidget& tabs) {
    byFriend_ = new ShareView(
        {.name = QStringLiteral("friendRights"),
         .pick = tr("好友"),
         .pickHint = tr("输入好友名称/下拉选择"),
         .list = tr("可访问设备"),
         .unchecked = tr("1.未选中表示好友无权限访问该设备"),
         .checked = tr("2.选中表示该好友有权限访问该设备")},
        [this](const QString& one, const QString& device) { return isShared(one, device); }, &tabs);
    byDevice_ = new ShareView(
        {.name = QStringLiteral("deviceRights"),
         .pick = tr("设备"),
         .pickHint = tr("输入设备名称/下拉选择"),
         .list = tr("可访问好友"),
         .unchecked = tr("1.未选中表示设备不能被这些好友访问"),
         .checked = tr("2.选中表示设备可以被这些好友访问")},
        [this](const QString& device, const QString& one) { return isShared(one, device); }, &tabs);
    tabs.addTab(byFriend_, tr("好友权限"));
    tabs.addTab(byDevice_, tr("设备权限"));
    connect(byFriend_, &ShareView::sigChecked, this, &Set_Authority_Dialog::share);
    connect(byDevice_, &ShareView::sigChecked, this,
            [this](const QString& device, const QString& one, bool on) { share(one, device, on); });
}

QWidget* Set_Authority_Dialog::makeReceived(QWidget* parent) {
    auto* const page = new QWidget(parent);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(3 * theme::Step, 3 * theme::Step, 3 * theme::Step, 3 * theme::Step);
    column->setSpacing(2 * theme::Step);
    receivedSearch_ = new QLineEdit(page);
    receivedSearch_->setObjectName(QStringLiteral("receivedSearch"));
    receivedSearch_->setAccessibleName(tr("搜索"));
    receivedSearch_->setPlaceholderText(tr("搜索"));
    receivedSearch_->setClearButtonEnabled(true);
    receivedSearch_->addAction(corvanta::svgIcon(QStringLiteral("search"), theme::FaintOnLight),
                               QLineEdit::LeadingPosition);
    corvanta::faintHint(*receivedSearch_);
    column->addWidget(receivedSearch_);
    received_ = new QTreeWidget(page);
    received_->setObjectName(QStringLiteral("received"));
    received_->setAccessibleName(tr("分享给你的设备"));
    received_->setHeaderLabels({tr("设备名称"), tr("设备ID"), tr("好友")});
    received_->setRootIsDecorated(false);
    received_->setAllColumnsShowFocus(true);
    received_->setSortingEnabled(true);
    received_->sortByColumn(0, Qt::AscendingOrder);
    received_->setColumnWidth(0, 200); // px
    received_->setColumnWidth(1, 160);
    column->addWidget(received_, 1);
    connect(receivedSearch_, &QLineEdit::textChanged, this, &Set_Authority_Dialog::filterReceived);
    return page;
}

void Set_Authority_Dialog::reload() {
    account::send(context_, this,
                  {.operation = QStringLiteral("获取好友所有分享设备列表"), .done = [this](const QVariantMap& resp) {
                       model_ = ShareModel::fromReply(resp);
                       showModel();
                   }});
}

QString Set_Authority_Dialog::nameOf(const QString& friendPhone) const {
    for (const FriendRecord& one : model_.friends()) {
        if (one.phone == friendPhone)
            return one.displayName();
    }
    return friendPhone;
}

void Set_Authority_Dialog::showModel() {
    QList<ShareView::Choice> friends;
    for (const FriendRecord& one : model_.friends())
        friends += ShareView::Choice{one.phone, one.displayName(), one.phone};
    QList<ShareView::Choice> devices;
    for (const ShareModel::Device& one : model_.ownDevices())
        devices += ShareView::Choice{one.ipncId, one.name, one.ipncId};
    byFriend_->setChoices(friends, devices);
    byDevice_->setChoices(devices, friends);
    received_->clear();
    for (const ShareModel::Device& one : model_.receivedDevices())
        new QTreeWidgetItem(received_, {one.name, one.ipncId, nameOf(one.owner)}); // the list owns it
    filterReceived();
}

void Set_Authority_Dialog::filterReceived() {
    const QString wanted = receivedSearch_->text().trimmed();
    for (int row = 0; row < received_->topLevelItemCount(); ++row) {
        QTreeWidgetItem* const item = received_->topLevelItem(row);
        bool fits = false;
        for (int column = 0; column < item->columnCount() && !fits; ++column)
            fits = item->text(column).contains(wanted, Qt::CaseInsensitive);
        item->setHidden(!fits);
    }
}

bool Set_Authority_Dialog::isShared(const QString& friendPhone, const QString& ipncId) const {
    const auto sent = wanted_.constFind({friendPhone, ipncId});
    return sent != wanted_.constEnd() ? *sent : model_.isShared(friendPhone, ipncId);
}

void Set_Authority_Dialog::share(const QString& friendPhone, const QString& ipncId, bool on) {
    const Pair pair{friendPhone, ipncId};
    wanted_.insert(pair, on);
    account::send(context_, this,
                  {.operation = QStringLiteral("设置摄像头是否分享给好友"),
                   .parameters = {{QStringLiteral("friendphone"), friendPhone},
                                  {QStringLiteral("ipncid"), ipncId},
                                  {QStringLiteral("share"), on}},
                   .done =
                       [this, pair, on](const QVariantMap&) {
                           model_.setShared(pair.first, pair.second, on);
                           account::logChange(context_.operationLog, context_.gateway.phoneId(),
                                              on ? account::Change::Shared : account::Change::ShareEnded,
                                              pair.second + QStringLiteral(" → ") + pair.first);
                           settled(pair, on);
                       },
                   .failed =
                       [this, pair, on] {
                           settled(pair, on);
                       }});
    byFriend_->refresh();
    byDevice_->refresh();
}

void Set_Authority_Dialog::settled(const Pair& pair, bool on) {
    if (wanted_.value(pair, !on) == on) // not changed once more meanwhile
        wanted_.remove(pair);
    byFriend_->refresh();
    byDevice_->refresh();
}
