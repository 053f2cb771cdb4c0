#include "e2e/ScreenReader.h"

#include "e2e/windows/PipeAccess.h"
#include "e2e/windows/Questions.h"

class ScreenReader::Impl final {
public:
    Accessible thing(qint64 process, questions::Special question) {
        const QString id = access_.special(process, question);
        return id.isEmpty() ? Accessible() : Accessible(access_, id);
    }
    PipeAccess& access() { return access_; }

private:
    PipeAccess access_;
};

ScreenReader::ScreenReader()
    : impl_(std::make_unique<Impl>()) {}

ScreenReader::~ScreenReader() = default;

bool ScreenReader::start() {
    return true;
}

QProcessEnvironment ScreenReader::environment() const {
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    const QString plugins = QStringLiteral("QT_PLUGIN_PATH");
    result.insert(plugins, QStringLiteral(CORVANTA_READER_PLUGINS ";") + result.value(plugins));
    result.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("corvanta_reader"));
    // A program with windows says what it says to a debugger otherwise.
    for (const char* name : {"QT_FORCE_STDERR_LOGGING", "QT_ASSUME_STDERR_HAS_CONSOLE"})
        result.insert(QLatin1String(name), QStringLiteral("1"));
    return result;
}

Accessible ScreenReader::program(qint64 process) const {
    return impl_->thing(process, questions::Root);
}

Accessible ScreenReader::openMenu(qint64 process) const {
    return impl_->thing(process, questions::OpenMenu);
}

void ScreenReader::crash(qint64 process) const {
    impl_->access().order(process, questions::Crash);
}
