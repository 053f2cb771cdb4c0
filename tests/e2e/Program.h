#pragma once

#include <QImage>
#include <QProcess>
#include <QRect>
#include <QStringList>
#include <QTemporaryDir>

/// The built program as a process of its own on the test's display, driven by real input events and seen as a person
/// sees it: by its windows and its pixels.
class Program final {
public:
    /// `home` holds what processes of one user share; `data` is the program's data folder.
    Program(const QString& home, const QString& data);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    bool start();
    void kill();
    /// Waits for its end by itself; the exit code, or -1.
    int waitForEnd();
    bool isRunning() const { return process_.state() == QProcess::Running; }
    qint64 pid() const { return process_.processId(); }
    QString log();

    /// The main window's place on the screen; empty while it is not shown.
    QRect frame() const;
    /// Whether a window of this title is shown, whoever's.
    static bool hasWindow(const QString& title);

    // Places in the main window, on the screen.
    QPoint accountButton() const;
    QPoint closeButton() const;
    /// One of the layout buttons, 0 for the first.
    QPoint layoutButton(int number) const;
    /// A row of the device tree, 0 for the first.
    QPoint treeRow(int row) const;
    /// The area of the video grid.
    QRect grid() const;
    /// A tile of a layout of `side` x `side`.
    QRect tile(int side, int index) const;

    // Input.
    static void click(const QPoint& place, int button = 1, int times = 1);
    static void drag(const QPoint& from, const QPoint& to);
    static void key(const QString& name);
    static void type(const QString& text);

    // Sight.
    static QImage look(const QRect& area);
    /// Whether what is shown in `area` is a picture that moves: waits for two that differ.
    static bool isLive(const QRect& area, int milliseconds);
    /// Whether `area` is an empty tile: mostly the tile's grey.
    static bool isEmptyTile(const QRect& area);

private:
    static QByteArray xdotool(const QStringList& arguments);

    QString home_;
    QString data_;
    QProcess process_;
    QString log_;
};
