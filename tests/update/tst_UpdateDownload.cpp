#include "update/Nginx.h"
#include "update/OddServer.h"
#include "update/UpdateDownload.h"
#include "update/VersionCheck.h"

#include <QSignalSpy>
#include <QSslConfiguration>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

using namespace corvanta::update;
using State = UpdateDownload::State;

namespace {

constexpr int Long = 60000; // ms; far more than anything takes

const QString NoDescription = QStringLiteral("服务器地址错误或JSON格式错误!");

void write(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("nothing");
}

/// Everything below a folder, as "path" of files.
QStringList filesBelow(const QString& folder) {
    QStringList paths;
    QDirIterator each(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (each.hasNext())
        paths += each.next().mid(folder.size() + 1);
    paths.sort();
    return paths;
}

} // namespace

/// Checks and downloads against real servers: nginx, and one that does everything wrong.
class tst_UpdateDownload final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void fromNginx_data();
    void fromNginx();
    void wrongCertificate();
    void nothingToDo();
    void compressedByTheServer_data();
    void compressedByTheServer();
    void oddAnswers_data();
    void oddAnswers();
    void slowBytes();
    void silentServer();
    void endlessBody();
    void largeDescription();
    void secondTry();
    void cancel_data();
    void cancel();
    void progress();
    void badServers_data();
    void badServers();
    void signedDescriptions();
    void handOver();
    void handOverRefused();
    void linksInTheInstallation();

private:
    CheckResult check(const QString& address, std::optional<SigningKey> key = std::nullopt, int patience = Long);
    /// Checks and begins; the download's end is for the caller to wait for.
    bool begin(const QString& address);
    bool waitFor(State state) {
        return QTest::qWaitFor([this, state] { return download_->state() == state; }, Long);
    }
    QString installed(const QString& path = {}) const { return dir_->filePath("app/" + path); }
    QString fetched(const QString& path = {}) const { return dir_->filePath("Corvanta/" + path); }
    bool nothingLeft() const { return !QFileInfo::exists(fetched().chopped(1)); }

    Nginx nginx_;
    const QSslConfiguration usualSsl_ = QSslConfiguration::defaultConfiguration();
    std::unique_ptr<QTemporaryDir> dir_;
    std::unique_ptr<OddServer> odd_;
    std::unique_ptr<UpdateDownload> download_;
    std::unique_ptr<QSignalSpy> failed_;
    std::unique_ptr<QSignalSpy> ready_;
};

void tst_UpdateDownload::initTestCase() {
    QVERIFY(nginx_.start());
}

void tst_UpdateDownload::init() {
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

void tst_UpdateDownload::cleanup() {
    download_.reset();
    QSslConfiguration::setDefaultConfiguration(usualSsl_);
}

CheckResult tst_UpdateDownload::check(const QString& address, std::optional<SigningKey> key, int patience) {
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

bool tst_UpdateDownload::begin(const QString& address) {
    const CheckResult result = check(address);
    if (result.state != CheckResult::State::Newer) {
        qWarning().noquote() << result.problem;
        return false;
    }
    download_->start(UpdateServer(address), result.description);
    return true;
}

void tst_UpdateDownload::fromNginx_data() {
    QTest::addColumn<bool>("isSecure");
    QTest::addColumn<QString>("below");
    QTest::newRow("http") << false << "";
    QTest::newRow("https") << true << "";
    QTest::newRow("sent elsewhere") << false << "/moved";
}

// A changed file in a folder, a new one, one with a name of all kinds of letters; what is the same is not fetched,
// and what is the users' is not touched.
void tst_UpdateDownload::fromNginx() {
    QFETCH(bool, isSecure);
    QFETCH(QString, below);
    QMap<QString, QByteArray> files{{"same.dll", "same"},
                                    {"lib/changed.dll", QByteArray(300000, 'n')},
                                    {"new/a file 数据 #1%20.txt", "new"},
                                    {"empty", ""},
                                    {"dataBase.db", "theirs"},
                                    {"workspaces/a", "theirs"}};
    for (auto it = files.begin(); it != files.end(); ++it)
        write(nginx_.folder() + "/" + it.key(), it.value());
    write(nginx_.folder() + "/versionMd5.json", OddServer::descriptionOf(files));
    write(installed("dataBase.db"), "mine");
    if (isSecure) {
        QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
        trusting.addCaCertificates(QSslCertificate::fromPath(nginx_.certificate()));
        QSslConfiguration::setDefaultConfiguration(trusting);
    }
    QVERIFY(begin((isSecure ? nginx_.secureAddress() : nginx_.address()) + below));
    QVERIFY(waitFor(State::Ready));
    QCOMPARE(ready_->size(), 1);
    const QStringList wanted{"empty", "lib/changed.dll", "new/a file 数据 #1%20.txt"};
    QCOMPARE(filesBelow(fetched().chopped(1)), wanted);
    for (const QString& path : wanted)
        QCOMPARE(read(fetched(path)), files[path]);
    QCOMPARE(read(installed("lib/changed.dll")), QByteArray("old"));
    download_->cancel();
    QVERIFY(nothingLeft());
    QCOMPARE(read(installed("dataBase.db")), QByteArray("mine"));
}

void tst_UpdateDownload::wrongCertificate() {
    write(nginx_.folder() + "/versionMd5.json", OddServer::descriptionOf({}));
    QCOMPARE(check(nginx_.secureAddress()).problem, NoDescription);
}

void tst_UpdateDownload::nothingToDo() {
    odd_->describe(OddServer::descriptionOf({{"same.dll", "same"}, {"lib/changed.dll", "old"}}));
    QSignalSpy nothing(download_.get(), &UpdateDownload::sigNothingToDo);
    QVERIFY(begin(odd_->address()));
    QTRY_COMPARE_WITH_TIMEOUT(nothing.size(), 1, Long);
    QCOMPARE(download_->state(), State::Idle);
    QCOMPARE(odd_->asked(), QStringList{"versionMd5.json"});
    QVERIFY(nothingLeft());
}

void tst_UpdateDownload::compressedByTheServer_data() {
    QTest::addColumn<QByteArray>("headers");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("isGood");
    const QByteArray content = "new " + QByteArray(1000, 'x');
    const QByteArray wrapped = qCompress(content).mid(4);
    QTest::newRow("deflate") << QByteArray("Content-Encoding: deflate\r\n") << wrapped << true;
    QTest::newRow("deflate, bare") << QByteArray("Content-Encoding: deflate\r\n") << wrapped.mid(2).chopped(4)
                                   << true;
    QTest::newRow("cut off inside") << QByteArray("Content-Encoding: deflate\r\n") << wrapped.chopped(3) << false;
    QTest::newRow("not what it says") << QByteArray("Content-Encoding: gzip\r\n") << content << false;
    QTest::newRow("unknown") << QByteArray("Content-Encoding: br\r\n") << content << false;
    QTest::newRow("zipped, not told") << QByteArray() << wrapped << false;
}

void tst_UpdateDownload::compressedByTheServer() {
    QFETCH(QByteArray, headers);
    QFETCH(QByteArray, body);
    QFETCH(bool, isGood);
    const QByteArray content = "new " + QByteArray(1000, 'x');
    odd_->describe(OddServer::descriptionOf({{"a.dll", content}}));
    odd_->serve(OddServer::folder() + "a.dll", {OddServer::good(body, headers)});
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(isGood ? State::Ready : State::Idle));
    QVERIFY(odd_->lastHead().contains("Accept-Encoding: gzip,deflate\r\n"));
    QVERIFY(odd_->lastHead().contains("Content-Type: application/octet-stream\r\n"));
    if (isGood)
        QCOMPARE(read(fetched("a.dll")), content);
    else
        QVERIFY(nothingLeft());
}

void tst_UpdateDownload::oddAnswers_data() {
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("tries");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QByteArray& answer, int tries, const char* text) {
        QTest::newRow(name) << answer << tries << QString::fromUtf8(text);
    };
    const auto status = [](const char* line, const char* headers = "", const char* body = "") {
        return OddServer::status(line, headers, body).bytes;
    };
    row("404", status("404 Not Found", "", "new"), 1, "Http请求返回未发现文件404");
    row("500", status("500 Internal Server Error", "", "new"), 1, "Http请求服务器返回出错");
    row("204", status("204 No Content"), 1, "Http请求服务器返回出错");
    row("a part", status("206 Partial Content", "Content-Length: 3\r\n", "new"), 1, "Http请求服务器返回出错");
    row("sent round in circles", status("302 Found", "Location: /pelmux_windows_updata/Corvanta/changed.dll\r\n"), 0,
        "Http请求服务器返回出错");
    row("another content", OddServer::good("not").bytes, 2, "文件校验失败");
    row("a page", OddServer::good("<html>sign in first</html>", "Content-Type: text/html\r\n").bytes, 2,
        "文件校验失败");
    row("shorter than told", status("200 OK", "Content-Length: 5\r\n", "new"), 2, "");
    row("longer than told", status("200 OK", "Content-Length: 2\r\n", "new"), 2, "文件校验失败");
    row("cut inside a chunk", status("200 OK", "Transfer-Encoding: chunked\r\n", "9\r\nnew"), 2, "");
    row("cut before the head's end", "HTTP/1.1 200 OK\r\nContent-Le", 0, "");
    row("nothing at all", "", 0, "");
    row("no HTTP", "SSH-2.0-OpenSSH_9.2\r\n\r\n", 0, "");
}

void tst_UpdateDownload::oddAnswers() {
    QFETCH(QByteArray, answer);
    QFETCH(int, tries);
    QFETCH(QString, text);
    odd_->describe(OddServer::descriptionOf({{"changed.dll", "new"}, {"z", "never asked for"}}));
    odd_->serve(OddServer::folder() + "changed.dll", {{answer}});
    QVERIFY(begin(odd_->address()));
    QTRY_COMPARE_WITH_TIMEOUT(failed_->size(), 1, Long);
    const QString told = failed_->first().first().toString();
    QVERIFY2(told.contains("changed.dll") && told.contains(text), qPrintable(told));
    QCOMPARE(download_->state(), State::Idle);
    QVERIFY(nothingLeft());
    if (tries > 0) // without one, Qt tries by itself what broke before the answer began
        QCOMPARE(odd_->asked().count("changed.dll"), tries);
    QVERIFY(!odd_->asked().contains("z"));
    QCOMPARE(read(installed("changed.dll")), QByteArray("old"));
}

void tst_UpdateDownload::slowBytes() {
    odd_->describe(OddServer::descriptionOf({{"a", QByteArray(100, 'a')}}));
    OddServer::Answer slow = OddServer::good(QByteArray(100, 'a'));
    slow.pieces = slow.bytes.size();
    odd_->serve(OddServer::folder() + "a", {slow});
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
}

// It says that it will send something, and then does not: it has gone away after a while, twice.
void tst_UpdateDownload::silentServer() {
    odd_->describe(OddServer::descriptionOf({{"a", "abcdef"}}));
    OddServer::Answer silent{"HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nabc", true};
    odd_->serve(OddServer::folder() + "a", {silent});
    download_->setLimits({500});
    QVERIFY(begin(odd_->address()));
    QTRY_COMPARE_WITH_TIMEOUT(failed_->size(), 1, Long);
    QVERIFY(failed_->first().first().toString().contains(QStringLiteral("服务器响应超时")));
    QCOMPARE(odd_->asked().count("a"), 2);
    QVERIFY(nothingLeft());
    QTRY_COMPARE_WITH_TIMEOUT(odd_->openConnections(), 0, Long);
    odd_->serve(OddServer::folder() + "versionMd5.json", {silent});
    QCOMPARE(check(odd_->address(), std::nullopt, 500).problem, NoDescription);
}

// An answer without an end fills neither memory nor the disk.
void tst_UpdateDownload::endlessBody() {
    OddServer::Answer endless{"HTTP/1.1 200 OK\r\n\r\n" + QByteArray(1024, ' ')};
    endless.endless = true;
    odd_->serve(OddServer::folder() + "versionMd5.json", {endless});
    QCOMPARE(check(odd_->address()).problem, NoDescription);
    QTRY_COMPARE_WITH_TIMEOUT(odd_->openConnections(), 0, Long);
    odd_->describe(OddServer::descriptionOf({{"a", "first"}}));
    odd_->serve(OddServer::folder() + "a", {endless});
    download_->setLimits({Long, 8 << 20});
    QVERIFY(begin(odd_->address()));
    QTRY_COMPARE_WITH_TIMEOUT(failed_->size(), 1, Long);
    QVERIFY(failed_->first().first().toString().contains(QStringLiteral("文件过大")));
    QVERIFY(nothingLeft());
    QTRY_COMPARE_WITH_TIMEOUT(odd_->openConnections(), 0, Long);
}

void tst_UpdateDownload::largeDescription() {
    QByteArray list;
    while (list.size() < 50 << 20)
        list +=
            R"({"fileName":"part )" + QByteArray::number(list.size()) + R"(","Md5":")" + QByteArray(32, 'a') + "\"},";
    write(nginx_.folder() + "/versionMd5.json",
          R"({"LatestVerison":2031,"UpdateEXEname":"u","Md5List":[)" + list.chopped(1) + "]}");
    const CheckResult result = check(nginx_.address());
    QVERIFY2(result.state == CheckResult::State::Newer, qPrintable(result.problem));
    QCOMPARE(static_cast<int>(result.description->files.size()), list.count("fileName"));
}

void tst_UpdateDownload::secondTry() {
    odd_->describe(OddServer::descriptionOf({{"a", "first"}, {"b", "second"}}));
    odd_->serve(OddServer::folder() + "a", {OddServer::good("damaged"), OddServer::good("first")});
    odd_->serve(OddServer::folder() + "b",
                {{"HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nsec"}, OddServer::good("second")});
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
    QCOMPARE(odd_->asked(), (QStringList{"versionMd5.json", "a", "a", "b", "b"}));
    QCOMPARE(read(fetched("a")) + read(fetched("b")), QByteArray("firstsecond"));
}

void tst_UpdateDownload::cancel_data() {
    QTest::addColumn<int>("when");
    for (const State state : {State::Comparing, State::Fetching, State::Ready})
        QTest::addRow("%d", static_cast<int>(state)) << static_cast<int>(state);
}

void tst_UpdateDownload::cancel() {
    QFETCH(int, when);
    odd_->describe(OddServer::descriptionOf({{"a", "first"}, {"b", "second"}}));
    odd_->serveFile("a", "first");
    const bool isMiddle = static_cast<State>(when) == State::Fetching;
    odd_->serve(OddServer::folder() + "b",
                {isMiddle ? OddServer::Answer{"HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nsec", true}
                          : OddServer::good("second")});
    QVERIFY(begin(odd_->address()));
    if (isMiddle)
        QTRY_VERIFY_WITH_TIMEOUT(odd_->asked().contains("b") && read(fetched("a")) == "first", Long);
    else
        QVERIFY(waitFor(static_cast<State>(when)));
    download_->cancel();
    QCOMPARE(download_->state(), State::Idle);
    QVERIFY(nothingLeft());
    QTRY_COMPARE_WITH_TIMEOUT(odd_->openConnections(), 0, Long);
    QCOMPARE(failed_->size(), 0);
    // It can be begun again, and the program's end in the middle leaves nothing either.
    odd_->serveFile("b", "second");
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
    download_.reset();
    QVERIFY(nothingLeft());
}

void tst_UpdateDownload::progress() {
    const QByteArray large(2 << 20, 'x');
    odd_->describe(OddServer::descriptionOf({{"a", large}, {"b", "abc"}}));
    OddServer::Answer slow = OddServer::good(large);
    slow.pieces = 200;
    odd_->serve(OddServer::folder() + "a", {slow});
    odd_->serveFile("b", "abc");
    qint64 most = 0;
    bool isOrderly = true;
    connect(download_.get(), &UpdateDownload::sigProgress, this, [&] {
        const auto progress = download_->progress();
        if (download_->state() != State::Fetching)
            return;
        isOrderly &= progress.files == 2 && progress.download.bytesDone >= most &&
                     progress.download.bytesDone <= progress.download.bytes + 3;
        most = std::max(most, progress.download.bytesDone);
    });
    QVERIFY(begin(odd_->address()));
    QVERIFY(waitFor(State::Ready));
    QVERIFY(isOrderly);
    QVERIFY(most > 0);
    QCOMPARE(download_->progress().files, 0);
    // Who wants another one while one is there is not heard.
    QVERIFY(begin(odd_->address()));
    QCOMPARE(download_->state(), State::Ready);
}

void tst_UpdateDownload::badServers_data() {
    QTest::addColumn<QByteArray>("answer");
    const auto row = [](const char* name, const QByteArray& answer) {
        QTest::newRow(name) << answer;
    };
    row("404 with a good description", OddServer::status("404 Not Found", "", OddServer::descriptionOf({})).bytes);
    row("500", OddServer::status("500 Internal Server Error").bytes);
    row("a page", OddServer::good("<html><body>Welcome</body></html>").bytes);
    row("cut", "HTTP/1.1 200 OK\r\nContent-Length: 50000\r\n\r\n{\"LatestVerison\":2031");
    row("nothing", "");
}

void tst_UpdateDownload::badServers() {
    QFETCH(QByteArray, answer);
    odd_->serve(OddServer::folder() + "versionMd5.json", {{answer}});
    const CheckResult result = check(odd_->address());
    QCOMPARE(result.state, CheckResult::State::Failed);
    QCOMPARE(result.problem, NoDescription);
    QCOMPARE(check("http://127.0.0.1:1").problem, NoDescription);
}

void tst_UpdateDownload::signedDescriptions() {
    const QTemporaryDir dir;
    const QByteArray description = OddServer::descriptionOf({{"a", "first"}});
    write(dir.filePath("text"), description);
    const auto openssl = [&dir](const QString& arguments) {
        QProcess process;
        process.setWorkingDirectory(dir.path());
        process.start("openssl", arguments.split(' '));
        process.waitForFinished(Long);
    };
    openssl("genpkey -algorithm ed25519 -out key.pem");
    openssl("pkey -in key.pem -pubout -outform DER -out public.der");
    openssl("pkeyutl -sign -inkey key.pem -rawin -in text -out text.sig");
    const SigningKey key{read(dir.filePath("public.der")).right(32)};
    odd_->describe(description);
    const CheckResult without = check(odd_->address(), key);
    QCOMPARE(without.state, CheckResult::State::Failed);
    QCOMPARE(without.problem, QStringLiteral("更新描述文件没有签名，已拒绝更新!"));
    odd_->serveFile("versionMd5.json.sig", QByteArray(64, 'x'));
    const CheckResult wrong = check(odd_->address(), key);
    QCOMPARE(wrong.problem, QStringLiteral("更新描述文件的签名不正确，已拒绝更新!"));
    odd_->serveFile("versionMd5.json.sig", read(dir.filePath("text.sig")));
    QCOMPARE(check(odd_->address(), key).state, CheckResult::State::Newer);
    odd_->describe(description + " ");
    QCOMPARE(check(odd_->address(), key).problem, wrong.problem);
}

// The updater that came takes the place of the old one and is started with both folders; it may have been marked as
// not to be written.
void tst_UpdateDownload::handOver() {
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

void tst_UpdateDownload::handOverRefused() {
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
void tst_UpdateDownload::linksInTheInstallation() {
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

QTEST_GUILESS_MAIN(tst_UpdateDownload)
#include "tst_UpdateDownload.moc"
