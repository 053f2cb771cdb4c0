#include "playback/ui/ExportDialog.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta::playback {

ExportDialog::ExportDialog(const QString& file, QWidget* parent)
    : FramedDialog(tr("导出片段"), parent)
    , file_(file)
    , bar_(new QProgressBar(this))
    , button_(addButton(tr("取消"), QStringLiteral("exportCancel"), false)) {
    setObjectName(QStringLiteral("ExportDialog"));
    setAccessibleName(tr("导出片段"));
    auto* const text = new QLabel(tr("正在导出 %1").arg(QFileInfo(file).fileName()), this);
    text->setObjectName(QStringLiteral("exportText"));
    text->setTextFormat(Qt::PlainText);
    text->setToolTip(QDir::toNativeSeparators(file));
    text->setMinimumWidth(320); // px
    bar_->setObjectName(QStringLiteral("exportProgress"));
    bar_->setAccessibleName(tr("导出进度"));
    bar_->setRange(0, 100);
    body()->addWidget(text);
    body()->addWidget(bar_);
    connect(button_, &QPushButton::clicked, this, &ExportDialog::reject);
    connect(&task_, &ExportTask::sigProgress, bar_, &QProgressBar::setValue);
    connect(&task_, &ExportTask::sigDone, this, &ExportDialog::onDone);
}

void ExportDialog::start(std::vector<ClipPart> parts) {
    const QByteArray bytes = file_.toUtf8();
    running_ = true;
    task_.start(std::move(parts), std::filesystem::path(std::u8string(bytes.begin(), bytes.end())));
}

void ExportDialog::reject() {
    if (!running_) {
        QDialog::reject();
        return;
    }
    button_->setEnabled(false);
    task_.cancel();
}

void ExportDialog::onDone() {
    running_ = false;
    switch (result().error) {
    case ExportError::None:
        accept();
        return;
    case ExportError::Cancelled:
        QDialog::reject();
        return;
    default:
        showProblem(describe(result(), file_));
        button_->setText(tr("关闭"));
        button_->setAccessibleName(tr("关闭"));
        button_->setEnabled(true);
    }
}

QString ExportDialog::describe(const ExportResult& result, const QString& file) {
    switch (result.error) {
    case ExportError::None: {
        const double early = static_cast<double>(result.early.count()) / 1e6;
        const QString done = tr("已导出 %1").arg(QDir::toNativeSeparators(file));
        return early < 0.05 ? done : tr("%1，从标记前 %2 秒的关键帧开始").arg(done, QString::number(early, 'f', 1));
    }
    case ExportError::Cancelled:
        return tr("导出已取消");
    case ExportError::NothingThere:
        return tr("标记的范围内没有录像");
    case ExportError::Unreadable:
        return tr("录像文件无法读取");
    case ExportError::Different:
        return tr("标记的范围内录像的格式或尺寸不同，不能合并为一个文件");
    case ExportError::UnknownFormat:
        return tr("只能导出为 .avi 或 .mp4 文件");
    case ExportError::CannotWrite:
        return tr("无法写入 %1，请检查磁盘空间和权限").arg(QDir::toNativeSeparators(file));
    }
    return {};
}

} // namespace corvanta::playback
