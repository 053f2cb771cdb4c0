#include "base/Settings.h"
#include "monitor/SavedWorkspace.h"
#include "support/MessageLog.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace keys = corvanta::keys;
namespace workspace = corvanta::workspace;

namespace {

/// A value as it comes out of the settings' file.
QVariant parsed(const char* json) {
    return QJsonDocument::fromJson(QByteArray("{\"v\":") + json + "}").object().value(QLatin1String("v")).toVariant();
}

constexpr QSize Smallest(688, 392);

} // namespace

/// State that the program wrote comes back; state that it never wrote does no harm.
class tst_SavedWorkspace : public QObject {
    Q_OBJECT
private slots:
    void openVideos_data();
    void openVideos();
    void layoutAndZoom_data();
    void layoutAndZoom();
    void windowPlace_data();
    void windowPlace();
    void everythingComesBack();
    void placeOnScreens_data();
    void placeOnScreens();
    void firstPlace();
};

void tst_SavedWorkspace::openVideos_data() {
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("read");
    QTest::addColumn<int>("lines");
    QTest::newRow("missing") << QByteArray("null") << QString() << 0;
    QTest::newRow("two") << QByteArray(R"([{"index":3,"ipncid":"b"},{"index":0,"ipncid":"a"}])")
                         << QStringLiteral("0:a 3:b") << 0;
    QTest::newRow("no list") << QByteArray(R"("a")") << QString() << 0;
    QTest::newRow("strange entries")
        << QByteArray(
               R"([7,{"index":-1,"ipncid":"a"},{"index":"x","ipncid":"a"},{"index":1},{"index":2.5,"ipncid":"a"},
                          {"index":5,"ipncid":"e"}])")
        << QStringLiteral("5:e") << 5;
}

void tst_SavedWorkspace::openVideos() {
    QFETCH(QByteArray, stored);
    const MessageLog log;
    const QMap<int, QString> videos = workspace::readOpenVideos(parsed(stored));
    QStringList words;
    for (auto video = videos.begin(); video != videos.end(); ++video)
        words += QStringLiteral("%1:%2").arg(video.key()).arg(video.value());
    QTEST(words.join(QLatin1Char(' ')), "read");
    QTEST(log.count(QStringLiteral("left out")), "lines");
}

void tst_SavedWorkspace::layoutAndZoom_data() {
    QTest::addColumn<QVariant>("rows");
    QTest::addColumn<QVariant>("columns");
    QTest::addColumn<QVariant>("zoom");
    QTest::addColumn<QString>("read");
    const auto row = [](const char* name, const QVariant& rows, const QVariant& columns, const QVariant& zoom,
                        const char* read) {
        QTest::newRow(name) << rows << columns << zoom << QString::fromLatin1(read);
    };
    row("nothing", {}, {}, {}, "- -1");
    row("eighteen", 3, 6, -1, "3x6 -1");
    row("zoomed", 2.0, 2.0, 5, "2x2 5");
    row("not offered", 6, 3, 63, "- 63");
    row("too large", 9, 9, 64, "- -1");
    row("negative", -3, -3, -2, "- -1");
    row("half a row", 2.5, 2, 1.5, "- -1");
    row("texts", QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), "- -1");
    row("one missing", 2, {}, 1e300, "- -1");
}

void tst_SavedWorkspace::layoutAndZoom() {
    QFETCH(QVariant, rows);
    QFETCH(QVariant, columns);
    QFETCH(QVariant, zoom);
    Settings settings{QString()};
    settings.set(keys::GridRows, rows);
    settings.set(keys::GridColumns, columns);
    settings.set(keys::VideoZoom, zoom);
    const auto shape = workspace::readLayout(settings);
    const QString layout = shape ? QStringLiteral("%1x%2").arg(shape->rows).arg(shape->columns) : QStringLiteral("-");
    QTEST(QStringLiteral("%1 %2").arg(layout).arg(workspace::readZoom(settings, 64)), "read");
}

void tst_SavedWorkspace::windowPlace_data() {
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("usable");
    QTest::newRow("missing") << QByteArray("{}") << false;
    QTest::newRow("no object") << QByteArray("[1,2,3,4]") << false;
    QTest::newRow("no size") << QByteArray(R"({"x":1,"y":2,"width":0,"height":5})") << false;
    QTest::newRow("absurd size") << QByteArray(R"({"x":1,"y":2,"width":5,"height":4000000000})") << false;
    QTest::newRow("far away") << QByteArray(R"({"x":-90000,"y":2,"width":800,"height":500})") << true;
    QTest::newRow("unknown state") << QByteArray(R"({"x":1,"y":2,"width":5,"height":5,"state":"?"})") << true;
}

void tst_SavedWorkspace::windowPlace() {
    QFETCH(QByteArray, stored);
    QTEST(workspace::readWindowPlace(parsed(stored)).has_value(), "usable");
}

void tst_SavedWorkspace::everythingComesBack() {
    const QMap<int, QString> videos{{0, QStringLiteral("CAM<1>")}, {63, QStringLiteral("二")}};
    QCOMPARE(workspace::readOpenVideos(workspace::storedOpenVideos(videos)), videos);
    for (const auto& [maximized, fullScreen] :
         {std::pair(false, false), std::pair(true, false), std::pair(false, true)}) {
        const auto place = workspace::readWindowPlace(
            workspace::storedWindowPlace({QRect(-1200, 40, 900, 600), maximized, fullScreen}));
        QVERIFY(place);
        QCOMPARE(place->normal, QRect(-1200, 40, 900, 600));
        QCOMPARE(place->maximized, maximized);
        QCOMPARE(place->fullScreen, fullScreen);
    }
}

void tst_SavedWorkspace::placeOnScreens_data() {
    QTest::addColumn<QRect>("wanted");
    QTest::addColumn<QRect>("place");
    QTest::newRow("fits") << QRect(100, 100, 800, 500) << QRect(100, 100, 800, 500);
    QTest::newRow("on the other screen") << QRect(2000, 0, 900, 600) << QRect(2000, 0, 900, 600);
    QTest::newRow("outside of every screen") << QRect(-90000, 70000, 800, 500) << QRect(0, 580, 800, 500);
    QTest::newRow("half over the edge") << QRect(1500, -300, 800, 500) << QRect(1120, 0, 800, 500);
    QTest::newRow("larger than the screen") << QRect(-50, -50, 9000, 9000) << QRect(0, 0, 1920, 1080);
    QTest::newRow("too small") << QRect(1900, 1000, 10, 10) << QRect(1232, 688, 688, 392);
}

void tst_SavedWorkspace::placeOnScreens() {
    QFETCH(QRect, wanted);
    QTEST(workspace::placeOnScreens(wanted, Smallest, {QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 720)}), "place");
}

void tst_SavedWorkspace::firstPlace() {
    QCOMPARE(workspace::firstPlace(Smallest, QRect(0, 0, 3840, 2160)).size(), QSize(1280, 720));
    QCOMPARE(workspace::firstPlace(Smallest, QRect(0, 0, 1280, 720)).size(), QSize(1152, 648));
    QCOMPARE(workspace::firstPlace(Smallest, QRect(0, 0, 640, 480)), QRect(0, 24, 688, 432));
}

QTEST_GUILESS_MAIN(tst_SavedWorkspace)
#include "tst_SavedWorkspace.moc"
