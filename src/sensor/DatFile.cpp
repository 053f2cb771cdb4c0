#include "sensor/DatFile.h"

#include "base/DataTree.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QIODevice>

#include <algorithm>

namespace corvanta::sensor {
namespace {

constexpr int LongestLine = 256; // bytes
constexpr int MostLines = 2000000;
constexpr int MostFiles = 2000;

} // namespace

std::optional<QMap<int, Samples>> readDatFile(QIODevice& device) {
    if (device.readLine(LongestLine).trimmed() != "#corvanta-dat 1")
        return std::nullopt;
    QMap<int, Samples> inputs;
    int bad = 0;
    for (int lines = 0; lines < MostLines && !device.atEnd(); ++lines) {
        const QList<QByteArray> parts = device.readLine(LongestLine).trimmed().split('\t');
        const auto time = readTime(QString::fromLatin1(parts.value(0)));
        const auto value = readNumber(QString::fromLatin1(parts.value(2)));
        const int pid = parts.value(1).toInt();
        if (parts.size() == 3 && time && value && pid > 0)
            inputs[pid].push_back({*time, *value, *value, *value});
        else
            ++bad;
    }
    if (bad > 0)
        qDebug() << "lines of a data file that are none were left out:" << bad;
    for (Samples& samples : inputs)
        std::stable_sort(samples.begin(), samples.end(),
                         [](const Sample& a, const Sample& b) { return a.time < b.time; });
    return inputs;
}

QVector<StoredDat> storedDats(const QStringList& drives) {
    QVector<StoredDat> files;
    for (const QString& drive : drives) {
        const QDir root(drive + QStringLiteral("ZEL"));
        const QStringList devices = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
        for (const QString& ipncId : devices) {
            const auto folder = dataTree::folder(drive, dataTree::InputData, ipncId, {});
            if (!folder)
                continue;
            const QFileInfoList found = QDir(*folder).entryInfoList(QDir::Files | QDir::NoSymLinks, QDir::Time);
            for (const QFileInfo& file : found.mid(0, MostFiles))
                files += {ipncId, file.absoluteFilePath(), file.fileName(), file.lastModified()};
        }
    }
    std::stable_sort(files.begin(), files.end(),
                     [](const StoredDat& a, const StoredDat& b) { return a.time > b.time; });
    return files.mid(0, MostFiles);
}

} // namespace corvanta::sensor
