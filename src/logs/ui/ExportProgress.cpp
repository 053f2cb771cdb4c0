#include "logs/ui/ExportProgress.h"

#include <QEventLoop>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {
constexpr int BarLength = 1000;
}

ExportProgress::ExportProgress(LogExport& job, QWidget* parent)
    : FramedDialog(tr("导出"), parent)
    , job_(job) {
    setObjectName(QStringLiteral("ExportProgress"));
    setAccessibleName(tr("正在导出"));
    text_ = new QLabel(this);
    text_->setObjectName(QStringLiteral("exportText"));
    text_->setMinimumWidth(320);
    body()->addWidget(text_);
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("exportBar"));
    bar_->setAccessibleName(tr("导出进度"));
    bar_->setRange(0, BarLength);
    bar_->setTextVisible(false);
    body()->addWidget(bar_);
    cancel_ = addButton(tr("取消"), QStringLiteral("exportStop"), false);
    connect(cancel_, &QPushButton::clicked, this, &ExportProgress::reject);
    time_.start();
    timer_.setInterval(50);
    connect(&timer_, &QTimer::timeout, this, &ExportProgress::follow);
    timer_.start();
    follow();
}

LogExport::State ExportProgress::waitFor(LogExport& job, QWidget* parent) {
    ExportProgress dialog(job, parent);
    dialog.exec();
    return job.state();
}

void ExportProgress::follow() {
    if (job_.state() != LogExport::State::Running) {
        timer_.stop();
        QTimer::singleShot(0, this, &QDialog::accept); // exec may only be about to begin
        return;
    }
    const int total = std::max(job_.totalSteps(), 1);
    const qint64 steps = std::min(job_.steps(), total);
    bar_->setValue(static_cast<int>(steps * BarLength / total));
    const qint64 passed = time_.elapsed();
    QString text = tr("正在导出，已完成 %1%").arg(steps * 100 / total);
    constexpr int Settled = 1000; // ms after which the speed is known
    if (passed > Settled && steps > 0)
        text += tr("，约剩 %1 秒").arg((passed * (total - steps) / steps + 999) / 1000);
    text_->setText(text);
    text_->setAccessibleName(text);
}

void ExportProgress::reject() {
    job_.cancel();
    cancel_->setEnabled(false);
    cancel_->setText(tr("正在取消..."));
}
