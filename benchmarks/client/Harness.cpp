#include "client/Harness.h"

#include "base/AppContext.h"
#include "base/DeviceModel.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/Settings.h"
#include "client/AlarmRun.h"
#include "client/GuiWatch.h"
#include "client/Shift.h"
#include "monitor/ui/Fwidget.h"
#include "monitor/ui/LiveVideo.h"
#include "monitor/ui/MonitorMainUI.h"
#include "video/ui/GLYuvWidget.h"
#include "video/ui/ItemVideo.h"

#include <QCoreApplication>

#include <cstdio>

namespace requests = corvanta::requests;

namespace {

constexpr int patience = 60000; // ms
const QString CameraPrefix = QStringLiteral("wall");

void say(const QString& line) {
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

} // namespace

Harness::Harness(MonitorMainUI& window, const AppContext& context)
    : window_(window)
    , context_(context)
    , shift_(std::make_unique<Shift>(window, context, [this](Shift::Done done, Shift::Answer answer) {
        answerWhen(std::move(done), std::move(answer));
    })) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(1);
    connect(&timer_, &QTimer::timeout, this, &Harness::look);
}

Harness::~Harness() = default;

void Harness::obey(const QString& line) {
    const QString order = line.section(QLatin1Char(' '), 0, 0);
    const int number = line.section(QLatin1Char(' '), 1, 1).toInt();
    sinceOrder_.start();
    if (order == QLatin1String("signin")) {
        signIn();
    } else if (order == QLatin1String("open")) {
        open(number);
    } else if (order == QLatin1String("close")) {
        window_.live().stopAll();
        say(QStringLiteral("closed %1").arg(sinceOrder_.elapsed()));
    } else if (order == QLatin1String("counts")) {
        const ItemVideo::Counters counts = counters();
        say(QStringLiteral("counts %1 %2 %3").arg(counts.received).arg(counts.overwritten).arg(counts.painted));
    } else if (order == QLatin1String("click")) {
        click(number);
    } else if (order == QLatin1String("place")) {
        place();
    } else if (order == QLatin1String("alarms")) {
        alarms(number, line.section(QLatin1Char(' '), 2));
    } else if (order == QLatin1String("blocked")) {
        blocked(line.section(QLatin1Char(' '), 1));
    } else if (order == QLatin1String("quit")) {
        window_.live().stopAll();
        QCoreApplication::quit();
    } else if (!shift_->obey(line)) {
        say(QStringLiteral("failed unknown order"));
    }
}

QStringList Harness::wallCameras() const {
    QStringList result;
    for (const QString& id : context_.devices.ipncIds()) {
        if (id.startsWith(CameraPrefix))
            result += id;
    }
    return result;
}

void Harness::signIn() {
    // The first start's own account; its document is empty once somebody has signed in.
    const QVariantMap account{{QStringLiteral("phonenumber"), QStringLiteral("13800138000")},
                              {QStringLiteral("phonepassword"), QStringLiteral("corvanta-8000")}};
    context_.gateway.request(requests::accountRequest(QStringLiteral("登录账号"), account), this, {});
    answerWhen(
        [this] { return !context_.devices.isEmpty(); },
        [this] {
            const QStringList cameras = wallCameras();
            if (cameras.isEmpty())
                return QStringLiteral("signed-in 0");
            context_.gateway.request(
                requests::accountRequest(QStringLiteral("新建分组"), {{QStringLiteral("name"), CameraPrefix}}), this,
                [this](const QVariantMap& reply) {
                    arrange(reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("groupid")).toString());
                });
            return QString();
        });
}

void Harness::arrange(const QString& groupId) {
    // The members of the default group have the first tiles.
    context_.settings.set(corvanta::keys::DefaultGroup, groupId);
    const QStringList cameras = wallCameras();
    for (const QString& camera : cameras)
        context_.gateway.request(
            requests::accountRequest(QStringLiteral("设置手机账号下设备相关参数"),
                                     {{QStringLiteral("ipncid"), camera}, {QStringLiteral("groupid"), groupId}}),
            this, {});
    answerWhen(
        [this, groupId, count = cameras.size()] {
            const GroupRecord* const group = context_.devices.group(groupId);
            return group != nullptr && context_.devices.members(*group).size() == count;
        },
        [count = cameras.size()] { return QStringLiteral("signed-in %1").arg(count); });
}

void Harness::open(int count) {
    const std::uint32_t before = counters().painted;
    for (int index = 0; index < count; ++index) {
        if (const auto device = context_.devices.deviceOfTile(index))
            window_.live().open(*device);
    }
    answerWhen(
        [this, count, before] {
            return runningTiles(count) == count && counters().painted - before >= static_cast<unsigned>(count);
        },
        [this] { return QStringLiteral("open %1").arg(sinceOrder_.elapsed()); });
}

ItemVideo::Counters Harness::counters() const {
    ItemVideo::Counters sum;
    for (int index = 0; index < window_.grid().grid().poolSize(); ++index) {
        const ItemVideo::Counters one = window_.grid().tile(index)->counters();
        sum.received += one.received;
        sum.overwritten += one.overwritten;
        sum.painted += one.painted;
    }
    return sum;
}

int Harness::runningTiles(int count) const {
    int running = 0;
    for (int index = 0; index < count; ++index) {
        const ItemVideo& tile = *window_.grid().tile(index);
        running += tile.requestId() > 0 && tile.frameSize().width > 0 ? 1 : 0;
    }
    return running;
}

void Harness::click(int index) {
    const auto device = context_.devices.deviceOfTile(index);
    if (!device) {
        say(QStringLiteral("failed no camera"));
        return;
    }
    const ItemVideo& tile = *window_.grid().tile(index);
    const std::uint32_t before = tile.counters().painted;
    window_.live().open(*device);
    answerWhen([&tile, before] { return tile.counters().painted != before; },
               [this] {
                   const double milliseconds = static_cast<double>(sinceOrder_.nsecsElapsed()) / 1e6;
                   window_.live().stopAll();
                   return QStringLiteral("shown %1").arg(milliseconds, 0, 'f', 2);
               });
}

void Harness::alarms(int count, const QString& sound) {
    context_.settings.set(corvanta::keys::AlarmLevel1, true);
    context_.settings.set(corvanta::keys::SoundLevel1, sound);
    alarms_ = std::make_unique<AlarmRun>(context_, window_.storage(), count,
                                         [](const QString& figures) { say(QStringLiteral("alarms ") + figures); });
}

void Harness::blocked(const QString& file) {
    if (!watch_)
        watch_ = std::make_unique<GuiWatch>();
    const GuiWatch::Summary summary = watch_->summary();
    if (!watch_->write(file)) {
        say(QStringLiteral("failed to write %1").arg(file));
        return;
    }
    watch_->clear();
    say(QStringLiteral("blocked %1 %2 %3 %4")
            .arg(summary.beats)
            .arg(summary.median, 0, 'f', 2)
            .arg(summary.percentile99, 0, 'f', 2)
            .arg(summary.worst, 0, 'f', 1));
}

void Harness::place() const {
    QString line = QStringLiteral("place");
    const QWidget* const frame = window_.window();
    for (int index = 0; index < window_.grid().grid().poolSize(); ++index) {
        const QWidget* shown = window_.grid().tile(index);
        if (const QWidget* const renderer = shown->findChild<GLYuvWidget*>())
            shown = renderer;
        const QPoint corner = shown->mapTo(frame, QPoint(0, 0));
        line +=
            QStringLiteral(" %1,%2,%3x%4").arg(corner.x()).arg(corner.y()).arg(shown->width()).arg(shown->height());
    }
    say(line);
}

void Harness::answerWhen(std::function<bool()> done, std::function<QString()> answer) {
    done_ = std::move(done);
    answer_ = std::move(answer);
    timer_.start();
}

void Harness::look() {
    if (!done_()) {
        if (sinceOrder_.elapsed() > patience) {
            timer_.stop();
            say(QStringLiteral("failed to be done in time, %1 tiles run")
                    .arg(runningTiles(window_.grid().grid().poolSize())));
        }
        return;
    }
    timer_.stop();
    // An empty answer: another step follows, which answers.
    const QString line = answer_();
    if (!line.isEmpty())
        say(line);
}
