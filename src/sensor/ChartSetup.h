#pragma once

#include "sensor/Samples.h"

#include <QMap>
#include <QString>
#include <QVariantList>
#include <QVector>

#include <array>

namespace corvanta::sensor {

/// How the charts are laid out.
struct ChartLayout {
    int rows;
    int columns;
    int tiles() const { return rows * columns; }
};

/// One, two, four and nine tiles.
inline constexpr std::array<ChartLayout, 4> ChartLayouts{{{1, 1}, {2, 1}, {2, 2}, {3, 3}}};
inline constexpr int MostTiles = 9;
/// More inputs in one chart would not be told apart.
inline constexpr int MostInputsOfAChart = 8;

/// The number of a layout as the settings have it; the first one for what is none.
int chartLayout(const QVariant& setting);

/// The inputs of each tile as the settings have them; always `MostTiles` lists without what is no input.
QVector<QVector<int>> chartInputs(const QVariant& setting);
QVariantList toSetting(const QVector<QVector<int>>& inputs);

/// Samples of a tile as one text, by input, and back; what cannot be read is left out. Only moments and values.
QString toCacheText(const QMap<int, Samples>& samples);
QMap<int, Samples> fromCacheText(const QString& text);

} // namespace corvanta::sensor
