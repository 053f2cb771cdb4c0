#include "update/Signature.h"
#include "update/UpdateDescription.h"
#include "update/UpdateFiles.h"
#include "update/UserData.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace corvanta::update;
using namespace updateFiles;

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

} // namespace

/// The description of a version: which is taken, who signed it, what it leaves alone, and what this program writes.
class tst_UpdateDescription final : public QObject {
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
    void signatures();
};

void tst_UpdateDescription::descriptions_data() {
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

void tst_UpdateDescription::descriptions() {
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

void tst_UpdateDescription::refusedDescriptions_data() {
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

void tst_UpdateDescription::refusedDescriptions() {
    QFETCH(QByteArray, text);
    const auto parsed = parseDescription(text);
    QVERIFY(!parsed.description);
    QTEST(parsed.problem, "problem");
}

void tst_UpdateDescription::largeDescription() {
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

void tst_UpdateDescription::userData_data() {
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

void tst_UpdateDescription::userData() {
    QFETCH(QString, path);
    QFETCH(bool, isFolder);
    QTEST(isUserData(path, isFolder), "isUsers");
}

// What this program describes is what md5sum finds, without the users' files and without links.
void tst_UpdateDescription::writtenDescription() {
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

// The keys and signatures of the system's own tool.
void tst_UpdateDescription::signatures() {
    const QTemporaryDir dir;
    const QByteArray text = described("[" + file("a") + "]");
    sign(dir.path(), text);
    const QByteArray der = read(dir.filePath("public.der"));
    QVERIFY(der.size() > 32);
    const SigningKey key{der.right(32)};
    const QByteArray signature = read(dir.filePath("text.sig"));
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

QTEST_GUILESS_MAIN(tst_UpdateDescription)
#include "tst_UpdateDescription.moc"
