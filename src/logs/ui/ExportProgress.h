#pragma once

#include "base/ui/FramedDialog.h"
#include "logs/LogExport.h"

#include <QElapsedTimer>
#include <QTimer>

class QProgressBar;

/// Shows how far an export is and lets the user cancel it. Closes when the export has ended, however that came.
class ExportProgress final : public FramedDialog {
    Q_OBJECT
public:
    /// `job` outlives the dialog.
    ExportProgress(LogExport& job, QWidget* parent);

    /// Waits for the end of `job`, which the dialog shows when it takes longer than a moment. How it ended.
    static LogExport::State waitFor(LogExport& job, QWidget* parent);

public slots:
    /// Cancels the export; the dialog stays until that is done.
    void reject() override;

private:
    void follow();

    LogExport& job_;
    QProgressBar* bar_;
    QLabel* text_;
    QPushButton* cancel_;
    QElapsedTimer time_;
    QTimer timer_;
};
