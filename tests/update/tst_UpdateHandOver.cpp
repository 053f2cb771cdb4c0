#include "update/UpdateTest.h"

using namespace corvanta::update;
using updateFiles::read;
using updateFiles::write;

/// What is installed of a download: the updater takes over, or nothing is left of it.
class tst_UpdateHandOver final : public UpdateTest {
    Q_OBJECT
private slots:
    void handOver();
    void handOverRefused();
    void linksInTheInstallation();
};

// The updater that came takes the place of the old one and is started with both folders; it may have been marked as
// not to be written.
void tst_UpdateHandOver::handOver() {
    const QByteArray updater =
        "#!/bin/sh\nprintf '%s\\n' \"$PWD\" \"$#\" \"$@\" > \"$2/told.part\"\nmv \"$2/told.part\" \"$2/told\"\n";
    write(installed("updater.sh"), "#!/bin/sh\nexit 1\n");
    QVERIFY(QFile::setPermissions(installed("updater.sh"), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    odd_->describe(OddServer::descriptionOf({{"updater.sh", updater}, {"lib/changed.dll", "new"}}));
    odd_->serveFile("updater.sh", updater);
    odd_->serveFile("lib/changed.dll", "new");
    QSignalSpy over(download_.get(), &UpdateDownload::sigHandedOver);
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
    download_->install();
    QTRY_COMPARE_WITH_TIMEOUT(over.size(), 1, Long);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(installed("told")), Long);
    const QByteArray app = dir_->filePath("app").toUtf8();
    QCOMPARE(read(installed("told")), app + "\n2\n" + dir_->filePath("Corvanta").toUtf8() + "\n" + app + "\n");
    // What is there now is the updater's.
    download_.reset();
    QCOMPARE(read(fetched("lib/changed.dll")), QByteArray("new"));
    QCOMPARE(filesBelow(installed().chopped(1)),
             (QStringList{"changed.dll", "lib/changed.dll", "same.dll", "told", "updater.sh"}));
}

void tst_UpdateHandOver::handOverRefused() {
    odd_->describe(OddServer::descriptionOf({{"a", "first"}}, "none.sh"));
    odd_->serveFile("a", "first");
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
    // Somebody was at it in between.
    write(fetched("a"), "other");
    download_->install();
    QTRY_COMPARE_WITH_TIMEOUT(failed_->size(), 1, Long);
    QVERIFY(failed_->first().first().toString().contains(QStringLiteral("不完整")));
    QVERIFY(nothingLeft());
    // There is no such updater, here or there.
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
    download_->install();
    QTRY_COMPARE_WITH_TIMEOUT(failed_->size(), 2, Long);
    QVERIFY(failed_->last().first().toString().contains("none.sh"));
    QVERIFY(nothingLeft());
    // One that cannot be started.
    write(installed("none.sh"), "not for starting");
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
    download_->install();
    QTRY_COMPARE_WITH_TIMEOUT(failed_->size(), 3, Long);
    QVERIFY(nothingLeft());
}

// A folder of the installation that is a link leads elsewhere: what it holds counts as missing, and stays as it is.
void tst_UpdateHandOver::linksInTheInstallation() {
    write(dir_->filePath("elsewhere/a"), "first");
    QVERIFY(QFile::link(dir_->filePath("elsewhere"), installed("plugins")));
    QVERIFY(QFile::link(dir_->filePath("elsewhere/a"), installed("updater.sh")));
    const QByteArray updater = "#!/bin/sh\n:>\"$2/told\"\n";
    odd_->describe(OddServer::descriptionOf({{"plugins/a", "first"}, {"updater.sh", updater}}));
    odd_->serveFile("plugins/a", "first");
    odd_->serveFile("updater.sh", updater);
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
    QCOMPARE(filesBelow(fetched().chopped(1)), (QStringList{"plugins/a", "updater.sh"}));
    download_->install();
    QVERIFY(waitFor(State::HandedOver));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(installed("told")), Long);
    QCOMPARE(read(dir_->filePath("elsewhere/a")), QByteArray("first"));
    QVERIFY(!QFileInfo(installed("updater.sh")).isSymLink());
}

QTEST_GUILESS_MAIN(tst_UpdateHandOver)
#include "tst_UpdateHandOver.moc"
