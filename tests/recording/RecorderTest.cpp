#include "recording/RecorderTest.h"

#include "support/CodedVideo.h"

#include <QDir>
#include <QDirIterator>
#include <QtTest>

#include <ipncsdk/ZELIPNCSDK.h>

namespace {

const CodedVideo& video() {
    static const CodedVideo value = CodedVideo::make(120, 25, 25, 64, 48);
    return value;
}

} // namespace

void RecorderTest::init() {
    sdk_.reset();
    dir_ = std::make_unique<QTemporaryDir>();
    now_ = QDateTime(QDate(2024, 3, 5), QTime(10, 0));
    waited_ = {};
    said_.clear();
    names_ = {{QStringLiteral("named"), QStringLiteral("东门 %2")}};
    queue_ = std::make_unique<TaskQueue>();
    settings_ = std::make_unique<Settings>(dir_->filePath(QStringLiteral("set.json")));
    settings_->load();
    auto disks = std::make_unique<FakeDisks>();
    disks_ = disks.get();
    for (const int number : {1, 2}) {
        QVERIFY(QDir().mkpath(drive(number)));
        disks->drives_ += drive(number);
    }
    storage_ = std::make_unique<RecordingStorage>(*settings_, *queue_, std::move(disks));
    storage_->prepareDrives();
    gateway_ = std::make_unique<SdkGateway>(*ipncsdk::ZELIPNCSDK::GetInstance(), *queue_);
    make();
}

void RecorderTest::make() {
    recorder_.reset();
    recorder_ = std::make_unique<Recorder>(
        Recorder::Parts{*gateway_, *storage_, *settings_,
                        [this](const QString& id) {
                            return names_.value(id);
                        }},
        nullptr, [this] { return now_; }, [this] { return Recorder::Moment(std::chrono::hours(1)) + waited_; });
    connect(recorder_.get(), &Recorder::sigReport, recorder_.get(),
            [this](const QString& operation, const QVariant& value) {
                QCOMPARE(operation, QStringLiteral("开始录像"));
                recorder_->onReport(value.toMap());
            });
    connect(recorder_.get(), &Recorder::sigFrame, recorder_.get(), &Recorder::onFrame);
    connect(recorder_.get(), &Recorder::sigMessage, recorder_.get(), [this](const QString& text) { said_ += text; });
}

void RecorderTest::cleanup() {
    recorder_.reset();
    gateway_.reset();
    storage_.reset();
    queue_.reset();
    sdk_.reset();
}

int RecorderTest::start(const QString& device) {
    recorder_->start(device);
    return sdk_.requests().back().id;
}

void RecorderTest::report(int id, const QByteArray& rest) {
    sdk_.respond(id, "{\"reqid\":" + std::to_string(id) + "," + rest.toStdString() + "}");
    queue_->drain();
}

void RecorderTest::opened(int id, int rate) {
    report(id, R"("type":"avopen","retcode":0,"avparam":{"framerate":)" + QByteArray::number(rate) +
                   R"(,"weidth":64,"height":48})");
}

void RecorderTest::frame(int id, std::size_t index) {
    const QByteArray& data = video().frames[index];
    sdk_.respond(id, R"({"type":"videodata","data":)" +
                         std::to_string(reinterpret_cast<std::intptr_t>(data.constData())) + R"(,"len":)" +
                         std::to_string(data.size()) + "}");
}

void RecorderTest::frames(int id, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i)
        frame(id, i);
    queue_->drain();
}

/// Every recording, by name, on one drive or all.
QStringList RecorderTest::files(const QString& drive) const {
    QStringList result;
    QDirIterator it(drive.isEmpty() ? dir_->path() : drive, {QStringLiteral("*.avi")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        result += it.next();
    result.sort();
    return result;
}
