#pragma once

#include "manageWidget/FlowRequest.h"

#include <QElapsedTimer>
#include <QVariantMap>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class SdkGateway;

namespace corvanta::map {

/// A file on its way to the service: how much of it is there, how long it will take, and a way out. Seen only
/// meanwhile.
class UploadBar final : public QWidget {
    Q_OBJECT
public:
    /// `gateway` outlives it.
    explicit UploadBar(SdkGateway& gateway, QWidget* parent = nullptr);

    /// Sends a picture as `type` ("maps", "icons"). `rest` goes along. False when one is on its way already.
    bool start(const QString& path, const QString& type, const QVariantMap& rest = {});
    bool isRunning() const { return flow_.isRunning(); }
    /// Ends it; `sigEnded` follows.
    void cancel();

signals:
    void sigDone(QVariantMap resp);
    void sigFailed(QString text);
    /// After either, and after the user's own end.
    void sigEnded();

private:
    void onProgress(qint64 done, qint64 total);
    void end();

    FlowRequest flow_;
    QProgressBar* bar_;
    QLabel* text_;
    QPushButton* cancel_;
    QElapsedTimer since_;
};

/// Whether a file is a PNG or JPEG picture that the service would take, by its first bytes; else a text for the user.
QString pictureProblem(const QString& path, qint64 largest, qint64 mostPixels);

} // namespace corvanta::map
