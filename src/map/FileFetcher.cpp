#include "map/FileFetcher.h"

#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "manageWidget/FlowRequest.h"
#include "map/MapFiles.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <utility>

namespace corvanta::map {

FileFetcher::FileFetcher(SdkGateway& gateway, QObject* parent)
    : QObject(parent)
    , gateway_(gateway) {}

void FileFetcher::want(const QString& path, const QVariantMap& parameters) {
    if (wanted_.contains(path))
        return;
    wanted_.insert(path, parameters);
    waiting_ += path;
    startNext();
}

void FileFetcher::again(const QString& path) {
    const bool waits = waiting_.removeOne(path);
    if (!failed_.remove(path) && !waits)
        return;
    waiting_.prepend(path);
    startNext();
}

void FileFetcher::forget() {
    wanted_.clear();
    waiting_.clear();
    failed_.clear();
    qDeleteAll(std::exchange(running_, {})); // each ends its request
}

void FileFetcher::startNext() {
    while (running_.size() < MostAtOnce && !waiting_.isEmpty())
        start(waiting_.takeFirst());
}

void FileFetcher::start(const QString& path) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    auto* const flow = new FlowRequest(gateway_, 0, this);
    running_ += flow;
    connect(flow, &FlowRequest::sigProgress, this,
            [this, path](qint64 done, qint64 total) { emit sigProgress(path, done, total); });
    connect(flow, &FlowRequest::sigFailed, this, [this, path, flow](const QString& text) {
        qDebug() << "file not fetched" << path << text;
        failed_.insert(path);
        emit sigFailed(path, text);
        ended(path, flow);
    });
    connect(flow, &FlowRequest::sigDone, this, [this, path, flow] {
        if (isThere(path, 0)) {
            wanted_.remove(path);
            emit sigReady(path);
        } else {
            failed_.insert(path);
            emit sigFailed(path, tr("文件下载失败!"));
        }
        ended(path, flow);
    });
    QVariantMap parameters = wanted_.value(path);
    parameters.insert(QStringLiteral("savepath"), path);
    flow->start(requests::accountRequest(QStringLiteral("下载用户文件"), parameters));
}

void FileFetcher::ended(const QString&, FlowRequest* flow) {
    if (!running_.removeOne(flow))
        return; // forgotten meanwhile, by who was told
    flow->deleteLater();
    startNext();
}

} // namespace corvanta::map
