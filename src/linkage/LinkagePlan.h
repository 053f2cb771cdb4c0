#pragma once

#include "linkage/Boards.h"

#include <optional>

namespace corvanta::linkage {

/// Several conditions that count as one.
struct ConditionUnion {
    QList<PortRef> inputs;
    QString logic = QStringLiteral("and");
    QVariantMap rest;

    static ConditionUnion fromMap(const QVariantMap& map);
    QVariantMap toMap() const;
};

/// Several actions that count as one.
struct ActionUnion {
    QList<PortRef> outputs;
    QString outMode = QStringLiteral("all");
    int interval = 0; ///< 100 ms
    QVariantMap rest;

    static ActionUnion fromMap(const QVariantMap& map);
    QVariantMap toMap() const;
};

/// A linkage plan: when its conditions hold, the device drives the outputs. A value; device and service carry it out.
/// Keys that this program does not know are kept.
struct LinkagePlan {
    std::optional<int> id; ///< the service's; none for a plan that was never saved
    QString ipncId;
    QString name;
    bool allInput = false; ///< every input of the device is a condition
    QString logic = QStringLiteral("and");
    bool disable = false;
    bool report = false;
    QVariant duration = -1; ///< -1: for ever; a text: "30s" of the presets, or the seconds that the user typed
    int threshold = 1;
    QString outMode = QStringLiteral("all");
    int interval = 0; ///< 100 ms
    QList<PortRef> inputs;
    QList<ConditionUnion> inputUnions;
    QList<PortRef> outputs;
    QList<ActionUnion> outputUnions;
    QVariantMap rest;

    static LinkagePlan fromMap(const QVariantMap& map);
    QVariantMap toMap() const;
    static QList<LinkagePlan> listOf(const QVariantList& plans);
};

/// What the user has entered for a plan, where it is not a part of the plan yet.
struct PlanEntry {
    QString interval;            ///< ms, as typed
    bool hasOwnDuration = false; ///< "自定义" is chosen
    QString duration;            ///< seconds, as typed
};

/// The interval that is stored for what was typed in ms; text that is no number counts as 0. Stored plans count in
/// 100 ms and rounded down, so they are read back as less than what was typed.
int storedInterval(const QString& milliseconds);
/// What is shown of a stored interval, ms.
QString shownInterval(int stored);

/// Why the entries for the way in which actions are carried out cannot be saved; nothing when they can.
std::optional<QString> checkInterval(const QString& outMode, const QString& milliseconds);
/// Why a plan cannot be saved; nothing when it can. The first reason, in the order in which they are looked for.
std::optional<QString> checkPlan(const LinkagePlan& plan, const PlanEntry& entry);

/// The texts of a plan in the list of plans, in the order of its columns after the number.
struct PlanTexts {
    QString conditions;
    QString relation;
    QString duration;
    QString threshold;
    QString actions;
    QString outMode;
    QString interval;
};
PlanTexts textsOf(const LinkagePlan& plan, const QString& deviceName, const Boards& boards);
/// How a combination is shown.
QString textOf(const ConditionUnion& condition, const Boards& boards);
QString textOf(const ActionUnion& action, const Boards& boards);

} // namespace corvanta::linkage
