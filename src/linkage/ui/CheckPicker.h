#pragma once

#include "base/ui/FramedDialog.h"

#include <QList>
#include <QStringList>

#include <functional>

class QTreeWidget;

/// Picks any of a list of things. Deletes itself when it is closed.
class CheckPicker final : public FramedDialog {
    Q_OBJECT
public:
    struct Entry {
        QString id;
        QString text;
        QString detail; ///< shown beside it; may be empty
    };
    using Chosen = std::function<void(const QStringList& ids)>;

    CheckPicker(const QString& title, const QList<Entry>& entries, const QStringList& chosen, Chosen accepted,
                QWidget* parent);

private:
    QStringList checked() const;

    Chosen accepted_;
    QTreeWidget* list_;
};
