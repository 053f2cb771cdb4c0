#include "update/UpdateTest.h"

#include <QDirIterator>

#include <utility>

using namespace corvanta::update;
using updateFiles::write;

void UpdateTest::init() {
    dir_ = std::make_unique<QTemporaryDir>();
    odd_ = std::make_unique<OddServer>();
    QVERIFY(QDir(dir_->path()).mkdir("app"));
    download_ = std::make_unique<UpdateDownload>(dir_->filePath("app"), DownloadFolder(dir_->filePath("Corvanta")));
    download_->setLimits({Long});
    failed_ = std::make_unique<QSignalSpy>(download_.get(), &UpdateDownload::sigFailed);
    ready_ = std::make_unique<QSignalSpy>(download_.get(), &UpdateDownload::sigReady);
    write(installed("same.dll"), "same");
    write(installed("lib/changed.dll"), "old");
    write(installed("changed.dll"), "old");
}

void UpdateTest::cleanup() {
    download_.reset();
    QSslConfiguration::setDefaultConfiguration(usualSsl_);
}

CheckResult UpdateTest::check(const QString& address, std::optional<SigningKey> key, int patience) {
    VersionCheck checking(std::move(key));
    checking.setPatience(patience);
    connect(&checking.network(), &QNetworkAccessManager::finished, &checking, &VersionCheck::take);
    CheckResult result;
    bool isDone = false;
    connect(&checking, &VersionCheck::sigDone, &checking, [&](const CheckResult& done) {
        result = done;
        isDone = true;
    });
    if (!checking.start(UpdateServer(address)) || !QTest::qWaitFor([&isDone] { return isDone; }, Long))
        result.problem = "not checked";
    return result;
}

bool UpdateTest::begin(const QString& address) {
    const CheckResult result = check(address);
    if (result.state != CheckResult::State::Newer) {
        qWarning().noquote() << result.problem;
        return false;
    }
    download_->start(UpdateServer(address), result.description);
    return true;
}

QStringList UpdateTest::filesBelow(const QString& folder) {
    QStringList paths;
    QDirIterator each(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (each.hasNext())
        paths += each.next().mid(folder.size() + 1);
    paths.sort();
    return paths;
}
