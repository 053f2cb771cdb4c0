#include "sensor/DatDownload.h"

#include "base/AppEvents.h"
#include "base/DataTree.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "manageWidget/FlowRequest.h"
#include "storage/RecordingStorage.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

namespace corvanta::sensor {

DatDownload::DatDownload(SdkGateway& gateway, AppEvents& events, RecordingStorage& storage, QObject* parent)
    : QObject(parent)
    , gateway_(gateway)
    , storage_(storage) {
    connect(&events, &AppEvents::sig_DownDatFile, this, &DatDownload::fetch);
}

void DatDownload::fetch(const QString& ipncId, const QString& name) {
    const auto file = dataTree::pathComponent(name);
    const QString folder = file ? storage_.folderAtOnce(dataTree::InputData, ipncId, {}, {}) : QString();
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        qDebug() << "no place for a data file" << ipncId << name;
        return;
    }
    const QString path = QFileInfo(folder + *file).absoluteFilePath();
    if (underWay_.contains(path))
        return;
    underWay_.insert(path);
    load(ipncId, *file, path, false);
}

void DatDownload::load(const QString& ipncId, const QString& name, const QString& path, bool isAgain) {
    auto* const flow = new FlowRequest(gateway_, 0, this);
    // Whatever became of the first half, the whole may be had then.
    const auto next = [this, flow, ipncId, name, path, isAgain] {
        flow->deleteLater();
        if (isAgain)
            underWay_.remove(path);
        else
            QTimer::singleShot(behind_, this, [this, ipncId, name, path] { load(ipncId, name, path, true); });
    };
    connect(flow, &FlowRequest::sigDone, this, [this, ipncId, path, next] {
        emit sigStored(ipncId, path);
        next();
    });
    connect(flow, &FlowRequest::sigFailed, this, [name, next](const QString& text) {
        qDebug() << "data file not fetched" << name << text;
        next();
    });
    flow->start(requests::deviceRequest(QStringLiteral("下载SD卡文件"),
                                        {{QStringLiteral("ipncid"), ipncId},
                                         {QStringLiteral("path"), QStringLiteral("dat/") + name},
                                         {QStringLiteral("savepath"), path}}));
}

} // namespace corvanta::sensor
