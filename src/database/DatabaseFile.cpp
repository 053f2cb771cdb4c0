#include "database/DatabaseFile.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

namespace corvanta::database {

namespace {

// Places in the header of an SQLite file, bytes from its beginning; numbers are big-endian.
constexpr int PageSizeAt = 16;
constexpr int ChangeCounterAt = 24;
constexpr int PageCountAt = 28;
constexpr int CountedAtChangeAt = 92; // the value of the change counter for which the page count holds
constexpr int FirstPageTypeAt = 100;
constexpr int HeaderSize = 101;

constexpr char InnerTablePage = 5;
constexpr char LeafTablePage = 13;

// What an engine that was interrupted leaves beside the file. They are applied to whatever file has the name, so
// they go where it goes.
const char* const companions[] = {"-journal", "-wal", "-shm"};

quint32 numberAt(const QByteArray& header, int place) {
    return qFromBigEndian<quint32>(header.constData() + place);
}

bool isSound(const QByteArray& header, qint64 fileSize) {
    if (header.size() < HeaderSize || !header.startsWith(QByteArray("SQLite format 3\0", 16)))
        return false;
    const int stored = qFromBigEndian<quint16>(header.constData() + PageSizeAt);
    const qint64 pageSize = stored == 1 ? 65536 : stored;
    if (pageSize < 512 || (pageSize & (pageSize - 1)) != 0)
        return false;
    const char type = header.at(FirstPageTypeAt);
    if (type != InnerTablePage && type != LeafTablePage)
        return false;
    const bool isCounted = numberAt(header, ChangeCounterAt) == numberAt(header, CountedAtChangeAt);
    return !isCounted || fileSize >= pageSize * numberAt(header, PageCountAt);
}

} // namespace

bool looksDamaged(const QString& file) {
    for (const char* companion : companions) {
        if (QFileInfo(file + QLatin1String(companion)).size() > 0)
            return false;
    }
    QFile input(file);
    if (QFileInfo(file).isDir() || !input.open(QIODevice::ReadOnly) || input.size() == 0)
        return false;
    return !isSound(input.read(HeaderSize), input.size());
}

bool setAside(const QString& file) {
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss"));
    for (int n = 0; n < 100; ++n) {
        const QString kept =
            file + QStringLiteral(".damaged-") + stamp + (n == 0 ? QString() : QStringLiteral("-%1").arg(n));
        if (QFile::exists(kept))
            continue;
        if (!QFile::rename(file, kept))
            break;
        for (const char* companion : companions)
            QFile::rename(file + QLatin1String(companion), kept + QLatin1String(companion));
        qDebug() << "the database is damaged, it was kept as" << kept;
        return true;
    }
    qDebug() << "the database is damaged and could not be set aside" << file;
    return false;
}

} // namespace corvanta::database
