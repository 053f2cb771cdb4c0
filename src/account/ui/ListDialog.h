#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

#include <QStringList>

#include <optional>

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/// A list of things to manage: a search field, a table that is sorted by its headers, buttons, and a text where the
/// list is empty. A row's first column carries what names it (`keyOf`).
class ListDialog : public FramedDialog {
    Q_OBJECT
protected:
    ListDialog(const AppContext& context, const QString& title, const QStringList& columns, const QString& emptyText,
               QWidget* parent);

    const AppContext& context() const { return context_; }
    QTreeWidget& list() const { return *list_; }

    /// Begins to fill the list anew; rows that were selected are selected again by `endFill`.
    void beginFill();
    /// Adds a row; its number among the rows is shown in `numberColumn`.
    QTreeWidgetItem* addRow(const QString& key, const QStringList& texts);
    void endFill();

    static QString keyOf(const QTreeWidgetItem& item);
    QTreeWidgetItem* selectedOne() const;
    /// The one row that is selected. For none `noneText` is told; `forDeletion`: several are too many.
    QTreeWidgetItem* demandOne(const QString& noneText);

private:
    void filter();

    AppContext context_;
    QLineEdit* search_;
    QTreeWidget* list_;
    QLabel* empty_;
    QStringList selected_; ///< keys, while the list is filled anew
};
