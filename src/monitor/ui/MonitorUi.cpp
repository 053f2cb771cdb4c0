#include "monitor/ui/MonitorUi.h"

#include "account/ui/LoginDialog.h"
#include "base/AppContext.h"
#include "base/ui/MoveWidget.h"
#include "base/ui/TipDialog.h"
#include "base/ui/WaitOverlay.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/settings/ProxyDialog.h"

MonitorUi::MonitorUi() = default;
MonitorUi::~MonitorUi() = default;

MonitorMainUI& MonitorUi::makeWindow(MoveWidget& frame, const AppContext& context, RecordingStorage& storage) {
    frame.setObjectName(QStringLiteral("w1001"));
    frame.setStyleSheet(QStringLiteral("*#w1001{background-color:rgb(125,125,125)}"));
    auto* const window = new MonitorMainUI(context, storage);
    frame.setContent(window, QSize(MonitorMainUI::SmallestWidth, MonitorMainUI::SmallestHeight), QString());
    window_ = window;
    context_ = std::make_unique<AppContext>(context);
    return *window;
}

void MonitorUi::showTip(const QString& title, const QString& text) {
    TipDialog(title, text, window_).exec();
}

void MonitorUi::showSignIn(bool automatic) {
    if (window_ == nullptr)
        return;
    LoginDialog dialog(*context_, automatic, window_);
    dialog.setWindowModality(Qt::WindowModal); // the window of text messages stays in reach
    QObject::connect(&dialog, &LoginDialog::sigProxy, &dialog,
                     [this, &dialog] { ProxyDialog(*context_, &dialog).exec(); });
    dialog.exec();
}

void MonitorUi::showWait(bool visible, const QRect& area, int milliseconds) {
    if (window_ == nullptr)
        return;
    WaitOverlay& overlay = window_->waitOverlay();
    if (visible)
        overlay.start(area.isEmpty() ? QRect() : QRect(window_->mapFromGlobal(area.topLeft()), area.size()),
                      milliseconds);
    else
        overlay.hide();
}
