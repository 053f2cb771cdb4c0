#include "update/ProgressText.h"

#include "base/SizeText.h"

#include <QCoreApplication>

#include <cmath>

namespace corvanta::update {
namespace {

constexpr int Whole = 1000; // permille

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(UpdateProgress)
};

/// "1:05" or "1:01:05".
QString duration(int seconds) {
    const QString ofMinute = QStringLiteral("%1").arg(seconds % 60, 2, 10, QLatin1Char('0'));
    const int minutes = seconds / 60;
    if (minutes < 60)
        return QStringLiteral("%1:%2").arg(minutes).arg(ofMinute);
    return QStringLiteral("%1:%2:%3").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0')).arg(ofMinute);
}

QString counted(const QString& text, const UpdateDownload::Progress& progress) {
    return text + QStringLiteral(" %1/%2").arg(progress.done).arg(progress.files);
}

int permille(qint64 done, qint64 all) {
    return all <= 0 ? -1 : static_cast<int>(std::min<qint64>(Whole, done * Whole / all));
}

ProgressText ofDownload(const UpdateDownload::Progress& progress) {
    const DownloadMeter::Reading& reading = progress.download;
    QStringList parts{reading.bytes > 0
                          ? sizeText(reading.bytesDone) + QStringLiteral(" / ") + sizeText(reading.bytes)
                          : sizeText(reading.bytesDone)};
    if (reading.bytesPerSecond > 0)
        parts += sizeText(std::llround(reading.bytesPerSecond)) + QStringLiteral("/s");
    if (reading.secondsLeft)
        parts += Texts::tr("剩余 %1").arg(duration(*reading.secondsLeft));
    const QString what = Texts::tr("正在下载 %1/%2: %3")
                             .arg(std::min(progress.done + 1, progress.files))
                             .arg(progress.files)
                             .arg(progress.file);
    return {what, parts.join(QStringLiteral("  ")), permille(reading.bytesDone, reading.bytes)};
}

} // namespace

ProgressText progressText(UpdateDownload::State state, const UpdateDownload::Progress& progress) {
    using State = UpdateDownload::State;
    switch (state) {
    case State::Comparing:
        return {counted(Texts::tr("正在比对文件"), progress), {}, permille(progress.done, progress.files)};
    case State::Fetching:
        return ofDownload(progress);
    case State::Ready:
        return {Texts::tr("下载完成!"), {}, Whole};
    case State::Checking:
        return {counted(Texts::tr("正在校验文件"), progress), {}, permille(progress.done, progress.files)};
    case State::HandedOver:
        return {Texts::tr("正在启动升级程序"), {}, Whole};
    case State::Idle:
        break;
    }
    return {};
}

} // namespace corvanta::update
