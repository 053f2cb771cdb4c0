#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "update/VersionCheck.h"

#include <QNetworkReply>

class QLabel;
class QPushButton;

namespace corvanta::update {
class UpdateDownload;
}

/// Which version this is, whether there is a newer one, and how far its download is.
class CheckUpdateVersionDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `download` outlives it.
    CheckUpdateVersionDialog(const AppContext& context, corvanta::update::UpdateDownload& download,
                             QWidget* parent = nullptr);

private slots:
    /// An answer of the update server, or of another one.
    void replyFinished(QNetworkReply* reply);

private:
    void check();
    void onDone(const corvanta::update::CheckResult& result);
    void tell(const QString& text);
    void showState();

    AppContext context_;
    corvanta::update::UpdateDownload& download_;
    corvanta::update::VersionCheck check_;
    QLabel* newest_;
    QPushButton* checkButton_;
};
