#include "vision/ui/InputsTable.h"

#include "base/ui/Theme.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace corvanta::vision {
namespace {

enum Column { Upload, Name, Axis };

/// "X" of "QRcode_x".
QString letterOf(const QString& axis) {
    return axis.section(QLatin1Char('_'), -1).toUpper();
}

} // namespace

InputsTable::InputsTable(QVector<MeasuredInput> inputs, QWidget* parent)
    : QWidget(parent)
    , inputs_(std::move(inputs))
    , list_(new QTreeWidget(this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * theme::Step);
    list_->setObjectName(QStringLiteral("measuredInputs"));
    list_->setAccessibleName(tr("采集输入列表"));
    list_->setHeaderLabels({tr("上报"), tr("名称"), tr("坐标")});
    list_->setRootIsDecorated(false);
    list_->setMinimumHeight(96);                                                                    // px
    list_->header()->resizeSection(Upload, std::max(56, list_->header()->sectionSizeHint(Upload))); // px
    list_->header()->resizeSection(Name, 160);                                                      // px
    for (const MeasuredInput& input : qAsConst(inputs_)) {
        auto* const row = new QTreeWidgetItem(list_, {QString(), input.name, letterOf(input.axis)});
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        row->setCheckState(Upload, input.isUpload ? Qt::Checked : Qt::Unchecked);
    }
    if (list_->topLevelItemCount() > 0)
        list_->setCurrentItem(list_->topLevelItem(0));
    column->addWidget(list_, 1);
    auto* const hint = new QLabel(inputs_.isEmpty() ? tr("该传感器还没有采集输入，请先在“编辑”中新增。")
                                                    : tr("选中的输入在测量后上报相对初始位置的位移。"),
                                  this);
    hint->setObjectName(QStringLiteral("hint"));
    hint->setWordWrap(true);
    column->addWidget(hint);
}

QVector<MeasuredInput> InputsTable::inputs() const {
    QVector<MeasuredInput> inputs = inputs_;
    for (int row = 0; row < inputs.size(); ++row)
        inputs[row].isUpload = list_->topLevelItem(row)->checkState(Upload) == Qt::Checked;
    return inputs;
}

} // namespace corvanta::vision
