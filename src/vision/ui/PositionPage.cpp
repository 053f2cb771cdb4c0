#include "vision/ui/PositionPage.h"

#include "base/ui/Theme.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvanta::vision {
namespace {

enum Column { Axis, Initial, Current, Moved };

/// In single precision and with six digits, as it is reported.
QString difference(const QString& from, const QString& to) {
    return QString::number(static_cast<double>(to.toFloat() - from.toFloat()), 'g', 6);
}

} // namespace

PositionPage::PositionPage(const QStringList& axes, QWidget* parent)
    : QWidget(parent)
    , list_(new QTreeWidget(this))
    , old_(new QLabel(tr("设置已改变，原来的初始位置不再有效，请重新设置。"), this))
    , state_(new QLabel(this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * theme::Step);
    list_->setObjectName(QStringLiteral("positions"));
    list_->setAccessibleName(tr("位置"));
    list_->setHeaderLabels({tr("坐标"), tr("初始 (mm)"), tr("当前 (mm)"), tr("位移 (mm)")});
    list_->setRootIsDecorated(false);
    constexpr int heightOfRow = 28; // px, as the style has it
    list_->setFixedHeight(heightOfRow * (axes.size() + 1) + 3 * theme::Step);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(QHeaderView::Stretch);
    list_->header()->setSectionResizeMode(Axis, QHeaderView::ResizeToContents);
    for (const QString& axis : axes) {
        auto* const row = new QTreeWidgetItem(list_, {axis});
        for (const Column cell : {Initial, Current, Moved})
            row->setTextAlignment(cell, Qt::AlignRight | Qt::AlignVCenter);
    }
    column->addWidget(list_);
    old_->setObjectName(QStringLiteral("initialOld"));
    old_->setWordWrap(true);
    old_->hide();
    column->addWidget(old_);
    auto* const row = new QHBoxLayout;
    row->setSpacing(2 * theme::Step);
    column->addLayout(row);
    setInitial_ = addButton(tr("设置初始位置"), QStringLiteral("initialSet"));
    measure_ = addButton(tr("测量当前位置"), QStringLiteral("positionMeasure"));
    row->addWidget(setInitial_);
    row->addWidget(measure_);
    row->addStretch(1);
    connect(setInitial_, &QPushButton::clicked, this, &PositionPage::sigSetInitial);
    connect(measure_, &QPushButton::clicked, this, &PositionPage::sigMeasure);
    state_->setObjectName(QStringLiteral("positionState"));
    state_->setTextFormat(Qt::PlainText);
    state_->setWordWrap(true);
    column->addWidget(state_);
    column->addStretch(1);
}

QPushButton* PositionPage::addButton(const QString& text, const QString& objectName) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(objectName);
    button->setAccessibleName(text);
    button->setAutoDefault(false);
    return button;
}

void PositionPage::setInitial(const QStringList& position, bool isOld) {
    initial_ = position;
    old_->setVisible(isOld);
    fill();
}

void PositionPage::setCurrent(const QStringList& position) {
    current_ = position;
    fill();
}

void PositionPage::setState(const QString& text) {
    state_->setText(text);
}

void PositionPage::setBusy(bool isBusy) {
    setInitial_->setEnabled(!isBusy);
    measure_->setEnabled(!isBusy);
}

void PositionPage::fill() {
    for (int axis = 0; axis < list_->topLevelItemCount(); ++axis) {
        QTreeWidgetItem& row = *list_->topLevelItem(axis);
        row.setText(Initial, initial_.value(axis, tr("未设置")));
        row.setText(Current, current_.value(axis));
        const bool areBoth = axis < initial_.size() && axis < current_.size();
        row.setText(Moved, areBoth ? difference(initial_[axis], current_[axis]) : QString());
    }
}

} // namespace corvanta::vision
