#include "sensor/ChartSetup.h"

#include "base/JsonText.h"

namespace corvanta::sensor {

int chartLayout(const QVariant& setting) {
    bool ok = false;
    const int layout = setting.toInt(&ok);
    return ok && layout >= 0 && layout < static_cast<int>(ChartLayouts.size()) ? layout : 0;
}

QVector<QVector<int>> chartInputs(const QVariant& setting) {
    const QVariantList tiles = setting.toList();
    QVector<QVector<int>> inputs(MostTiles);
    for (int tile = 0; tile < MostTiles && tile < tiles.size(); ++tile) {
        const QVariantList pids = tiles[tile].toList();
        for (const QVariant& entry : pids) {
            const int pid = entry.toInt();
            if (pid > 0 && !inputs[tile].contains(pid) && inputs[tile].size() < MostInputsOfAChart)
                inputs[tile] += pid;
        }
    }
    return inputs;
}

QVariantList toSetting(const QVector<QVector<int>>& inputs) {
    QVariantList tiles;
    for (const QVector<int>& tile : inputs) {
        QVariantList pids;
        for (const int pid : tile)
            pids += pid;
        tiles += QVariant(pids);
    }
    return tiles;
}

QString toCacheText(const QMap<int, Samples>& samples) {
    QVariantMap map;
    for (auto input = samples.begin(); input != samples.end(); ++input) {
        QVariantList pairs; // moment, value, moment, value...
        for (const Sample& sample : *input) {
            if (sample.isNormal)
                pairs << sample.time << sample.value;
        }
        map.insert(QString::number(input.key()), pairs);
    }
    return QString::fromStdString(json::toText(map));
}

QMap<int, Samples> fromCacheText(const QString& text) {
    QMap<int, Samples> all;
    const QVariantMap map = json::parseObject(text.toStdString());
    for (auto input = map.begin(); input != map.end(); ++input) {
        const QVariantList pairs = input->toList();
        QVariantList records;
        for (int i = 0; i + 1 < pairs.size(); i += 2)
            records += QVariantMap{{QStringLiteral("time"), pairs[i]}, {QStringLiteral("value"), pairs[i + 1]}};
        const int pid = input.key().toInt();
        if (pid > 0)
            all.insert(pid, readSamples(records));
    }
    return all;
}

} // namespace corvanta::sensor
