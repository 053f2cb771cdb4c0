#include "sensor/SensorData.h"

#include "base/AppEvents.h"
#include "base/InputFields.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "sensor/InputRecords.h"
#include "sensor/Samples.h"

#include <QDebug>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <memory>

namespace corvanta::sensor {
namespace {

constexpr int InputsOfARequest = 2000;
const QString KeyField = QStringLiteral("querykey");

QVariantMap answersOf(const QVariantMap& reply) {
    return reply.value(QStringLiteral("resp")).toMap().value(QStringLiteral("sensordataresp")).toMap();
}

QString textOf(const QVariant& time) {
    return time.type() == QVariant::Double ? QString::number(time.toDouble(), 'f', 3) : time.toString();
}

} // namespace

QString SampleQuery::key() const {
    return QStringLiteral("%1/%2/%3/%4").arg(QString::number(pid), QString::number(step), textOf(begin), textOf(end));
}

SensorData::SensorData(const AppContext& context, QObject* parent)
    : QObject(parent)
    , context_(context) {
    connect(&context_.events, &AppEvents::sig_UpdateSensorInputData, this,
            [this](const QString&, const QVariantList& values) { takeValues(values); });
}

QString SensorData::earliestTimes() {
    return QStringLiteral("获取传感器输入记录开始时间");
}

QString SensorData::latestTimes() {
    return QStringLiteral("获取传感器最新数据时间");
}

QString SensorData::samples() {
    return QStringLiteral("获取传感器采集输入数据");
}

void SensorData::requestEarliestTimes(const QVector<int>& inputs) {
    requestTimes(earliestTimes(), {{QStringLiteral("begin"), QStringLiteral("oldest")}}, inputs);
}

void SensorData::requestLatestTimes(const QVector<int>& inputs) {
    requestTimes(latestTimes(), {{QStringLiteral("end"), QStringLiteral("latest")}}, inputs);
}

void SensorData::requestTimes(const QString& name, QVariantMap parameters, const QVector<int>& inputs) {
    parameters.insert(QStringLiteral("mode"), QStringLiteral("all"));
    parameters.insert(QStringLiteral("max"), QStringLiteral("1"));
    for (int first = 0; first < inputs.size(); first += InputsOfARequest) {
        QVariantList list;
        for (const int pid : inputs.mid(first, InputsOfARequest))
            list += pid;
        parameters.insert(QStringLiteral("inputid"), list);
        send(name, parameters, {});
    }
}

void SensorData::requestSensorData(const SampleQuery& query) {
    QVariantMap parameters{{QStringLiteral("inputid"), QVariantList{query.pid}},
                           {QStringLiteral("mode"), QStringLiteral("all")},
                           {QStringLiteral("max"), QString::number(query.most)}};
    if (query.begin.isValid())
        parameters.insert(QStringLiteral("begin"), textOf(query.begin));
    if (query.end.isValid())
        parameters.insert(QStringLiteral("end"), textOf(query.end));
    if (query.step > 0)
        parameters.insert(QStringLiteral("step"), query.step);
    send(samples(), parameters, query.key());
}

void SensorData::send(const QString& name, const QVariantMap& parameters, const QString& key) {
    const auto isOver = std::make_shared<bool>(key.isEmpty()); // a reply for times is waited for by nobody
    const std::string json = requests::deviceRequest(samples(), parameters);
    const int id = context_.gateway.request(json, this, [this, name, key, isOver](QVariantMap reply) {
        *isOver = true;
        reply.insert(KeyField, key);
        emit sigReport(name, reply);
    });
    if (key.isEmpty())
        return;
    const auto fail = [this, key, isOver, id] {
        if (*isOver)
            return;
        *isOver = true;
        context_.gateway.StopRequest(id);
        emit sigQueryFailed(key);
    };
    QTimer::singleShot(id > 0 ? static_cast<int>(context_.gateway.patience().count()) : 0, this, fail);
}

void SensorData::onReport(const QString& name, const QVariantMap& reply) {
    if (name != earliestTimes() && name != latestTimes() && name != samples())
        return;
    const QString key = reply.value(KeyField).toString();
    const QVariantMap answers = answersOf(reply);
    if (answers.isEmpty())
        qDebug() << "no sensor data" << name << reply.value(QStringLiteral("retcode")).toInt();
    if (name == earliestTimes())
        storeTimes(QStringLiteral("earliesttime"), answers);
    else if (name == latestTimes())
        storeTimes(QStringLiteral("latesttime"), answers);
    else if (answers.isEmpty())
        emit sigQueryFailed(key);
    else
        emit sigRecords(key, answers.constBegin()->toMap().value(QStringLiteral("datas")).toList());
}

void SensorData::storeTimes(const QString& field, const QVariantMap& answers) {
    QVector<int> changed;
    for (auto answer = answers.begin(); answer != answers.end(); ++answer) {
        const QVariantList records = answer->toMap().value(QStringLiteral("datas")).toList();
        bool isNumber = false;
        const int pid = answer.key().toInt(&isNumber, 10);
        if (!isNumber || records.size() != 1)
            continue;
        const QVariantMap record = records.constFirst().toMap();
        const auto time = readTime(record.value(QStringLiteral("time")));
        if (!time)
            continue;
        context_.inputFields.set(field, pid, static_cast<qint64>(std::floor(*time)));
        const QVariant state = record.value(QStringLiteral("state"));
        if (field == QLatin1String("latesttime") && state.isValid())
            context_.inputFields.set(QStringLiteral("state"), pid, state);
        changed += pid;
    }
    if (!changed.isEmpty())
        emit sigInputsChanged(changed);
}

void SensorData::takeValues(const QVariantList& values) {
    QVector<int> changed;
    changed.reserve(values.size());
    for (const QVariant& entry : values) {
        const QVariantMap map = entry.toMap();
        const int pid = map.value(QStringLiteral("pid")).toInt();
        const auto time = readTime(map.value(QStringLiteral("time")));
        const auto value = readNumber(map.value(QStringLiteral("value")));
        const bool isNormal = isNormalState(map.value(QStringLiteral("state")));
        if (pid <= 0 || !time || (!value && isNormal))
            continue;
        context_.inputFields.set(QStringLiteral("time"), pid, *time);
        context_.inputFields.set(QStringLiteral("latesttime"), pid, static_cast<qint64>(std::floor(*time)));
        context_.inputFields.set(QStringLiteral("state"), pid, isNormal ? 1 : 0);
        if (value)
            context_.inputFields.set(QStringLiteral("value"), pid, *value);
        changed += pid;
    }
    if (changed.size() != values.size())
        qDebug() << "values of inputs that are none were left out:" << values.size() - changed.size();
    if (!changed.isEmpty())
        emit sigInputsChanged(changed);
}

} // namespace corvanta::sensor
