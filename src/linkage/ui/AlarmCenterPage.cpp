#include "linkage/ui/AlarmCenterPage.h"

#include "base/AppEvents.h"
#include "base/DeviceModel.h"
#include "base/SdkGateway.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "base/ui/Worded.h"
#include "linkage/AlarmPictures.h"
#include "linkage/LinkageLog.h"
#include "linkage/ui/AlarmTableModel.h"
#include "storage/RecordingStorage.h"
#include "storage/ui/PictureView.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QTableView>
#include <QVBoxLayout>
#include <QVariant>

#include <array>

namespace linkage = corvanta::linkage;
namespace theme = corvanta::theme;

namespace {

const QSize PictureBound(1280, 960); // px
constexpr int RowHeight = 28;        // px

/// px
constexpr std::array<int, AlarmTableModel::Columns> Widths{116, 110, 260, 52, 168, 110, 168};

/// A text on the right that is whole or, in a narrow window, not there: half of a number would say another one.
class WholeLabel final : public QLabel {
public:
    explicit WholeLabel(QWidget* parent)
        : QLabel(parent) {
        setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        if (QLabel::sizeHint().width() <= width())
            QLabel::paintEvent(event);
    }
};

QDateTime timeOf(const linkage::OpenAlarm& alarm) {
    return QDateTime::fromString(alarm.lastTime, QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

} // namespace

AlarmCenterPage::AlarmCenterPage(const AppContext& context, RecordingStorage& storage, QWidget* parent)
    : QWidget(parent)
    , context_(context)
    , storage_(storage)
    , model_(new AlarmTableModel(this)) {
    setObjectName(QStringLiteral("alarmCenterPage"));
    corvanta::wordedName(this, [] { return tr("报警中心"); });
    setProperty("page", QStringLiteral("dark"));
    setAttribute(Qt::WA_StyledBackground);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(2 * theme::Step, 2 * theme::Step, 2 * theme::Step, 2 * theme::Step);
    column->setSpacing(2 * theme::Step);
    column->addWidget(makeButtons());
    auto* const splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setObjectName(QStringLiteral("alarmSplitter"));
    splitter->setChildrenCollapsible(false);
    stack_ = new QStackedWidget(splitter);
    table_ = new QTableView(stack_);
    table_->setObjectName(QStringLiteral("alarmTable"));
    corvanta::wordedName(table_, [] { return tr("未确认报警"); });
    table_->setModel(model_);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table_->setAlternatingRowColors(true);
    table_->setShowGrid(false);
    table_->setWordWrap(false);
    table_->setTabKeyNavigation(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(RowHeight);
    table_->horizontalHeader()->setHighlightSections(false);
    for (int i = 0; i < AlarmTableModel::Columns; ++i)
        table_->setColumnWidth(i, Widths[static_cast<std::size_t>(i)]);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder); // as they come
    table_->setSortingEnabled(true);
    widenColumns();
    stack_->addWidget(table_);
    auto* const empty = new QLabel(stack_);
    corvanta::wordedText(empty, [] { return tr("没有未确认的报警"); });
    empty->setObjectName(QStringLiteral("alarmEmpty"));
    empty->setAlignment(Qt::AlignCenter);
    empty->setProperty("role", QStringLiteral("faint"));
    stack_->addWidget(empty);
    splitter->addWidget(stack_);
    splitter->addWidget(makeDetail());
    splitter->setStretchFactor(0, 1);
    splitter->setSizes({600, 240});
    column->addWidget(splitter, 1);
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &AlarmCenterPage::showChosen);
    connect(&context_.alarms, &linkage::AlarmInbox::sigChanged, this, &AlarmCenterPage::refresh);
    connect(&loader_, &PictureLoader::sigLoaded, this, [this](const QString& path, const QImage& image) {
        if (path == pictures_.value(shownPicture_))
            picture_->show(image, tr("图片无法显示"));
    });
    refresh();
    connect(&corvanta::LanguageNotice::instance(), &corvanta::LanguageNotice::changed, this, [this] {
        table_->horizontalHeader()->viewport()->update();
        table_->viewport()->update();
        refresh();
        widenColumns();
        showPicture(shownPicture_); // what is said instead of one
    });
}

void AlarmCenterPage::widenColumns() {
    const auto widen = [this](int column, int width) {
        table_->setColumnWidth(column, qMax(table_->columnWidth(column), width));
    };
    for (int i = 0; i < AlarmTableModel::Columns; ++i)
        widen(i, table_->horizontalHeader()->sectionSizeHint(i));
    for (const corvanta::AlarmType& type : corvanta::alarmTypes())
        widen(AlarmTableModel::Level,
              table_->fontMetrics().horizontalAdvance(type.shownText()) + 4 * theme::Step); // margins of a cell
}

QWidget* AlarmCenterPage::makeButtons() {
    auto* const bar = new QWidget(this);
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2 * theme::Step);
    const auto add = [bar, row](const corvanta::Text& text, const char* objectName) {
        auto* const button = new QPushButton(bar);
        button->setObjectName(QLatin1String(objectName));
        corvanta::wordedText(button, text);
        corvanta::wordedName(button, text);
        row->addWidget(button);
        return button;
    };
    confirm_ = add([] { return tr("确认"); }, "alarmConfirm");
    confirmAll_ = add([] { return tr("全部确认"); }, "alarmConfirmAll");
    live_ = add([] { return tr("实时视频"); }, "alarmLive");
    playback_ = add([] { return tr("回放"); }, "alarmPlayback");
    map_ = add([] { return tr("电子地图"); }, "alarmMap");
    count_ = new WholeLabel(bar);
    count_->setObjectName(QStringLiteral("alarmCount"));
    row->addWidget(count_, 1);
    connect(confirm_, &QPushButton::clicked, this, [this] { acknowledge(chosenKeys()); });
    connect(confirmAll_, &QPushButton::clicked, this, &AlarmCenterPage::askToAcknowledgeAll);
    connect(live_, &QPushButton::clicked, this, [this] {
        if (const linkage::OpenAlarm* const alarm = chosen())
            emit sigLive(alarm->ipncId);
    });
    connect(playback_, &QPushButton::clicked, this, [this] {
        if (const linkage::OpenAlarm* const alarm = chosen())
            emit sigPlayback(alarm->ipncId, timeOf(*alarm));
    });
    connect(map_, &QPushButton::clicked, this, [this] {
        if (const linkage::OpenAlarm* const alarm = chosen())
            emit context_.events.sig_showAlarmOnMap(alarm->ipncId, alarm->trigger);
    });
    return bar;
}

QWidget* AlarmCenterPage::makeDetail() {
    auto* const detail = new QWidget(this);
    detail->setMinimumWidth(160); // px
    auto* const column = new QVBoxLayout(detail);
    column->setContentsMargins(2 * theme::Step, 0, 0, 0);
    column->setSpacing(2 * theme::Step);
    picture_ = new PictureView(detail);
    picture_->setObjectName(QStringLiteral("alarmPicture"));
    corvanta::wordedName(picture_, [] { return tr("报警图片"); });
    column->addWidget(picture_, 1);
    nextPicture_ = new QPushButton(detail);
    corvanta::wordedText(nextPicture_, [] { return tr("下一张"); });
    nextPicture_->setObjectName(QStringLiteral("alarmNextPicture"));
    corvanta::wordedName(nextPicture_, [] { return tr("下一张图片"); });
    connect(nextPicture_, &QPushButton::clicked, this,
            [this] { showPicture((shownPicture_ + 1) % pictures_.size()); });
    column->addWidget(nextPicture_, 0, Qt::AlignLeft);
    text_ = new QLabel(detail);
    text_->setObjectName(QStringLiteral("alarmText"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(text_);
    return detail;
}

void AlarmCenterPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh(); // it does not follow while nobody sees it
    if (model_->rowCount() > 0 && !table_->currentIndex().isValid())
        table_->selectRow(0);
}

void AlarmCenterPage::refresh() {
    if (!isVisible())
        return;
    const QStringList before = chosenKeys();
    model_->setAlarms(context_.alarms.alarms());
    if (chosenKeys() != before) {
        QItemSelection selection;
        for (const QString& key : before) {
            const int row = model_->rowOf(key);
            if (row >= 0)
                selection.select(model_->index(row, 0), model_->index(row, AlarmTableModel::Columns - 1));
        }
        table_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    }
    stack_->setCurrentIndex(model_->rowCount() > 0 ? 0 : 1);
    count_->setText(tr("未确认 %1 条").arg(QLocale(QLocale::English).toString(context_.alarms.count())));
    showChosen();
}

QStringList AlarmCenterPage::chosenKeys() const {
    QStringList keys;
    const QModelIndexList rows = table_->selectionModel()->selectedRows();
    for (const QModelIndex& row : rows)
        keys += model_->at(row.row()).key;
    return keys;
}

const linkage::OpenAlarm* AlarmCenterPage::chosen() const {
    const QStringList keys = chosenKeys();
    return keys.size() == 1 ? context_.alarms.find(keys.constFirst()) : nullptr;
}

void AlarmCenterPage::showChosen() {
    const linkage::OpenAlarm* const alarm = chosen();
    const DeviceRecord* const device = alarm == nullptr ? nullptr : context_.devices.device(alarm->ipncId);
    confirm_->setEnabled(!chosenKeys().isEmpty());
    confirmAll_->setEnabled(context_.alarms.count() > 0);
    live_->setEnabled(device != nullptr && device->isVideo());
    playback_->setEnabled(alarm != nullptr && timeOf(*alarm).isValid());
    map_->setVisible(context_.events.showsAlarmsOnMap());
    map_->setEnabled(alarm != nullptr);
    text_->setText(alarm == nullptr
                       ? QString()
                       : alarm->device + QLatin1Char('\n') + alarm->lastTime + QLatin1Char('\n') + alarm->content);
    const QString shown =
        alarm == nullptr ? QString() : alarm->key + alarm->lastTime + QString::number(alarm->images.size());
    if (shown == shown_)
        return;
    shown_ = shown;
    pictures_ = alarm == nullptr ? QStringList() : linkage::picturesOf(*alarm, storage_.searchedDrives());
    showPicture(0);
}

void AlarmCenterPage::showPicture(int number) {
    shownPicture_ = number;
    nextPicture_->setVisible(pictures_.size() > 1);
    loader_.forget();
    picture_->show({}, pictures_.isEmpty() ? tr("没有图片") : tr("正在读取..."));
    if (!pictures_.isEmpty())
        loader_.request(pictures_[number], PictureBound);
}

void AlarmCenterPage::acknowledge(const QStringList& keys) {
    if (keys.isEmpty())
        return;
    QStringList names;
    for (const QString& key : keys) {
        if (const linkage::OpenAlarm* const alarm = context_.alarms.find(key))
            names += alarm->device + QLatin1Char(' ') + alarm->content.simplified();
    }
    linkage::logChange(context_.operationLog, context_.gateway.phoneId(), linkage::LogSubject::Alarms,
                       QStringLiteral("确认报警"), names.join(QStringLiteral("; ")));
    context_.alarms.acknowledge(keys);
}

void AlarmCenterPage::askToAcknowledgeAll() {
    const QString number = QLocale(QLocale::English).toString(context_.alarms.count());
    TipDialog::offer({.title = tr("提示"),
                      .text = tr("确认全部%1条报警?").arg(number),
                      .accept = tr("确定"),
                      .reject = tr("取消")},
                     this, {.accepted = [this, number] {
                         linkage::logChange(context_.operationLog, context_.gateway.phoneId(),
                                            linkage::LogSubject::Alarms, QStringLiteral("全部确认报警"), number);
                         context_.alarms.acknowledgeAll();
                     }});
}
