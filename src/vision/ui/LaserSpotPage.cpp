#include "vision/ui/LaserSpotPage.h"

#include "base/ui/Theme.h"
#include "vision/ui/NumberText.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace corvanta::vision {

LaserSpotPage::LaserSpotPage(const SpotSettings& spot, QWidget* parent)
    : QWidget(parent)
    , colour_(new QComboBox(this))
    , reference_(new QLabel(this))
    , state_(new QLabel(this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * theme::Step);
    auto* const form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setHorizontalSpacing(2 * theme::Step);
    form->setVerticalSpacing(2 * theme::Step);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    column->addLayout(form);
    colour_->setObjectName(QStringLiteral("spotColour"));
    colour_->setAccessibleName(tr("光斑颜色"));
    colour_->addItem(tr("不限"), static_cast<int>(SpotColour::Any));
    colour_->addItem(tr("红"), static_cast<int>(SpotColour::Red));
    colour_->addItem(tr("绿"), static_cast<int>(SpotColour::Green));
    colour_->addItem(tr("蓝"), static_cast<int>(SpotColour::Blue));
    colour_->setCurrentIndex(colour_->findData(static_cast<int>(spot.colour)));
    connect(colour_, qOverload<int>(&QComboBox::currentIndexChanged), this, &LaserSpotPage::sigEdited);
    form->addRow(tr("光斑颜色"), colour_);
    threshold_ = addNumber(tr("亮度差 (1~255)"), QStringLiteral("spotThreshold"), spot.threshold, *form);
    smallest_ = addNumber(tr("最小直径 (像素)"), QStringLiteral("spotSmallest"), spot.smallestDiameter, *form);
    largest_ = addNumber(tr("最大直径 (像素)"), QStringLiteral("spotLargest"), spot.largestDiameter, *form);
    roundness_ = addNumber(tr("圆度 (0~1)"), QStringLiteral("spotRoundness"), spot.roundness, *form);
    reference_->setObjectName(QStringLiteral("referenceState"));
    reference_->setWordWrap(true);
    column->addWidget(reference_);
    auto* const row = new QHBoxLayout;
    row->setSpacing(2 * theme::Step);
    take_ = addButton(tr("拍参考图"), QStringLiteral("referenceTake"));
    drop_ = addButton(tr("清除参考图"), QStringLiteral("referenceDrop"));
    find_ = addButton(tr("查找光斑"), QStringLiteral("spotFind"));
    for (QPushButton* const button : {take_, drop_, find_})
        row->addWidget(button);
    row->addStretch(1);
    column->addLayout(row);
    connect(take_, &QPushButton::clicked, this, &LaserSpotPage::sigTakeReference);
    connect(drop_, &QPushButton::clicked, this, &LaserSpotPage::sigDropReference);
    connect(find_, &QPushButton::clicked, this, &LaserSpotPage::sigFind);
    state_->setObjectName(QStringLiteral("spotState"));
    state_->setTextFormat(Qt::PlainText);
    state_->setWordWrap(true);
    column->addWidget(state_);
    column->addStretch(1);
    setHasReference(false);
}

QLineEdit* LaserSpotPage::addNumber(const QString& label, const QString& objectName, double value,
                                    QFormLayout& form) {
    auto* const edit = new QLineEdit(numberText(value), this);
    edit->setObjectName(objectName);
    edit->setAccessibleName(label);
    connect(edit, &QLineEdit::editingFinished, this, &LaserSpotPage::sigEdited);
    form.addRow(label, edit);
    return edit;
}

QPushButton* LaserSpotPage::addButton(const QString& text, const QString& objectName) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(objectName);
    button->setAccessibleName(text);
    button->setAutoDefault(false);
    return button;
}

SpotSettings LaserSpotPage::spot() const {
    return {.colour = static_cast<SpotColour>(colour_->currentData().toInt()),
            .threshold = numberFrom(threshold_->text()),
            .smallestDiameter = numberFrom(smallest_->text()),
            .largestDiameter = numberFrom(largest_->text()),
            .roundness = numberFrom(roundness_->text())};
}

void LaserSpotPage::setHasReference(bool has) {
    hasReference_ = has;
    reference_->setText(has ? tr("已有参考图：与它一样亮的地方不算光斑。")
                            : tr("没有参考图。画面中有灯光或反光时，请关闭激光后拍一张参考图。"));
    drop_->setEnabled(has);
}

void LaserSpotPage::setState(const QString& text) {
    state_->setText(text);
}

void LaserSpotPage::setBusy(bool isBusy) {
    take_->setEnabled(!isBusy);
    find_->setEnabled(!isBusy);
    drop_->setEnabled(!isBusy && hasReference_);
}

} // namespace corvanta::vision
