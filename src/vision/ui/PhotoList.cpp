#include "vision/ui/PhotoList.h"

#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace corvanta::vision {
namespace {

const QSize Thumbnail(96, 54); // px

QString stateText(PhotoSeries::State state) {
    switch (state) {
    case PhotoSeries::State::Missing:
        return PhotoList::tr("未拍");
    case PhotoSeries::State::Unchecked:
        return PhotoList::tr("检查中");
    case PhotoSeries::State::NoBoard:
        return PhotoList::tr("无棋盘");
    case PhotoSeries::State::Found:
        return PhotoList::tr("可用");
    }
    return {};
}

/// A photo fitted into a thumbnail; without one an empty frame.
QIcon iconOf(const QImage& photo) {
    QPixmap pixmap(Thumbnail);
    pixmap.fill(theme::Tile);
    QPainter painter(&pixmap);
    if (photo.isNull()) {
        painter.setPen(theme::TileLine);
        painter.drawRect(pixmap.rect().adjusted(0, 0, -1, -1));
    } else {
        const QImage fitted = photo.scaled(Thumbnail, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        painter.drawImage((Thumbnail.width() - fitted.width()) / 2, (Thumbnail.height() - fitted.height()) / 2,
                          fitted);
    }
    painter.end();
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected); // not tinted: the corners are to be seen
    return icon;
}

} // namespace

PhotoList::PhotoList(const QString& folder, QWidget* parent)
    : QWidget(parent)
    , series_(folder)
    , list_(new QListWidget(this))
    , counts_(new QLabel(this)) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2 * theme::Step);
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::Step);
    capture_ = addButton(tr("抓拍"), QStringLiteral("photoCapture"));
    retake_ = addButton(tr("重拍"), QStringLiteral("photoRetake"));
    remove_ = addButton(tr("删除"), QStringLiteral("photoRemove"));
    clear_ = addButton(tr("清空"), QStringLiteral("photoClear"));
    for (QPushButton* const button : {capture_, retake_, remove_, clear_})
        row->addWidget(button);
    row->addStretch(1);
    column->addLayout(row);
    list_->setObjectName(QStringLiteral("photoList"));
    list_->setAccessibleName(tr("照片列表"));
    list_->setViewMode(QListView::IconMode);
    list_->setMovement(QListView::Static);
    list_->setResizeMode(QListView::Adjust);
    list_->setUniformItemSizes(true);
    list_->setIconSize(Thumbnail);
    list_->setMinimumHeight(104); // px, a row of photos
    column->addWidget(list_, 1);
    counts_->setObjectName(QStringLiteral("hint"));
    column->addWidget(counts_);
    connect(capture_, &QPushButton::clicked, this, [this] { take(series_.nextToTake()); });
    connect(retake_, &QPushButton::clicked, this, [this] { take(current()); });
    connect(remove_, &QPushButton::clicked, this, &PhotoList::removeCurrent);
    connect(clear_, &QPushButton::clicked, this, &PhotoList::removeAll);
    auto* const key = new QShortcut(QKeySequence::Delete, list_);
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, remove_, &QPushButton::click);
    connect(list_, &QListWidget::currentRowChanged, this, [this] {
        wanted_ = series_.state(current()) == PhotoSeries::State::Missing ? 0 : current();
        lookAtNext();
        showButtons();
    });
    fill();
}

PhotoList::~PhotoList() {
    DialogTask::giveUp(std::move(check_));
}

QPushButton* PhotoList::addButton(const QString& text, const QString& objectName) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(objectName);
    button->setAccessibleName(text);
    button->setAutoDefault(false);
    return button;
}

void PhotoList::setCount(int count) {
    wanted_ = 0;
    series_.setCount(count);
    fill();
}

void PhotoList::setShape(const BoardShape& shape) {
    series_.setShape(shape);
    for (int number = 1; number <= series_.count(); ++number)
        showItem(number);
    lookAtNext();
}

void PhotoList::setBusy(bool isBusy) {
    isBusy_ = isBusy;
    showButtons();
}

void PhotoList::fill() {
    const int before = list_->count();
    for (int number = list_->count(); number > series_.count(); --number)
        delete list_->takeItem(number - 1);
    while (list_->count() < series_.count())
        list_->addItem(new QListWidgetItem(iconOf({}), QString()));
    for (int number = 1; number <= series_.count(); ++number)
        showItem(number);
    if (before != list_->count())
        showButtons();
    lookAtNext();
}

void PhotoList::showItem(int number) {
    QListWidgetItem& item = *list_->item(number - 1);
    const PhotoSeries::State state = series_.state(number);
    item.setText(QStringLiteral("%1 %2").arg(QString::number(number), stateText(state)));
    item.setForeground(state == PhotoSeries::State::NoBoard ? theme::Alarm : theme::TextOnLight);
    if (state == PhotoSeries::State::Missing)
        item.setIcon(iconOf({}));
    counts_->setText(
        tr("已拍 %1 / %2 张，可用 %3 张").arg(series_.taken()).arg(series_.count()).arg(series_.found()));
}

void PhotoList::showButtons() {
    const bool isThere = series_.state(current()) != PhotoSeries::State::Missing;
    const bool isFree = !isBusy_ && awaited_ == 0;
    capture_->setEnabled(isFree);
    retake_->setEnabled(isFree && isThere);
    remove_->setEnabled(isFree && isThere);
    clear_->setEnabled(isFree && series_.taken() > 0);
}

int PhotoList::current() const {
    return list_->currentRow() + 1;
}

void PhotoList::take(int number) {
    if (number < 1) {
        emit sigProblem(tr("照片已拍满，可选中一张重拍或删除。"));
        return;
    }
    emit sigProblem({});
    awaited_ = number;
    showButtons();
    emit sigCaptureWanted();
}

void PhotoList::onCaptured(const QImage& photo) {
    const int number = std::exchange(awaited_, 0);
    showButtons();
    if (number < 1 || number > series_.count() || photo.isNull())
        return;
    isStale_ = isStale_ || (check_ != nullptr && check_->number() == number);
    if (!series_.store(number, photo)) {
        emit sigProblem(tr("照片无法保存，请检查磁盘空间和权限!"));
        return;
    }
    list_->item(number - 1)->setIcon(iconOf(photo));
    showItem(number);
    wanted_ = number;
    list_->setCurrentRow(number - 1);
    showButtons();
    lookAtNext();
}

void PhotoList::removeCurrent() {
    const int number = current();
    if (!remove_->isEnabled())
        return;
    if (!series_.remove(number))
        emit sigProblem(tr("照片无法删除!"));
    wanted_ = 0;
    showItem(number);
    showButtons();
}

void PhotoList::removeAll() {
    TipDialog::offer({tr("清空照片"), tr("确定删除这%1张照片?").arg(series_.taken()), tr("删除"), tr("取消"), true},
                     this, {[this] {
                         bool isDone = true;
                         for (int number = 1; number <= series_.count(); ++number) {
                             if (series_.state(number) != PhotoSeries::State::Missing)
                                 isDone = series_.remove(number) && isDone;
                         }
                         wanted_ = 0;
                         fill();
                         showButtons();
                         emit sigProblem(isDone ? QString() : tr("照片无法删除!"));
                     }});
}

void PhotoList::lookAtNext() {
    if (check_ != nullptr)
        return;
    const int number = wanted_ > 0 ? wanted_ : series_.nextUnchecked();
    if (number < 1)
        return;
    isStale_ = false;
    check_ = std::make_unique<PhotoCheck>(number, series_.path(number), series_.shape());
    connect(check_.get(), &PhotoCheck::sigDone, this, &PhotoList::onLooked);
    check_->start();
}

void PhotoList::onLooked() {
    PhotoCheck* const check = check_.release();
    check->deleteLater(); // its signal is being emitted
    const int number = check->number();
    const bool isSameBoard = check->shape().rowCorners == series_.shape().rowCorners &&
                             check->shape().columnCorners == series_.shape().columnCorners;
    if (!isStale_ && isSameBoard && number <= series_.count()) {
        series_.setFound(number, check->isFound());
        if (!check->drawn().isNull())
            list_->item(number - 1)->setIcon(iconOf(check->drawn()));
        showItem(number);
        if (std::exchange(wanted_, wanted_ == number ? 0 : wanted_) == number && !check->drawn().isNull())
            emit sigShown(check->drawn());
    }
    lookAtNext();
}

} // namespace corvanta::vision
