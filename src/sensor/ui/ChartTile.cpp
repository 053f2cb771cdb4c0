#include "sensor/ui/ChartTile.h"

#include "base/InputFields.h"
#include "base/ui/BarButton.h"
#include "base/ui/FileChooser.h"
#include "base/ui/PlainToolTip.h"
#include "base/ui/Theme.h"
#include "base/ui/TipDialog.h"
#include "sensor/ChartSetup.h"

#include <QContextMenuEvent>
#include <QDataStream>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPixmap>
#include <QStandardPaths>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta::sensor {
namespace {

constexpr double FirstSpan = 600; // s
constexpr int Rest = 150;         // ms
constexpr int KeptSamples = 2000; // of an input
/// The device tree keeps a device's id under its first role of its own.
constexpr int IpncIdRole = Qt::UserRole + 1;
const QString ItemsFormat = QStringLiteral("application/x-qabstractitemmodeldatalist");

double now() {
    return static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
}

QIcon dot(const QColor& color) {
    QPixmap pixmap(12, 12);
    pixmap.fill(color);
    return pixmap;
}

} // namespace

QString draggedDevice(const QMimeData& data) {
    QByteArray bytes = data.data(ItemsFormat);
    QDataStream stream(&bytes, QIODevice::ReadOnly);
    int row = 0;
    int column = 0;
    QMap<int, QVariant> roles;
    stream >> row >> column >> roles;
    return stream.status() == QDataStream::Ok ? roles.value(IpncIdRole).toString() : QString();
}

ChartTile::ChartTile(int number, const InputFields& fields, QWidget* parent)
    : QWidget(parent)
    , number_(number)
    , fields_(fields)
    , plot_(new ChartPlot(
          [this](int pid, double span) -> const Samples& {
              static const Samples none;
              const auto track = tracks_.find(pid);
              return track == tracks_.end() ? none : track->second.samples(ChartTrack::levelFor(span));
          },
          this)) {
    setObjectName(QStringLiteral("chartTile%1").arg(number));
    wordedName(this, [number] { return tr("图表 %1").arg(number + 1); });
    setAcceptDrops(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored); // all tiles are alike
    plot_->setAcceptDrops(false);                              // the tile takes them
    plot_->viewport()->setAcceptDrops(false);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHead());
    empty_ = new QLabel(this);
    wordedText(empty_, [] { return tr("将设备拖到此处，或点击“添加采集输入”"); });
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    empty_->setProperty("role", QStringLiteral("faint"));
    column->addWidget(empty_, 1);
    column->addWidget(plot_, 1);
    connect(plot_, &ChartPlot::sigRangeChanged, this, [this] {
        setLive(isLive_ && plot_->to() >= now() - plot_->span() * 0.02);
        settling_.start();
    });
    connect(plot_, &ChartPlot::sigPresent, this, [this] { setLive(true); });
    settling_.setSingleShot(true);
    settling_.setInterval(Rest);
    connect(&settling_, &QTimer::timeout, this, &ChartTile::load);
    connect(&beat_, &QTimer::timeout, this, &ChartTile::tick);
    setInputs({});
    setSpan(FirstSpan);
    connect(&LanguageNotice::instance(), &LanguageNotice::changed, this, &ChartTile::showValues);
}

ChartTile::~ChartTile() = default;

QToolButton* ChartTile::headButton(const char* name, Text text, const QString& drawing) {
    QToolButton* const button = barButton(this, QLatin1String(name), std::move(text), drawing);
    button->setIconSize(QSize(16, 16));
    return button;
}

QWidget* ChartTile::makeHead() {
    auto* const head = new QWidget(this);
    auto* const row = new QHBoxLayout(head);
    row->setContentsMargins(theme::Step, 0, 0, 0);
    row->setSpacing(0);
    legend_ = new QWidget(head);
    legend_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(legend_, 1);
    live_ = headButton(
        "chartLive", [] { return tr("跟随最新数据"); }, QStringLiteral("skip-gaps"));
    live_->setCheckable(true);
    connect(live_, &QToolButton::clicked, this, [this](bool on) { setLive(on); });
    QToolButton* const span = headButton(
        "chartSpan", [] { return tr("时间范围"); }, QStringLiteral("calendar"));
    connect(span, &QToolButton::clicked, this,
            [this, span] { chooseSpan(span->mapToGlobal(QPoint(0, span->height()))); });
    QToolButton* const save = headButton(
        "chartSave", [] { return tr("保存为图片"); }, QStringLiteral("snapshot"));
    connect(save, &QToolButton::clicked, this, &ChartTile::savePicture);
    add_ = headButton(
        "chartAdd", [] { return tr("添加采集输入"); }, QStringLiteral("add"));
    connect(add_, &QToolButton::clicked, this, [this] { emit sigAdd(number_); });
    for (QToolButton* const button : {live_, span, save, add_})
        row->addWidget(button);
    return head;
}

void ChartTile::setInputs(const QVector<InputRecord>& inputs) {
    inputs_ = inputs.mid(0, MostInputsOfAChart);
    std::vector<ChartPlot::Curve> curves;
    std::map<int, ChartTrack> tracks;
    for (const InputRecord& input : qAsConst(inputs_)) {
        curves.push_back({input.pid, input.name, input.unit, input.thresholds});
        const auto known = tracks_.find(input.pid);
        tracks.emplace(input.pid, known == tracks_.end() ? ChartTrack(input.pid) : std::move(known->second));
    }
    tracks_ = std::move(tracks);
    fillLegend();
    empty_->setVisible(inputs_.isEmpty() && !isFixed_);
    plot_->setVisible(!inputs_.isEmpty() || isFixed_);
    plot_->setCurves(curves);
    load();
}

QVector<int> ChartTile::inputs() const {
    QVector<int> pids;
    for (const InputRecord& input : inputs_)
        pids += input.pid;
    return pids;
}

bool ChartTile::hasRoomFor(int more) const {
    return inputs_.size() + more <= MostInputsOfAChart;
}

void ChartTile::showFixed(const QVector<InputRecord>& inputs, const QMap<int, Samples>& samples) {
    isFixed_ = true;
    setLive(false);
    live_->hide();
    add_->hide();
    tracks_.clear();
    Extent times;
    for (auto input = samples.begin(); input != samples.end(); ++input) {
        tracks_.emplace(input.key(), ChartTrack::fixed(input.key(), *input));
        if (!input->empty()) {
            times.add(input->front().time);
            times.add(input->back().time);
        }
    }
    setInputs(inputs);
    if (!times.isEmpty()) {
        const double margin = (times.high - times.low) * 0.02 + 0.5;
        plot_->setRange(times.low - margin, times.high + margin);
    }
}

void ChartTile::fillLegend() {
    qDeleteAll(chips_);
    chips_.clear();
    delete legend_->layout();
    auto* const row = new QHBoxLayout(legend_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (int i = 0; i < inputs_.size(); ++i) {
        const InputRecord& input = inputs_[i];
        auto* const chip = new QToolButton(legend_);
        chip->setObjectName(QStringLiteral("chartInput%1").arg(i));
        chip->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        chip->setIcon(dot(ChartPlot::colorOf(i)));
        chip->setIconSize(QSize(12, 12));
        chip->setFocusPolicy(Qt::TabFocus);
        chip->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        chip->setMaximumWidth(220); // px
        chip->setToolTip(plainToolTip(input.path()));
        connect(chip, &QToolButton::clicked, this,
                [this, chip, pid = input.pid] { inputMenu(pid, chip->mapToGlobal(QPoint(0, chip->height()))); });
        chips_.insert(input.pid, chip);
        row->addWidget(chip, 1);
    }
    row->addStretch(0);
    showValues();
}

void ChartTile::showValues() {
    for (const InputRecord& input : qAsConst(inputs_)) {
        const InputNow latest = nowOf(input, fields_);
        QString text = input.name;
        if (!isFixed_ && latest.value)
            text += QLatin1Char(' ') + QString::number(*latest.value) + QLatin1Char(' ') + input.unit;
        if (!isFixed_ && latest.isNormal && !*latest.isNormal)
            text = tr("%1（异常）").arg(text);
        QToolButton* const chip = chips_.value(input.pid);
        chip->setAccessibleName(text);
        chip->setText(text.replace(QLatin1Char('&'), QStringLiteral("&&"))); // an ampersand, none that underlines
    }
}

void ChartTile::inputMenu(int input, const QPoint& place) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("chartInputMenu"));
    menu.setAccessibleName(tr("曲线菜单"));
    if (!isFixed_)
        menu.addAction(tr("移除"), this, [this, input] { emit sigRemove(number_, input); })
            ->setObjectName(QStringLiteral("chartRemove"));
    menu.addAction(tr("阈值设置"), this, [this, input] { emit sigThresholds(input); })
        ->setObjectName(QStringLiteral("chartThresholds"));
    menu.exec(place);
}

void ChartTile::chooseSpan(const QPoint& place) {
    const QVector<QPair<QString, int>> spans{{tr("1 分钟"), 60},     {tr("10 分钟"), 600},  {tr("1 小时"), 3600},
                                             {tr("6 小时"), 21600},  {tr("1 天"), 86400},   {tr("7 天"), 604800},
                                             {tr("30 天"), 2592000}, {tr("1 年"), 31622400}};
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("chartSpanMenu"));
    menu.setAccessibleName(tr("时间范围"));
    for (const auto& [text, seconds] : spans)
        menu.addAction(text, this, [this, seconds = seconds] { setSpan(seconds); });
    menu.addSeparator();
    menu.addAction(tr("前一段"), this, [this] { plot_->move(-1); });
    menu.addAction(tr("后一段"), this, [this] { plot_->move(1); });
    menu.exec(place);
}

void ChartTile::setSpan(double seconds) {
    const double end = isLive_ ? now() : plot_->to();
    plot_->setRange(end - seconds, end);
    setLive(isLive_);
    load();
}

void ChartTile::setLive(bool on) {
    isLive_ = on && !isFixed_;
    live_->setChecked(isLive_);
    beat_.stop();
    if (!isLive_)
        return;
    tick();
    // No more often than the picture moves by a pixel.
    const double aPixel = plot_->span() * 1000 / std::max(100, plot_->width());
    beat_.start(static_cast<int>(std::clamp(aPixel, 100.0, 2000.0)));
}

void ChartTile::tick() {
    if (!isVisible() || inputs_.isEmpty())
        return;
    const double end = now();
    plot_->setRange(end - plot_->span(), end);
    load();
}

void ChartTile::load() {
    if (isFixed_ || !isVisible())
        return;
    for (auto& [pid, track] : tracks_) {
        if (const auto query = track.wanted(plot_->from(), plot_->to()))
            emit sigQuery(*query);
    }
}

void ChartTile::takeRecords(const QString& key, const Samples& records) {
    bool isOurs = false;
    for (auto& [pid, track] : tracks_)
        isOurs = track.onRecords(key, records) || isOurs;
    if (!isOurs)
        return;
    plot_->redraw();
    load();
}

void ChartTile::takeFailure(const QString& key) {
    for (auto& [pid, track] : tracks_)
        track.onFailed(key);
}

void ChartTile::refresh(const QVector<int>& changed) {
    bool isShown = false;
    for (auto& [pid, track] : tracks_) {
        if (isFixed_ || !changed.contains(pid))
            continue;
        const auto value = readNumber(fields_.value(QStringLiteral("value"), pid));
        const auto time = readTime(fields_.value(QStringLiteral("time"), pid));
        if (value && time)
            track.onLive({*time, *value, *value, *value, isNormalState(fields_.value(QStringLiteral("state"), pid))});
        isShown = true;
    }
    if (!isShown || !isVisible())
        return;
    showValues();
    plot_->redraw();
}

QMap<int, Samples> ChartTile::keptSamples() const {
    QMap<int, Samples> kept;
    for (const auto& [pid, track] : tracks_) {
        const Samples samples = track.newest(KeptSamples);
        if (!samples.empty())
            kept.insert(pid, samples);
    }
    return kept;
}

void ChartTile::restoreSamples(const QMap<int, Samples>& samples) {
    for (auto& [pid, track] : tracks_)
        track.restore(samples.value(pid));
    plot_->redraw();
    load();
}

void ChartTile::savePicture() {
    const QString proposal = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation) + QLatin1Char('/') +
                             QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss")) +
                             QStringLiteral(".png");
    QString file = chooseNewFile(this, tr("保存为图片"), proposal, tr("图片 (*.png)"));
    if (file.isEmpty())
        return;
    if (!file.endsWith(QLatin1String(".png"), Qt::CaseInsensitive))
        file += QStringLiteral(".png");
    if (!grab().save(file, "PNG"))
        TipDialog::tell(tr("提示"), tr("图片保存失败!"), this);
}

void ChartTile::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("chartMenu"));
    menu.setAccessibleName(tr("图表菜单"));
    const auto add = [this, &menu](const char* name, const QString& text, bool enabled, auto&& chosen) {
        QAction* const action = menu.addAction(text, this, std::forward<decltype(chosen)>(chosen));
        action->setObjectName(QLatin1String(name));
        action->setEnabled(enabled);
    };
    add("chartMenuAdd", tr("添加采集输入"), !isFixed_, [this] { emit sigAdd(number_); });
    add("chartMenuClear", tr("清空图表"), !isFixed_ && !inputs_.isEmpty(), [this] { emit sigClear(number_); });
    add("chartMenuLive", tr("跟随最新数据"), !isFixed_, [this] { setLive(true); });
    add("chartMenuSave", tr("保存为图片"), !inputs_.isEmpty(), [this] { savePicture(); });
    menu.exec(event->globalPos());
}

void ChartTile::dragEnterEvent(QDragEnterEvent* event) {
    if (isFixed_ || draggedDevice(*event->mimeData()).isEmpty())
        return;
    event->setDropAction(Qt::CopyAction); // what is dragged stays where it is
    event->accept();
}

void ChartTile::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    emit sigDevice(number_, draggedDevice(*event->mimeData()));
}

void ChartTile::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    setLive(isLive_);
    showValues();
    load();
}

} // namespace corvanta::sensor
