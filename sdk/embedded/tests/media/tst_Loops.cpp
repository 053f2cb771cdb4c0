#include "RecordingListener.h"
#include "media/StreamHub.h"
#include "media/loop/LoopFile.h"
#include "media/loop/LoopLibrary.h"

#include <QtTest>

#include <atomic>
#include <mutex>
#include <set>

using namespace ipncsdk::media;
using namespace std::chrono_literals;

namespace {

std::vector<std::shared_ptr<const Gop>> allOf(const Loop& loop) {
    std::vector<std::shared_ptr<const Gop>> gops;
    for (std::size_t number = 0; number < loop.key().gopCount(); ++number) {
        gops.push_back(loop.gop(number, 60s));
    }
    return gops;
}

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void overwrite(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

/// What ffprobe says of a raw stream, one line a frame: key_frame,pict_type,width,height,color_range.
QStringList probe(const QByteArray& stream) {
    QTemporaryFile file;
    if (!file.open() || file.write(stream) != stream.size() || !file.flush()) {
        return {};
    }
    QProcess ffprobe;
    ffprobe.start("ffprobe",
                  {"-v", "error", "-f", "h264", "-show_entries", "frame=key_frame,pict_type,width,height,color_range",
                   "-of", "csv=p=0", file.fileName()});
    ffprobe.waitForFinished(120000);
    return QString::fromLatin1(ffprobe.readAllStandardOutput()).remove('\r').split('\n', Qt::SkipEmptyParts);
}

} // namespace

class tst_Loops : public QObject {
    Q_OBJECT

private slots:
    void othersReadTheStream_data();
    void othersReadTheStream();
    void isKeptAndReadAgain();
    void damagedFileIsRemade_data();
    void damagedFileIsRemade();
    void keysDiffer();
    void unwritableFolderStillServes();
    void stopsWhileMaking();
    void servesInRealTimeWithoutDrift();
};

void tst_Loops::othersReadTheStream_data() {
    QTest::addColumn<int>("quality");
    QTest::addColumn<QString>("size");
    QTest::newRow("light") << int(Quality::Light) << QString("640,360");
    QTest::newRow("main") << int(Quality::Main) << QString("1280,720");
}

void tst_Loops::othersReadTheStream() {
    QFETCH(int, quality);
    QFETCH(QString, size);
    const QTemporaryDir folder;
    LoopLibrary library(folder.path().toStdString(), {});
    const auto loop = library.acquire({{"北门", 0, 0}, static_cast<Quality>(quality)});
    QByteArray stream;
    for (const auto& gop : allOf(*loop)) {
        QVERIFY(gop != nullptr);
        const QByteArray bytes(reinterpret_cast<const char*>(gop->bytes.data()), static_cast<int>(gop->bytes.size()));
        QVERIFY(bytes.startsWith(QByteArray::fromHex("0000000167")));
        stream += bytes;
    }
    const QStringList frames = probe(stream);
    QCOMPARE(frames.size(), loopLength);
    for (int index = 0; index < frames.size(); ++index) {
        const bool key = index % loopGopLength == 0;
        const QString line = frames[index];
        QVERIFY2(line.startsWith((key ? "1," : "0,") + size) && line.contains(key ? ",I" : ",P") &&
                     line.contains("pc"),
                 qPrintable(QString::number(index) + ": " + line));
    }
}

void tst_Loops::isKeptAndReadAgain() {
    const QTemporaryDir folder;
    const LoopKey key{{"kept", 1, 3}, Quality::Light};
    std::vector<std::shared_ptr<const Gop>> made;
    {
        LoopLibrary library(folder.path().toStdString(), {});
        const auto loop = library.acquire(key);
        QCOMPARE(library.acquire(key), loop);
        made = allOf(*loop);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(folder.filePath(QString::fromStdString(key.fileName()))), 60000);
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    LoopLibrary library(folder.path().toStdString(), {});
    const auto read = allOf(*library.acquire(key));
    for (std::size_t number = 0; number < made.size(); ++number) {
        QVERIFY(read[number]->bytes == made[number]->bytes && read[number]->sizes == made[number]->sizes);
    }
}

void tst_Loops::damagedFileIsRemade_data() {
    QTest::addColumn<QString>("damage");
    for (const char* damage : {"empty", "cut", "longer", "flipped", "version", "magic", "huge size", "other loop"}) {
        QTest::newRow(damage) << QString(damage);
    }
}

void tst_Loops::damagedFileIsRemade() {
    QFETCH(QString, damage);
    static const QTemporaryDir folder;
    const LoopKey key{{"damaged", 5, 0}, Quality::Light};
    const QString path = folder.filePath(QString::fromStdString(key.fileName()));
    const auto makeAndWait = [&](std::vector<std::string>& lines) {
        std::mutex mutex;
        LoopLibrary library(folder.path().toStdString(), [&](const std::string& line) {
            const std::lock_guard lock(mutex);
            lines.push_back(line);
        });
        const auto loop = library.acquire(key);
        const auto gops = allOf(*loop);
        const QByteArray whole = [&] {
            const auto packed = packLoop(key, gops);
            return QByteArray(reinterpret_cast<const char*>(packed.data()), static_cast<int>(packed.size()));
        }();
        QTRY_COMPARE_WITH_TIMEOUT(bytesOf(path), whole, 60000);
    };
    std::vector<std::string> lines;
    makeAndWait(lines);
    QByteArray bytes = bytesOf(path);
    if (damage == "empty") {
        bytes.clear();
    } else if (damage == "cut") {
        bytes.chop(1);
    } else if (damage == "longer") {
        bytes += '\0';
    } else if (damage == "flipped") {
        bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
    } else if (damage == "version") {
        bytes[8] = 99;
    } else if (damage == "magic") {
        bytes[0] = 'X';
    } else if (damage == "huge size") {
        bytes.replace(16, 4, "\xff\xff\xff\xff", 4);
    } else {
        // A whole file, and yet of another camera: it must not be shown for this one.
        const LoopKey other{{"other", 5, 0}, Quality::Light};
        LoopLibrary library(folder.path().toStdString(), {});
        allOf(*library.acquire(other));
        const QString otherPath = folder.filePath(QString::fromStdString(other.fileName()));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(otherPath), 60000);
        bytes = bytesOf(otherPath);
    }
    overwrite(path, bytes);
    lines.clear();
    makeAndWait(lines);
    QCOMPARE(lines.size(), bytes.isEmpty() ? std::size_t{0} : std::size_t{1});
}

void tst_Loops::keysDiffer() {
    const std::vector<LoopKey> keys{{{"a", 0, 0}, Quality::Light}, {{"a", 0, 0}, Quality::Main},
                                    {{"a", 1, 0}, Quality::Light}, {{"a", 0, 1}, Quality::Light},
                                    {{"b", 0, 0}, Quality::Light}, {{"/0/a", 0, 0}, Quality::Light}};
    std::set<std::string> names;
    for (const LoopKey& key : keys) {
        names.insert(key.fileName());
    }
    QCOMPARE(names.size(), keys.size());
}

void tst_Loops::unwritableFolderStillServes() {
    // A plain file stands where the folder should be.
    QTemporaryFile file;
    QVERIFY(file.open());
    std::atomic<int> lines{0};
    LoopLibrary library((file.fileName() + "/loops").toStdString(), [&](const std::string&) { ++lines; });
    const auto loop = library.acquire({{"x", 4, 0}, Quality::Light});
    QVERIFY(allOf(*loop).back() != nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(lines.load(), 1, 60000);
}

void tst_Loops::stopsWhileMaking() {
    const QTemporaryDir folder;
    std::vector<std::shared_ptr<Loop>> loops;
    {
        LoopLibrary library(folder.path().toStdString(), {});
        for (int scene = 0; scene < 16; ++scene) {
            loops.push_back(library.acquire({{"x", scene, 0}, Quality::Main}));
        }
        QVERIFY(loops.front()->gop(0, 60s) != nullptr);
    }
    // What was broken off left no file, nor part of one.
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files)) {
        QVERIFY2(name.endsWith(".loop"), qPrintable(name));
    }
    QVERIFY(loops.back()->gop(0, 0ms) == nullptr);
}

void tst_Loops::servesInRealTimeWithoutDrift() {
    const QTemporaryDir folder;
    StreamHub hub({folder.path().toStdString(), {}, {}});
    const auto listener = std::make_shared<RecordingListener>();
    const auto begin = std::chrono::steady_clock::now();
    hub.subscribe({"c", Quality::Light, LoopSource{"c", 2, 0}, false, true, {}}, listener);
    const std::size_t count = loopLength + 2 * loopGopLength;
    QVERIFY(listener->waitForCoded(count));
    const auto took = std::chrono::steady_clock::now() - begin;
    const auto record = listener->record();
    // Never faster than real time, and the end of the loop runs into its beginning: key frames and times go on.
    QVERIFY(took >= (count - 2) * 40ms - 500ms);
    for (std::size_t index = 0; index < count; ++index) {
        QCOMPARE(record.coded[index].keyFrame, index % loopGopLength == 0);
        QCOMPARE(record.coded[index].time.count(), static_cast<qint64>(index) * 40000);
    }
    QVERIFY(record.coded[0].bytes == record.coded[loopLength].bytes);
}

QTEST_GUILESS_MAIN(tst_Loops)
#include "tst_Loops.moc"
