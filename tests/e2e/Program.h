#pragma once

#include "e2e/Desktop.h"
#include "e2e/GuardedProcess.h"
#include "e2e/ScreenReader.h"

#include <QVariant>

#include <optional>

/// The built program as a process of its own, ended with the object.
class Program final {
public:
    /// `runtime` is the folder that processes of one user's session share, `data` the program's data folder. The
    /// screen reader must outlive the program.
    Program(const ScreenReader& reader, QString runtime, QString data);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Starts the built one, or another installation of it, which finds its data folder by itself.
    bool start(const QString& installation = {});
    /// Ends it as a crash of the machine would: nothing is saved or cleaned up.
    void kill();
    /// Has it crash as by a fault of its own.
    void crash() const;
    /// Waits for its end by itself; its exit code, nothing if it has not ended or was ended by a signal.
    std::optional<int> exitCode();
    bool isRunning() const { return process_.state() == QProcess::Running; }
    qint64 pid() const { return process_.processId(); }
    /// What it has said since its start, line by line.
    const QString& log();

    /// A value of the settings as they are stored now.
    QVariant stored(const QString& key) const;
    const QString& data() const { return data_; }
    /// Where it puts files for a while.
    const QString& temporaryFolder() const { return runtime_; }

    /// The program's windows and dialogs are the children of this.
    Accessible accessible() const { return reader_.program(pid()); }
    /// A window or dialog that is shown, by its title; null when there is none.
    Accessible dialog(const QString& title) const;
    /// Whether it is shown, has the keyboard and knows where the window manager has put it, so that it can be
    /// clicked.
    bool isActive(const QString& title) const { return isActive(dialog(title)); }
    static bool isActive(const Accessible& window);
    /// The place of something in the window that has the keyboard. A dialog does not always hear where the window
    /// manager has put it, so only places from its own corner are relied on.
    static QRect placeInActive(const Accessible& window, const Accessible& thing);
    Accessible openMenu() const { return reader_.openMenu(pid()); }

private:
    const ScreenReader& reader_;
    const QString runtime_;
    const QString data_;
    GuardedProcess process_;
    QByteArray said_;
    QString log_;
};
