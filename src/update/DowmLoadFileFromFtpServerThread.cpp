#include "update/DowmLoadFileFromFtpServerThread.h"

#include "base/ServerErrors.h"
#include "base/TaskQueue.h"
#include "update/BodyDecoder.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDebug>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QStorageInfo>

#include <optional>

using corvanta::update::BodyDecoder;
using corvanta::update::FetchResult;

namespace {

constexpr qint64 RoomLeft = 64LL << 20;     // bytes that stay free
constexpr qint64 RoomLookEvery = 8LL << 20; // bytes
constexpr qint64 ReadAhead = 1LL << 20;     // bytes
constexpr int NotFound = 404;
constexpr int Ok = 200;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(DowmLoadFileFromFtpServerThread)
};

/// A file as it arrives.
class ArrivingFile final {
public:
    ArrivingFile(const QString& path, qint64 largest)
        : file_(path)
        , largest_(largest) {}

    bool open() { return file_.open(QIODevice::WriteOnly | QIODevice::NewOnly); }
    bool write(const char* data, std::size_t count) {
        const auto length = static_cast<qint64>(count);
        size_ += length;
        if (size_ > largest_)
            return fail(Texts::tr("文件过大"));
        if (size_ >= nextLook_) {
            nextLook_ = size_ + RoomLookEvery;
            if (QStorageInfo(file_.fileName()).bytesAvailable() < RoomLeft)
                return fail(Texts::tr("临时目录所在磁盘空间不足"));
        }
        if (file_.write(data, length) != length)
            return fail(file_.errorString());
        md5_.addData(data, static_cast<int>(length));
        return true;
    }
    bool close() {
        if (!file_.flush())
            return fail(file_.errorString());
        file_.close();
        return true;
    }
    QByteArray md5() const { return md5_.result().toHex(); }
    const std::optional<QString>& problem() const { return problem_; }

private:
    bool fail(const QString& problem) {
        problem_ = problem;
        return false;
    }

    QFile file_;
    const qint64 largest_;
    QCryptographicHash md5_{QCryptographicHash::Md5};
    qint64 size_ = 0;
    qint64 nextLook_ = 0;
    std::optional<QString> problem_;
};

/// One answer of the server on its way into a file.
class Arrival final {
public:
    Arrival(QNetworkReply& reply, const QString& path, qint64 largest)
        : reply_(reply)
        , file_(path, largest) {}

    bool open() { return file_.open(); }

    /// Takes what has come so far. What cannot be taken ends the request.
    void take() {
        if (!reply_.isOpen()) // it was aborted
            return;
        const QByteArray bytes = reply_.readAll();
        if (isBroken_ || status() != Ok) // the pages that come with errors are nothing to keep
            return;
        if (decoder_ == nullptr)
            decoder_ = std::make_unique<BodyDecoder>(
                reply_.rawHeader("Content-Encoding"),
                [this](const char* data, std::size_t count) { return file_.write(data, count); });
        if (!decoder_->feed(bytes)) {
            isBroken_ = true;
            reply_.abort();
        }
    }

    FetchResult result() {
        using State = FetchResult::State;
        take();
        if (file_.problem())
            return {State::Disk, {}, *file_.problem()};
        if (isBroken_)
            return {State::Broken, {}, Texts::tr("数据解压失败")};
        if (status() != 0 && status() != Ok)
            return {State::Refused,
                    {},
                    corvanta::serverErrors::text(status() == NotFound ? QStringLiteral("(http 404)")
                                                                      : QStringLiteral("(http error)"))};
        if (reply_.error() == QNetworkReply::OperationCanceledError)
            return {State::Broken, {}, Texts::tr("服务器响应超时")};
        if (reply_.error() != QNetworkReply::NoError || status() != Ok)
            return {State::Broken, {}, Texts::tr("网络错误(%1)").arg(reply_.errorString())};
        if (decoder_ != nullptr && !decoder_->isComplete())
            return {State::Broken, {}, Texts::tr("数据不完整")};
        if (!file_.close())
            return {State::Disk, {}, *file_.problem()};
        return {State::Here, file_.md5(), {}};
    }

private:
    int status() const { return reply_.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(); }

    QNetworkReply& reply_;
    ArrivingFile file_;
    std::unique_ptr<BodyDecoder> decoder_;
    bool isBroken_ = false;
};

} // namespace

DowmLoadFileFromFtpServerThread::DowmLoadFileFromFtpServerThread(corvanta::update::UpdateServer server,
                                                                 corvanta::update::DownloadFolder folder,
                                                                 QObject* parent)
    : BackgroundThread(parent)
    , server_(std::move(server))
    , folder_(std::move(folder)) {}

DowmLoadFileFromFtpServerThread::~DowmLoadFileFromFtpServerThread() {
    cancel();
    join();
}

void DowmLoadFileFromFtpServerThread::setFileName(const QString& path) {
    path_ = path;
    received_ = 0;
    total_ = 0;
}

void DowmLoadFileFromFtpServerThread::cancel() {
    const std::lock_guard lock(mutex_);
    cancelled_ = true;
    if (stopWaiting_)
        stopWaiting_();
}

void DowmLoadFileFromFtpServerThread::run() {
    result_ = fetch();
    if (cancelled_)
        result_ = {FetchResult::State::Cancelled, {}, {}};
    else if (result_.state != FetchResult::State::Here)
        qDebug().noquote() << "not fetched:" << path_ << result_.problem;
}

/// Lets the thread's events run until the answer is complete; false when it was cancelled before.
bool DowmLoadFileFromFtpServerThread::waitFor(QNetworkReply& reply) {
    QEventLoop loop;
    TaskQueue queue; // into this thread
    QObject::connect(&reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    {
        const std::lock_guard lock(mutex_);
        stopWaiting_ = [&loop, &queue] {
            queue.post([&loop] { loop.quit(); });
        };
    }
    if (!cancelled_ && !reply.isFinished())
        loop.exec();
    const std::lock_guard lock(mutex_);
    stopWaiting_ = {};
    return !cancelled_;
}

FetchResult DowmLoadFileFromFtpServerThread::fetch() {
    const QString target = folder_.pathOf(path_);
    FetchResult notWritten{FetchResult::State::Disk, {}, Texts::tr("无法写入临时目录")};
    if (!folder_.prepareFor(path_))
        return notWritten;
    QNetworkRequest request(server_.file(path_));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/octet-stream"));
    request.setRawHeader("Accept-Encoding", "gzip,deflate");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setTransferTimeout(limits_.silence);

    QNetworkAccessManager network;
    const std::unique_ptr<QNetworkReply> reply(network.get(request));
    reply->setReadBufferSize(ReadAhead);
    Arrival arrival(*reply, target, limits_.largestFile);
    if (!arrival.open())
        return notWritten;
    QObject::connect(reply.get(), &QNetworkReply::readyRead, reply.get(), [&arrival] { arrival.take(); });
    QObject::connect(reply.get(), &QNetworkReply::downloadProgress, reply.get(), [this](qint64 done, qint64 all) {
        received_ = done;
        total_ = std::max<qint64>(all, 0);
    });
    if (!waitFor(*reply))
        return {};
    return arrival.result();
}
