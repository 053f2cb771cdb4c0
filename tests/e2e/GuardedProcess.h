#pragma once

#include <QProcess>

/// A process that ends with the one that started it, also when that crashes: nothing of a test is left running.
class GuardedProcess final : public QProcess {
public:
    using QProcess::QProcess;

protected:
    void setupChildProcess() override;
};
