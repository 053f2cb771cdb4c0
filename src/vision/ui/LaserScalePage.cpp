#include "vision/ui/LaserScalePage.h"

#include "base/ui/Theme.h"
#include "vision/ui/NumberText.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta::vision {
namespace {
constexpr int PointCount = 4;
} // namespace

LaserScalePage::LaserScalePage(const LaserInfo& info, QWidget* parent)
    : QWidget(parent)
    , mode_(new QComboBox(this))
    , scale_(new QLineEdit(numberText(info.scale), this))
    , points_(new QTableWidget(PointCount, PlaceY + 1, this))
    , hint_(new QLabel(tr("抓拍后，选中一行，在照片上点击该点，再填写它在靶面上的位置(mm)。"), this))
    , capture_(new QPushButton(tr("抓拍"), this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * theme::Step);
    auto* const form = new QFormLayout;
    form->setHorizontalSpacing(2 * theme::Step);
    form->setVerticalSpacing(2 * theme::Step);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    column->addLayout(form);
    mode_->setObjectName(QStringLiteral("scaleMode"));
    mode_->setAccessibleName(tr("换算方式"));
    mode_->addItem(tr("比例 (毫米/像素)"), static_cast<int>(LaserInfo::Mode::Scale));
    mode_->addItem(tr("四点"), static_cast<int>(LaserInfo::Mode::Points));
    mode_->setCurrentIndex(mode_->findData(static_cast<int>(info.mode)));
    form->addRow(tr("换算方式"), mode_);
    scale_->setObjectName(QStringLiteral("scaleValue"));
    scale_->setAccessibleName(tr("比例"));
    form->addRow(tr("毫米/像素"), scale_);
    makeTable(info.points);
    column->addWidget(points_);
    hint_->setObjectName(QStringLiteral("hint"));
    hint_->setWordWrap(true);
    column->addWidget(hint_);
    capture_->setObjectName(QStringLiteral("scaleCapture"));
    capture_->setAccessibleName(tr("抓拍"));
    capture_->setAutoDefault(false);
    column->addWidget(capture_, 0, Qt::AlignLeft);
    column->addStretch(1);
    connect(mode_, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        showMode();
        emit sigEdited();
    });
    connect(scale_, &QLineEdit::textChanged, this, &LaserScalePage::sigEdited);
    connect(points_, &QTableWidget::cellChanged, this, &LaserScalePage::sigEdited);
    connect(capture_, &QPushButton::clicked, this, &LaserScalePage::sigCapture);
    showMode();
}

void LaserScalePage::makeTable(const QVector<ScalePoint>& points) {
    points_->setObjectName(QStringLiteral("scalePoints"));
    points_->setAccessibleName(tr("四个标定点"));
    points_->setHorizontalHeaderLabels({tr("像素X"), tr("像素Y"), tr("X (mm)"), tr("Y (mm)")});
    points_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    points_->setSelectionMode(QAbstractItemView::SingleSelection);
    points_->setTabKeyNavigation(false); // Tab leaves the table, arrows move in it
    for (int row = 0; row < PointCount; ++row) {
        const ScalePoint point =
            points.value(row, {{LaserInfo::NotSet, LaserInfo::NotSet}, {LaserInfo::NotSet, LaserInfo::NotSet}});
        const double numbers[] = {point.pixel.x(), point.pixel.y(), point.place.x(), point.place.y()};
        for (int column = PixelX; column <= PlaceY; ++column) {
            auto* const item = new QTableWidgetItem(numberText(numbers[column]));
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            points_->setItem(row, column, item);
        }
    }
    constexpr int narrowest = 72; // px, of a column
    points_->horizontalHeader()->setMinimumSectionSize(narrowest);
    points_->setMinimumWidth(narrowest * 4 + 40);
    points_->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    points_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    points_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    points_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    points_->setCurrentCell(0, PixelX);
}

void LaserScalePage::showMode() {
    scale_->setEnabled(!isByPoints());
    for (QWidget* const part : std::initializer_list<QWidget*>{points_, hint_, capture_})
        part->setVisible(isByPoints());
}

bool LaserScalePage::isByPoints() const {
    return mode_->currentData().toInt() == static_cast<int>(LaserInfo::Mode::Points);
}

QString LaserScalePage::cell(int row, Column column) const {
    return points_->item(row, column)->text();
}

void LaserScalePage::enterInto(LaserInfo& info) const {
    info.mode = isByPoints() ? LaserInfo::Mode::Points : LaserInfo::Mode::Scale;
    info.scale = numberFrom(scale_->text());
    info.points.clear();
    bool isAnything = false;
    for (int row = 0; row < PointCount; ++row) {
        for (const Column column : {PixelX, PixelY, PlaceX, PlaceY})
            isAnything = isAnything || !cell(row, column).trimmed().isEmpty();
        info.points += ScalePoint{pixels()[row], {numberFrom(cell(row, PlaceX)), numberFrom(cell(row, PlaceY))}};
    }
    if (!isAnything)
        info.points.clear();
}

QVector<QPointF> LaserScalePage::pixels() const {
    QVector<QPointF> pixels;
    for (int row = 0; row < PointCount; ++row)
        pixels += QPointF(numberFrom(cell(row, PixelX)), numberFrom(cell(row, PixelY)));
    return pixels;
}

void LaserScalePage::choose(const QPointF& pixel) {
    const int row = std::max(0, points_->currentRow());
    {
        const QSignalBlocker blocker(points_); // both numbers are one edit
        points_->item(row, PixelX)->setText(QString::number(pixel.x(), 'f', 1));
        points_->item(row, PixelY)->setText(QString::number(pixel.y(), 'f', 1));
    }
    points_->setCurrentCell((row + 1) % PointCount, PixelX);
    points_->viewport()->update();
    emit sigEdited();
}

void LaserScalePage::setBusy(bool isBusy) {
    capture_->setEnabled(!isBusy);
}

} // namespace corvanta::vision
