#include "monitor/ui/settings/StartPage.h"

#include "base/Settings.h"
#include "monitor/ui/settings/FileField.h"
#include "monitor/ui/settings/PictureFile.h"
#include "monitor/ui/settings/SettingsForm.h"

#include <QCheckBox>
#include <QLabel>
#include <QPixmap>

namespace keys = corvanta::keys;

namespace {

const QSize PreviewSize(320, 180);             // px
constexpr std::chrono::milliseconds Rest(200); // so that writing a path reads no file a letter

} // namespace

StartPage::StartPage(QWidget* parent)
    : SettingsPage(QStringLiteral("startPage"), tr("启动"), QStringLiteral("picture"), parent) {
    SettingsForm form(*this);
    form.addSection(tr("启动画面"));
    isShown_ = form.addCheck(tr("显示启动画面"), QStringLiteral("showSplash"));
    picture_ = form.addFile(tr("启动画面图片"), QStringLiteral("splashPicture"), corvanta::pictureFilter());
    preview_ = new QLabel(this);
    preview_->setObjectName(QStringLiteral("splashPreview"));
    preview_->setAccessibleName(tr("图片预览"));
    preview_->setTextFormat(Qt::PlainText);
    preview_->setAlignment(Qt::AlignCenter);
    preview_->setFixedSize(PreviewSize + QSize(2, 2));
    form.addRow(QString(), preview_, false);
    entersByItself_ = form.addCheck(tr("自动进入软件"), QStringLiteral("enterByItself"));
    form.addHint(tr("启动画面显示3秒后自动进入软件"));
    form.addRest();
    previewPause_.setSingleShot(true);
    previewPause_.setInterval(Rest);
    connect(&previewPause_, &QTimer::timeout, this, &StartPage::showPreview);
    connect(picture_, &FileField::sigPathChanged, &previewPause_, qOverload<>(&QTimer::start));
}

void StartPage::showPreview() {
    const QString path = picture_->path();
    if (path.isEmpty()) {
        preview_->setText(tr("没有图片"));
        return;
    }
    const auto file = corvanta::PictureFile::read(path, PreviewSize);
    if (file.picture.isNull())
        preview_->setText(file.problem);
    else
        preview_->setPixmap(QPixmap::fromImage(file.picture));
}

void StartPage::showValues(const Settings& settings) {
    isShown_->setChecked(settings.get(keys::ShowSplash).toBool());
    picture_->setPath(settings.get(keys::SplashPicture).toString());
    entersByItself_->setChecked(settings.get(keys::EnterByItself).toBool());
    previewPause_.stop();
    showPreview();
}

QVariantMap StartPage::values() const {
    return {{keys::ShowSplash, isShown_->isChecked()},
            {keys::SplashPicture, picture_->path()},
            {keys::EnterByItself, entersByItself_->isChecked()}};
}

std::optional<QString> StartPage::check() const {
    const QString path = picture_->path();
    if (isShown_->isChecked() && path.isEmpty())
        return tr("请选择启动画面图片");
    if (path.isEmpty() || !isKeyChanged(keys::SplashPicture))
        return std::nullopt;
    const QString problem = corvanta::PictureFile::read(path, PreviewSize).problem;
    return problem.isEmpty() ? std::nullopt : std::optional(problem);
}
