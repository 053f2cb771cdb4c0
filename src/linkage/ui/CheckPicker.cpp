#include "linkage/ui/CheckPicker.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <utility>

namespace {
constexpr int IdRole = Qt::UserRole + 1;
const QSize Usual(360, 340); // px
} // namespace

CheckPicker::CheckPicker(const QString& title, const QList<Entry>& entries, const QStringList& chosen,
                         Chosen accepted, QWidget* parent)
    : FramedDialog(title, parent)
    , accepted_(std::move(accepted)) {
    setObjectName(QStringLiteral("CheckPicker"));
    setAccessibleName(title);
    setAttribute(Qt::WA_DeleteOnClose);
    setSizeGripEnabled(true);
    list_ = new QTreeWidget(this);
    list_->setObjectName(QStringLiteral("pickList"));
    list_->setAccessibleName(title);
    list_->setColumnCount(2);
    list_->setHeaderHidden(true);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    for (const Entry& entry : entries) {
        auto* const row = new QTreeWidgetItem(list_, {entry.text, entry.detail}); // the list owns it
        row->setData(0, IdRole, entry.id);
        row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
        row->setCheckState(0, chosen.contains(entry.id) ? Qt::Checked : Qt::Unchecked);
    }
    list_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list_->header()->setStretchLastSection(false);
    list_->setCurrentItem(list_->topLevelItem(0));
    connect(list_, &QTreeWidget::itemActivated, this, [](QTreeWidgetItem* row) {
        row->setCheckState(0, row->checkState(0) == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    });
    body()->addWidget(list_, 1);
    connect(addButton(tr("确定"), QStringLiteral("pickOk"), true), &QPushButton::clicked, this, [this] {
        accepted_(checked());
        accept();
    });
    connect(addButton(tr("取消"), QStringLiteral("pickCancel"), false), &QPushButton::clicked, this,
            &CheckPicker::reject);
    resize(Usual);
}

QStringList CheckPicker::checked() const {
    QStringList ids;
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* const item = list_->topLevelItem(row);
        if (item->checkState(0) == Qt::Checked)
            ids += item->data(0, IdRole).toString();
    }
    return ids;
}
