#include "linkage/LinkagePlan.h"

#include "linkage/Words.h"

#include <QCoreApplication>
#include <QSet>

#include <utility>

namespace corvanta::linkage {
namespace {

const QString LogicKey = QStringLiteral("logic");
const QString OutModeKey = QStringLiteral("outmode");
const QString IntervalKey = QStringLiteral("interval");
const QString InputKey = QStringLiteral("input");
const QString InputUnionKey = QStringLiteral("inputunion");
const QString OutputKey = QStringLiteral("output");
const QString OutputUnionKey = QStringLiteral("outputunion");

constexpr int StoredUnit = 100; // ms

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LinkagePlan)
};

template <typename Read>
auto read(const QVariant& entries, Read one) {
    QList<decltype(one(QVariantMap()))> result;
    for (const QVariant& entry : entries.toList()) {
        const QVariantMap map = entry.toMap();
        if (!map.isEmpty())
            result += one(map);
    }
    return result;
}

template <typename T, typename Write>
QVariantList written(const QList<T>& entries, Write one) {
    QVariantList result;
    for (const T& entry : entries)
        result += one(entry);
    return result;
}

QList<PortRef> readRefs(const QVariant& entries, PortKind kind) {
    return read(entries, [kind](const QVariantMap& map) { return PortRef::fromMap(map, kind); });
}

QVariantList writtenRefs(const QList<PortRef>& refs, PortKind kind) {
    return written(refs, [kind](const PortRef& ref) { return ref.toMap(kind); });
}

QString takeText(QVariantMap& map, const char* key, const QString& otherwise) {
    const QString text = map.take(QLatin1String(key)).toString();
    return text.isEmpty() ? otherwise : text;
}

/// Whether no input is selected twice, also not within combinations.
bool areInputsDistinct(const LinkagePlan& plan) {
    QSet<std::pair<int, int>> seen;
    QList<PortRef> all = plan.inputs;
    for (const ConditionUnion& one : plan.inputUnions)
        all += one.inputs;
    for (const PortRef& ref : qAsConst(all)) {
        if (seen.contains({ref.ifpid, ref.pid}))
            return false;
        seen.insert({ref.ifpid, ref.pid});
    }
    return true;
}

QString joined(const QList<PortRef>& refs, PortKind kind, const Boards& boards, const QString& between) {
    QStringList names;
    for (const PortRef& ref : refs)
        names += boards.name(ref, kind);
    return QLatin1Char('(') + names.join(QLatin1Char(' ') + between + QLatin1Char(' ')) + QLatin1Char(')');
}

} // namespace

ConditionUnion ConditionUnion::fromMap(const QVariantMap& map) {
    ConditionUnion result;
    result.rest = map;
    result.inputs = readRefs(result.rest.take(InputUnionKey), PortKind::Input);
    result.logic = takeText(result.rest, "logic", result.logic);
    return result;
}

QVariantMap ConditionUnion::toMap() const {
    QVariantMap map = rest;
    map.insert(InputUnionKey, writtenRefs(inputs, PortKind::Input));
    map.insert(LogicKey, logic);
    return map;
}

ActionUnion ActionUnion::fromMap(const QVariantMap& map) {
    ActionUnion result;
    result.rest = map;
    result.outputs = readRefs(result.rest.take(OutputUnionKey), PortKind::Output);
    result.outMode = takeText(result.rest, "outmode", result.outMode);
    result.interval = result.rest.take(IntervalKey).toInt();
    return result;
}

QVariantMap ActionUnion::toMap() const {
    QVariantMap map = rest;
    map.insert(OutputUnionKey, writtenRefs(outputs, PortKind::Output));
    map.insert(OutModeKey, outMode);
    map.insert(IntervalKey, interval);
    return map;
}

LinkagePlan LinkagePlan::fromMap(const QVariantMap& map) {
    LinkagePlan plan;
    QVariantMap& rest = plan.rest;
    rest = map;
    const QVariant number = rest.take(QStringLiteral("linkplanid"));
    if (number.isValid() && !number.isNull())
        plan.id = number.toInt();
    plan.ipncId = takeText(rest, "ipncid", {});
    plan.name = takeText(rest, "name", {});
    plan.allInput = rest.take(QStringLiteral("allinput")).toBool();
    plan.logic = takeText(rest, "logic", plan.logic);
    plan.disable = rest.take(QStringLiteral("disable")).toBool();
    plan.report = rest.take(QStringLiteral("report")).toBool();
    if (rest.contains(QStringLiteral("duration")))
        plan.duration = rest.take(QStringLiteral("duration"));
    if (rest.contains(QStringLiteral("threshold")))
        plan.threshold = rest.take(QStringLiteral("threshold")).toInt();
    plan.outMode = takeText(rest, "outmode", plan.outMode);
    plan.interval = rest.take(IntervalKey).toInt();
    plan.inputs = readRefs(rest.take(InputKey), PortKind::Input);
    plan.inputUnions = read(rest.take(InputUnionKey), &ConditionUnion::fromMap);
    plan.outputs = readRefs(rest.take(OutputKey), PortKind::Output);
    plan.outputUnions = read(rest.take(OutputUnionKey), &ActionUnion::fromMap);
    return plan;
}

QVariantMap LinkagePlan::toMap() const {
    QVariantMap map = rest;
    if (id)
        map.insert(QStringLiteral("linkplanid"), *id);
    map.insert(QStringLiteral("ipncid"), ipncId);
    map.insert(QStringLiteral("name"), name);
    map.insert(QStringLiteral("allinput"), allInput);
    map.insert(LogicKey, logic);
    map.insert(QStringLiteral("disable"), disable);
    map.insert(QStringLiteral("report"), report);
    map.insert(QStringLiteral("duration"), duration);
    map.insert(QStringLiteral("threshold"), threshold);
    map.insert(OutModeKey, outMode);
    map.insert(IntervalKey, interval);
    map.insert(InputKey, writtenRefs(inputs, PortKind::Input));
    map.insert(InputUnionKey, written(inputUnions, [](const ConditionUnion& one) { return one.toMap(); }));
    map.insert(OutputKey, writtenRefs(outputs, PortKind::Output));
    map.insert(OutputUnionKey, written(outputUnions, [](const ActionUnion& one) { return one.toMap(); }));
    return map;
}

QList<LinkagePlan> LinkagePlan::listOf(const QVariantList& plans) {
    return read(plans, &LinkagePlan::fromMap);
}

int storedInterval(const QString& milliseconds) {
    return milliseconds.toInt() / StoredUnit;
}

QString shownInterval(int stored) {
    return QString::number(qlonglong{stored} * StoredUnit);
}

std::optional<QString> checkInterval(const QString& outMode, const QString& milliseconds) {
    if (outMode == outModes()[1].code && milliseconds.isEmpty())
        return Texts::tr("请输入执行时间间隔!");
    // 99 passes, and so does what is no number: both are stored as 0, which devices take for "at once". Plans that
    // were saved like that exist, and can be saved again.
    const int number = milliseconds.toInt();
    if (number >= 1 && number <= 98)
        return Texts::tr("请输入正确的执行时间间隔!");
    return std::nullopt;
}

std::optional<QString> checkPlan(const LinkagePlan& plan, const PlanEntry& entry) {
    if (!areInputsDistinct(plan))
        return Texts::tr("选择的输入不能相同!");
    if (auto problem = checkInterval(plan.outMode, entry.interval))
        return problem;
    if (entry.hasOwnDuration && entry.duration.isEmpty())
        return Texts::tr("请输入条件有效时长!");
    if (plan.name.isEmpty())
        return Texts::tr("请输入联动策略名称!");
    return std::nullopt;
}

QString textOf(const ConditionUnion& condition, const Boards& boards) {
    return joined(condition.inputs, PortKind::Input, boards, textOf(logics(), condition.logic));
}

QString textOf(const ActionUnion& action, const Boards& boards) {
    QString text =
        joined(action.outputs, PortKind::Output, boards, QStringLiteral(",")) + textOf(outModes(), action.outMode);
    if (action.interval > 0)
        text += QLatin1Char(' ') + shownInterval(action.interval) + QStringLiteral("ms");
    return text;
}

PlanTexts textsOf(const LinkagePlan& plan, const QString& deviceName, const Boards& boards) {
    PlanTexts texts;
    const int level = indexOf(levels(), QString::number(plan.threshold));
    const auto addCondition = [&](const QString& text) {
        texts.conditions += level < 0 ? QStringLiteral("%1:%2; ").arg(deviceName, text)
                                      : QStringLiteral("%1:%2,%3; ").arg(deviceName, text, levels()[level].text);
    };
    if (plan.allInput)
        addCondition(Texts::tr("全部"));
    for (const PortRef& ref : plan.inputs)
        addCondition(boards.name(ref, PortKind::Input));
    for (const ConditionUnion& one : plan.inputUnions)
        addCondition(textOf(one, boards));
    texts.relation = textOf(logics(), plan.logic);
    const QString duration = plan.duration.toString();
    texts.duration = indexOf(durations(), duration) >= 0 || duration.endsWith(QLatin1Char('s'))
                         ? textOf(durations(), duration)
                         : duration + QLatin1Char('s');
    texts.threshold = level < 0 ? QString::number(plan.threshold) : levels()[level].text;
    for (const PortRef& ref : plan.outputs)
        texts.actions += boards.text(ref, PortKind::Output);
    for (const ActionUnion& one : plan.outputUnions)
        texts.actions += textOf(one, boards) + QStringLiteral("; ");
    texts.outMode = textOf(outModes(), plan.outMode);
    texts.interval = shownInterval(plan.interval) + QStringLiteral("ms");
    return texts;
}

} // namespace corvanta::linkage
