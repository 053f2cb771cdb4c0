#include "update/BodyDecoder.h"
#include "update/DownloadFolder.h"
#include "update/DownloadMeter.h"
#include "update/FileMd5.h"
#include "update/ProgressText.h"
#include "update/Signature.h"
#include "update/UpdateDescription.h"
#include "update/UpdateServer.h"
#include "update/UserData.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace corvanta::update;

namespace {

const QByteArray Md5(32, 'a');

QByteArray described(const QByteArray& list, const QByteArray& version = "2031",
                     const QByteArray& updater = "\"UpdatePelmux.exe\"") {
    return R"({"LatestVerison":)" + version + R"(,"UpdateEXEname":)" + updater + R"(,"Md5List":)" + list + "}";
}
QByteArray file(const QByteArray& name) {
    return R"({"fileName":")" + name + R"(","Md5":")" + Md5 + R"("})";
}
QByteArray folder(const QByteArray& name, const QByteArray& list) {
    return R"({"fileName":")" + name + R"(","sublist":[)" + list + "]}";
}

/// What a program of the system says, given some input.
QByteArray said(const QString& program, const QStringList& arguments, const QByteArray& input = {},
                const QString& at = {}) {
    QProcess process;
    process.setWorkingDirectory(at);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    return process.waitForFinished(60000) && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

void write(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile made(path);
    QVERIFY(made.open(QIODevice::WriteOnly) && made.write(content) == content.size());
}

} // namespace

/// What is known without a server: descriptions, addresses, compressed bodies, signatures, sums, folders, figures.
class tst_UpdateRules final : public QObject {
    Q_OBJECT
private slots:
    void descriptions_data();
    void descriptions();
    void refusedDescriptions_data();
    void refusedDescriptions();
    void largeDescription();
    void userData_data();
    void userData();
    void writtenDescription();
    void addresses_data();
    void addresses();
    void bodies_data();
    void bodies();
    void brokenBodies_data();
    void brokenBodies();
    void signatures();
    void sums();
    void downloadFolder();
    void downloadFolderAndLinks();
    void meter();
    void progressTexts();
};

void tst_UpdateRules::descriptions_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("version");
    QTest::addColumn<QStringList>("paths");
    const auto row = [](const char* name, const QByteArray& text, int version, const QStringList& paths) {
        QTest::newRow(name) << text << version << paths;
    };
    row("this version", described("[" + file("a") + "]", "2030"), 2030, {});
    row("an old one, of which nothing else is read", R"({"LatestVerison":12,"Md5List":"x"})", 12, {});
    row("the next one", described("[" + file("a.dll") + "]"), 2031, {"a.dll"});
    row("nothing in it", described("[]"), 2031, {});
    row("folders", described("[" + folder("p", file("a") + "," + folder("q", file("b"))) + "," + file("c") + "]"),
        2031, {"p/a", "p/q/b", "c"});
    row("letters of all kinds", described("[" + file("\xe6\x95\xb0\xe6\x8d\xae .~#%&.txt") + "]"), 2031,
        {QStringLiteral("数据 .~#%&.txt")});
    row("capital digits", described(R"([{"fileName":"a","Md5":")" + QByteArray(32, 'A') + R"("}])"), 2031, {"a"});
    row("the users' own",
        described("[" + file("dataBase.db") + "," + file("versionMd5.json") + "," +
                  folder("workspaces", file("a") + "," + file("../x")) + "," + folder("Config", file("set.json")) +
                  "," + folder("p", file("DATABASE.DB") + "," + folder("Workspaces", file("b")) + "," + file("c")) +
                  "]"),
        2031, {"p/c"});
    row("the same name in two folders", described("[" + folder("p", file("a")) + "," + folder("q", file("a")) + "]"),
        2031, {"p/a", "q/a"});
}

void tst_UpdateRules::descriptions() {
    QFETCH(QByteArray, text);
    const auto parsed = parseDescription(text);
    QVERIFY2(parsed.description.has_value(), qPrintable(parsed.problem));
    QTEST(parsed.description->version, "version");
    QStringList paths;
    for (const ListedFile& listed : parsed.description->files) {
        paths += listed.path;
        QCOMPARE(listed.md5, Md5);
    }
    QTEST(paths, "paths");
}

void tst_UpdateRules::refusedDescriptions_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem");
    const QString none = QStringLiteral("服务器地址错误或JSON格式错误!");
    const auto row = [](const char* name, const QByteArray& text, const QString& problem) {
        QTest::newRow(name) << text << problem;
    };
    row("nothing", "", none);
    row("a page", "<!DOCTYPE html><html><body>It works!</body></html>", none);
    row("a list", "[]", none);
    row("cut off", described("[" + file("a") + "]").chopped(2), none);
    row("no version", "{}", none);
    row("a number as text", described("[]", "\"2031\""), none);
    row("no whole number", described("[]", "2031.5"), none);
    row("a number without end", described("[]", "1e308"), none);
    row("below zero", described("[]", "-1"), none);
    row("a folder 10,000 deep",
        described("[" + QByteArray(R"({"fileName":"d","sublist":[)").repeated(10000) +
                  QByteArray("]}").repeated(10000) + "]"),
        none);
    const auto refused = [&row](const char* name, const QByteArray& text, const char* why) {
        row(name, text, QStringLiteral("更新描述文件不合法(%1)，已拒绝更新!").arg(QString::fromUtf8(why)));
    };
    refused("a folder 100 deep",
            described("[" + QByteArray(R"({"fileName":"d","sublist":[)").repeated(100) +
                      QByteArray("]}").repeated(100) + "]"),
            "目录层级过深");
    refused("no list", R"({"LatestVerison":2031,"UpdateEXEname":"u"})", "没有文件列表");
    refused("a list that is none", described("{}"), "没有文件列表");
    for (const char* updater :
         {R"("../u")", R"("a/u")", R"("a\\u")", R"("C:u")", R"("")", "5", R"("versionMd5.json")"})
        refused(updater, described("[]", "2031", updater), "升级程序名非法");
    for (const char* name :
         {"",    ".",       "..",   "/etc/passwd", "../a",      "a/b",      R"(a\\b)",    "C:", R"(C:\\a)",
          "con", "NUL.txt", "com1", "LPT9.dll",    "a\\u0000b", "a\\n",     "\\u001b[2J", "a.", "a ",
          "a*",  "a?",      "a|b",  "<a>",         R"(\"a)",    "a:stream", "\\ud800"})
        QTest::addRow("name %s", name) << described("[" + folder("p", file(name)) + "]")
                                       << QStringLiteral("更新描述文件不合法(文件名非法)，已拒绝更新!");
    refused("a name of a megabyte", described("[" + file(QByteArray(1 << 20, 'n')) + "]"), "文件名非法");
    refused("a name that is a number", described(R"([{"fileName":5}])"), "文件名非法");
    refused("no name", described(R"([{"Md5":"x"}])"), "文件名非法");
    refused("the same twice", described("[" + file("a") + "," + file("a") + "]"), "文件名重复");
    refused("but for the case", described("[" + file("README") + "," + file("readme") + "]"), "文件名重复");
    refused("a file and a folder", described("[" + folder("a", "") + "," + file("a") + "]"), "文件名重复");
    refused("accents written in two ways", described("[" + file("\xc3\xa9") + "," + file("e\xcc\x81") + "]"),
            "文件名重复");
    refused("an entry that is none", described("[5]"), "条目格式错误");
    refused("no sum", described(R"([{"fileName":"a"}])"), "MD5格式错误");
    refused("a short sum", described(R"([{"fileName":"a","Md5":"abc"}])"), "MD5格式错误");
    refused("a sum with other letters", described(R"([{"fileName":"a","Md5":")" + QByteArray(32, 'g') + R"("}])"),
            "MD5格式错误");
    const QByteArray longName = QByteArray(200, 'n');
    refused("a long path",
            described("[" + (R"({"fileName":")" + longName + R"(","sublist":[)").repeated(6) + file("a") +
                      QByteArray("]}").repeated(6) + "]"),
            "路径过长");
}

void tst_UpdateRules::refusedDescriptions() {
    QFETCH(QByteArray, text);
    const auto parsed = parseDescription(text);
    QVERIFY(!parsed.description);
    QTEST(parsed.problem, "problem");
}

void tst_UpdateRules::largeDescription() {
    QByteArray list = "[";
    int files = 0;
    while (list.size() < 50 << 20) {
        list += file("a file with a name of some length, number " + QByteArray::number(files)) + ",";
        ++files;
    }
    const auto parsed = parseDescription(described(list + file("last") + "]"));
    QVERIFY2(parsed.description.has_value(), qPrintable(parsed.problem));
    QCOMPARE(static_cast<int>(parsed.description->files.size()), files + 1);
    list.clear();
    const QByteArray tooLarge(LargestDescription + 1, ' ');
    QVERIFY(!parseDescription(tooLarge).description);
}

void tst_UpdateRules::userData_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<bool>("isUsers");
    const auto row = [](const char* path, bool isFolder, bool isUsers) {
        QTest::addRow("%s%s", path, isFolder ? "/" : "") << QString(path) << isFolder << isUsers;
    };
    row("dataBase.db", false, true);
    row("sub/dataBase.db", false, true);
    row("database.DB", false, true);
    row("dataBase.db-wal", false, true);
    row("versionMd5.json", false, true);
    row("versionMd5.json.sig", false, true);
    row("workspaces", true, true);
    row("sub/workspaces", true, true);
    row("config", true, true);
    row("service", true, true);
    row("sub/config", true, false);
    row("workspaces", false, false);
    row("config", false, false);
    row("dataBase.db", true, false);
    row("dataBase.dbx", false, false);
    row("corvanta.exe", false, false);
}

void tst_UpdateRules::userData() {
    QFETCH(QString, path);
    QFETCH(bool, isFolder);
    QTEST(isUserData(path, isFolder), "isUsers");
}

// What this program describes is what md5sum finds, without the users' files and without links.
void tst_UpdateRules::writtenDescription() {
    const QTemporaryDir dir;
    const QString at = dir.path();
    const QStringList listed{"corvanta.exe", "lib.txt", "lib/a.dll", "lib/deep/b 数据.dll", ".hidden", "empty"};
    for (const QString& path : listed)
        write(at + "/" + path, path == "empty" ? QByteArray() : path.toUtf8().repeated(1000));
    for (const char* users :
         {"dataBase.db", "workspaces/a", "lib/workspaces/b", "config/set.json", "lib/versionMd5.json"})
        write(at + "/" + users, "mine");
    QVERIFY(QFile::link(at + "/workspaces", at + "/link"));
    QVERIFY(QFile::link("/etc/passwd", at + "/lib/link"));
    write(at + "/versionMd5.json", QByteArray(100000, 'x'));
    QCOMPARE(writeDescription(at), std::nullopt);

    QFile written(at + "/versionMd5.json");
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QJsonObject object = QJsonDocument::fromJson(written.readAll()).object();
    QCOMPARE(object["LatestVerison"], QJsonValue(2030));
    QCOMPARE(object["UpdateEXEname"], QJsonValue("UpdatePelmux.exe"));
    QStringList sums;
    const std::function<void(const QJsonArray&, const QString&)> walk = [&](const QJsonArray& list,
                                                                            const QString& path) {
        for (const QJsonValue& value : list) {
            const QJsonObject entry = value.toObject();
            if (entry.contains("sublist"))
                walk(entry["sublist"].toArray(), path + entry["fileName"].toString() + "/");
            else
                sums += entry["Md5"].toString() + "  " + path + entry["fileName"].toString();
        }
    };
    walk(object["Md5List"].toArray(), {});
    QCOMPARE(sums.size(), listed.size());
    QCOMPARE(said("md5sum", {"--check", "--quiet"}, sums.join('\n').toUtf8() + "\n", at), QByteArray());
    QVERIFY(!said("md5sum", {"--check"}, sums.join('\n').toUtf8() + "\n", at).isEmpty());

    // A name that no client takes is told to who publishes.
    write(at + "/lib/bad?name", "x");
    QVERIFY(writeDescription(at).has_value());
}

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

// The keys and signatures of the system's own tool.
void tst_UpdateRules::signatures() {
    const QTemporaryDir dir;
    const auto openssl = [&dir](const QString& arguments) {
        return said("openssl", arguments.split(' '), {}, dir.path());
    };
    const QByteArray text = described("[" + file("a") + "]");
    write(dir.filePath("text"), text);
    openssl("genpkey -algorithm ed25519 -out key.pem");
    const QByteArray der = openssl("pkey -in key.pem -pubout -outform DER");
    QVERIFY(der.size() > 32);
    const SigningKey key{der.right(32)};
    openssl("pkeyutl -sign -inkey key.pem -rawin -in text -out text.sig");
    QFile file(dir.filePath("text.sig"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray signature = file.readAll();
    QCOMPARE(signature.size(), 64);
    QVERIFY(isSignedBy(key, text, signature));
    QVERIFY(isSignedBy(key, text, signature.toBase64() + "\n"));

    QByteArray other = signature;
    other[10] = static_cast<char>(other[10] ^ 1);
    QVERIFY(!isSignedBy(key, text, other));
    QVERIFY(!isSignedBy(key, text + " ", signature));
    QVERIFY(!isSignedBy({QByteArray(32, '\0')}, text, signature));
    for (const QByteArray& none : {QByteArray(), QByteArray("404"), QByteArray(64, '\0'), signature.left(63)})
        QVERIFY(!isSignedBy(key, text, none));
    QVERIFY(!isSignedBy({key.bytes.left(31)}, text, signature));
    QVERIFY2(!keyOfThisBuild(), "the tests' build takes unsigned descriptions");
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
