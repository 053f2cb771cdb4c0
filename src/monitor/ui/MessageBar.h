#pragma once

#include "base/ui/Worded.h"

#include <QWidget>

class QLabel;
class QToolButton;

/// The strip at the bottom of the main window: the message line and the layout buttons.
class MessageBar final : public QWidget {
    Q_OBJECT
public:
    explicit MessageBar(QWidget* parent = nullptr);

    /// Shows one line until it is replaced; an empty one clears it.
    void showMessage(const QString& text);
    /// Ticks the button of a layout, if it has one.
    void setLayoutShown(int rows, int columns);

signals:
    void sigLayout(int rows, int columns);
    void sigStopAll();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QToolButton* addButton(const QString& objectName, corvanta::Text text, const QString& drawing);
    void elide();

    QLabel* label_;
    QString text_;
    QList<QToolButton*> layoutButtons_; ///< in the order of the layouts that have one
};
