#pragma once

#include <QCoreApplication>
#include <QTranslator>

/// A language that says every text with a star before it; the interface speaks it as long as this lives.
class OtherLanguage final : public QTranslator {
public:
    OtherLanguage() { QCoreApplication::installTranslator(this); } // its end removes it

    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override {
        return QLatin1Char('*') + QString::fromUtf8(source);
    }
};
