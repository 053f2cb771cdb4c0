#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <vector>

class QDialog;
class QWidget;

/// The steps of a walk through the program, done one after the other: each begins something and waits for its end.
/// Ends the program with 0 when everything came in time, else with 1 and one line that says what did not. Pictures
/// show the screen as it is, so what lies over a window is in them too.
class TourScript final : public QObject {
    Q_OBJECT
public:
    struct Step {
        QString name;
        std::function<void()> begin;
        std::function<bool()> done;
        int limit = 20000; ///< ms
    };

    /// `window` outlives the script. Pictures are written into `folder`, which is made.
    TourScript(QWidget& window, QString folder, QObject* parent);

    const QString& folder() const { return folder_; }
    void step(Step step) { steps_.push_back(std::move(step)); }
    void picture(const QString& name);
    /// For what has no end to wait for: windows being drawn, a clock going on.
    void pause(int milliseconds);
    /// Opens a menu, which may run an event loop of its own, takes a picture of it and closes it.
    void menu(const QString& picture, std::function<void()> open);
    /// Likewise a dialog.
    void dialog(const QString& picture, std::function<void()> open, std::function<void()> close);
    /// Opens a dialog, which stays, and takes a picture of it.
    void openDialog(const QString& picture, std::function<void()> open);

    /// Does the steps.
    void run();

signals:
    /// The walk has ended.
    void sigEnded();

private:
    void tick();
    void finish(int code);
    bool shoot(const QString& name);

    QWidget& window_;
    QString folder_;
    std::vector<Step> steps_;
    std::size_t current_ = 0;
    bool begun_ = false;
    QElapsedTimer sinceBegin_;
    QTimer timer_;
};

namespace corvanta::tour {

/// The modal dialog on top, null when there is none.
QDialog* openDialog();
/// Clicks a button by its object name.
void click(QWidget* parent, const char* objectName);

} // namespace corvanta::tour
