#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>

namespace corvanta::manage {

/// What a camera can do, as its "ptzcaps" say.
struct PtzCaps {
    bool pan = false;
    bool tilt = false;
    bool zoom = false;
    bool focus = false;
    bool iris = false;
    int presets = 0; ///< how many it keeps
    int cruises = 0;

    bool any() const { return pan || tilt || zoom || focus || iris; }
    /// What is no map, null above all, is a camera that cannot be moved.
    static PtzCaps fromValue(const QVariant& value);
};

struct PtzPreset {
    int index = 0; ///< from 1
    QString name;

    static QVector<PtzPreset> listFrom(const QVariant& value);
};

struct PtzCruise {
    struct Point {
        int preset = 0;
        int seconds = 0;

        bool operator==(const Point& other) const = default;
    };
    static constexpr int LongestStay = 3600; ///< s

    int index = 0; ///< from 1
    QString name;
    QVector<Point> points;

    static QVector<PtzCruise> listFrom(const QVariant& value);
    /// As "ptzcruiseset" takes it.
    QVariantMap toMap() const;
};

} // namespace corvanta::manage
