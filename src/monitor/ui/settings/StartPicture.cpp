#include "monitor/ui/settings/StartPicture.h"

#include "base/Settings.h"
#include "base/ui/Theme.h"
#include "monitor/StartPlan.h"
#include "monitor/ui/settings/PictureFile.h"

#include <QDebug>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QVariant>

namespace theme = corvanta::theme;

namespace {

constexpr int BarHeight = 56;   // px, under the picture
const QSize Smallest(480, 270); // px, of the picture's place

} // namespace

std::unique_ptr<StartPicture> StartPicture::ifWanted(const Settings& settings) {
    const StartPlan plan = StartPlan::fromSettings(settings);
    if (!plan.isShown)
        return nullptr;
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    auto file = corvanta::PictureFile::read(plan.picture, screen * 4 / 5 - QSize(0, BarHeight));
    if (file.picture.isNull()) {
        qDebug() << "no start picture" << plan.picture << file.problem;
        return nullptr;
    }
    return std::unique_ptr<StartPicture>(
        new StartPicture(settings.title(), std::move(file.picture), plan.entersByItself));
}

StartPicture::StartPicture(const QString& title, QImage picture, bool entersByItself)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
    , picture_(std::move(picture))
    , secondsLeft_(entersByItself ? Patience : 0) {
    setObjectName(QStringLiteral("StartPicture"));
    setAccessibleName(tr("启动画面"));
    setWindowTitle(title);
    build(title);
    setFixedSize(picture_.size().expandedTo(Smallest) + QSize(0, BarHeight));
    second_.setInterval(std::chrono::seconds(1));
    connect(&second_, &QTimer::timeout, this, &StartPicture::countDown);
    showCount();
}

void StartPicture::build(const QString& title) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addStretch(1);
    auto* const bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("startBar"));
    bar->setFixedHeight(BarHeight);
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(4 * theme::Step, 0, 3 * theme::Step, 0);
    auto* const label = new QLabel(title, bar);
    label->setObjectName(QStringLiteral("startTitle"));
    label->setAccessibleName(title);
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long title does not widen the page
    row->addWidget(label, 1);
    enter_ = new QPushButton(bar);
    enter_->setObjectName(QStringLiteral("startEnter"));
    enter_->setAccessibleName(tr("进入软件"));
    enter_->setProperty("onDark", true);
    row->addWidget(enter_);
    column->addWidget(bar);
    connect(enter_, &QPushButton::clicked, this, &StartPicture::enter);
    enter_->setFocus();
}

void StartPicture::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    const QRect room = screen()->availableGeometry();
    move(room.center() - rect().center());
    if (secondsLeft_ > 0)
        second_.start();
}

void StartPicture::countDown() {
    --secondsLeft_;
    showCount();
    if (secondsLeft_ <= 0)
        enter();
}

void StartPicture::showCount() {
    enter_->setText(secondsLeft_ > 0 ? tr("进入软件(%1)").arg(secondsLeft_) : tr("进入软件"));
}

void StartPicture::enter() {
    second_.stop();
    if (entered_)
        return;
    entered_ = true;
    emit sigEnter();
}

void StartPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme::Bar);
    const QRect place(0, 0, width(), height() - BarHeight);
    QRect shown(QPoint(), picture_.size());
    shown.moveCenter(place.center());
    painter.drawImage(shown, picture_);
}

void StartPicture::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape)
        enter();
    else
        QWidget::keyPressEvent(event);
}

void StartPicture::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        enter();
}

void StartPicture::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    enter();
}
