#pragma once

#include "base/AppContext.h"
#include "update/UpdateDownload.h"
#include "update/VersionCheck.h"

#include <QObject>
#include <QPointer>

class CheckUpdateVersionDialog;
class QNetworkReply;
class QWidget;
class TopBar;

/// Updates, as the main window has them: the check when the window is first shown, the dialog, what is asked on the
/// way. GUI thread.
class UpdateControl final : public QObject {
    Q_OBJECT
public:
    /// `bar` and `window` outlive it.
    UpdateControl(const AppContext& context, TopBar& bar, QWidget& window);
    ~UpdateControl() override;

    /// What shows how far an update is; hidden while there is none. The caller puts it somewhere.
    QWidget* makeProgressView(QWidget* parent);
    void openDialog();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void sigMessage(QString text);
    /// The updater waits for the program's end.
    void sigLeave();

private:
    void checkAtStart();
    void onReply(QNetworkReply* reply);
    void onChecked(const corvanta::update::CheckResult& result);
    void ignore(int version);
    void offerInstallation();

    AppContext context_;
    QWidget& window_;
    corvanta::update::UpdateDownload download_;
    QPointer<CheckUpdateVersionDialog> dialog_;
    bool hasChecked_ = false;
};
