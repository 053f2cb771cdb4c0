#pragma once

#include <QList>
#include <QLocale>
#include <QObject>
#include <QString>

/// The language of the interface. The texts in the sources are Chinese, which is what is shown without any
/// translation; every other language is a file of translations that is part of the program. What is stored or sent
/// (keys, operation names, log rows) stays as it is in every language.
namespace corvanta {

struct Language {
    QString code; ///< "zh", "en": what the settings store
    QString name; ///< in the language itself
};

/// Those that the program speaks, the first one without being told.
const QList<Language>& languages();

/// Shows everything in this language from now on; an unknown code is the first language. Who shows texts is told by
/// `LanguageNotice`. Called with an application object only. GUI thread.
void speak(const QString& code);

/// For dates and numbers that are shown. Any thread.
QLocale spokenLocale();

/// Tells that the interface's language has changed, when texts already come in the new one; perhaps more than once.
/// Plugins have a notice of their own, which tells the same. GUI thread.
class LanguageNotice final : public QObject {
    Q_OBJECT
public:
    static LanguageNotice& instance();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();

private:
    LanguageNotice();
};

} // namespace corvanta
