#pragma once

#include "base/AppContext.h"
#include "video/PreviewMessage.h"

#include <QImage>
#include <QLabel>
#include <QTimer>

#include <atomic>
#include <memory>
#include <string>

class CallbackGate;

/// A picture of a camera inside a dialog: a single one, or one after the other while it is visible. GUI thread.
class TestPicture final : public QLabel {
    Q_OBJECT
public:
    explicit TestPicture(const AppContext& context, QWidget* parent = nullptr);
    ~TestPicture() override;

    /// Of a device of the account, again and again.
    void follow(const QString& ipncId);
    /// Of a camera that is not added yet, once.
    void ask(const QString& url, const QString& user, const QString& password);
    /// Ends what runs and shows a text.
    void rest(const QString& text);

    QSize sizeHint() const override { return {320, 180}; }

signals:
    /// A single picture has come, or has not.
    void sigAnswered(bool ok);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void send();
    void stop();
    void onReply(int number, const corvanta::video::PreviewReply& reply);
    void showPicture();

    AppContext context_;
    std::shared_ptr<CallbackGate> gate_; ///< of the request that runs, else null
    std::string request_;
    int requestId_ = 0;
    int number_ = 0; ///< of the newest request
    bool follows_ = false;
    QTimer next_;
    QTimer silence_;
    QImage picture_;
};
