#include "linkage/Words.h"

#include "base/ServiceWords.h"

#include <QCoreApplication>

namespace corvanta::linkage {
namespace {

struct Entry {
    const char* code;
    const char* text;
};

template <std::size_t N>
Words read(const Entry (&entries)[N]) {
    Words result;
    for (const Entry& entry : entries)
        result += {QString::fromLatin1(entry.code), QCoreApplication::translate("LinkageWords", entry.text)};
    return result;
}

} // namespace

Words logics() {
    static constexpr Entry entries[] = {{"and", QT_TRANSLATE_NOOP("LinkageWords", "与")},
                                        {"or", QT_TRANSLATE_NOOP("LinkageWords", "或")}};
    return read(entries);
}

Words outModes() {
    static constexpr Entry entries[] = {{"all", QT_TRANSLATE_NOOP("LinkageWords", "全部")},
                                        {"loop", QT_TRANSLATE_NOOP("LinkageWords", "轮询")}};
    return read(entries);
}

Words levels() {
    static constexpr Entry entries[] = {{"1", QT_TRANSLATE_NOOP("LinkageWords", "一级阀值")},
                                        {"2", QT_TRANSLATE_NOOP("LinkageWords", "二级阀值")},
                                        {"3", QT_TRANSLATE_NOOP("LinkageWords", "三级阀值")}};
    return read(entries);
}

Words durations() {
    static constexpr Entry entries[] = {{"-1", QT_TRANSLATE_NOOP("LinkageWords", "永久")},
                                        {"10s", "10s"},
                                        {"20s", "20s"},
                                        {"30s", "30s"},
                                        {"60s", "60s"},
                                        {"120s", "120s"},
                                        {"300s", "300s"}};
    return read(entries);
}

Words placeholders() {
    static constexpr Entry entries[] = {{"($1)", QT_TRANSLATE_NOOP("LinkageWords", "【设备名称】")},
                                        {"($2)", QT_TRANSLATE_NOOP("LinkageWords", "【联动策略名称】")},
                                        {"($3)", QT_TRANSLATE_NOOP("LinkageWords", "【一级阀值】")},
                                        {"($4)", QT_TRANSLATE_NOOP("LinkageWords", "【传感器名称】")},
                                        {"($5)", QT_TRANSLATE_NOOP("LinkageWords", "【传感器输入名称】")},
                                        {"($6)", QT_TRANSLATE_NOOP("LinkageWords", "【报警值】")},
                                        {"($7)", QT_TRANSLATE_NOOP("LinkageWords", "【单位】")}};
    return read(entries);
}

int indexOf(const Words& words, const QString& code) {
    for (int index = 0; index < words.size(); ++index) {
        if (words[index].code == code)
            return index;
    }
    return -1;
}

QString textOf(const Words& words, const QString& code) {
    const int index = indexOf(words, code);
    return index < 0 ? code : words[index].text;
}

QString textsOf(const Words& words, const QStringList& codes) {
    QStringList result;
    for (const QString& code : codes)
        result += textOf(words, code);
    return result.join(QStringLiteral(", "));
}

QStringList texts(const Words& words) {
    QStringList result;
    for (const Word& word : words)
        result += word.text;
    return result;
}

Words wordsFrom(const QVariant& list) {
    const QVariantMap object = list.toMap();
    const QVariantList entries = object.isEmpty() ? list.toList() : object.value(QStringLiteral("names")).toList();
    Words result;
    for (const QVariant& entry : entries) {
        const QVariantMap map = entry.toMap();
        const Word word{map.value(QStringLiteral("code")).toString(),
                        serviceWord(map.value(QStringLiteral("name")).toString())};
        if (!word.code.isEmpty())
            result += word.text.isEmpty() ? Word{word.code, word.code} : word;
    }
    return result;
}

SystemNames SystemNames::fromReply(const QVariantMap& resp) {
    const QVariantMap names = resp.value(QStringLiteral("names")).toMap();
    SystemNames result;
    // Lists stand below "names" or beside it.
    const auto listAt = [&](const QString& key) {
        return wordsFrom(names.contains(key) ? names.value(key) : resp.value(key));
    };
    const Words read = listAt(QStringLiteral("linkplanlogic"));
    if (!read.isEmpty())
        result.logics = read;
    result.reportTypes = listAt(QStringLiteral("ReportType"));
    result.reportModes = listAt(QStringLiteral("ReportMode"));
    return result;
}

} // namespace corvanta::linkage
