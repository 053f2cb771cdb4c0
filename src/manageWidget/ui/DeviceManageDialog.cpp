#include "manageWidget/ui/DeviceManageDialog.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/ui/FaintHint.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "manageWidget/ui/ManageSend.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QVBoxLayout>

namespace manage = corvanta::manage;
namespace requests = corvanta::requests;
namespace theme = corvanta::theme;

namespace {
const QSize Usual(960, 560);  // px
constexpr int RowHeight = 28; // px
} // namespace

DeviceManageDialog::DeviceManageDialog(const AppContext& context, QWidget* parent)
    : FramedDialog(tr("设备管理"), parent)
    , context_(context) {
    setObjectName(QStringLiteral("DeviceManageDialog"));
    setAccessibleName(windowTitle());
    setSizeGripEnabled(true);
    auto* const head = new QHBoxLayout;
    search_ = new QLineEdit(this);
    search_->setObjectName(QStringLiteral("deviceSearch"));
    search_->setAccessibleName(tr("搜索设备"));
    search_->setPlaceholderText(tr("搜索设备"));
    search_->setClearButtonEnabled(true);
    search_->addAction(corvanta::svgIcon(QStringLiteral("search"), theme::FaintOnLight), QLineEdit::LeadingPosition);
    corvanta::faintHint(*search_);
    head->addWidget(search_, 1);
    state_ = new QLabel(this);
    state_->setObjectName(QStringLiteral("deviceState"));
    state_->setTextFormat(Qt::PlainText);
    head->addWidget(state_);
    body()->addLayout(head);
    buildTable();
    buildButtons();
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
        sorted_.setFilterFixedString(text.trimmed());
        showState();
    });
    connect(&table_, &DeviceTable::sigMove, this, &DeviceManageDialog::move);
    connect(&context_.events, qOverload<QVariantList, QVariantMap>(&AppEvents::sig_updateList), this,
            &DeviceManageDialog::fill);
    fill();
    resize(parent == nullptr ? Usual : Usual.boundedTo(parent->screen()->availableSize()));
}

void DeviceManageDialog::buildTable() {
    sorted_.setSourceModel(&table_);
    sorted_.setFilterKeyColumn(-1);
    sorted_.setFilterCaseSensitivity(Qt::CaseInsensitive);
    sorted_.setSortRole(DeviceTable::SortRole);
    sorted_.setSortLocaleAware(true);
    view_ = new QTableView(this);
    view_->setObjectName(QStringLiteral("deviceTable"));
    view_->setAccessibleName(tr("设备列表"));
    view_->setModel(&sorted_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setShowGrid(false);
    view_->setTabKeyNavigation(false);
    view_->setWordWrap(false);
    view_->verticalHeader()->hide();
    view_->verticalHeader()->setDefaultSectionSize(RowHeight);
    view_->horizontalHeader()->setStretchLastSection(true);
    view_->horizontalHeader()->setHighlightSections(false);
    view_->setSortingEnabled(true);
    view_->sortByColumn(DeviceTable::Position, Qt::AscendingOrder);
    view_->setDragDropMode(QAbstractItemView::InternalMove);
    view_->setDragDropOverwriteMode(false);
    if (auto* const corner = view_->findChild<QAbstractButton*>()) { // the table's own, hidden with the row numbers
        corner->setObjectName(QStringLiteral("deviceTableCorner"));
        corner->setAccessibleName(tr("全选"));
    }
    body()->addWidget(view_, 1);
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &DeviceManageDialog::showState);
    connect(view_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, &DeviceManageDialog::showState);
    connect(view_, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { emit sigConfigure(table_.ipncId(sorted_.mapToSource(index).row())); });
}

void DeviceManageDialog::buildButtons() {
    const auto one = [this](void (DeviceManageDialog::*wanted)(QString)) {
        return [this, wanted] {
            const QStringList ids = chosen();
            if (ids.size() == 1)
                emit(this->*wanted)(ids.constFirst());
        };
    };
    connect(addButton(tr("添加设备"), QStringLiteral("manageAdd"), false), &QPushButton::clicked, this, [this] {
        const QStringList ids = chosen();
        const DeviceRecord* const device = ids.isEmpty() ? nullptr : context_.devices.device(ids.constFirst());
        emit sigAdd(device == nullptr ? QString() : device->groupId());
    });
    configure_ = addButton(tr("配置"), QStringLiteral("manageConfigure"), false);
    connect(configure_, &QPushButton::clicked, this, one(&DeviceManageDialog::sigConfigure));
    rename_ = addButton(tr("重命名"), QStringLiteral("manageRename"), false);
    connect(rename_, &QPushButton::clicked, this, one(&DeviceManageDialog::sigRename));
    up_ = addButton(tr("上移"), QStringLiteral("manageUp"), false);
    connect(up_, &QPushButton::clicked, this, [this] { moveWithin(-1); });
    down_ = addButton(tr("下移"), QStringLiteral("manageDown"), false);
    connect(down_, &QPushButton::clicked, this, [this] { moveWithin(1); });
    group_ = addButton(tr("移到分组"), QStringLiteral("manageGroup"), false);
    auto* const menu = new QMenu(group_);
    menu->setObjectName(QStringLiteral("manageGroups"));
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        menu->clear();
        for (const GroupRecord& group : context_.devices.groups()) {
            // An ampersand in a name is none that underlines.
            QString text = group.name;
            connect(menu->addAction(text.replace(QLatin1Char('&'), QStringLiteral("&&"))), &QAction::triggered, this,
                    [this, id = group.id] { moveTo(id); });
        }
    });
    group_->setMenu(menu);
    delete_ = addButton(tr("删除"), QStringLiteral("manageDelete"), false);
    connect(delete_, &QPushButton::clicked, this, [this] { emit sigDelete(chosen()); });
    connect(addButton(tr("关闭"), QStringLiteral("manageClose"), false), &QPushButton::clicked, this,
            &QDialog::reject);
}

void DeviceManageDialog::fill() {
    const QStringList before = chosen();
    const bool isFirst = table_.rowCount() == 0;
    table_.setDevices(context_.devices);
    if (isFirst)
        view_->resizeColumnsToContents();
    select(before);
    showState();
}

void DeviceManageDialog::select(const QStringList& ipncIds) {
    view_->clearSelection();
    for (int row = 0; row < sorted_.rowCount(); ++row) {
        const QModelIndex index = sorted_.index(row, 0);
        if (ipncIds.contains(table_.ipncId(sorted_.mapToSource(index).row())))
            view_->selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

QStringList DeviceManageDialog::chosen() const {
    QStringList ids;
    const QModelIndexList rows = view_->selectionModel()->selectedRows();
    for (const QModelIndex& index : rows)
        ids += table_.ipncId(sorted_.mapToSource(index).row());
    return ids;
}

void DeviceManageDialog::showState() {
    const QStringList ids = chosen();
    const bool isOrder = view_->horizontalHeader()->sortIndicatorSection() == DeviceTable::Position &&
                         view_->horizontalHeader()->sortIndicatorOrder() == Qt::AscendingOrder &&
                         search_->text().trimmed().isEmpty();
    table_.setDragging(isOrder);
    view_->setDragEnabled(isOrder);
    state_->setText(ids.isEmpty() ? tr("共%1个设备").arg(table_.rowCount())
                                  : tr("共%1个设备，已选%2个").arg(table_.rowCount()).arg(ids.size()));
    rename_->setEnabled(ids.size() == 1);
    configure_->setEnabled(ids.size() == 1);
    group_->setEnabled(!ids.isEmpty() && !context_.devices.groups().isEmpty());
    delete_->setEnabled(!ids.isEmpty());
    const DeviceRecord* const device = ids.size() == 1 ? context_.devices.device(ids.constFirst()) : nullptr;
    const GroupRecord* const group = device == nullptr ? nullptr : context_.devices.group(device->groupId());
    const int place = group == nullptr ? -1 : context_.devices.members(*group).indexOf(device->ipncId);
    up_->setEnabled(place > 0);
    down_->setEnabled(place >= 0 && place + 1 < context_.devices.members(*group).size());
}

void DeviceManageDialog::moveWithin(int by) {
    const QStringList ids = chosen();
    const DeviceRecord* const device = ids.size() == 1 ? context_.devices.device(ids.constFirst()) : nullptr;
    const GroupRecord* const group = device == nullptr ? nullptr : context_.devices.group(device->groupId());
    if (group != nullptr)
        move(device->ipncId, group->id, context_.devices.members(*group).indexOf(device->ipncId) + by);
}

void DeviceManageDialog::moveTo(const QString& groupId) {
    const GroupRecord* const group = context_.devices.group(groupId);
    if (group == nullptr)
        return;
    int end = context_.devices.members(*group).size();
    const QStringList ids = chosen();
    for (const QString& ipncId : ids) {
        const DeviceRecord* const device = context_.devices.device(ipncId);
        if (device != nullptr && device->groupId() != groupId)
            move(ipncId, groupId, end++);
    }
}

void DeviceManageDialog::move(const QString& ipncId, const QString& groupId, int index) {
    manage::send(
        context_, this,
        {.json = requests::accountRequest(QStringLiteral("设置设备排序"), {{QStringLiteral("groupid"), groupId},
                                                                           {QStringLiteral("ipncid"), ipncId},
                                                                           {QStringLiteral("index"), index}}),
         .done = [this, ipncId, groupId, index](const QVariantMap&) {
             const GroupRecord* const group = context_.devices.group(groupId);
             manage::log(context_, QStringLiteral("移动设备"),
                         ipncId + QStringLiteral(" → ") + (group == nullptr ? groupId : group->name) +
                             QLatin1Char(' ') + QString::number(index + 1));
             emit context_.events.sig_updateDeviceIndex();
         }});
}
