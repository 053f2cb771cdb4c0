#include "base/Settings.h"
#include "base/TaskQueue.h"
#include "storage/RecordingStorage.h"
#include "storage/Rotation.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace storage = corvanta::storage;

namespace {

constexpr int FilesOfADay = 200;
const QString Day = QStringLiteral("2024-03-05"); // that a folder is wanted for
const QString OldestDay = QStringLiteral("ZEL/A/LocalRecord/2020-01-01/");
const QString NextDay = QStringLiteral("ZEL/A/LocalRecord/2020-01-02/");

/// One drive that has room once its oldest day is gone. A deletion, which begins with the question for today, waits
/// until it is let go.
class GatedDisk final : public DiskProbe {
public:
    explicit GatedDisk(QString root)
        : root_(std::move(root)) {}
    QStringList drives() const override { return {root_}; }
    QString systemDrive() const override { return {}; }
    std::optional<std::uint64_t> freeBytes(const QString&) const override {
        return std::uint64_t(QDir(root_ + OldestDay).exists() ? 64 : 1024) << 20U;
    }
    QDate today() const override {
        std::unique_lock lock(mutex_);
        ++deletions_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return isOpen_; });
        return QDate(2024, 3, 5);
    }

    void awaitDeletion() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return deletions_ > 0; });
    }
    void open() {
        const std::lock_guard lock(mutex_);
        isOpen_ = true;
        changed_.notify_all();
    }
    int deletions() const {
        const std::lock_guard lock(mutex_);
        return deletions_;
    }

private:
    const QString root_;
    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    mutable int deletions_ = 0;
    bool isOpen_ = false;
};

} // namespace

class tst_RoomMaker final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void nobodyWaits();
    void whoMustHaveRoomDeletes();
    void nothingIsDeletedInVain();
    void nothingLeftToDelete();
    void endsAfterTheFileThatIsBeingDeleted();
    void endOfTheProgram();

private:
    QString folderNow() const {
        return storage_->folderAtOnce(QStringLiteral("Image"), QStringLiteral("B"), Day, {});
    }
    int filesLeft() const { return QDir(root_ + OldestDay).entryList(QDir::Files).size(); }

    std::unique_ptr<QTemporaryDir> dir_;
    QString root_;
    std::unique_ptr<TaskQueue> queue_;
    std::unique_ptr<Settings> settings_;
    GatedDisk* disk_ = nullptr;
    std::unique_ptr<RecordingStorage> storage_;
};

void tst_RoomMaker::init() {
    storage_.reset();
    dir_ = std::make_unique<QTemporaryDir>();
    root_ = dir_->path() + QLatin1Char('/');
    for (const QString& day : {OldestDay, NextDay}) {
        QVERIFY(QDir(root_).mkpath(day));
        for (int i = 0; i < FilesOfADay; ++i) {
            QFile file(root_ + day + QStringLiteral("%1.jpg").arg(i));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }
    queue_ = std::make_unique<TaskQueue>();
    settings_ = std::make_unique<Settings>(root_ + QStringLiteral("set.json"));
    settings_->load();
    auto disk = std::make_unique<GatedDisk>(root_);
    disk_ = disk.get();
    storage_ = std::make_unique<RecordingStorage>(*settings_, *queue_, std::move(disk));
    storage_->prepareDrives();
}

// Everybody gets a folder while a deletion stands still, and however many ask, one day goes.
void tst_RoomMaker::nobodyWaits() {
    QSignalSpy sought(storage_.get(), &RecordingStorage::sigRoomSought);
    const QString expected = root_ + QStringLiteral("ZEL/B/Image/2024-03-05/");
    QCOMPARE(folderNow(), expected);
    queue_->drain();
    disk_->awaitDeletion();
    std::atomic<int> answers{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < 25; ++n)
                answers += folderNow() == expected ? 1 : 0;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(answers.load(), 100);
    queue_->drain();
    QCOMPARE(filesLeft(), FilesOfADay);
    disk_->open();
    QVERIFY(sought.wait(60000));
    QCOMPARE(sought.first().first().toBool(), true);
    QVERIFY(!QDir(root_ + OldestDay).exists());
    QVERIFY(QDir(root_ + NextDay).exists());
    QCOMPARE(disk_->deletions(), 1);
    QCOMPARE(sought.size(), 1);
}

// Alone, and behind a deletion in the background, which is not done again.
void tst_RoomMaker::whoMustHaveRoomDeletes() {
    const QString expected = root_ + QStringLiteral("ZEL/B/Image/2024-03-05/");
    QSignalSpy sought(storage_.get(), &RecordingStorage::sigRoomSought);
    QCOMPARE(folderNow(), expected);
    queue_->drain();
    disk_->awaitDeletion();
    std::atomic<int> filesAtAnswer{-1};
    std::thread thread([&] {
        if (storage_->folderFor(QStringLiteral("Image"), QStringLiteral("B"), Day) == expected)
            filesAtAnswer = filesLeft();
    });
    disk_->open();
    thread.join();
    QCOMPARE(filesAtAnswer.load(), 0);
    QCOMPARE(disk_->deletions(), 1);
    QVERIFY(!sought.isEmpty() || sought.wait(60000));

    QVERIFY(QDir(root_).mkpath(OldestDay));
    QCOMPARE(storage_->folderFor(QStringLiteral("Image"), QStringLiteral("B"), Day), expected);
    QVERIFY(!QDir(root_ + OldestDay).exists());
    QVERIFY(QDir(root_ + NextDay).exists());
    QCOMPARE(disk_->deletions(), 2);
}

// A drive that is left alone gains nothing by a deletion.
void tst_RoomMaker::nothingIsDeletedInVain() {
    disk_->open();
    QCOMPARE(storage_->folderAtOnce(QStringLiteral("Image"), QStringLiteral("B"), Day, {root_}), QString());
    queue_->drain();
    QCOMPARE(filesLeft(), FilesOfADay);
    QSignalSpy sought(storage_.get(), &RecordingStorage::sigRoomSought);
    QVERIFY(!folderNow().isEmpty()); // and the next who asks is not kept from it
    QVERIFY(sought.wait(60000));
    QCOMPARE(filesLeft(), 0);
}

void tst_RoomMaker::nothingLeftToDelete() {
#ifdef Q_OS_WIN
    QSKIP("only an administrator makes links there");
#endif
    disk_->open();
    // What cannot be deleted: a day that is no folder of the tree keeps the disk full.
    QVERIFY(QDir(root_).rename(OldestDay.chopped(1), QStringLiteral("kept")));
    QVERIFY(QDir(root_ + NextDay).removeRecursively());
    QVERIFY(QDir(root_).mkpath(QStringLiteral("elsewhere")));
    QVERIFY(QFile::link(root_ + QStringLiteral("elsewhere"), root_ + OldestDay.chopped(1)));
    QSignalSpy sought(storage_.get(), &RecordingStorage::sigRoomSought);
    for (int times = 1; times <= 2; ++times) {
        QCOMPARE(folderNow().isEmpty(), times == 2); // known the second time, and sought again all the same
        QVERIFY(sought.wait(60000));
        QCOMPARE(sought.last().first().toBool(), false);
        QVERIFY(!storage_->mayFindRoom());
    }
    QVERIFY(QFile::remove(root_ + OldestDay.chopped(1)));
    QVERIFY(!folderNow().isEmpty());
    QVERIFY(storage_->mayFindRoom());
}

void tst_RoomMaker::endsAfterTheFileThatIsBeingDeleted() {
    disk_->open();
    int asked = 0;
    QVERIFY(!storage::deleteOldestDay({root_}, *disk_, [&asked] { return ++asked > 50; }));
    QCOMPARE(filesLeft(), FilesOfADay - 50);
    QCOMPARE(QDir(root_ + NextDay).entryList(QDir::Files).size(), FilesOfADay);
    QVERIFY(storage::deleteOldestDay({root_}, *disk_)); // the rest is still the oldest
    QVERIFY(!QDir(root_ + OldestDay).exists());
}

void tst_RoomMaker::endOfTheProgram() {
    folderNow();
    queue_->drain();
    disk_->awaitDeletion();
    disk_->open();
    storage_.reset();
    const int left = filesLeft();
    queue_->drain();
    QCoreApplication::processEvents();
    QCOMPARE(filesLeft(), left);
    QVERIFY(QDir(root_ + NextDay).exists());
}

QTEST_GUILESS_MAIN(tst_RoomMaker)
#include "tst_RoomMaker.moc"
