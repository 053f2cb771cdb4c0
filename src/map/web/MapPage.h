#pragma once

#include <QWebEnginePage>

class QWebEngineProfile;

namespace corvanta::map {

/// The browser's page with the one document that it may show: no other address, no windows, no dialogs, no rights, no
/// downloads. What the page's scripts complain about becomes debug lines.
class MapPage final : public QWebEnginePage {
    Q_OBJECT
public:
    static QUrl address();

    /// `profile` must outlive the page and is restricted along with it.
    MapPage(QWebEngineProfile& profile, QObject* parent);

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }
    QStringList chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) override { return {}; }
    void javaScriptAlert(const QUrl&, const QString&) override {}
    bool javaScriptConfirm(const QUrl&, const QString&) override { return false; }
    bool javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) override { return false; }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                  const QString& source) override;
    bool certificateError(const QWebEngineCertificateError&) override { return false; }

private:
    void restrict();
};

} // namespace corvanta::map
