#include "vision/ui/CalibrationPage.h"

#include "base/ui/Theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace corvanta::vision {
namespace {

constexpr int LongestLog = 500; // lines

/// mm; 0 for what is no length.
double lengthOf(const QLineEdit& edit) {
    constexpr double most = 10'000;
    bool isNumber = false;
    const double length = edit.text().trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(length) && length > 0 && length <= most ? length : 0;
}

QString lengthText(double length) {
    return length > 0 ? QString::number(length, 'g', 10) : QString();
}

} // namespace

CalibrationPage::CalibrationPage(const QString& folder, QWidget* parent)
    : QWidget(parent)
    , photos_(new PhotoList(folder, this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * theme::Step);
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * theme::Step);
    grid->setVerticalSpacing(2 * theme::Step);
    makeForm(*grid);
    column->addLayout(grid);
    column->addWidget(photos_, 1);
    column->addWidget(makeRun());
    connect(photos_, &PhotoList::sigProblem, this, &CalibrationPage::sigProblem);
    setCamera({}, {});
}

CalibrationPage::~CalibrationPage() {
    DialogTask::giveUp(std::move(run_));
}

QLineEdit* CalibrationPage::addLength(const QString& label, const QString& objectName, QGridLayout& grid, int row,
                                      int column) {
    auto* const edit = new QLineEdit(this);
    edit->setObjectName(objectName);
    QString name = label;
    edit->setAccessibleName(name.remove(QStringLiteral("：")) + QStringLiteral(" (mm)"));
    edit->setMinimumWidth(40); // px
    auto* const text = new QLabel(label, this);
    text->setBuddy(edit);
    auto* const pair = new QHBoxLayout;
    pair->setSpacing(theme::Step);
    pair->addWidget(edit, 1);
    pair->addWidget(new QLabel(QStringLiteral("mm"), this));
    grid.addWidget(text, row, column, Qt::AlignRight | Qt::AlignVCenter);
    grid.addLayout(pair, row, column + 1);
    return edit;
}

QSpinBox* CalibrationPage::addNumber(const QString& label, const QString& objectName, QGridLayout& grid, int row,
                                     int column) {
    auto* const number = new QSpinBox(this);
    number->setObjectName(objectName);
    number->setAccessibleName(label);
    number->setKeyboardTracking(false); // photos are looked at again with every change
    auto* const text = new QLabel(label, this);
    text->setBuddy(number);
    grid.addWidget(text, row, column, Qt::AlignRight | Qt::AlignVCenter);
    grid.addWidget(number, row, column + 1);
    return number;
}

void CalibrationPage::makeForm(QGridLayout& grid) {
    width_ = addLength(tr("二维码宽度："), QStringLiteral("codeWidth"), grid, 0, 0);
    count_ = addNumber(tr("照片数量"), QStringLiteral("photoCount"), grid, 0, 2);
    rowCorners_ = addNumber(tr("棋盘行角点数"), QStringLiteral("rowCorners"), grid, 1, 0);
    columnCorners_ = addNumber(tr("棋盘列角点数"), QStringLiteral("columnCorners"), grid, 1, 2);
    squareWidth_ = addLength(tr("棋盘格每格宽"), QStringLiteral("squareWidth"), grid, 2, 0);
    squareLength_ = addLength(tr("棋盘格每格长"), QStringLiteral("squareLength"), grid, 2, 2);
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(3, 1);
    const PhotoSeries& series = photos_->series();
    count_->setRange(PhotoSeries::Fewest, PhotoSeries::Most);
    count_->setValue(series.count());
    for (QSpinBox* const corners : {rowCorners_, columnCorners_})
        corners->setRange(PhotoSeries::FewestCorners, PhotoSeries::MostCorners);
    rowCorners_->setValue(series.shape().rowCorners);
    columnCorners_->setValue(series.shape().columnCorners);
    squareWidth_->setText(lengthText(series.shape().squareWidth));
    squareLength_->setText(lengthText(series.shape().squareLength));
    connect(width_, &QLineEdit::textChanged, this, &CalibrationPage::sigWidthEdited);
    connect(count_, qOverload<int>(&QSpinBox::valueChanged), photos_, &PhotoList::setCount);
    for (QSpinBox* const corners : {rowCorners_, columnCorners_})
        connect(corners, qOverload<int>(&QSpinBox::valueChanged), this, &CalibrationPage::onMeasures);
    for (QLineEdit* const length : {squareWidth_, squareLength_})
        connect(length, &QLineEdit::editingFinished, this, &CalibrationPage::onMeasures);
}

QWidget* CalibrationPage::makeRun() {
    auto* const part = new QWidget(this);
    auto* const column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * theme::Step);
    auto* const row = new QHBoxLayout;
    calibrate_ = new QPushButton(tr("相机标定"), part);
    calibrate_->setObjectName(QStringLiteral("calibrate"));
    calibrate_->setAccessibleName(tr("相机标定"));
    calibrate_->setAutoDefault(false);
    connect(calibrate_, &QPushButton::clicked, this, &CalibrationPage::calibrate);
    row->addWidget(calibrate_);
    progress_ = new QProgressBar(part);
    progress_->setObjectName(QStringLiteral("calibrationProgress"));
    progress_->setAccessibleName(tr("标定进度"));
    progress_->setTextVisible(false);
    progress_->hide();
    row->addWidget(progress_, 1);
    row->addStretch(0);
    column->addLayout(row);
    log_ = new QPlainTextEdit(part);
    log_->setObjectName(QStringLiteral("calibrationLog"));
    log_->setAccessibleName(tr("标定记录"));
    log_->setReadOnly(true);
    log_->setTabChangesFocus(true);
    log_->setMaximumBlockCount(LongestLog);
    log_->setPlaceholderText(tr("标定的过程和结果"));
    log_->setFixedHeight(72); // px, four lines
    column->addWidget(log_);
    camera_ = new QLabel(part);
    camera_->setObjectName(QStringLiteral("cameraMatrix"));
    camera_->setAccessibleName(tr("摄像机参数"));
    camera_->setTextFormat(Qt::PlainText);
    camera_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    camera_->setWordWrap(true);
    column->addWidget(camera_);
    return part;
}

void CalibrationPage::setCodeWidth(const QString& text) {
    width_->setText(text);
}

void CalibrationPage::setCamera(const QString& cameraMatrix, const QString& distCoeffs) {
    constexpr int longest = 400; // characters, of a text that somebody else may have written
    camera_->setText(
        cameraMatrix.isEmpty()
            ? tr("尚未标定摄像机。")
            : tr("摄像机矩阵：\n%1\n畸变系数：\n%2").arg(cameraMatrix.left(longest), distCoeffs.left(longest)));
}

void CalibrationPage::onMeasures() {
    photos_->setShape(
        {rowCorners_->value(), columnCorners_->value(), lengthOf(*squareWidth_), lengthOf(*squareLength_)});
}

void CalibrationPage::calibrate() {
    onMeasures(); // an edit may still have the keyboard
    const PhotoSeries& series = photos_->series();
    if (series.shape().squareWidth <= 0 || series.shape().squareLength <= 0) {
        emit sigProblem(tr("请输入正确的棋盘格宽度和长度!"));
        return;
    }
    emit sigProblem({});
    log_->clear();
    run_ = std::make_unique<CalibrationRun>(series.paths(), series.shape());
    connect(run_.get(), &CalibrationRun::sigSteps, this, &CalibrationPage::onSteps);
    connect(run_.get(), &CalibrationRun::sigDone, this, &CalibrationPage::onDone);
    progress_->setRange(0, run_->length());
    progress_->setValue(0);
    progress_->show();
    calibrate_->setEnabled(false);
    photos_->setBusy(true);
    run_->start();
}

void CalibrationPage::onSteps() {
    if (run_ == nullptr)
        return;
    for (const CalibrationStep& step : run_->takeSteps()) {
        log_->appendPlainText(stepText(step));
        if (step.photo > 0)
            progress_->setValue(step.photo);
    }
}

void CalibrationPage::onDone() {
    onSteps();
    CalibrationRun* const run = run_.release();
    run->deleteLater(); // its signal is being emitted
    progress_->hide();
    calibrate_->setEnabled(true);
    photos_->setBusy(false);
    if (run->result())
        emit sigCalibrated(*run->result());
}

} // namespace corvanta::vision
