#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QSlider;

/// The volume of what is listened to, and whether it is muted; comes up under its button.
class VolumePopup final : public QWidget {
    Q_OBJECT
public:
    explicit VolumePopup(QWidget* parent);

    /// 0 to 100. Emits nothing.
    void setValues(int volume, bool muted);
    /// Under a button, inside the screen, with the keyboard on the slider.
    void showUnder(const QWidget& button);

signals:
    void sigVolume(int percent);
    void sigMuted(bool muted);

private:
    QSlider* slider_;
    QLabel* number_;
    QCheckBox* muted_;
};
