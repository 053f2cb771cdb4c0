#include "map/web/MapPage.h"

#include <QDebug>
#include <QWebEngineDownloadItem>
#include <QWebEngineProfile>
#include <QWebEngineSettings>

namespace corvanta::map {

QUrl MapPage::address() {
    return QUrl(QStringLiteral("qrc:/style/mapjs/map.html"));
}

MapPage::MapPage(QWebEngineProfile& profile, QObject* parent)
    : QWebEnginePage(&profile, parent) {
    restrict();
    setBackgroundColor(QColor(200, 208, 214)); // the page's sea, seen until it is there
    connect(&profile, &QWebEngineProfile::downloadRequested, this,
            [](QWebEngineDownloadItem* item) { item->cancel(); });
    connect(this, &QWebEnginePage::featurePermissionRequested, this, [this](const QUrl& origin, Feature feature) {
        setFeaturePermission(origin, feature, PermissionDeniedByUser);
    });
}

void MapPage::restrict() {
    using Settings = QWebEngineSettings;
    for (const auto attribute :
         {Settings::JavascriptCanOpenWindows, Settings::JavascriptCanAccessClipboard, Settings::LocalStorageEnabled,
          Settings::LocalContentCanAccessFileUrls, Settings::LocalContentCanAccessRemoteUrls,
          Settings::HyperlinkAuditingEnabled, Settings::ErrorPageEnabled, Settings::PluginsEnabled,
          Settings::FullScreenSupportEnabled, Settings::ScreenCaptureEnabled, Settings::WebGLEnabled,
          Settings::AutoLoadIconsForPage, Settings::FocusOnNavigationEnabled, Settings::AllowRunningInsecureContent,
          Settings::AllowGeolocationOnInsecureOrigins, Settings::AllowWindowActivationFromJavaScript,
          Settings::DnsPrefetchEnabled, Settings::PdfViewerEnabled})
        settings()->setAttribute(attribute, false);
    settings()->setAttribute(Settings::WebRTCPublicInterfacesOnly, true);
}

bool MapPage::acceptNavigationRequest(const QUrl& url, NavigationType, bool isMainFrame) {
    if (isMainFrame && url == address())
        return true;
    qDebug() << "the map's page may not go to" << url.toDisplayString().left(200);
    return false;
}

void MapPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int line,
                                       const QString& source) {
    qDebug().noquote() << "map page:" << source.section(QLatin1Char('/'), -1) << line << message.left(500);
}

} // namespace corvanta::map
