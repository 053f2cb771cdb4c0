#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <memory>

class QPushButton;
class Settings;

/// The program's start page: a picture of the user, the title, and a button that leads into the program. The button,
/// a click anywhere, Enter and Esc enter, and time where the user wants it so.
class StartPicture final : public QWidget {
    Q_OBJECT
public:
    /// The page that the settings ask for; null when they ask for none or its picture cannot be read.
    static std::unique_ptr<StartPicture> ifWanted(const Settings& settings);

    /// Seconds after which it enters by itself.
    static constexpr int Patience = 3;

signals:
    /// Once: the program's window is to be shown. The page stays until it is closed or destroyed.
    void sigEnter();

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    StartPicture(const QString& title, QImage picture, bool entersByItself);
    void build(const QString& title);
    void countDown();
    void showCount();
    void enter();

    QImage picture_;
    QPushButton* enter_ = nullptr;
    QTimer second_;
    int secondsLeft_ = 0; ///< 0: it does not enter by itself
    bool entered_ = false;
};
