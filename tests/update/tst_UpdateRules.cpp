#include "update/BodyDecoder.h"
#include "update/DownloadFolder.h"
#include "update/DownloadMeter.h"
#include "update/FileMd5.h"
#include "update/ProgressText.h"
#include "update/UpdateFiles.h"
#include "update/UpdateServer.h"

#include <QTemporaryDir>

#include <sys/stat.h>

using namespace corvanta::update;
using namespace updateFiles;

/// What is known without a server: addresses, compressed bodies, sums, folders, figures.
class tst_UpdateRules final : public QObject {
    Q_OBJECT
private slots:
    void addresses_data();
    void addresses();
    void bodies_data();
    void bodies();
    void brokenBodies_data();
    void brokenBodies();
    void sums();
    void downloadFolder();
    void downloadFolderAndLinks();
    void meter();
    void progressTexts();
};

void tst_UpdateRules::addresses_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("url");
    const auto row = [](const char* address, const char* path, const char* url) {
        QTest::addRow("%s %s", address, path)
            << QString::fromUtf8(address) << QString::fromUtf8(path) << QByteArray(url);
    };
    row("http://10.0.0.1:8080", "a.dll", "http://10.0.0.1:8080/pelmux_windows_updata/Corvanta/a.dll");
    row(" https://host/ ", "p/a.dll", "https://host/pelmux_windows_updata/Corvanta/p/a.dll");
    row("http://host/sub/", "a", "http://host/sub/pelmux_windows_updata/Corvanta/a");
    row("http://host", "a?b#c%20 数", "http://host/pelmux_windows_updata/Corvanta/a%3Fb%23c%2520%20%E6%95%B0");
    row("http://[::1]:80", "a", "http://[::1]:80/pelmux_windows_updata/Corvanta/a");
    for (const char* bad : {"host", "ftp://host", "file:///etc", "http://", "http://h/?q", "http://h/#f",
                            "http://u:p@h", "http://a b", "javascript:1"})
        row(bad, "a", "");
}

void tst_UpdateRules::addresses() {
    QFETCH(QString, address);
    QFETCH(QString, file);
    QFETCH(QByteArray, url);
    QCOMPARE(UpdateServer(address).file(file).toEncoded(), url);
    QCOMPARE(checkServerAddress(address).has_value(), url.isEmpty());
    QVERIFY(!checkServerAddress(" "));
}

void tst_UpdateRules::bodies_data() {
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QByteArray>("body");
    QByteArray content;
    for (int i = 0; i < 40000; ++i)
        content += QByteArray::number(i * i);
    const QByteArray wrapped = qCompress(content).mid(4); // without the length that only Qt writes
    const QByteArray zipped = said("gzip", {"-c"}, content);
    QVERIFY(!zipped.isEmpty());
    const int half = content.size() / 2;
    QTest::newRow("as it is") << QByteArray() << content;
    QTest::newRow("identity") << QByteArray("identity") << content;
    QTest::newRow("gzip") << QByteArray("gzip") << zipped;
    QTest::newRow("in capitals") << QByteArray(" GZIP ") << zipped;
    QTest::newRow("two members") << QByteArray("gzip")
                                 << said("gzip", {"-c"}, content.left(half)) +
                                        said("gzip", {"-c"}, content.mid(half));
    QTest::newRow("deflate") << QByteArray("deflate") << wrapped;
    QTest::newRow("deflate without wrapping") << QByteArray("deflate") << wrapped.mid(2).chopped(4);
}

void tst_UpdateRules::bodies() {
    QFETCH(QByteArray, encoding);
    QFETCH(QByteArray, body);
    QByteArray content;
    for (int i = 0; i < 40000; ++i)
        content += QByteArray::number(i * i);
    for (const int piece : {2, 1000, body.size()}) {
        QByteArray decoded;
        BodyDecoder decoder(encoding, [&decoded](const char* data, std::size_t count) {
            decoded.append(data, static_cast<int>(count));
            return true;
        });
        for (int at = 0; at < body.size(); at += piece)
            QVERIFY(decoder.feed(body.mid(at, piece)));
        QVERIFY(decoder.isComplete());
        QCOMPARE(decoded, content);
    }
}

void tst_UpdateRules::brokenBodies_data() {
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("isTaken");
    const QByteArray zipped = said("gzip", {"-c"}, QByteArray(5000, 'x'));
    QByteArray damaged = zipped;
    damaged[damaged.size() - 6] = static_cast<char>(damaged[damaged.size() - 6] ^ 1); // the sum at its end
    QTest::newRow("cut off") << QByteArray("gzip") << zipped.chopped(5) << true;
    QTest::newRow("damaged") << QByteArray("gzip") << damaged << false;
    QTest::newRow("no gzip at all") << QByteArray("gzip") << QByteArray(100, 'a') << false;
    QTest::newRow("more behind it") << QByteArray("gzip") << zipped + "more" << false;
    QTest::newRow("more behind deflate") << QByteArray("deflate") << qCompress("abc").mid(4) + "more" << false;
    QTest::newRow("unknown") << QByteArray("br") << QByteArray("abc") << false;
}

void tst_UpdateRules::brokenBodies() {
    QFETCH(QByteArray, encoding);
    QFETCH(QByteArray, body);
    QFETCH(bool, isTaken);
    BodyDecoder decoder(encoding, [](const char*, std::size_t) { return true; });
    QCOMPARE(decoder.feed(body), isTaken);
    QVERIFY(!isTaken || !decoder.isComplete());
    // A sink that has enough ends it.
    BodyDecoder full({}, [](const char*, std::size_t) { return false; });
    QVERIFY(!full.feed("abc"));
    QVERIFY(!full.feed("abc"));
}

void tst_UpdateRules::sums() {
    const QTemporaryDir dir;
    const QTemporaryDir elsewhere;
    const QString at = dir.path();
    write(elsewhere.filePath("secret"), "secret");
    std::vector<QString> paths;
    QByteArray list;
    for (int i = 0; i < 300; ++i) {
        const QString path = QStringLiteral("d%1/f%2").arg(i % 7).arg(i);
        write(at + "/" + path, QByteArray(i * 2000, static_cast<char>('a' + i % 26)));
        paths.push_back(path);
        list += path.toUtf8() + '\0';
    }
    HashProgress progress;
    const auto sums = md5OfFiles(at, paths, progress);
    QCOMPARE(progress.done.load(), 300);
    QByteArray expected;
    for (std::size_t i = 0; i < sums.size(); ++i)
        expected += sums[i] + "  " + paths[i].toUtf8() + "\n";
    QCOMPARE(said("xargs", {"-0", "md5sum"}, list, at), expected);

    QVERIFY(QFile::link(elsewhere.filePath("secret"), at + "/link"));
    QVERIFY(QFile::link(elsewhere.path(), at + "/folder"));
    QCOMPARE(mkfifo(qPrintable(at + "/pipe"), 0600), 0);
    const std::vector<QString> odd{"missing", "link", "folder/secret", "folder", "d1", "pipe", "d1/f1/x"};
    HashProgress again;
    for (const QByteArray& sum : md5OfFiles(at, odd, again))
        QCOMPARE(sum, QByteArray());
    // The folder that is asked for may be reached by a link.
    QVERIFY(QFile::link(at, elsewhere.filePath("link")));
    HashProgress third;
    QVERIFY(!md5OfFiles(elsewhere.filePath("link"), {"d1/f1"}, third).front().isEmpty());
    third.cancelled = true;
    QCOMPARE(md5OfFiles(at, paths, third).front(), QByteArray());
}

void tst_UpdateRules::downloadFolder() {
    const QTemporaryDir dir;
    const DownloadFolder folder(dir.filePath("Corvanta"));
    QVERIFY(folder.remove());
    QVERIFY(folder.create());
    QVERIFY(!folder.create());
    struct stat made {};
    QCOMPARE(stat(qPrintable(folder.path()), &made), 0);
    QCOMPARE(static_cast<int>(made.st_mode & 0777), 0700);
    QVERIFY(folder.prepareFor("a/b/c.txt"));
    write(folder.pathOf("a/b/c.txt"), "old");
    QVERIFY(QFile::setPermissions(folder.pathOf("a/b/c.txt"), QFileDevice::ReadOwner));
    QVERIFY(folder.prepareFor("a/b/c.txt"));
    QVERIFY(!QFile::exists(folder.pathOf("a/b/c.txt")));
    write(folder.pathOf("a/file"), "x");
    QVERIFY(!folder.prepareFor("a/file/below"));
    QVERIFY(folder.remove());
    QVERIFY(!QFileInfo::exists(folder.path()));
}

// Links in its place or inside it are removed, and never followed.
void tst_UpdateRules::downloadFolderAndLinks() {
    const QTemporaryDir dir;
    write(dir.filePath("users/precious"), "mine");
    const DownloadFolder folder(dir.filePath("Corvanta"));
    QVERIFY(QFile::link(dir.filePath("users"), folder.path()));
    QVERIFY(!folder.create());
    QVERIFY(!folder.prepareFor("precious"));
    QVERIFY(folder.remove());
    QVERIFY(folder.create());
    QVERIFY(QFile::link(dir.filePath("users"), folder.pathOf("a")));
    QVERIFY(!folder.prepareFor("a/precious"));
    QVERIFY(QFile::link(dir.filePath("users/precious"), folder.pathOf("b")));
    QVERIFY(folder.prepareFor("b"));
    QVERIFY(folder.remove());
    QVERIFY(QFile::exists(dir.filePath("users/precious")));
    // A broken link is in the way, too.
    QVERIFY(QFile::link(dir.filePath("nowhere"), folder.path()));
    QVERIFY(!folder.create());
    QVERIFY(folder.remove() && folder.create());
}

void tst_UpdateRules::meter() {
    DownloadMeter meter({1000, std::nullopt, 3000});
    auto reading = meter.reading();
    QCOMPARE(reading.bytes, qint64(6000)); // the unknown one counts as the mean
    QVERIFY(!reading.secondsLeft);
    meter.update(0, 0, 2000); // the server knows better
    meter.update(1000, 2000, 2000);
    reading = meter.reading();
    QCOMPARE(reading.bytes, qint64(7500));
    QCOMPARE(reading.bytesPerSecond, 2000.0);
    QCOMPARE(*reading.secondsLeft, 3); // 5500 bytes
    meter.finishFile();
    meter.update(2000, 1000, 0);
    meter.fetchAgain();
    QCOMPARE(meter.reading().bytesDone, qint64(2000));
    meter.update(3000, 1000, 0); // what was in vain came over the line all the same
    QCOMPARE(meter.reading().bytesPerSecond, 4000.0 / 3);
    meter.update(9000, 1000, 0); // what is long ago does not count
    QCOMPARE(meter.reading().bytesPerSecond, 0.0);
    QVERIFY(!meter.reading().secondsLeft);
    meter.finishFile();
    meter.finishFile();
    QCOMPARE(meter.reading().filesDone, 3);
    meter.finishFile();
    meter.update(9100, 5, 5);
    QCOMPARE(meter.reading().filesDone, 3);
    QCOMPARE(DownloadMeter().reading().bytes, qint64(0));
}

void tst_UpdateRules::progressTexts() {
    using State = UpdateDownload::State;
    UpdateDownload::Progress progress{"lib/a.dll", 2, 17, {2, 17, 3 << 20, 12 << 20, 1.5 * (1 << 20), 65}};
    auto text = progressText(State::Fetching, progress);
    QCOMPARE(text.what, QStringLiteral("正在下载 3/17: lib/a.dll"));
    QCOMPARE(text.howFar, QStringLiteral("3.0 MB / 12.0 MB  1.5 MB/s  剩余 1:05"));
    QCOMPARE(text.permille, 250);
    progress.download.secondsLeft = 3725;
    QVERIFY(progressText(State::Fetching, progress).howFar.endsWith(QStringLiteral("剩余 1:02:05")));
    progress.download = {};
    QCOMPARE(progressText(State::Fetching, progress).permille, -1);
    text = progressText(State::Comparing, {{}, 50, 200, {}});
    QCOMPARE(text.what, QStringLiteral("正在比对文件 50/200"));
    QCOMPARE(text.permille, 250);
    QVERIFY(progressText(State::Idle, {}).what.isEmpty());
}

QTEST_GUILESS_MAIN(tst_UpdateRules)
#include "tst_UpdateRules.moc"
