#include "vision/setup/LaserDraft.h"

namespace corvanta::vision {
namespace {

/// What turns pixels into places.
QVariantMap scaleOf(const LaserInfo& info) {
    LaserInfo scale;
    scale.mode = info.mode;
    if (info.mode == LaserInfo::Mode::Scale)
        scale.scale = info.scale;
    else
        scale.points = info.points;
    return scale.toMap();
}

} // namespace

LaserDraft LaserDraft::fromInfo(const QVariantMap& info) {
    LaserDraft draft;
    draft.info_ = LaserInfo::fromMap(info);
    if (const auto initial = draft.info_.initial)
        draft.initial_ = LaserPosition{static_cast<float>(initial->x()), static_cast<float>(initial->y())};
    draft.initialScale_ = scaleOf(draft.info_);
    return draft;
}

void LaserDraft::setMeasuring(const LaserInfo& entered) {
    info_.mode = entered.mode;
    info_.scale = entered.scale;
    info_.points = entered.points;
    info_.spot = entered.spot;
}

std::optional<LaserPosition> LaserDraft::initial() const {
    return scaleOf(info_) == initialScale_ ? initial_ : std::nullopt;
}

void LaserDraft::setInitial(const LaserPosition& position) {
    initial_ = position;
    initialScale_ = scaleOf(info_);
}

LaserInfo LaserDraft::complete() const {
    LaserInfo info = info_;
    info.initial.reset();
    // As the texts that measurements are told in, so that one at the same place differs by nothing.
    if (const auto position = initial())
        info.initial = QPointF(position->texts().value(0).toDouble(), position->texts().value(1).toDouble());
    return info;
}

std::optional<QString> LaserDraft::saveProblem() const {
    return complete().validate();
}

QVariantMap LaserDraft::toInfo(const QVariantList& inputs) const {
    LaserInfo info = complete();
    info.inputs.clear();
    for (const QVariant& input : inputs) {
        if (const auto one = LaserInput::fromMap(input.toMap()))
            info.inputs += *one;
    }
    return info.toMap();
}

} // namespace corvanta::vision
