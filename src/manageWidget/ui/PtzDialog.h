#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "base/ui/Worded.h"
#include "manageWidget/PtzCaps.h"

class PtzCruisePage;
class PtzLine;
class PtzPad;
class PtzPresetPage;
class QLabel;
class QPushButton;
class QSlider;
class QTabWidget;

/// The dialog "云台设置": moving a camera, its presets and cruises. Beside the main window, so that the picture is
/// seen.
class PtzDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `ipncId` is a device of the account.
    PtzDialog(const AppContext& context, QString ipncId, QWidget* parent);
    ~PtzDialog() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void build();
    void setWords();
    void showState(corvanta::Text text);
    void connectPad();
    void read();
    void show(const QVariantMap& values);

    AppContext context_;
    const QString ipncId_;
    PtzLine* line_;
    PtzPad* pad_ = nullptr;
    QLabel* speedLabel_ = nullptr;
    QSlider* speed_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    PtzPresetPage* presets_ = nullptr;
    PtzCruisePage* cruises_ = nullptr;
    QLabel* state_ = nullptr;
    corvanta::Text stateText_; ///< what is said of the state; none before the first answer
    QPushButton* refresh_ = nullptr;
    QPushButton* close_ = nullptr;
};
