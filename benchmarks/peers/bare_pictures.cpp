// A window of bare picture widgets that all repaint on one beat: wall_bare_pictures RATE WINDOW X,Y,WxH...
//
// Says "open" when each has painted, answers each line of the standard input with "counts DUE MISSED PAINTED", where
// DUE is what the beat's rate asks for, and ends with its end.

#include "peers/BarePicture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTimer>

#include <cstdio>
#include <iostream>
#include <string>
#include <thread>

namespace {

constexpr QSize pictureSize(640, 360);

QList<int> numbers(const QString& text) {
    QList<int> result;
    for (const QString& number : text.split(QRegularExpression(QStringLiteral("[,x]"))))
        result += number.toInt();
    return result;
}

class Wall final : public QWidget {
public:
    explicit Wall(int rate)
        : rate_(rate) {
        timer_.setTimerType(Qt::PreciseTimer);
        connect(&timer_, &QTimer::timeout, this, &Wall::beat);
    }

    void add(const QList<int>& place) {
        auto* const picture = new BarePicture(pictureSize, pictures_.size(), this);
        picture->setGeometry(place[0], place[1], place[2], place[3]);
        pictures_ += picture;
    }

    void start() { timer_.start(1000 / rate_); }

    void tell() const {
        const quint64 due =
            static_cast<quint64>(clock_.elapsed()) * static_cast<quint64>(rate_ * pictures_.size()) / 1000;
        const quint64 shown = painted() - paintedAtOpen_;
        std::cout << "counts " << due << ' ' << (due > shown ? due - shown : 0) << ' ' << shown << std::endl;
    }

private:
    void beat() {
        for (BarePicture* const picture : qAsConst(pictures_))
            picture->update();
        if (!clock_.isValid() && painted() >= static_cast<quint64>(pictures_.size())) {
            clock_.start();
            paintedAtOpen_ = painted();
            std::cout << "open" << std::endl;
        }
    }

    quint64 painted() const {
        quint64 sum = 0;
        for (const BarePicture* const picture : pictures_)
            sum += picture->painted();
        return sum;
    }

    int rate_; ///< beats a second
    QList<BarePicture*> pictures_;
    QTimer timer_;
    QElapsedTimer clock_; ///< since "open"
    quint64 paintedAtOpen_ = 0;
};

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication::setAttribute(Qt::AA_UseDesktopOpenGL, true);
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4 || arguments[1].toInt() <= 0) {
        std::cerr << "wall_bare_pictures RATE WINDOW X,Y,WxH...\n";
        return 2;
    }
    Wall wall(arguments[1].toInt());
    const QList<int> window = numbers(arguments[2]);
    wall.setGeometry(0, 0, window.value(0), window.value(1));
    for (const QString& place : arguments.mid(3))
        wall.add(numbers(place));
    wall.show();
    wall.start();
    std::thread orders([&wall] {
        for (std::string line; std::getline(std::cin, line);)
            QMetaObject::invokeMethod(
                &wall, [&wall] { wall.tell(); }, Qt::QueuedConnection);
        QMetaObject::invokeMethod(
            &wall, [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
    });
    const int code = QApplication::exec();
    orders.join();
    return code;
}
