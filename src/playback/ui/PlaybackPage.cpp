#include "playback/ui/PlaybackPage.h"

#include "base/DataTree.h"
#include "base/ui/FileChooser.h"
#include "base/ui/Theme.h"
#include "base/ui/Worded.h"
#include "playback/Snapshot.h"
#include "playback/ui/ExportDialog.h"
#include "playback/ui/PlaybackControls.h"
#include "playback/ui/PlaybackTile.h"
#include "playback/ui/PlaybackWall.h"
#include "playback/ui/TimeAxis.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QVariant>

namespace corvanta::playback {

namespace {

constexpr std::chrono::seconds Step10{10};

QString reasonOf(OpenError error) {
    switch (error) {
    case OpenError::None:
        break;
    case OpenError::Missing:
        return PlaybackPage::tr("文件不存在或无权读取");
    case OpenError::NotAVideo:
        return PlaybackPage::tr("不是视频文件或已损坏");
    case OpenError::NoPictures:
        return PlaybackPage::tr("文件中没有画面");
    case OpenError::Unfinished:
        return PlaybackPage::tr("录像未完成，尚无画面");
    case OpenError::NoDecoder:
        return PlaybackPage::tr("不支持的视频编码");
    }
    return {};
}

QString toQString(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return QString::fromUtf8(reinterpret_cast<const char*>(text.data()), static_cast<int>(text.size()));
}

} // namespace

PlaybackPage::PlaybackPage(QWidget* parent)
    : QWidget(parent)
    , pages_(new QStackedWidget(this))
    , wall_(new PlaybackWall(this))
    , axis_(new TimeAxis(this))
    , controls_(new PlaybackControls(this))
    , folder_(QDir::homePath()) {
    setObjectName(QStringLiteral("playbackPage"));
    corvanta::wordedName(this, [] { return tr("回放"); });
    setAttribute(Qt::WA_StyledBackground);
    setFocusPolicy(Qt::StrongFocus);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    pages_->addWidget(makeEmptyState());
    pages_->addWidget(wall_);
    column->addWidget(pages_, 1);
    column->addWidget(axis_);
    column->addWidget(controls_);
    axis_->hide();
    connect(controls_, &PlaybackControls::sigAction, this, &PlaybackPage::carryOut);
    connect(axis_, &TimeAxis::sigSeek, this, [this](qint64 moment) {
        if (session_ != nullptr)
            session_->seek(Moment(moment));
    });
    connect(axis_, &TimeAxis::sigRowChosen, wall_, &PlaybackWall::select);
    connect(wall_, &PlaybackWall::sigSelected, axis_, &TimeAxis::setSelectedRow);
    installKeys();
}

PlaybackPage::~PlaybackPage() = default;

QWidget* PlaybackPage::makeEmptyState() {
    auto* const empty = new QWidget(pages_);
    empty->setObjectName(QStringLiteral("playbackEmpty"));
    auto* const column = new QVBoxLayout(empty);
    column->setSpacing(3 * theme::Step);
    auto* const text = new QLabel(empty);
    corvanta::wordedText(text, [] { return tr("没有要回放的录像。\n请在录像文件中选择，或打开单个文件。"); });
    text->setObjectName(QStringLiteral("playbackEmptyText"));
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    auto* const open = new QPushButton(empty);
    corvanta::wordedText(open, [] { return tr("打开文件"); });
    open->setObjectName(QStringLiteral("openFilesButton"));
    corvanta::wordedName(open, [] { return tr("打开文件"); });
    open->setProperty("onDark", true);
    connect(open, &QPushButton::clicked, this, &PlaybackPage::openFiles);
    column->addStretch(1);
    column->addWidget(text);
    column->addWidget(open, 0, Qt::AlignHCenter);
    column->addStretch(1);
    return empty;
}

void PlaybackPage::installKeys() {
    for (const ActionEntry& entry : playbackActions()) {
        for (const QString& key : entry.keys) {
            auto* const shortcut = new QShortcut(QKeySequence(key, QKeySequence::PortableText), this);
            shortcut->setContext(Qt::WidgetWithChildrenShortcut);
            connect(shortcut, &QShortcut::activated, this, [this, action = entry.action] { carryOut(action); });
        }
    }
}

void PlaybackPage::play(const QVector<PlaybackCamera>& cameras) {
    close();
    QStringList names;
    for (const PlaybackCamera& camera : cameras) {
        if (camera.files.isEmpty())
            continue;
        if (cameras_.size() == MostCameras) {
            emit sigMessage(tr("最多同时回放 %1 路，其余未打开").arg(MostCameras));
            break;
        }
        cameras_ += camera;
        names += camera.name;
    }
    if (cameras_.isEmpty())
        return;
    wall_->setCameras(names);
    pages_->setCurrentWidget(wall_);
    session_ = std::make_unique<PlaybackSession>(cameras_);
    session_->setSkipGaps(skipGaps_);
    connectSession();
}

void PlaybackPage::connectSession() {
    PlaybackSession* const session = session_.get();
    connect(session, &PlaybackSession::sigReady, this, &PlaybackPage::onReady);
    connect(session, &PlaybackSession::sigMoved, this, &PlaybackPage::onMoved);
    connect(session, &PlaybackSession::sigStateChanged, this, &PlaybackPage::onStateChanged);
    connect(session, &PlaybackSession::sigView, this, [this](int camera) {
        if (!session_->isReady())
            return;
        wall_->tile(camera).show(session_->view(camera));
        wall_->present();
    });
}

void PlaybackPage::close() {
    session_.reset();
    cameras_.clear();
    begin_.reset();
    end_.reset();
    wall_->setCameras({});
    axis_->setRows({}, {});
    axis_->setMarks({}, {});
    axis_->hide();
    controls_->setLoaded(false);
    controls_->setPlaying(false);
    pages_->setCurrentIndex(0);
}

void PlaybackPage::onReady() {
    std::vector<TimeAxis::Row> rows;
    rows.reserve(static_cast<std::size_t>(cameras_.size()));
    for (int camera = 0; camera < cameras_.size(); ++camera)
        rows.push_back({cameras_[camera].name, session_->findings(camera)->timeline.covered()});
    const bool anything = !session_->covered().empty();
    axis_->setRows(std::move(rows), session_->whole());
    axis_->setVisible(anything);
    controls_->setLoaded(anything);
    controls_->setSkipsGaps(skipGaps_);
    onMoved();
    onStateChanged();
    tellUnreadable();
}

void PlaybackPage::tellUnreadable() {
    int count = 0;
    QString first;
    for (int camera = 0; camera < cameras_.size(); ++camera) {
        const CameraPlayer::Findings& findings = *session_->findings(camera);
        for (const auto& [file, error] : findings.unreadable) {
            const QString text = tr("%1：%2").arg(QFileInfo(toQString(file)).fileName(), reasonOf(error));
            if (count++ == 0)
                first = text;
            if (findings.timeline.isEmpty())
                wall_->tile(camera).setReason(text);
        }
    }
    if (count == 1)
        emit sigMessage(tr("无法播放 %1").arg(first));
    else if (count > 1)
        emit sigMessage(tr("%1 个文件无法播放，如 %2").arg(count).arg(first));
}

void PlaybackPage::onMoved() {
    if (session_->covered().empty())
        return;
    controls_->setMoment(session_->now());
    axis_->setMoment(session_->now());
}

void PlaybackPage::onStateChanged() {
    controls_->setPlaying(session_->isPlaying());
    controls_->setSpeed(session_->speed());
    onMoved();
}

void PlaybackPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    setFocus();
}

void PlaybackPage::hideEvent(QHideEvent* event) {
    // Nobody sees it.
    if (session_ != nullptr && session_->isPlaying())
        session_->pause();
    QWidget::hideEvent(event);
}

void PlaybackPage::carryOut(Action action) {
    if (action == Action::Open) {
        openFiles();
        return;
    }
    if (action == Action::Close) {
        close();
        return;
    }
    if (session_ == nullptr || !session_->isReady() || session_->covered().empty())
        return;
    switch (action) {
    case Action::TogglePlay:
        if (session_->isPlaying())
            session_->pause();
        else
            session_->play();
        break;
    case Action::FrameBack:
        session_->step(-1, wall_->selected());
        break;
    case Action::FrameForward:
        session_->step(1, wall_->selected());
        break;
    case Action::Slower:
        session_->slower();
        break;
    case Action::Faster:
        session_->faster();
        break;
    case Action::PreviousRecording:
        session_->seekPreviousBegin();
        break;
    case Action::NextRecording:
        session_->seekNextBegin();
        break;
    case Action::Back:
        seekBy(-Step10);
        break;
    case Action::Forward:
        seekBy(Step10);
        break;
    case Action::ToBegin:
        session_->seek(session_->whole().begin);
        break;
    case Action::ToEnd:
        session_->seek(session_->whole().end);
        break;
    case Action::MarkBegin:
        mark(true);
        break;
    case Action::MarkEnd:
        mark(false);
        break;
    case Action::Export:
        chooseExport();
        break;
    case Action::Snapshot:
        takeSnapshot();
        break;
    case Action::SkipGaps:
        skipGaps_ = !skipGaps_;
        session_->setSkipGaps(skipGaps_);
        controls_->setSkipsGaps(skipGaps_);
        break;
    case Action::Zoom:
        wall_->toggleZoom();
        break;
    case Action::Open:
    case Action::Close:
        break;
    }
}

void PlaybackPage::seekBy(std::chrono::microseconds step) {
    session_->seek(session_->now() + step);
}

/// A mark on the wrong side of the other one takes its place.
void PlaybackPage::mark(bool begin) {
    const Moment now = session_->now();
    (begin ? begin_ : end_) = now;
    if (begin_ && end_ && *begin_ >= *end_)
        (begin ? end_ : begin_).reset();
    axis_->setMarks(begin_, end_);
}

void PlaybackPage::chooseExport() {
    if (!begin_ || !end_) {
        emit sigMessage(tr("请先标记要导出的开始和结束"));
        return;
    }
    const PlaybackCamera& camera = cameras_[wall_->selected()];
    const QString name = dataTree::pathComponent(camera.name).value_or(tr("录像"));
    const QString time = toLocalTime(*begin_).toString(QStringLiteral("yyyyMMddhhmmss"));
    const QString proposal = QStringLiteral("%1/%2_%3.mp4").arg(folder_, time, name);
    const QString file = chooseNewFile(window(), tr("导出片段"), proposal, tr("MP4 视频 (*.mp4);;AVI 视频 (*.avi)"));
    if (file.isEmpty())
        return;
    folder_ = QFileInfo(file).path();
    exportTo(file);
}

void PlaybackPage::exportTo(const QString& file) {
    if (session_ == nullptr || !session_->isReady() || !begin_ || !end_)
        return;
    const Timeline& timeline = session_->findings(wall_->selected())->timeline;
    std::vector<ClipPart> parts = clipParts(timeline, {*begin_, *end_});
    if (parts.empty()) {
        emit sigMessage(tr("标记的范围内没有录像"));
        return;
    }
    ExportDialog dialog(file, window());
    dialog.start(std::move(parts));
    dialog.exec();
    emit sigMessage(ExportDialog::describe(dialog.result(), file));
}

void PlaybackPage::takeSnapshot() {
    const int number = wall_->selected();
    if (wall_->tile(number).picture() == nullptr) {
        emit sigMessage(tr("没有可以抓拍的画面"));
        return;
    }
    const PlaybackCamera& camera = cameras_[number];
    const QDateTime time = toLocalTime(session_->view(number).moment);
    if (const QString path = snapshotPath_ ? snapshotPath_(camera, time) : QString(); !path.isEmpty()) {
        saveSnapshotTo(path);
        return;
    }
    const QString name = dataTree::pathComponent(camera.name).value_or(tr("录像"));
    const QString proposal =
        QStringLiteral("%1/%2_%3.jpg").arg(folder_, time.toString(QStringLiteral("yyyyMMddhhmmss")), name);
    const QString file = chooseNewFile(window(), tr("抓拍画面"), proposal, tr("JPEG 图片 (*.jpg);;PNG 图片 (*.png)"));
    if (file.isEmpty())
        return;
    folder_ = QFileInfo(file).path();
    saveSnapshotTo(file);
}

void PlaybackPage::saveSnapshotTo(const QString& file) {
    const SharedPicture picture = session_ != nullptr ? wall_->tile(wall_->selected()).picture() : nullptr;
    const bool saved = picture != nullptr && !file.isEmpty() && saveSnapshot(*picture, file);
    emit sigMessage(saved ? tr("画面已保存到 %1").arg(QDir::toNativeSeparators(file)) : tr("画面无法保存"));
}

/// Several files are several pieces of one camera.
void PlaybackPage::openFiles() {
    const QStringList files = chooseFiles(window(), tr("打开录像文件"), folder_,
                                          tr("录像 (*.avi *.mp4);;其他视频 (*.mkv *.mov *.ts *.flv);;所有文件 (*)"));
    if (files.isEmpty())
        return;
    folder_ = QFileInfo(files.front()).path();
    play({{QFileInfo(files.front()).fileName(), {}, files}});
}

} // namespace corvanta::playback
