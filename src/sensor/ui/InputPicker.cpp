#include "sensor/ui/InputPicker.h"

#include "base/ui/FaintHint.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvanta::sensor {
namespace {

constexpr int PidRole = Qt::UserRole + 1;
constexpr int SearchRole = Qt::UserRole + 2;

} // namespace

InputPicker::InputPicker(const QVector<InputRecord>& inputs, const Start& start, QWidget* parent)
    : FramedDialog(tr("选择采集输入"), parent)
    , most_(start.most) {
    setObjectName(QStringLiteral("InputPicker"));
    setAccessibleName(tr("选择采集输入"));
    search_ = new QLineEdit(this);
    search_->setObjectName(QStringLiteral("pickerSearch"));
    search_->setAccessibleName(tr("搜索采集输入"));
    search_->setPlaceholderText(tr("搜索设备或采集输入"));
    faintHint(*search_);
    body()->addWidget(search_);
    tree_ = new QTreeWidget(this);
    tree_->setObjectName(QStringLiteral("pickerTree"));
    tree_->setAccessibleName(tr("采集输入"));
    tree_->setHeaderLabels({tr("采集输入"), tr("传感器"), tr("单位")});
    tree_->setUniformRowHeights(true);
    tree_->setMinimumSize(440, 160); // px
    tree_->header()->resizeSection(0, 240);
    body()->addWidget(tree_, 1);
    count_ = new QLabel(this);
    count_->setObjectName(QStringLiteral("hint"));
    body()->addWidget(count_);
    ok_ = addButton(tr("确定"), QStringLiteral("pickerOk"), true);
    connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
    connect(addButton(tr("取消"), QStringLiteral("pickerCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    fill(inputs, start);
    connect(search_, &QLineEdit::textChanged, this, &InputPicker::filter);
    connect(tree_, &QTreeWidget::itemChanged, this, &InputPicker::check);
    check();
    search_->setFocus();
}

void InputPicker::fill(const QVector<InputRecord>& inputs, const Start& start) {
    QTreeWidgetItem* device = nullptr;
    const QTreeWidgetItem* wanted = nullptr;
    QString last;
    QList<QTreeWidgetItem*> devices;
    for (const InputRecord& input : inputs) { // those of a device follow one another
        if (device == nullptr || input.ipncId != last) {
            last = input.ipncId;
            device = new QTreeWidgetItem({input.device});
            device->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            devices += device;
        }
        auto* const item = new QTreeWidgetItem(device, {input.name, input.sensor, input.unit});
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(0, start.chosen.contains(input.pid) ? Qt::Checked : Qt::Unchecked);
        item->setData(0, PidRole, input.pid);
        item->setData(0, SearchRole, input.path());
        if (input.ipncId == start.ipncId && wanted == nullptr)
            wanted = item;
    }
    tree_->addTopLevelItems(devices);
    constexpr int few = 5;
    for (QTreeWidgetItem* const one : qAsConst(devices)) {
        one->setExpanded(wanted == nullptr ? devices.size() <= few : one == wanted->parent());
        if (one->isExpanded() && wanted != nullptr)
            tree_->scrollToItem(one, QAbstractItemView::PositionAtTop);
    }
}

void InputPicker::filter(const QString& text) {
    for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* const device = tree_->topLevelItem(i);
        bool isAnyShown = false;
        for (int k = 0; k < device->childCount(); ++k) {
            QTreeWidgetItem* const item = device->child(k);
            const bool isShown = item->data(0, SearchRole).toString().contains(text.trimmed(), Qt::CaseInsensitive);
            item->setHidden(!isShown);
            isAnyShown = isAnyShown || isShown;
        }
        device->setHidden(!isAnyShown);
        if (!text.trimmed().isEmpty() && isAnyShown)
            device->setExpanded(true);
    }
}

QVector<int> InputPicker::chosen() const {
    QVector<int> pids;
    for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* const device = tree_->topLevelItem(i);
        for (int k = 0; k < device->childCount(); ++k) {
            if (device->child(k)->checkState(0) == Qt::Checked)
                pids += device->child(k)->data(0, PidRole).toInt();
        }
    }
    return pids;
}

void InputPicker::check() {
    const int count = chosen().size();
    count_->setText(tr("已选 %1 个，最多 %2 个").arg(count).arg(most_));
    ok_->setEnabled(count <= most_);
}

} // namespace corvanta::sensor
