#include "base/Settings.h"
#include "support/MessageLog.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

namespace keys = corvanta::keys;

class tst_Settings final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void firstStartWritesAllDefaults();
    void whatCannotBeReadIsKept_data();
    void whatCannotBeReadIsKept();
    void unknownKeysSurvive();
    void titleFollowsItsParts();
    void wrongTypesReadThroughConversion();
    void unwritableFolderIsSkipped();
    void linkedFileStaysALink();
    void snapshotsCanBeReadWhileTheyChange();

private:
    QString file() const { return dir_->filePath(QStringLiteral("config/set.json")); }
    void write(const QByteArray& text) const;
    QVariantMap stored() const;
    QStringList kept() const;

    std::unique_ptr<QTemporaryDir> dir_;
};

void tst_Settings::init() {
    dir_ = std::make_unique<QTemporaryDir>();
}

void tst_Settings::write(const QByteArray& text) const {
    QDir(dir_->path()).mkpath(QStringLiteral("config"));
    QFile out(file());
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(text);
}

QVariantMap tst_Settings::stored() const {
    QFile in(file());
    if (!in.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(in.readAll()).object().toVariantMap();
}

QStringList tst_Settings::kept() const {
    return QDir(dir_->filePath(QStringLiteral("config"))).entryList({QStringLiteral("*.damaged-*")}, QDir::Files);
}

void tst_Settings::firstStartWritesAllDefaults() {
    const MessageLog log;
    Settings settings(file());
    settings.load();
    QVERIFY(!QFile::exists(file()));
    settings.save();
    settings.finishSaving();
    QCOMPARE(log.count(QStringLiteral("已经创建新文件")), 1);
    const QVariantMap map = stored();
    QCOMPARE(map.size(), 16);
    QCOMPARE(map.value(QStringLiteral("APP名称")).toString(), QStringLiteral("Corvanta"));
    QCOMPARE(map.value(QStringLiteral("画面比例")).toString(), QStringLiteral("原始比例"));
    QCOMPARE(map.value(QStringLiteral("磁盘跳转阈值")).toInt(), 128);
    QCOMPARE(map.value(QStringLiteral("录像打包时间")).toInt(), 5);
    QCOMPARE(map.value(QStringLiteral("视频打开最长时间")).toInt(), 1);
    QCOMPARE(map.value(QStringLiteral("代理设置")).toMap(), QVariantMap());
    for (const char* key : {"是否设备异常报警", "是否一级阈值报警", "是否二级阈值报警", "是否三级阈值报警",
                            "是否其他报警", "是否恢复状态", "是否接收报警"})
        QCOMPARE(map.value(QString::fromUtf8(key)), QVariant(true));
#ifndef Q_OS_WIN // the user's own folder is what keeps others out there
    const auto permissions = QFile::permissions(file());
    QVERIFY(!(permissions & (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteOther)));
#endif
}

void tst_Settings::whatCannotBeReadIsKept_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("blank") << QByteArray(" \n") << false;
    QTest::newRow("cut short") << QByteArray("{\"APP名称\": \"mine\", \"公司") << true;
    QTest::newRow("list") << QByteArray("[1,2]") << true;
    QTest::newRow("number") << QByteArray("42") << true;
    QTest::newRow("not text") << QByteArray("\xff\xfe\x00\x01", 4) << true;
    QTest::newRow("nested") << QByteArray(5000, '[') << true;
}

void tst_Settings::whatCannotBeReadIsKept() {
    QFETCH(QByteArray, text);
    QFETCH(bool, isKept);
    write(text);
    Settings settings(file());
    settings.load();
    QCOMPARE(settings.get(keys::DriveThreshold).toInt(), 128);
    settings.save();
    settings.finishSaving();
    QCOMPARE(stored().size(), 16);
    QCOMPARE(kept().size(), isKept ? 1 : 0);
    if (isKept) {
        QFile old(dir_->filePath(QStringLiteral("config/") + kept().constFirst()));
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll(), text);
    }
}

void tst_Settings::unknownKeysSurvive() {
    write("{\"later\": {\"deep\": [1, null]}, \"录像打包时间\": 9}");
    Settings settings(file());
    settings.load();
    settings.save();
    settings.finishSaving();
    QCOMPARE(stored().value(QStringLiteral("later")),
             QVariant(QVariantMap{{QStringLiteral("deep"), QVariantList{1, QVariant::fromValue(nullptr)}}}));
    QCOMPARE(stored().value(QStringLiteral("录像打包时间")).toInt(), 9);
}

void tst_Settings::titleFollowsItsParts() {
    const MessageLog log;
    Settings settings(file());
    settings.load();
    QSignalSpy titles(&settings, &Settings::titleChanged);
    settings.set(keys::CompanyName, QStringLiteral("Y"));
    settings.set(keys::AppName, QStringLiteral("X"));
    settings.set(keys::PackingTime, 7);
    QCOMPARE(titles.size(), 2);
    QCOMPARE(titles.last().first().toString(), QStringLiteral("X--Y"));
    QCOMPARE(log.count(QStringLiteral("修改 APP名称")), 2);
}

void tst_Settings::wrongTypesReadThroughConversion() {
    write("{\"磁盘跳转阈值\": \"viel\", \"是否接收报警\": \"false\", \"代理设置\": 3, \"盘符列表\": \"D:/\"}");
    Settings settings(file());
    settings.load();
    QCOMPARE(settings.get(keys::DriveThreshold).toInt(), 0);
    QVERIFY(!settings.forSdkThreads().acceptsAlarms);
    QVERIFY(!settings.forSdkThreads().proxy);
    QCOMPARE(settings.forSdkThreads().drives, std::vector<std::string>{"D:/"});
}

void tst_Settings::unwritableFolderIsSkipped() {
    // A file where the folder should be cannot be written by anyone, also not by an administrator.
    QFile blocker(dir_->filePath(QStringLiteral("config")));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    Settings settings(file());
    settings.load();
    settings.set(keys::PackingTime, 7);
    settings.save();
    settings.finishSaving();
    QCOMPARE(settings.get(keys::PackingTime).toInt(), 7);
    QVERIFY(QFileInfo(blocker).isFile());
}

void tst_Settings::linkedFileStaysALink() {
#ifdef Q_OS_WIN
    QSKIP("only an administrator makes links there");
#endif
    write("{}");
    const QString real = dir_->filePath(QStringLiteral("real.json"));
    QVERIFY(QFile::rename(file(), real));
    QVERIFY(QFile::link(real, file()));
    Settings settings(file());
    settings.load();
    settings.save();
    settings.finishSaving();
    QVERIFY(QFileInfo(file()).isSymLink());
    QCOMPARE(stored().size(), 16);
}

void tst_Settings::snapshotsCanBeReadWhileTheyChange() {
    Settings settings(file());
    settings.load();
    std::atomic<bool> stop{false};
    std::atomic<int> seen{0};
    std::thread reader([&] {
        while (!stop) {
            const SdkThreadSettings& now = settings.forSdkThreads();
            if (now.proxy && now.proxy->host == "proxy.example" && now.proxy->port == 1080)
                ++seen;
        }
    });
    for (int n = 0; n < 200 || seen == 0; ++n)
        settings.set(keys::Proxy,
                     n % 2 == 1 ? QVariantMap()
                                : QVariantMap{{QStringLiteral("proxyHostName"), QStringLiteral("proxy.example")},
                                              {QStringLiteral("proxyPort"), 1080}});
    stop = true;
    reader.join();
}

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
