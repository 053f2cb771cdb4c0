#include "base/Language.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QTranslator>

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>
#include <vector>

// In a static library nothing refers to the resources, so the linker would leave them out.
static void initialiseResources() {
    Q_INIT_RESOURCE(translations);
}

namespace corvanta {

namespace {

std::atomic<int> spoken{0}; // place in languages()

std::unique_ptr<QTranslator> translatorOf(const QString& name) {
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QStringLiteral(":/translations/") + name)) {
        qDebug() << "no translations" << name;
        return nullptr;
    }
    return translator;
}

} // namespace

const QList<Language>& languages() {
    static const QList<Language> all = {{QStringLiteral("zh"), QStringLiteral("简体中文")},
                                        {QStringLiteral("en"), QStringLiteral("English")}};
    return all;
}

void speak(const QString& code) {
    initialiseResources();
    const auto found = std::find_if(languages().begin(), languages().end(),
                                    [&code](const Language& language) { return language.code == code; });
    const int place = found == languages().end() ? 0 : static_cast<int>(found - languages().begin());
    // The toolkit's own texts are English in its sources.
    const QString file = place == 0 ? QStringLiteral("qtbase_zh_CN.qm") : QStringLiteral("corvanta_en.qm");
    spoken = place;
    // Owned here, not by the application: it may end first, and takes no notice of translators then.
    static std::unique_ptr<QTranslator> installed;
    const auto before = std::exchange(installed, translatorOf(file));
    // The one that is installed last is asked first, so that nobody is told between the two languages.
    if (installed != nullptr)
        QCoreApplication::installTranslator(installed.get());
    if (before != nullptr)
        QCoreApplication::removeTranslator(before.get());
}

QLocale spokenLocale() {
    return spoken == 0 ? QLocale(QLocale::Chinese, QLocale::China)
                       : QLocale(QLocale::English, QLocale::UnitedKingdom);
}

LanguageNotice::LanguageNotice() {
    QCoreApplication::instance()->installEventFilter(this);
}

bool LanguageNotice::eventFilter(QObject* watched, QEvent* event) {
    if (watched == QCoreApplication::instance() && event->type() == QEvent::LanguageChange)
        emit changed();
    return QObject::eventFilter(watched, event);
}

LanguageNotice& LanguageNotice::instance() {
    static LanguageNotice notice;
    return notice;
}

} // namespace corvanta
