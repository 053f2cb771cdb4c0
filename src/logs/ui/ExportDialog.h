#pragma once

#include "base/ui/FramedDialog.h"

class QButtonGroup;

/// Asks in which format a log is exported.
class ExportDialog final : public FramedDialog {
    Q_OBJECT
public:
    explicit ExportDialog(QWidget* parent = nullptr);

    /// The chosen format: "txt" or "xls".
    QString format() const;

    /// Shows the dialog; the format, or an empty text when it was cancelled.
    static QString ask(QWidget* parent);

private:
    QButtonGroup* formats_;
};
