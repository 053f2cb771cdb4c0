#pragma once

#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <string>

class SdkGateway;

/// A request that takes long: one that tells how far it is in messages of its own ("state": "progress" with "done"
/// and "total") until "ok" or "error", or one whose single reply may be waited for longer than others. One at a time;
/// can be ended by the user. GUI thread.
class FlowRequest final : public QObject {
    Q_OBJECT
public:
    /// `gateway` outlives it. Silence for so many milliseconds is a failure; 0: the gateway's patience.
    explicit FlowRequest(SdkGateway& gateway, int patienceMs, QObject* parent = nullptr);
    /// Ends what runs.
    ~FlowRequest() override;

    /// False when one runs already.
    bool start(const std::string& json);
    /// Ends it; no signal follows.
    void cancel();
    bool isRunning() const { return running_; }

signals:
    /// Bytes; `total` is 0 while it is not known.
    void sigProgress(qint64 done, qint64 total);
    void sigDone(QVariantMap reply);
    /// A text for the user.
    void sigFailed(QString text);

private:
    void onReply(int number, const QVariantMap& reply);
    void fail(const QString& text);

    SdkGateway& gateway_;
    QTimer silence_;
    int number_ = 0; ///< of the request that runs; replies to earlier ones are nobody's
    int requestId_ = 0;
    bool running_ = false;
};
