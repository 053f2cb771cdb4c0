#include "client/Shift.h"

#include "base/AppContext.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "map/ui/FwidgetElectronMap.h"
#include "map/ui/ItemMapWidget.h"
#include "monitor/ui/AccountControl.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/MapControl.h"
#include "monitor/ui/MonitorMainUI.h"
#include "monitor/ui/SensorControl.h"
#include "monitor/ui/tour/TourScript.h"
#include "recording/Recorder.h"
#include "sensor/InputRecords.h"
#include "sensor/ui/ChartPage.h"
#include "video/ui/ItemVideo.h"

#include <QHash>

#include <algorithm>

namespace requests = corvanta::requests;
namespace sensor = corvanta::sensor;
namespace tour = corvanta::tour;

Shift::Shift(MonitorMainUI& window, const AppContext& context, Waiting answerWhen)
    : window_(window)
    , context_(context)
    , answerWhen_(std::move(answerWhen)) {}

bool Shift::obey(const QString& line) {
    const QStringList words = line.split(QLatin1Char(' '));
    const QString word = words.value(1);
    const int number = word.toInt();
    const auto laid = [this] {
        answerWhen_([] { return true; }, [] { return QStringLiteral("laid"); });
    };
    const QHash<QString, std::function<void()>> orders{
        {QStringLiteral("signout"),
         [this] {
             signOut();
         }},
        {QStringLiteral("return"),
         [this] {
             comeBack();
         }},
        {QStringLiteral("layout"),
         [&] {
             window_.grid().setLayout(number, words.value(2).toInt(), false);
             laid();
         }},
        {QStringLiteral("zoom"),
         [&] {
             window_.grid().toggleZoom(number);
             laid();
         }},
        {QStringLiteral("reopen"),
         [&] {
             reopen(number);
         }},
        {QStringLiteral("painting"),
         [&] {
             awaitPictures(number);
         }},
        {QStringLiteral("record"),
         [&] {
             record(number);
         }},
        {QStringLiteral("unrecord"),
         [this] {
             stopRecording();
         }},
        {QStringLiteral("page"),
         [&] {
             showPage(word);
         }},
        {QStringLiteral("charts"),
         [&] {
             showCharts(number);
         }},
        {QStringLiteral("maps"),
         [&] {
             showMaps(number);
         }},
    };
    const auto order = orders.constFind(words.constFirst());
    if (order == orders.cend())
        return false;
    (*order)();
    return true;
}

void Shift::signOut() {
    emit window_.account().sigSignOut();
    answerWhen_([this] { return context_.devices.isEmpty(); }, [] { return QStringLiteral("signed-out"); });
}

void Shift::comeBack() {
    const QVariantMap account{{QStringLiteral("phonenumber"), QStringLiteral("13800138000")},
                              {QStringLiteral("phonepassword"), QStringLiteral("corvanta-8000")}};
    context_.gateway.request(requests::accountRequest(QStringLiteral("登录账号"), account), &window_, {});
    answerWhen_([this] { return context_.devices.deviceOfTile(0).has_value(); },
                [this] { return QStringLiteral("signed-in %1").arg(context_.devices.ipncIds().size()); });
}

void Shift::reopen(int count) {
    for (int index = 0; index < count; ++index) {
        const auto device = context_.devices.deviceOfTile(index);
        if (device && !window_.live().isOpen(*device))
            window_.live().open(*device);
    }
    answerWhen_([] { return true; }, [] { return QStringLiteral("reopened"); });
}

void Shift::awaitPictures(int count) {
    std::vector<std::uint32_t> before;
    for (int index = 0; index < count; ++index)
        before.push_back(window_.grid().tile(index)->counters().received);
    answerWhen_(
        [this, before = std::move(before)] {
            int index = 0;
            return std::all_of(before.begin(), before.end(), [this, &index](std::uint32_t received) {
                return window_.grid().tile(index++)->counters().received != received;
            });
        },
        [] { return QStringLiteral("painting"); });
}

void Shift::record(int count) {
    for (int index = 0; index < count; ++index) {
        if (const auto device = context_.devices.deviceOfTile(index))
            window_.recorder().start(*device);
    }
    answerWhen_(
        [this, count] {
            const QStringList ids = window_.recorder().wanted();
            return ids.size() == count && std::all_of(ids.begin(), ids.end(), [this](const QString& id) {
                       return !window_.recorder().file(id).isEmpty();
                   });
        },
        [count] { return QStringLiteral("recording %1").arg(count); });
}

void Shift::stopRecording() {
    const QStringList ids = window_.recorder().wanted();
    for (const QString& id : ids)
        window_.recorder().stop(id);
    answerWhen_(
        [this, ids] {
            return std::all_of(ids.begin(), ids.end(),
                               [this](const QString& id) { return window_.recorder().file(id).isEmpty(); });
        },
        [] { return QStringLiteral("recording 0"); });
}

void Shift::showPage(const QString& name) {
    tour::click(&window_, qPrintable(name + QStringLiteral("Module")));
    answerWhen_([] { return true; }, [] { return QStringLiteral("page"); });
}

void Shift::showCharts(int count) {
    tour::click(&window_, "chartModule");
    tour::click(&window_, qPrintable(QStringLiteral("chartLayout%1").arg(count)));
    for (const sensor::InputRecord& input : sensor::inputsOf(context_.devices).mid(0, count))
        window_.sensors().charts()->showInputs({input.pid});
    answerWhen_([] { return true; }, [] { return QStringLiteral("page"); });
}

void Shift::showMaps(int count) {
    tour::click(&window_, "mapModule");
    tour::click(&window_, qPrintable(QStringLiteral("mapLayout%1").arg(count)));
    answerWhen_([this] { return !window_.maps().page()->document().maps().isEmpty(); },
                [this, count] {
                    corvanta::map::FwidgetElectronMap& page = *window_.maps().page();
                    int number = 0;
                    for (const corvanta::map::MapRecord& map : page.document().maps()) {
                        if (number < count && !page.isOpen(map.id))
                            page.cell(number)->openMap(map.id);
                        ++number;
                    }
                    return QStringLiteral("page");
                });
}
