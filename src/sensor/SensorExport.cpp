#include "sensor/SensorExport.h"

#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ServerErrors.h"
#include "sensor/Samples.h"
#include "sensor/SensorData.h"

#include <QDateTime>
#include <QSet>

#include <array>
#include <cmath>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvanta::sensor {
namespace {

QVariantMap respOf(const QVariantMap& reply) {
    return reply.value(QStringLiteral("resp")).toMap();
}

QString momentText(double time, bool isExact) {
    const QDateTime moment = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::llround(time * 1000.0)));
    const QString text = moment.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    const int milliseconds = moment.time().msec();
    return isExact && milliseconds != 0
               ? text + QLatin1Char('.') + QString::number(milliseconds).rightJustified(3, QLatin1Char('0'))
               : text;
}

} // namespace

/// Standard types throughout: threads of the SDK fill it and may be the last to hold it.
struct SensorExport::Rows {
    struct Label {
        std::u16string device;
        std::u16string sensor;
        std::u16string input;
        std::u16string unit;
    };
    std::unordered_map<int, Label> labels;
    std::u16string normal;
    std::u16string abnormal;
    bool isBySpans = false;
    LogRows rows;

    void add(const QVariantMap& answers) {
        for (auto answer = answers.begin(); answer != answers.end(); ++answer) {
            const auto label = labels.find(answer.key().toInt());
            if (label == labels.end())
                continue;
            for (const Sample& sample : readSamples(answer->toMap().value(QStringLiteral("datas")).toList()))
                addRow(label->second, sample);
        }
    }

private:
    void addRow(const Label& label, const Sample& sample) {
        const QString time = momentText(sample.time, !isBySpans);
        const auto text = [](double value) {
            return QString::number(value, 'g', 10);
        };
        const std::array<QString, 3> values{text(isBySpans ? sample.low : sample.value), text(sample.value),
                                            text(sample.high)};
        std::vector<QStringView> cells{time, label.device, label.sensor, label.input};
        for (std::size_t i = 0; i < (isBySpans ? values.size() : 1); ++i)
            cells.emplace_back(values[i]);
        cells.emplace_back(label.unit);
        if (!isBySpans)
            cells.emplace_back(sample.isNormal ? normal : abnormal);
        rows.append(cells);
    }
};

SensorExport::SensorExport(SdkGateway& gateway, QObject* parent)
    : QObject(parent)
    , gateway_(gateway) {
    silence_.setSingleShot(true);
    connect(&silence_, &QTimer::timeout, this, [this] {
        cancel();
        emit sigFailed(corvanta::serverErrors::noReplyText());
    });
}

SensorExport::~SensorExport() {
    cancel();
}

QStringList SensorExport::header(bool isBySpans) {
    QStringList columns{tr("时间"), tr("设备"), tr("传感器"), tr("采集输入")};
    if (isBySpans)
        return columns << tr("最小值") << tr("平均值") << tr("最大值") << tr("单位");
    return columns << tr("数值") << tr("单位") << tr("通讯");
}

void SensorExport::start(const ReportPlan& plan) {
    cancel();
    rows_ = std::make_shared<Rows>();
    rows_->isBySpans = plan.step > 0;
    rows_->rows = LogRows(header(rows_->isBySpans).size());
    rows_->normal = tr("正常").toStdU16String();
    rows_->abnormal = tr("异常").toStdU16String();
    QVariantList pids;
    for (const InputRecord& input : plan.inputs) {
        pids += input.pid;
        rows_->labels[input.pid] = {input.device.toStdU16String(), input.sensor.toStdU16String(),
                                    input.name.toStdU16String(), input.unit.toStdU16String()};
    }
    QVariantMap parameters{{QStringLiteral("inputid"), pids},
                           {QStringLiteral("mode"), QStringLiteral("all")},
                           {QStringLiteral("begin"), QString::number(plan.begin)},
                           {QStringLiteral("end"), QString::number(plan.end)}};
    if (plan.step > 0)
        parameters.insert(QStringLiteral("step"), plan.step);
    gate_ = std::make_shared<CallbackGate>();
    const auto onMessage = [this, gate = gate_, rows = rows_](const std::string& text) {
        const QVariantMap resp = respOf(json::parseObject(text));
        rows->add(resp.value(QStringLiteral("sensordataresp")).toMap());
        const qint64 done = resp.value(QStringLiteral("done")).toLongLong();
        const qint64 total = resp.value(QStringLiteral("total")).toLongLong();
        if (resp.value(QStringLiteral("state")) == QStringLiteral("progress"))
            gateway_.inGui(gate, [this, done, total] { onPiece(done, total); });
        else
            gateway_.inGui(gate, [this, text] { onEnd(text); });
    };
    silence_.start(static_cast<int>(gateway_.patience().count()));
    requestId_ = gateway_.RequestMessage(
        requests::deviceRequest(QStringLiteral("传感器采集输入数据导出"), parameters), onMessage, gate_);
    if (requestId_ <= 0) {
        cancel();
        emit sigFailed(tr("请求发送失败!"));
    }
}

void SensorExport::cancel() {
    silence_.stop();
    if (gate_ == nullptr)
        return;
    gateway_.StopRequest(std::exchange(requestId_, 0));
    std::exchange(gate_, nullptr)->close();
    rows_.reset();
}

void SensorExport::onPiece(qint64 done, qint64 total) {
    silence_.start();
    emit sigProgress(done, total);
}

void SensorExport::onEnd(const std::string& reply) {
    silence_.stop();
    std::exchange(gate_, nullptr)->close();
    const QVariantMap map = json::parseObject(reply);
    if (respOf(map).value(QStringLiteral("state")) == QStringLiteral("ok")) {
        emit sigDone();
        return;
    }
    rows_.reset();
    emit sigFailed(serverErrors::textOfReply(map));
}

std::shared_ptr<const logs::Table> SensorExport::takeTable() {
    if (rows_ == nullptr || isRunning())
        return nullptr;
    auto table = std::make_shared<logs::Table>();
    table->header = header(rows_->isBySpans);
    table->rows = std::move(rows_->rows);
    rows_.reset();
    return table;
}

} // namespace corvanta::sensor
