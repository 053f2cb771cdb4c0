#include "map/MapTest.h"

#include "base/DeviceModel.h"
#include "base/JsonText.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QTreeWidget>

void MapTest::giveDevices() {
    sdk_.setDocument(R"({"type":"ipnclist"})", R"({"ipnclist":[
        {"ipncid":"A","type":"video","online":true,"nickname":"甲","interfaces":[
            {"pid":10,"name":"温度","input":[{"pid":101,"ifpid":10,"name":"T","unit":"℃","value":21.5,"state":1},
                                             {"pid":102,"ifpid":10,"name":"H","unit":"%"}]},
            {"pid":12,"name":"定位","protocol":"4353","info":{"keep":1,"locations":[{"x":"10","y":"5"}]},
             "input":[{"pid":121,"ifpid":12,"name":"x","unit":"m"}]}]},
        {"ipncid":"B","type":"sensor","interfaces":[{"pid":20,"name":"<b>P","input":[{"pid":201,"ifpid":20,"name":"p"}]}]}],
        "group":[]})");
    manager_->deviceFresh();
}

void MapTest::giveMaps(const QJsonArray& own, const QJsonArray& shared, const QJsonObject& icons) {
    const QJsonObject document{{QStringLiteral("userconfig"),
                                QJsonObject{{QStringLiteral("maps"), own}, {QStringLiteral("sharemaps"), shared}}},
                               {QStringLiteral("fileinfo"), QJsonObject{{QStringLiteral("icons"), icons}}}};
    sdk_.setDocument(R"({"type":"userinfo"})", QJsonDocument(document).toJson().toStdString());
}

QJsonObject MapTest::mapOf(const char* id, const QString& name, const QJsonArray& markers, const char* type) {
    const QJsonObject distance{{QStringLiteral("w"), QStringLiteral("40")},
                               {QStringLiteral("h"), QStringLiteral("20")}};
    return {{QStringLiteral("pid"), QLatin1String(id)},
            {QStringLiteral("name"), name},
            {QStringLiteral("type"), QLatin1String(type)},
            {QStringLiteral("filename"), QLatin1String(id) + QStringLiteral(".png")},
            {QStringLiteral("range"), QJsonObject{{QStringLiteral("distance"), distance}}},
            {QStringLiteral("sensors"), markers}};
}

QJsonObject MapTest::markerOf(const char* id, const char* pid, const QString& name, double x, double y) {
    return {{QStringLiteral("sensorid"), QLatin1String(id)},
            {QStringLiteral("pid"), QLatin1String(pid)},
            {QStringLiteral("ipncid"), QStringLiteral("A")},
            {QStringLiteral("name"), name},
            {QStringLiteral("point"), QJsonObject{{QStringLiteral("x"), QString::number(x, 'g', 17)},
                                                  {QStringLiteral("y"), QString::number(y, 'g', 17)}}},
            {QStringLiteral("showdatas"), true}};
}

void MapTest::serveFiles(bool has) {
    // Before the script of the account's tests: whoever asks for a file gets one.
    sdk_.onRequest = [script = sdk_.onRequest, has](const FakeSdk::Request& request) -> std::vector<std::string> {
        const QVariantMap inner = corvanta::json::parseObject(request.json).value(QStringLiteral("urlreq")).toMap();
        if (inner.value(QStringLiteral("reqtype")) != QStringLiteral("userdown"))
            return script(request);
        if (!has)
            return {error("(http 404)").toStdString()};
        QImage picture(400, 200, QImage::Format_RGB32);
        picture.fill(Qt::gray);
        picture.save(inner.value(QStringLiteral("params")).toMap().value(QStringLiteral("savepath")).toString(),
                     "PNG");
        return {ok().toStdString()};
    };
}

QStringList MapTest::filesAsked() {
    QStringList names;
    for (const QVariantMap& parameters : sent("userdown"))
        names += parameters.value(QStringLiteral("filename")).toString();
    names.sort();
    return names;
}

QList<QVariantMap> MapTest::flows(const char* type) {
    QList<QVariantMap> result;
    for (const FakeSdk::Request& request : sdk_.requests()) {
        const QVariantMap map = corvanta::json::parseObject(request.json);
        if (map.value(QStringLiteral("reqtype")) == QLatin1String(type) || map.contains(QLatin1String(type)))
            result += map;
    }
    return result;
}

int MapTest::idOfLast() {
    return sdk_.requests().back().id;
}

void MapTest::choose(const char* menu, const char* action) {
    QMenu* open = nullptr;
    QVERIFY(QTest::qWaitFor([&open, menu] {
        open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return open != nullptr && open->objectName() == QLatin1String(menu);
    }));
    for (QAction* const one : open->actions()) {
        if (one->objectName() != QLatin1String(action))
            continue;
        QVERIFY2(one->isEnabled(), action);
        QTest::mouseClick(open, Qt::LeftButton, Qt::NoModifier, open->actionGeometry(one).center());
        return;
    }
    QFAIL(action);
}

QString MapTest::hostile() {
    return QStringLiteral("</script>'\"\\&<img src=x onerror=alert(1)>%1 %2\u202e\u2028") +
           QString(10000, QLatin1Char('W'));
}

QString MapTest::picture(const char* name, const QSize& size) {
    const QString path = dir_->filePath(QLatin1String(name));
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image.save(path) ? path : QString();
}

void MapTest::select(const QWidget& dialog, const QString& text) {
    auto* const list = find<QTreeWidget>(dialog, "list");
    list->clearSelection();
    const auto found = list->findItems(text, Qt::MatchExactly, 1);
    QCOMPARE(found.size(), 1);
    list->setCurrentItem(found[0]);
}

void MapTest::checkForm(const QWidget& dialog) {
    checkNames(dialog);
    const int height = dialog.minimumSizeHint().height();
    QVERIFY2(height <= 384, qPrintable(QStringLiteral("%1 %2").arg(dialog.objectName()).arg(height)));
}
