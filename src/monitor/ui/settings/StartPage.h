#pragma once

#include "monitor/ui/settings/SettingsPage.h"

#include <QTimer>

class FileField;
class QCheckBox;
class QLabel;

/// The picture that is shown when the program starts.
class StartPage final : public SettingsPage {
    Q_OBJECT
public:
    explicit StartPage(QWidget* parent);

    std::optional<QString> check() const override;

protected:
    void showValues(const Settings& settings) override;
    QVariantMap values() const override;

private:
    void showPreview();

    QCheckBox* isShown_;
    FileField* picture_;
    QLabel* preview_;
    QCheckBox* entersByItself_;
    QTimer previewPause_; ///< reads the picture once the path rests
};
