#pragma once

#include "base/ui/FramedDialog.h"
#include "linkage/Boards.h"

#include <functional>
#include <optional>

class QComboBox;

/// Picks an input or an output of a device: first the sensor, then what it has. What was chosen before and is gone
/// is shown as deleted, and something else has to be chosen.
class PortPicker : public FramedDialog {
    Q_OBJECT
public:
    using Chosen = std::function<void(const corvanta::linkage::PortRef& ref)>;

protected:
    struct Texts {
        QString title;
        QString portLabel;
        QString noPort; ///< shown when none is chosen
    };
    /// `current` is what is changed; none: something new is picked.
    PortPicker(corvanta::linkage::PortKind kind, const Texts& texts, const corvanta::linkage::Boards& boards,
               const std::optional<corvanta::linkage::PortRef>& current, Chosen chosen, QWidget* parent);

private:
    void fillPorts();
    void save();

    const corvanta::linkage::PortKind kind_;
    const QString noPort_;
    const corvanta::linkage::Boards boards_;
    corvanta::linkage::PortRef ref_; ///< keeps what is not known of the entry
    Chosen chosen_;
    QComboBox* sensor_;
    QComboBox* port_;
};

/// One condition of a plan.
class LinkageSignalConditionDialog final : public PortPicker {
    Q_OBJECT
public:
    LinkageSignalConditionDialog(const corvanta::linkage::Boards& boards,
                                 const std::optional<corvanta::linkage::PortRef>& current, Chosen chosen,
                                 QWidget* parent);
};

/// One action of a plan.
class LinkageSignalActionDialog final : public PortPicker {
    Q_OBJECT
public:
    LinkageSignalActionDialog(const corvanta::linkage::Boards& boards,
                              const std::optional<corvanta::linkage::PortRef>& current, Chosen chosen,
                              QWidget* parent);
};
