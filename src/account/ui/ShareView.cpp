#include "account/ui/ShareView.h"

#include "base/ui/FaintHint.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <QVariant>

namespace theme = corvanta::theme;

namespace {

constexpr int KeyRole = Qt::UserRole + 1;
constexpr int SearchRole = Qt::UserRole + 2;

QLabel* makeHint(const QString& text, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setProperty("role", QStringLiteral("hint"));
    return label;
}

} // namespace

ShareView::ShareView(const Texts& texts, IsChecked isChecked, QWidget* parent)
    : QWidget(parent)
    , isChecked_(std::move(isChecked)) {
    setObjectName(texts.name);
    setAccessibleName(texts.list);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(3 * theme::Step, 3 * theme::Step, 3 * theme::Step, 3 * theme::Step);
    column->setSpacing(2 * theme::Step);
    column->addLayout(makePick(texts));
    auto* const head = new QHBoxLayout;
    auto* const label = new QLabel(texts.list, this);
    label->setProperty("role", QStringLiteral("section"));
    head->addWidget(label);
    search_ = new QLineEdit(this);
    search_->setObjectName(texts.name + QStringLiteral("Search"));
    search_->setAccessibleName(tr("搜索"));
    search_->setPlaceholderText(tr("搜索"));
    search_->setClearButtonEnabled(true);
    search_->addAction(corvanta::svgIcon(QStringLiteral("search"), theme::FaintOnLight), QLineEdit::LeadingPosition);
    corvanta::faintHint(*search_);
    head->addWidget(search_, 1);
    all_ = new QCheckBox(tr("全选"), this);
    all_->setObjectName(texts.name + QStringLiteral("All"));
    all_->setAccessibleName(tr("全选"));
    head->addWidget(all_);
    column->addLayout(head);
    list_ = new QListWidget(this);
    list_->setObjectName(texts.name + QStringLiteral("List"));
    list_->setAccessibleName(texts.list);
    column->addWidget(list_, 1);
    column->addWidget(makeHint(texts.unchecked, this));
    column->addWidget(makeHint(texts.checked, this));
    connect(search_, &QLineEdit::textChanged, this, &ShareView::filter);
    connect(all_, &QCheckBox::clicked, this, &ShareView::checkAll);
    connect(list_, &QListWidget::itemChanged, this, &ShareView::onItem);
}

QLayout* ShareView::makePick(const Texts& texts) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(3 * theme::Step);
    row->addWidget(new QLabel(texts.pick, this));
    pick_ = new QComboBox(this);
    pick_->setObjectName(texts.name + QStringLiteral("Pick"));
    pick_->setAccessibleName(texts.pick);
    pick_->setEditable(true);
    pick_->setInsertPolicy(QComboBox::NoInsert);
    pick_->completer()->setFilterMode(Qt::MatchContains);
    pick_->completer()->setCompletionMode(QCompleter::PopupCompletion);
    pick_->lineEdit()->setObjectName(texts.name + QStringLiteral("PickEdit"));
    pick_->lineEdit()->setAccessibleName(texts.pick);
    pick_->lineEdit()->setPlaceholderText(texts.pickHint);
    corvanta::faintHint(*pick_->lineEdit());
    row->addWidget(pick_, 1);
    connect(pick_, qOverload<int>(&QComboBox::activated), this, [this](int index) {
        picked_ = pick_->itemData(index).toString();
        refresh();
    });
    connect(pick_->lineEdit(), &QLineEdit::editingFinished, this, &ShareView::pickTyped);
    return row;
}

void ShareView::pickTyped() {
    const int index = pick_->findText(pick_->currentText().trimmed());
    const QString typed = index < 0 ? QString() : pick_->itemData(index).toString();
    // Names need not differ: one that was chosen from the list stays.
    if (index >= 0 && pick_->itemText(pick_->findData(picked_)) == pick_->itemText(index))
        return;
    picked_ = typed;
    refresh();
}

void ShareView::setChoices(const QList<Choice>& picks, const QList<Choice>& rows) {
    const QScopedValueRollback<bool> showing(showing_, true);
    pick_->clear();
    for (const Choice& one : picks)
        pick_->addItem(one.text, one.key);
    if (pick_->findData(picked_) < 0)
        picked_ = picks.isEmpty() ? QString() : picks.constFirst().key;
    pick_->setCurrentIndex(pick_->findData(picked_));
    const QString current =
        list_->currentItem() == nullptr ? QString() : list_->currentItem()->data(KeyRole).toString();
    list_->clear();
    for (const Choice& one : rows) {
        auto* const item = new QListWidgetItem(one.text, list_);
        item->setData(KeyRole, one.key);
        item->setData(SearchRole, one.text + QLatin1Char('\n') + one.search);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
        if (one.key == current)
            list_->setCurrentItem(item);
    }
    filter();
    refresh();
}

void ShareView::refresh() {
    const QScopedValueRollback<bool> showing(showing_, true);
    for (int row = 0; row < list_->count(); ++row) {
        QListWidgetItem* const item = list_->item(row);
        const bool checked = !picked_.isEmpty() && isChecked_(picked_, item->data(KeyRole).toString());
        item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    }
    list_->setEnabled(!picked_.isEmpty());
    showAll();
}

void ShareView::showAll() {
    int shown = 0;
    int checked = 0;
    for (int row = 0; row < list_->count(); ++row) {
        const QListWidgetItem* const item = list_->item(row);
        if (item->isHidden())
            continue;
        ++shown;
        checked += item->checkState() == Qt::Checked ? 1 : 0;
    }
    all_->setEnabled(!picked_.isEmpty() && shown > 0);
    all_->setChecked(shown > 0 && checked == shown);
}

void ShareView::onItem(QListWidgetItem* item) {
    if (showing_)
        return;
    emit sigChecked(picked_, item->data(KeyRole).toString(), item->checkState() == Qt::Checked);
    showAll();
}

void ShareView::checkAll(bool checked) {
    // Only what is seen; each change is one of its own.
    for (int row = 0; row < list_->count(); ++row) {
        if (!list_->item(row)->isHidden())
            list_->item(row)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    }
}

void ShareView::filter() {
    const QString wanted = search_->text().trimmed();
    for (int row = 0; row < list_->count(); ++row) {
        QListWidgetItem* const item = list_->item(row);
        item->setHidden(!item->data(SearchRole).toString().contains(wanted, Qt::CaseInsensitive));
    }
    showAll();
}
