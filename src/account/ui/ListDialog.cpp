#include "account/ui/ListDialog.h"

#include "account/ui/AccountForm.h"
#include "base/ui/FaintHint.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QVariant>

namespace theme = corvanta::theme;

namespace {

constexpr int KeyRole = Qt::UserRole + 1;
const QSize Usual(600, 420); // px

/// Sorts numbers as numbers.
class Row final : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem& other) const override {
        const int column = treeWidget() != nullptr ? treeWidget()->sortColumn() : 0;
        bool isNumber = false;
        bool isOtherNumber = false;
        const qulonglong mine = text(column).toULongLong(&isNumber);
        const qulonglong theirs = other.text(column).toULongLong(&isOtherNumber);
        return isNumber && isOtherNumber ? mine < theirs : text(column).localeAwareCompare(other.text(column)) < 0;
    }
};

} // namespace

ListDialog::ListDialog(const AppContext& context, const QString& title, const QStringList& columns,
                       const QString& emptyText, QWidget* parent)
    : FramedDialog(title, parent)
    , context_(context) {
    setAccessibleName(title);
    setSizeGripEnabled(true);
    search_ = new QLineEdit(this);
    search_->setObjectName(QStringLiteral("listSearch"));
    search_->setAccessibleName(tr("搜索"));
    search_->setPlaceholderText(tr("搜索"));
    search_->setClearButtonEnabled(true);
    search_->addAction(corvanta::svgIcon(QStringLiteral("search"), theme::FaintOnLight), QLineEdit::LeadingPosition);
    corvanta::faintHint(*search_);
    body()->addWidget(search_);
    list_ = new QTreeWidget(this);
    list_->setObjectName(QStringLiteral("list"));
    list_->setAccessibleName(title);
    list_->setHeaderLabels(columns);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setIconSize(QSize(theme::IconSize, theme::IconSize));
    list_->setSortingEnabled(true);
    list_->sortByColumn(0, Qt::AscendingOrder);
    list_->header()->setStretchLastSection(true);
    body()->addWidget(list_, 1);
    empty_ = new QLabel(emptyText, list_->viewport());
    empty_->setObjectName(QStringLiteral("listEmpty"));
    empty_->setTextFormat(Qt::PlainText);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setProperty("role", QStringLiteral("hint"));
    auto* const middle = new QVBoxLayout(list_->viewport());
    middle->addWidget(empty_, 0, Qt::AlignCenter);
    connect(search_, &QLineEdit::textChanged, this, &ListDialog::filter);
    resize(Usual);
}

void ListDialog::beginFill() {
    selected_.clear();
    for (const QTreeWidgetItem* const item : list_->selectedItems())
        selected_ += keyOf(*item);
    list_->setSortingEnabled(false);
    list_->clear();
}

QTreeWidgetItem* ListDialog::addRow(const QString& key, const QStringList& texts) {
    auto* const row = new Row(list_, texts); // the list owns it
    row->setData(0, KeyRole, key);
    return row;
}

void ListDialog::endFill() {
    list_->setSortingEnabled(true);
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        QTreeWidgetItem* const item = list_->topLevelItem(row);
        if (!selected_.contains(keyOf(*item)))
            continue;
        if (list_->selectedItems().isEmpty())
            list_->setCurrentItem(item); // the keyboard goes on from here
        item->setSelected(true);
    }
    empty_->setVisible(list_->topLevelItemCount() == 0);
    filter();
}

void ListDialog::filter() {
    const QString wanted = search_->text().trimmed();
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        QTreeWidgetItem* const item = list_->topLevelItem(row);
        bool fits = wanted.isEmpty();
        for (int column = 0; column < item->columnCount() && !fits; ++column)
            fits = item->text(column).contains(wanted, Qt::CaseInsensitive);
        item->setHidden(!fits);
        if (!fits)
            item->setSelected(false); // what is not seen is not acted on
    }
}

QString ListDialog::keyOf(const QTreeWidgetItem& item) {
    return item.data(0, KeyRole).toString();
}

QTreeWidgetItem* ListDialog::demandOne(const QString& noneText) {
    const QList<QTreeWidgetItem*> chosen = list_->selectedItems();
    if (chosen.size() == 1)
        return chosen.constFirst();
    corvanta::account::tell(chosen.isEmpty() ? noneText : tr("目前系统不支持多选删除，请选择一个需要删除项！"), this);
    return nullptr;
}
