#pragma once

#include "base/ui/FramedDialog.h"
#include "playback/ExportTask.h"

class QLabel;
class QProgressBar;

namespace corvanta::playback {

/// Shows how far an export is and lets it be cancelled; ends by itself when it succeeded, else says why not.
class ExportDialog final : public FramedDialog {
    Q_OBJECT
public:
    ExportDialog(const QString& file, QWidget* parent);

    void start(std::vector<ClipPart> parts);
    const ExportResult& result() const { return task_.result(); }

    /// What an export came to, in the user's words.
    static QString describe(const ExportResult& result, const QString& file);

public slots:
    /// Cancels; the dialog ends when the export has.
    void reject() override;

private:
    void onDone();

    QString file_;
    QProgressBar* bar_;
    QPushButton* button_;
    ExportTask task_;
    bool running_ = false;
};

} // namespace corvanta::playback
