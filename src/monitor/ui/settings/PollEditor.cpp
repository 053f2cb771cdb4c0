#include "monitor/ui/settings/PollEditor.h"

#include "base/DeviceModel.h"
#include "base/ui/Theme.h"
#include "monitor/ui/settings/ListButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>
#include <QTreeWidget>

#include <algorithm>
#include <memory>

namespace theme = corvanta::theme;

namespace {

constexpr int IpncIdRole = Qt::UserRole;

/// A column with a heading; its layout.
QVBoxLayout* addColumn(QWidget* column, const QString& heading) {
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::Step);
    layout->addWidget(new QLabel(heading, column));
    return layout;
}

QListWidget* makeList(QWidget* parent, const QString& objectName, const QString& name) {
    auto* const list = new QListWidget(parent);
    list->setObjectName(objectName);
    list->setAccessibleName(name);
    list->setUniformItemSizes(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setTextElideMode(Qt::ElideRight);
    return list;
}

QHBoxLayout* buttonRow(std::initializer_list<QToolButton*> buttons) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::Step);
    for (QToolButton* button : buttons)
        row->addWidget(button);
    row->addStretch(1);
    return row;
}

/// The key does in the list what its button does.
void addKey(QListWidget* list, const QKeySequence& key, QToolButton* button) {
    auto* const shortcut = new QShortcut(key, list, nullptr, nullptr, Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, button, &QToolButton::click);
}

} // namespace

PollEditor::PollEditor(const DeviceModel& devices, QWidget* parent)
    : QWidget(parent)
    , devices_(devices) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::Step);
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(3 * theme::Step);
    for (QWidget* part : {makeEntryColumn(), makeDeviceColumn(), makeOrderColumn()})
        columns->addWidget(part, 1);
    column->addLayout(columns, 1);
    notice_ = new QLabel(this);
    notice_->setObjectName(QStringLiteral("pollNotice"));
    notice_->setTextFormat(Qt::PlainText);
    notice_->setWordWrap(true);
    notice_->setProperty("role", QStringLiteral("hint"));
    column->addWidget(notice_);
    setMinimumHeight(260);
    connectLists();
    enableButtons();
}

QWidget* PollEditor::makeEntryColumn() {
    auto* const part = new QWidget(this);
    QVBoxLayout* const column = addColumn(part, tr("条目"));
    entries_ = makeList(part, QStringLiteral("pollEntries"), tr("轮屏条目"));
    entries_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    column->addWidget(entries_, 1);
    auto* const add = listButton(part, QStringLiteral("pollAdd"), tr("添加条目"), QStringLiteral("add"));
    renameEntry_ = listButton(part, QStringLiteral("pollRename"), tr("重命名(F2)"), QStringLiteral("edit"));
    removeEntry_ = listButton(part, QStringLiteral("pollRemove"), tr("删除条目(Delete)"), QStringLiteral("remove"));
    entryUp_ = listButton(part, QStringLiteral("pollUp"), tr("上移"), QStringLiteral("up"));
    entryDown_ = listButton(part, QStringLiteral("pollDown"), tr("下移"), QStringLiteral("down"));
    column->addLayout(buttonRow({add, renameEntry_, removeEntry_, entryUp_, entryDown_}));
    connect(add, &QToolButton::clicked, this, &PollEditor::addEntry);
    return part;
}

QWidget* PollEditor::makeDeviceColumn() {
    auto* const part = new QWidget(this);
    QVBoxLayout* const column = addColumn(part, tr("可选设备"));
    tree_ = new QTreeWidget(part);
    tree_->setObjectName(QStringLiteral("pollTree"));
    tree_->setAccessibleName(tr("可选设备"));
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setIndentation(16);
    tree_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tree_->setTextElideMode(Qt::ElideRight);
    column->addWidget(tree_, 1);
    auto* const byGroups = new QPushButton(tr("按分组生成"), part);
    byGroups->setObjectName(QStringLiteral("pollByGroups"));
    byGroups->setAccessibleName(tr("按分组生成条目"));
    byGroups->setToolTip(tr("为每个分组添加一个条目"));
    byGroups->setAutoDefault(false);
    column->addWidget(byGroups);
    connect(byGroups, &QPushButton::clicked, this, &PollEditor::addGroups);
    return part;
}

QWidget* PollEditor::makeOrderColumn() {
    auto* const part = new QWidget(this);
    QVBoxLayout* const column = addColumn(part, tr("显示顺序"));
    order_ = makeList(part, QStringLiteral("pollOrder"), tr("条目中的设备"));
    column->addWidget(order_, 1);
    removeDevice_ =
        listButton(part, QStringLiteral("pollDeviceRemove"), tr("移出设备(Delete)"), QStringLiteral("remove"));
    deviceUp_ = listButton(part, QStringLiteral("pollDeviceUp"), tr("上移"), QStringLiteral("up"));
    deviceDown_ = listButton(part, QStringLiteral("pollDeviceDown"), tr("下移"), QStringLiteral("down"));
    column->addLayout(buttonRow({removeDevice_, deviceUp_, deviceDown_}));
    return part;
}

void PollEditor::connectLists() {
    connect(entries_, &QListWidget::currentRowChanged, this, [this] {
        showTicks();
        showOrder(0);
    });
    connect(entries_, &QListWidget::itemChanged, this, &PollEditor::onRenamed);
    connect(tree_, &QTreeWidget::itemChanged, this, &PollEditor::onTicked);
    connect(order_, &QListWidget::currentRowChanged, this, &PollEditor::enableButtons);
    connect(renameEntry_, &QToolButton::clicked, this, [this] { entries_->editItem(entries_->currentItem()); });
    connect(removeEntry_, &QToolButton::clicked, this, &PollEditor::removeEntry);
    connect(entryUp_, &QToolButton::clicked, this, [this] { moveEntry(-1); });
    connect(entryDown_, &QToolButton::clicked, this, [this] { moveEntry(1); });
    connect(removeDevice_, &QToolButton::clicked, this, &PollEditor::removeDevice);
    connect(deviceUp_, &QToolButton::clicked, this, [this] { moveDevice(-1); });
    connect(deviceDown_, &QToolButton::clicked, this, [this] { moveDevice(1); });
    addKey(entries_, QKeySequence::Delete, removeEntry_);
    addKey(order_, QKeySequence::Delete, removeDevice_);
}

int PollEditor::entry() const {
    return entries_->currentRow();
}

void PollEditor::setDraft(PollDraft draft) {
    draft_ = std::move(draft);
    showTree();
    showEntries(0);
}

void PollEditor::onDevices() {
    showTree();
    showTicks();
    showOrder(order_->currentRow());
    showWhatToDo();
}

QString PollEditor::deviceText(const QString& ipncId) const {
    const DeviceRecord* const device = devices_.device(ipncId);
    return device != nullptr ? device->displayName() : tr("%1(不存在)").arg(ipncId);
}

void PollEditor::showEntries(int current) {
    {
        const QSignalBlocker quiet(entries_);
        entries_->clear();
        for (const PollEntry& shown : draft_.entries()) {
            auto* const item = new QListWidgetItem(shown.name, entries_);
            item->setFlags(item->flags() | Qt::ItemIsEditable);
        }
        entries_->setCurrentRow(std::min(current, entries_->count() - 1));
    }
    showTicks();
    showOrder(0);
    showWhatToDo();
}

void PollEditor::showWhatToDo() {
    if (tree_->topLevelItemCount() == 0)
        notice_->setText(tr("还没有摄像机：登录后可以选择"));
    else if (draft_.entries().isEmpty())
        notice_->setText(tr("还没有条目：添加一个，或按分组生成"));
    else
        notice_->clear();
}

void PollEditor::showTree() {
    const QSignalBlocker quiet(tree_);
    tree_->clear();
    const auto addGroup = [this](const QString& name, const QStringList& members) {
        auto group = std::make_unique<QTreeWidgetItem>(QStringList{name});
        for (const QString& ipncId : members) {
            if (!devices_.device(ipncId)->isVideo())
                continue; // there is nothing of it to show
            auto* const item = new QTreeWidgetItem(group.get(), {devices_.device(ipncId)->displayName()});
            item->setData(0, IpncIdRole, ipncId);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable |
                           Qt::ItemNeverHasChildren);
            item->setCheckState(0, Qt::Unchecked);
        }
        if (group->childCount() == 0)
            return;
        group->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
        tree_->addTopLevelItem(group.release());
    };
    for (const GroupRecord& group : devices_.groups())
        addGroup(group.name.isEmpty() ? group.id : group.name, devices_.members(group));
    addGroup(tr("未分组"), devices_.ungrouped());
    tree_->expandAll();
}

void PollEditor::showTicks() {
    const QSignalBlocker quiet(tree_);
    const QStringList ids = draft_.entries().value(entry()).ipncIds;
    for (int row = 0; row < tree_->topLevelItemCount(); ++row) {
        QTreeWidgetItem* const group = tree_->topLevelItem(row);
        for (int child = 0; child < group->childCount(); ++child) {
            QTreeWidgetItem* const item = group->child(child);
            const bool isIn = ids.contains(item->data(0, IpncIdRole).toString());
            item->setCheckState(0, isIn ? Qt::Checked : Qt::Unchecked);
        }
    }
    tree_->setEnabled(entry() >= 0);
}

void PollEditor::showOrder(int current) {
    {
        const QSignalBlocker quiet(order_);
        order_->clear();
        for (const QString& ipncId : draft_.entries().value(entry()).ipncIds) {
            auto* const item = new QListWidgetItem(deviceText(ipncId), order_);
            if (devices_.device(ipncId) == nullptr)
                item->setForeground(theme::FaintOnLight);
        }
        order_->setCurrentRow(std::min(current, order_->count() - 1));
    }
    enableButtons();
}

void PollEditor::enableButtons() {
    const int row = entry();
    renameEntry_->setEnabled(row >= 0);
    removeEntry_->setEnabled(row >= 0);
    entryUp_->setEnabled(row > 0);
    entryDown_->setEnabled(row >= 0 && row < entries_->count() - 1);
    const int device = order_->currentRow();
    removeDevice_->setEnabled(device >= 0);
    deviceUp_->setEnabled(device > 0);
    deviceDown_->setEnabled(device >= 0 && device < order_->count() - 1);
}

void PollEditor::addEntry() {
    const int added = draft_.add();
    showEntries(added);
    emit sigEdited();
    entries_->setFocus();
    entries_->editItem(entries_->item(added));
}

void PollEditor::addGroups() {
    const int added = draft_.addGroups(devices_);
    if (added == 0) {
        notice_->setText(tr("没有可添加的分组：分组没有摄像机，或已有同名条目"));
        return;
    }
    showEntries(draft_.entries().size() - added);
    notice_->setText(tr("已添加%1个条目").arg(added));
    emit sigEdited();
}

void PollEditor::removeEntry() {
    const int row = entry();
    draft_.remove(row);
    showEntries(row);
    emit sigEdited();
}

void PollEditor::moveEntry(int step) {
    showEntries(draft_.move(entry(), step));
    emit sigEdited();
}

void PollEditor::onRenamed(QListWidgetItem* item) {
    const int row = entries_->row(item);
    draft_.rename(row, item->text());
    const QSignalBlocker quiet(entries_);
    item->setText(draft_.entries()[row].name);
    emit sigEdited();
}

void PollEditor::onTicked(QTreeWidgetItem* item) {
    const QString ipncId = item->data(0, IpncIdRole).toString();
    if (ipncId.isEmpty())
        return; // a group's tick follows from those of its devices, which are told one by one
    draft_.setDevice(entry(), ipncId, item->checkState(0) == Qt::Checked);
    showOrder(order_->count());
    emit sigEdited();
}

void PollEditor::removeDevice() {
    const int position = order_->currentRow();
    draft_.removeDevice(entry(), position);
    showOrder(position);
    showTicks();
    emit sigEdited();
}

void PollEditor::moveDevice(int step) {
    showOrder(draft_.moveDevice(entry(), order_->currentRow(), step));
    emit sigEdited();
}
