#pragma once

#include "vision/LaserSpot.h"

#include <QWidget>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace corvanta::vision {

/// What counts as the spot of the laser, and the picture without it.
class LaserSpotPage final : public QWidget {
    Q_OBJECT
public:
    LaserSpotPage(const SpotSettings& spot, QWidget* parent);

    /// What was entered; NaN where it is no number.
    SpotSettings spot() const;
    void setHasReference(bool has);
    /// What became of looking for the spot.
    void setState(const QString& text);
    void setBusy(bool isBusy);

signals:
    void sigEdited();
    void sigFind();
    void sigTakeReference();
    void sigDropReference();

private:
    QLineEdit* addNumber(const QString& label, const QString& objectName, double value, QFormLayout& form);
    QPushButton* addButton(const QString& text, const QString& objectName);

    QComboBox* colour_;
    QLineEdit* threshold_ = nullptr;
    QLineEdit* smallest_ = nullptr;
    QLineEdit* largest_ = nullptr;
    QLineEdit* roundness_ = nullptr;
    QLabel* reference_;
    QPushButton* take_ = nullptr;
    QPushButton* drop_ = nullptr;
    QPushButton* find_ = nullptr;
    QLabel* state_;
    bool hasReference_ = false;
};

} // namespace corvanta::vision
