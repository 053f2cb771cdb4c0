#include "base/SizeText.h"

#include <QLocale>

QString corvanta::sizeText(qint64 bytes) {
    if (bytes < 1024)
        return QStringLiteral("%1 B").arg(bytes);
    QString text = QLocale(QLocale::English).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
    return text.replace(QLatin1String("kB"), QLatin1String("KB"));
}
