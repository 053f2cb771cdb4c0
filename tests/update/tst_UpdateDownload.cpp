#include "update/Nginx.h"
#include "update/UpdateTest.h"

using namespace corvanta::update;
using updateFiles::read;
using updateFiles::write;

namespace {

const QString NoDescription = QStringLiteral("服务器地址错误或JSON格式错误!");

} // namespace

/// Checks and downloads against real servers: nginx, and one that does everything wrong.
class tst_UpdateDownload final : public UpdateTest {
    Q_OBJECT
private slots:
    void initTestCase();
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

private:
    Nginx nginx_;
};

void tst_UpdateDownload::initTestCase() {
    QVERIFY(nginx_.start());
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
    updateFiles::sign(dir.path(), description);
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

QTEST_GUILESS_MAIN(tst_UpdateDownload)
#include "tst_UpdateDownload.moc"
