#include "storage/ui/PictureViewer.h"

#include "storage/ui/PictureView.h"

#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace fileTexts = corvanta::storage::fileTexts;

PictureViewer::PictureViewer(Files files, std::vector<int> pictures, std::size_t first,
                             corvanta::storage::DeviceNames nameOf, QWidget* parent)
    : FramedDialog(tr("图片"), parent)
    , files_(std::move(files))
    , pictures_(std::move(pictures))
    , nameOf_(std::move(nameOf)) {
    setObjectName(QStringLiteral("PictureViewer"));
    setAccessibleName(tr("图片"));
    setSizeGripEnabled(true);
    view_ = new PictureView(this);
    body()->addWidget(view_, 1);
    text_ = new QLabel(this);
    text_->setObjectName(QStringLiteral("pictureText"));
    text_->setTextFormat(Qt::PlainText);
    text_->setMinimumWidth(1);
    body()->addWidget(text_);
    size_ = addButton(QString(), QStringLiteral("pictureSize"), false);
    previous_ = addButton(tr("上一张"), QStringLiteral("previousPicture"), false);
    next_ = addButton(tr("下一张"), QStringLiteral("nextPicture"), false);
    connect(size_, &QPushButton::clicked, this, [this] { view_->fits() ? view_->showOriginal() : view_->fit(); });
    connect(previous_, &QPushButton::clicked, this, [this] { go(-1); });
    connect(next_, &QPushButton::clicked, this, [this] { go(1); });
    connect(addButton(tr("关闭"), QStringLiteral("closePicture"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    connect(view_, &PictureView::sigZoomed, this, &PictureViewer::showFactor);
    connect(&loader_, &PictureLoader::sigLoaded, this, [this](const QString& path, const QImage& image) {
        const QString shown = files_->at(currentFile()).path;
        if (path != shown) // leafed on meanwhile
            return;
        view_->show(image, QFileInfo::exists(path) ? tr("图片无法显示") : tr("文件已不存在"));
    });
    addKeys();
    const QRect screen = parent == nullptr ? QRect(0, 0, 1280, 720) : parent->window()->geometry();
    resize(screen.width() * 9 / 10, screen.height() * 9 / 10);
    view_->setFocus();
    showPicture(first);
}

void PictureViewer::addKeys() {
    const auto add = [this](int key, const std::function<void()>& act) {
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this, act);
    };
    constexpr double Step = 1.25;
    const int all = static_cast<int>(pictures_.size());
    add(Qt::Key_Left, [this] { go(-1); });
    add(Qt::Key_PageUp, [this] { go(-1); });
    add(Qt::Key_Right, [this] { go(1); });
    add(Qt::Key_PageDown, [this] { go(1); });
    add(Qt::Key_Home, [this, all] { go(-all); });
    add(Qt::Key_End, [this, all] { go(all); });
    add(Qt::Key_Plus, [this] { view_->zoom(Step); });
    add(Qt::Key_Equal, [this] { view_->zoom(Step); });
    add(Qt::Key_Minus, [this] { view_->zoom(1 / Step); });
    add(Qt::Key_0, [this] { view_->fit(); });
    add(Qt::Key_1, [this] { view_->showOriginal(); });
}

void PictureViewer::go(int pictures) {
    const auto last = static_cast<int>(pictures_.size()) - 1;
    const int wanted = std::clamp(static_cast<int>(current_) + pictures, 0, last);
    if (wanted != static_cast<int>(current_))
        showPicture(static_cast<std::size_t>(wanted));
}

void PictureViewer::showPicture(std::size_t number) {
    current_ = number;
    const corvanta::storage::FileRecord& file = files_->at(currentFile());
    const QString text = QStringLiteral("%1 / %2    %3    %4    %5    %6")
                             .arg(fileTexts::count(static_cast<int>(current_) + 1),
                                  fileTexts::count(static_cast<int>(pictures_.size())), fileTexts::time(file),
                                  fileTexts::oneLine(nameOf_(file.ipncid), 40), fileTexts::kind(file.kind),
                                  fileTexts::oneLine(file.name, 40));
    text_->setText(text);
    text_->setAccessibleName(text);
    previous_->setEnabled(current_ > 0);
    next_->setEnabled(current_ + 1 < pictures_.size());
    if (view_->image().isNull())
        view_->show(QImage(), tr("正在读取..."));
    loader_.forget();
    loader_.request(file.path, QSize()); // the old picture stays until the new one is there
}

void PictureViewer::showFactor() {
    const int percent = static_cast<int>(std::lround(view_->factor() * 100));
    size_->setText(view_->fits() ? tr("原始大小 (%1%)").arg(percent) : tr("适合窗口 (%1%)").arg(percent));
    size_->setAccessibleName(size_->text());
}
