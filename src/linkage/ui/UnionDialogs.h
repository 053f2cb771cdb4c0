#pragma once

#include "base/ui/FramedDialog.h"
#include "linkage/LinkagePlan.h"

#include <functional>
#include <optional>

class PartList;
class QComboBox;
class QLineEdit;

/// Edits a list of inputs or outputs that count as one; what goes with the list is the derived dialog's.
class UnionDialog : public FramedDialog {
    Q_OBJECT
protected:
    struct Texts {
        QString title;
        QString list;       ///< what the list holds
        QString empty;      ///< told when an empty one is saved
        QString noneChosen; ///< told when something is to be done with a row and none is selected
    };
    UnionDialog(corvanta::linkage::PortKind kind, Texts texts, const corvanta::linkage::Boards& boards,
                QList<corvanta::linkage::PortRef> refs, QWidget* parent);

    const corvanta::linkage::Boards& boards() const { return boards_; }
    const QList<corvanta::linkage::PortRef>& refs() const { return refs_; }
    /// Adds "保存" and "取消" below everything else.
    void addButtons();
    /// The list is not empty: saves the rest. False: it stays open.
    virtual bool save() = 0;

private:
    void pick(int row);
    void fill();

    const corvanta::linkage::PortKind kind_;
    const Texts texts_;
    const corvanta::linkage::Boards boards_;
    QList<corvanta::linkage::PortRef> refs_;
    PartList* list_;
};

/// Several conditions that count as one.
class LinkageComboxConditionDialog final : public UnionDialog {
    Q_OBJECT
public:
    using Chosen = std::function<void(const corvanta::linkage::ConditionUnion& condition)>;
    /// `logics` are the relations that are offered.
    LinkageComboxConditionDialog(const corvanta::linkage::Boards& boards, const QStringList& logics,
                                 const std::optional<corvanta::linkage::ConditionUnion>& current, Chosen chosen,
                                 QWidget* parent);

private:
    bool save() override;

    corvanta::linkage::ConditionUnion condition_;
    Chosen chosen_;
    QComboBox* logic_;
};

/// Several actions that count as one. (The name's spelling is known to its users.)
class LinkageComboxlActionDialog final : public UnionDialog {
    Q_OBJECT
public:
    using Chosen = std::function<void(const corvanta::linkage::ActionUnion& action)>;
    LinkageComboxlActionDialog(const corvanta::linkage::Boards& boards,
                               const std::optional<corvanta::linkage::ActionUnion>& current, Chosen chosen,
                               QWidget* parent);

private:
    bool save() override;

    corvanta::linkage::ActionUnion action_;
    Chosen chosen_;
    QComboBox* outMode_;
    QLineEdit* interval_;
};
