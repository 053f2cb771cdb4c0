#include "storage/ui/FileTexts.h"

#include "base/DataTree.h"
#include "storage/StoredFiles.h"

#include <QCoreApplication>
#include <QLocale>

#include <array>

namespace corvanta::storage::fileTexts {

QString kind(const QString& folder) {
    static const std::array<const char*, 4> Texts{
        QT_TRANSLATE_NOOP("FileTexts", "抓拍"), QT_TRANSLATE_NOOP("FileTexts", "报警图片"),
        QT_TRANSLATE_NOOP("FileTexts", "本地录像"), QT_TRANSLATE_NOOP("FileTexts", "设备录像")};
    const int number = dataTree::kindsByDay().indexOf(folder);
    return number < 0 ? oneLine(folder)
                      : QCoreApplication::translate("FileTexts", Texts[static_cast<std::size_t>(number)]);
}

QString time(const FileRecord& file) {
    return file.time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QString oneLine(const QString& name, int longest) {
    QString result = name.size() > longest ? name.left(longest) + QStringLiteral("…") : name;
    for (QChar& c : result) {
        // Marks that turn the direction of writing would show another name than there is.
        const QChar::Category category = c.category();
        if (category == QChar::Other_Control || category == QChar::Other_Format ||
            category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            c = QChar(QChar::ReplacementCharacter);
    }
    return result;
}

QString count(int number) {
    return QLocale(QLocale::English).toString(number); // thousands parted by commas
}

} // namespace corvanta::storage::fileTexts
