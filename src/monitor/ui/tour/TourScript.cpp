#include "monitor/ui/tour/TourScript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDebug>
#include <QDialog>
#include <QDir>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <memory>
#include <utility>

namespace tour = corvanta::tour;

namespace {
constexpr int Tick = 50; // ms
} // namespace

QDialog* tour::openDialog() {
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

void tour::click(QWidget* parent, const char* objectName) {
    auto* const button = parent->findChild<QAbstractButton*>(QLatin1String(objectName));
    if (button == nullptr)
        qWarning() << "no button" << objectName;
    else
        button->click();
}

TourScript::TourScript(QWidget& window, QString folder, QObject* parent)
    : QObject(parent)
    , window_(window)
    , folder_(std::move(folder)) {
    timer_.setInterval(Tick);
    connect(&timer_, &QTimer::timeout, this, &TourScript::tick);
}

void TourScript::run() {
    QDir().mkpath(folder_);
    timer_.start();
}

void TourScript::menu(const QString& name, std::function<void()> open) {
    steps_.push_back({name, [this, open = std::move(open)] { QTimer::singleShot(0, &window_, open); },
                      [] {
                          return QApplication::activePopupWidget() != nullptr;
                      }});
    pause(200);
    picture(name);
    steps_.push_back({QStringLiteral("no menu"), [] { QApplication::activePopupWidget()->close(); },
                      [] {
                          return QApplication::activePopupWidget() == nullptr;
                      }});
}

void TourScript::openDialog(const QString& name, std::function<void()> open) {
    // Another one than what was open before: dialogs may lie over each other.
    auto before = std::make_shared<QPointer<QDialog>>();
    steps_.push_back({name,
                      [this, before, open = std::move(open)] {
                          *before = tour::openDialog();
                          QTimer::singleShot(0, &window_, open);
                      },
                      [before] {
                          return tour::openDialog() != nullptr && tour::openDialog() != *before;
                      }});
    pause(300);
    picture(name);
}

void TourScript::dialog(const QString& name, std::function<void()> open, std::function<void()> close) {
    openDialog(name, std::move(open));
    steps_.push_back({QStringLiteral("no dialog"), std::move(close), [] {
                          return tour::openDialog() == nullptr;
                      }});
}

void TourScript::picture(const QString& name) {
    steps_.push_back({QStringLiteral("picture ") + name, [] {},
                      [this, name] {
                          return shoot(name);
                      }});
}

void TourScript::pause(int milliseconds) {
    steps_.push_back({QStringLiteral("a moment"), [] {},
                      [this, milliseconds] {
                          return sinceBegin_.elapsed() >= milliseconds;
                      }});
}

void TourScript::tick() {
    if (current_ >= steps_.size()) {
        finish(0);
        return;
    }
    Step& step = steps_[current_];
    if (!begun_) {
        begun_ = true;
        sinceBegin_.start();
        step.begin();
    }
    if (step.done()) {
        ++current_;
        begun_ = false;
    } else if (sinceBegin_.elapsed() > step.limit) {
        qWarning().noquote() << "tour: waited in vain for" << step.name;
        shoot(QStringLiteral("failed"));
        finish(1);
    }
}

void TourScript::finish(int code) {
    timer_.stop();
    while (QDialog* const dialog = tour::openDialog())
        dialog->reject();
    emit sigEnded();
    QCoreApplication::exit(code);
}

bool TourScript::shoot(const QString& name) {
    const QWidget* const frame = window_.window();
    QScreen* const screen = frame->windowHandle()->screen();
    QRect place = frame->frameGeometry();
    // A dialog that is not modal may reach beyond the window as well; which window is active tells only a window
    // manager, and a bare display has none.
    for (const QWidget* const over : QApplication::topLevelWidgets()) {
        const Qt::WindowType type = over->windowType();
        if (over->isVisible() && (type == Qt::Dialog || type == Qt::Popup))
            place |= over->frameGeometry();
    }
    place &= screen->geometry();
    const QPixmap picture = screen->grabWindow(0, place.x(), place.y(), place.width(), place.height());
    const QString file = QDir(folder_).filePath(name + QStringLiteral(".png"));
    if (!picture.isNull() && picture.save(file))
        return true;
    qWarning() << "tour: no picture" << file;
    return false;
}
