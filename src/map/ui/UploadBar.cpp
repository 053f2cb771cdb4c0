#include "map/ui/UploadBar.h"

#include "base/RequestBuilder.h"
#include "base/ui/Theme.h"

#include <QFile>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLocale>
#include <QMimeDatabase>
#include <QProgressBar>
#include <QPushButton>

namespace corvanta::map {
namespace {
constexpr int Silence = 30000; // ms without a word
} // namespace

UploadBar::UploadBar(SdkGateway& gateway, QWidget* parent)
    : QWidget(parent)
    , flow_(gateway, Silence)
    , bar_(new QProgressBar(this))
    , text_(new QLabel(this))
    , cancel_(new QPushButton(tr("停止上传"), this)) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2 * theme::Step);
    bar_->setObjectName(QStringLiteral("uploadBar"));
    bar_->setAccessibleName(tr("上传进度"));
    text_->setObjectName(QStringLiteral("uploadText"));
    cancel_->setObjectName(QStringLiteral("uploadCancel"));
    cancel_->setAccessibleName(cancel_->text());
    cancel_->setAutoDefault(false);
    row->addWidget(bar_, 1);
    row->addWidget(text_);
    row->addWidget(cancel_);
    connect(cancel_, &QPushButton::clicked, this, &UploadBar::cancel);
    connect(&flow_, &FlowRequest::sigProgress, this, &UploadBar::onProgress);
    connect(&flow_, &FlowRequest::sigDone, this, [this](const QVariantMap& reply) {
        end();
        emit sigDone(reply.value(QStringLiteral("resp")).toMap());
    });
    connect(&flow_, &FlowRequest::sigFailed, this, [this](const QString& text) {
        end();
        emit sigFailed(text);
    });
    hide();
}

bool UploadBar::start(const QString& path, const QString& type, const QVariantMap& rest) {
    QVariantMap parameters = rest;
    parameters.insert(QStringLiteral("type"), type);
    parameters.insert(QStringLiteral("mimetype"), QMimeDatabase().mimeTypeForFile(path).name());
    parameters.insert(QStringLiteral("uploadpath"), path);
    parameters.insert(QStringLiteral("params"), QVariantMap());
    parameters.insert(QStringLiteral("formdata"), QVariantMap());
    if (isRunning())
        return false;
    bar_->setRange(0, 0); // not known yet
    text_->clear();
    since_.start();
    show();
    return flow_.start(requests::deviceRequest(QStringLiteral("上传用户文件"), parameters));
}

void UploadBar::cancel() {
    flow_.cancel();
    end();
}

void UploadBar::end() {
    hide();
    emit sigEnded();
}

void UploadBar::onProgress(qint64 done, qint64 total) {
    if (total <= 0 || done < 0)
        return;
    constexpr int steps = 1000;
    bar_->setRange(0, steps);
    bar_->setValue(static_cast<int>(done * steps / total));
    const double seconds = static_cast<double>(since_.elapsed()) / 1000;
    const QString doneText = QLocale().formattedDataSize(done);
    const QString totalText = QLocale().formattedDataSize(total);
    if (done <= 0 || seconds <= 1) {
        text_->setText(QStringLiteral("%1 / %2").arg(doneText, totalText));
        return;
    }
    const int left = qRound(seconds * static_cast<double>(total - done) / static_cast<double>(done));
    text_->setText(tr("%1 / %2，约剩 %3 秒").arg(doneText, totalText).arg(left));
}

QString pictureProblem(const QString& path, qint64 largest, qint64 mostPixels) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return UploadBar::tr("文件无法读取!");
    const QByteArray begin = file.peek(8);
    const QByteArray format = begin.startsWith("\x89PNG") ? "png" : begin.startsWith("\xff\xd8\xff") ? "jpg" : "";
    if (format.isEmpty())
        return UploadBar::tr("请选择png或jpg格式的图片!");
    QImageReader reader(&file, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isEmpty())
        return UploadBar::tr("请选择png或jpg格式的图片!");
    if (file.size() > largest || qint64(size.width()) * size.height() > mostPixels)
        return UploadBar::tr("图片过大!");
    return {};
}

} // namespace corvanta::map
