#include "monitor/ui/settings/DriveList.h"

#include "base/SizeText.h"
#include "base/ui/Theme.h"
#include "monitor/DriveOrder.h"
#include "monitor/ui/settings/ListButton.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>
#include <QTreeWidget>

namespace theme = corvanta::theme;

namespace {

enum Column { RootColumn, FreeColumn, TotalColumn };
constexpr int RootRole = Qt::UserRole;

} // namespace

DriveList::DriveList(QWidget* parent)
    : QWidget(parent) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2 * theme::Step);
    table_ = new QTreeWidget(this);
    table_->setObjectName(QStringLiteral("driveList"));
    table_->setAccessibleName(tr("盘符列表"));
    table_->setHeaderLabels({tr("盘符(按使用顺序)"), tr("剩余空间"), tr("总空间")});
    table_->setRootIsDecorated(false);
    table_->setUniformRowHeights(true);
    table_->setAllColumnsShowFocus(true);
    table_->setMinimumHeight(112);
    table_->header()->setSectionsMovable(false);
    table_->header()->setStretchLastSection(false);
    table_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->header()->setSectionResizeMode(RootColumn, QHeaderView::Stretch);
    for (const Column column : {FreeColumn, TotalColumn})
        table_->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(table_, 1);
    auto* const buttons = new QVBoxLayout;
    buttons->setSpacing(theme::Step);
    up_ = listButton(this, QStringLiteral("driveUp"), tr("上移"), QStringLiteral("up"));
    down_ = listButton(this, QStringLiteral("driveDown"), tr("下移"), QStringLiteral("down"));
    buttons->addWidget(up_);
    buttons->addWidget(down_);
    buttons->addStretch(1);
    row->addLayout(buttons);
    connect(up_, &QToolButton::clicked, this, [this] { move(-1); });
    connect(down_, &QToolButton::clicked, this, [this] { move(1); });
    connect(table_, &QTreeWidget::itemChanged, this, &DriveList::sigEdited);
    connect(table_, &QTreeWidget::currentItemChanged, this, &DriveList::showWhatMoves);
    showWhatMoves();
}

void DriveList::addRow(const DriveChoice& drive) {
    auto* const item = new QTreeWidgetItem(table_);
    item->setText(RootColumn, drive.isPresent ? drive.root : tr("%1  (不存在)").arg(drive.root));
    item->setData(RootColumn, RootRole, drive.root);
    item->setCheckState(RootColumn, drive.isUsed ? Qt::Checked : Qt::Unchecked);
    const auto size = [&drive](std::uint64_t DriveChoice::Space::*bytes) {
        return drive.space ? corvanta::sizeText(static_cast<qint64>(*drive.space.*bytes)) : QStringLiteral("-");
    };
    item->setText(FreeColumn, size(&DriveChoice::Space::free));
    item->setText(TotalColumn, size(&DriveChoice::Space::total));
    for (const Column column : {FreeColumn, TotalColumn})
        item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren);
    if (!drive.isPresent) {
        for (const Column column : {RootColumn, FreeColumn, TotalColumn})
            item->setForeground(column, theme::FaintOnLight);
    }
}

void DriveList::setStored(const QStringList& stored) {
    const QSignalBlocker quiet(table_);
    table_->clear();
    for (const DriveChoice& drive : corvanta::driveChoicesHere(stored))
        addRow(drive);
    table_->setCurrentItem(table_->topLevelItem(0));
    showWhatMoves();
}

QStringList DriveList::used() const {
    QStringList roots;
    for (int row = 0; row < table_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* const item = table_->topLevelItem(row);
        if (item->checkState(RootColumn) == Qt::Checked)
            roots += item->data(RootColumn, RootRole).toString();
    }
    return roots;
}

void DriveList::move(int step) {
    const int row = table_->indexOfTopLevelItem(table_->currentItem());
    const int to = row + step;
    if (row < 0 || to < 0 || to >= table_->topLevelItemCount())
        return;
    table_->insertTopLevelItem(to, table_->takeTopLevelItem(row));
    table_->setCurrentItem(table_->topLevelItem(to));
    showWhatMoves();
    emit sigEdited();
}

void DriveList::showWhatMoves() {
    const int row = table_->indexOfTopLevelItem(table_->currentItem());
    up_->setEnabled(row > 0);
    down_->setEnabled(row >= 0 && row < table_->topLevelItemCount() - 1);
}
