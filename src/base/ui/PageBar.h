#pragma once

#include "base/ui/Worded.h"

#include <QString>
#include <QVariant>
#include <QWidget>

class QComboBox;
class QLabel;
class QSpinBox;
class QToolButton;

/// The bar below a table that is shown page by page: rows a page, buttons from page to page, export. It decides
/// nothing: what the user does comes as an event, and it shows what it is told.
///
/// Events, by their text: "pageRowCount" (value: the rows a page, an int, 0 for all on one), "setPageRow" (value: the
/// page to show, an int), "toFirstPage", "prePage", "nextPage", "tolastPage", "export".
class PageBar final : public QWidget {
    Q_OBJECT
public:
    explicit PageBar(QWidget* parent = nullptr);

    /// The rows a page that are chosen now; 0: all.
    int pageRows() const;
    /// Chooses one of those that are offered; others are not taken.
    void setPageRows(int rows);

    /// Shows where the table is, pages counted from 1.
    void setPage(int page, int pageCount);
    /// A line about the table, how many rows it has for example.
    void setInfo(const QString& text);
    /// Whether there is something to export.
    void setExportEnabled(bool enabled);

    static constexpr int DefaultPageRows = 50;

signals:
    void sigPage(const QString& event, const QVariant& value);

private:
    void addButton(const char* event, const QString& objectName, corvanta::Text text, const QString& drawing);

    QComboBox* rows_;
    QSpinBox* page_;
    QLabel* pages_;
    QLabel* info_;
    QList<QToolButton*> toBegin_; ///< the buttons that lead towards the first page
    QList<QToolButton*> toEnd_;
    QToolButton* export_ = nullptr;
};
