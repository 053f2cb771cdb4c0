#pragma once

#include "update/OddServer.h"
#include "update/UpdateDownload.h"
#include "update/UpdateFiles.h"
#include "update/VersionCheck.h"

#include <QSignalSpy>
#include <QSslConfiguration>
#include <QTemporaryDir>

#include <memory>
#include <optional>

/// What the tests of downloads share: an installation with some files, and a server that does everything wrong.
class UpdateTest : public QObject {
    Q_OBJECT
protected:
    using State = corvanta::update::UpdateDownload::State;
    static constexpr int Long = 60000; ///< ms; far more than anything takes

    corvanta::update::CheckResult check(const QString& address,
                                        std::optional<corvanta::update::SigningKey> key = std::nullopt,
                                        int patience = Long);
    /// Checks and begins; the download's end is for the caller to wait for.
    bool begin(const QString& address);
    bool waitFor(State state) {
        return QTest::qWaitFor([this, state] { return download_->state() == state; }, Long);
    }
    QString installed(const QString& path = {}) const { return dir_->filePath("app/" + path); }
    QString fetched(const QString& path = {}) const { return dir_->filePath("Corvanta/" + path); }
    bool nothingLeft() const { return !QFileInfo::exists(fetched().chopped(1)); }
    /// Everything below a folder, as "path" of files.
    static QStringList filesBelow(const QString& folder);

    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<OddServer> odd_;
    std::unique_ptr<corvanta::update::UpdateDownload> download_;
    std::unique_ptr<QSignalSpy> failed_;
    std::unique_ptr<QSignalSpy> ready_;

private:
    const QSslConfiguration usualSsl_ = QSslConfiguration::defaultConfiguration();

private slots:
    void init();
    void cleanup();
};
