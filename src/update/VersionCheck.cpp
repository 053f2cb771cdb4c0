#include "update/VersionCheck.h"

#include "base/BackgroundThread.h"
#include "update/Version.h"

#include <QDebug>
#include <QNetworkReply>

#include <utility>

namespace corvanta::update {
namespace {

constexpr qint64 LargestSignature = 1024; // bytes

} // namespace

/// Checks and reads a description, which may be large, beside the GUI thread.
class VersionCheck::Parser final : public BackgroundThread {
public:
    Parser(QByteArray text, const std::optional<SigningKey>& key, QByteArray signature)
        : text_(std::move(text))
        , key_(key)
        , signature_(std::move(signature)) {}
    ~Parser() override { join(); }

    ParsedDescription& result() { return result_; }

protected:
    void run() override {
        if (key_ && !isSignedBy(*key_, text_, signature_))
            result_ = {std::nullopt, VersionCheck::tr("更新描述文件的签名不正确，已拒绝更新!")};
        else
            result_ = parseDescription(text_);
    }

private:
    const QByteArray text_;
    const std::optional<SigningKey> key_;
    const QByteArray signature_;
    ParsedDescription result_;
};

VersionCheck::VersionCheck(std::optional<SigningKey> key, QObject* parent)
    : QObject(parent)
    , key_(std::move(key)) {}

VersionCheck::~VersionCheck() = default;

bool VersionCheck::start(const UpdateServer& server) {
    if (isRunning_ || !server.isValid())
        return false;
    server_ = server;
    isRunning_ = true;
    text_.clear();
    get(server_.description(), LargestDescription);
    return true;
}

void VersionCheck::get(const QUrl& address, qint64 limit) {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setTransferTimeout(patience_);
    QNetworkReply* const reply = network_.get(request);
    connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater); // after everyone has heard of it
    connect(reply, &QNetworkReply::readyRead, reply, [reply, limit] {
        if (reply->bytesAvailable() > limit)
            reply->abort();
    });
}

void VersionCheck::take(QNetworkReply* reply) {
    if (!isRunning_ || reply->manager() != &network_)
        return;
    if (reply->request().url() == server_.description())
        takeDescription(*reply);
    else if (reply->request().url() == server_.signature())
        takeSignature(*reply);
}

void VersionCheck::takeDescription(QNetworkReply& reply) {
    if (reply.error() != QNetworkReply::NoError) {
        qDebug().noquote() << "update check:" << reply.errorString();
        finish({CheckResult::State::Failed, noDescriptionText(), nullptr});
        return;
    }
    text_ = reply.readAll();
    if (key_)
        get(server_.signature(), LargestSignature);
    else
        parse({});
}

void VersionCheck::takeSignature(QNetworkReply& reply) {
    if (reply.error() != QNetworkReply::NoError) {
        qDebug().noquote() << "update check:" << reply.errorString();
        finish({CheckResult::State::Failed, tr("更新描述文件没有签名，已拒绝更新!"), nullptr});
        return;
    }
    parse(reply.readAll());
}

void VersionCheck::parse(const QByteArray& signature) {
    parser_ = std::make_unique<Parser>(std::exchange(text_, {}), key_, signature);
    connect(parser_.get(), &BackgroundThread::finished, this, [this] {
        parser_->join();
        ParsedDescription parsed = std::move(parser_->result());
        parser_.reset();
        CheckResult result;
        result.problem = parsed.problem;
        if (parsed.description) {
            const bool isNewer = parsed.description->version > BuiltInVersion;
            result.state = isNewer ? CheckResult::State::Newer : CheckResult::State::UpToDate;
            result.description = std::make_shared<const UpdateDescription>(std::move(*parsed.description));
        }
        finish(result);
    });
    parser_->start();
}

void VersionCheck::finish(const CheckResult& result) {
    isRunning_ = false;
    emit sigDone(result);
}

} // namespace corvanta::update
