#include "manageWidget/ui/TestPicture.h"

#include "base/CallbackGate.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "video/AvMessage.h"

#include <QDebug>

#include <utility>

namespace video = corvanta::video;

namespace {
constexpr int PictureWidth = 640;  // px
constexpr int NextAfter = 200;     // ms between an answer and the next question
constexpr int AfterFailure = 3000; // ms
} // namespace

TestPicture::TestPicture(const AppContext& context, QWidget* parent)
    : QLabel(parent)
    , context_(context) {
    setObjectName(QStringLiteral("testPicture"));
    setAccessibleName(tr("测试画面"));
    setAlignment(Qt::AlignCenter);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMinimumSize(240, 136);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    next_.setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, [this] {
        if (isVisible())
            send();
        else
            next_.start(NextAfter);
    });
    silence_.setSingleShot(true);
    connect(&silence_, &QTimer::timeout, this, [this] {
        const bool again = follows_;
        rest(corvanta::serverErrors::noReplyText());
        emit sigAnswered(false);
        follows_ = again;
        if (again)
            next_.start(AfterFailure);
    });
}

TestPicture::~TestPicture() {
    stop();
}

void TestPicture::follow(const QString& ipncId) {
    stop();
    follows_ = true;
    request_ = video::previewRequest(ipncId, PictureWidth);
    setText(tr("正在获取画面…"));
    send();
}

void TestPicture::ask(const QString& url, const QString& user, const QString& password) {
    stop();
    picture_ = {};
    request_ = video::previewRequest(url, user, password, PictureWidth);
    setText(tr("正在获取画面…"));
    send();
}

void TestPicture::rest(const QString& text) {
    stop();
    picture_ = {};
    setText(text);
}

void TestPicture::stop() {
    follows_ = false;
    next_.stop();
    silence_.stop();
    ++number_;
    if (gate_ == nullptr)
        return;
    context_.gateway.StopRequest(std::exchange(requestId_, 0));
    std::exchange(gate_, nullptr)->close();
}

void TestPicture::send() {
    if (gate_ != nullptr)
        std::exchange(gate_, nullptr)->close();
    const int number = ++number_;
    auto gate = std::make_shared<CallbackGate>();
    gate_ = gate;
    // On a thread of the SDK, whose memory is gone after the callback.
    const auto onMessage = [this, gate, number](const std::string& text) {
        context_.gateway.inGui(gate, [this, number, reply = video::readPreview(text)] { onReply(number, reply); });
    };
    silence_.start(context_.gateway.patience());
    requestId_ = context_.gateway.RequestMessage(request_, onMessage, gate);
    if (requestId_ <= 0) {
        rest(tr("请求发送失败!"));
        emit sigAnswered(false);
    }
}

void TestPicture::onReply(int number, const video::PreviewReply& reply) {
    if (number != number_)
        return;
    silence_.stop();
    if (!reply.problem.isEmpty())
        qDebug() << "test picture refused" << reply.problem;
    picture_ = QImage::fromData(reinterpret_cast<const uchar*>(reply.jpeg.data()),
                                static_cast<int>(reply.jpeg.size()), "JPEG");
    if (picture_.isNull())
        setText(video::shownText(video::failedText(reply.retcode)));
    else
        showPicture();
    if (follows_)
        next_.start(picture_.isNull() ? AfterFailure : NextAfter);
    else
        emit sigAnswered(!picture_.isNull());
}

void TestPicture::showPicture() {
    const QSize room = contentsRect().size();
    setPixmap(QPixmap::fromImage(picture_.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void TestPicture::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    if (!picture_.isNull())
        showPicture();
}
