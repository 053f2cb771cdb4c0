#include "linkage/ui/PartList.h"

#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace theme = corvanta::theme;

PartList::PartList(const QString& objectName, const QString& name, QWidget* parent)
    : QWidget(parent) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2 * theme::Step);
    list_ = new QListWidget(this);
    list_->setObjectName(objectName + QStringLiteral("List"));
    list_->setAccessibleName(name);
    list_->setUniformItemSizes(true);
    list_->setMinimumSize(120, 64); // px
    row->addWidget(list_, 1);
    auto* const buttons = new QVBoxLayout;
    buttons->setSpacing(theme::Step);
    row->addLayout(buttons);
    const auto add = [&](const QString& text, const char* suffix) {
        auto* const button = new QPushButton(text, this);
        button->setObjectName(objectName + QLatin1String(suffix));
        button->setAccessibleName(name + text);
        button->setAutoDefault(false);
        buttons->addWidget(button);
        return button;
    };
    connect(add(tr("新建"), "Add"), &QPushButton::clicked, this, &PartList::sigAdd);
    connect(add(tr("编辑"), "Edit"), &QPushButton::clicked, this, [this] { emit sigEdit(list_->currentRow()); });
    connect(add(tr("删除"), "Remove"), &QPushButton::clicked, this, [this] { emit sigRemove(list_->currentRow()); });
    buttons->addStretch(1);
    connect(list_, &QListWidget::itemActivated, this, [this] { emit sigEdit(list_->currentRow()); });
}

void PartList::setRows(const QStringList& texts) {
    const int before = list_->currentRow();
    list_->clear();
    for (const QString& text : texts) {
        auto* const item = new QListWidgetItem(text, list_); // the list owns it
        item->setToolTip(corvanta::plainToolTip(text));
    }
    list_->setCurrentRow(std::min(before, texts.size() - 1));
}
