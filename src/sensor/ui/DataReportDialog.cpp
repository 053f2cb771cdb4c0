#include "sensor/ui/DataReportDialog.h"

#include "account/ui/AccountForm.h"
#include "base/ui/FileChooser.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"
#include "base/ui/TimeRangeEdit.h"
#include "manageWidget/ui/ManageSend.h"
#include "sensor/ui/InputPicker.h"
#include "sensor/ui/SensorSend.h"

#include <QComboBox>
#include <QDateTime>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta::sensor {
namespace {

constexpr int BarLength = 1000;
constexpr int MostInputs = 200;
constexpr int Beat = 50; // ms

QString counted(qint64 count) {
    return QLocale(QLocale::English).toString(count);
}

LogExport::Format formatOf(const QString& file) {
    return file.endsWith(QLatin1String(".xls"), Qt::CaseInsensitive) ? LogExport::Format::Workbook
                                                                     : LogExport::Format::Text;
}

} // namespace

DataReportDialog::DataReportDialog(const AppContext& context, const QVector<InputRecord>& inputs,
                                   const QVector<int>& chosen, QWidget* parent)
    : FramedDialog(tr("数据报表"), parent)
    , context_(context)
    , inputs_(inputs)
    , chosen_(chosen.mid(0, MostInputs))
    , fetch_(context.gateway) {
    setObjectName(QStringLiteral("DataReportDialog"));
    setAccessibleName(tr("数据报表"));
    body()->addWidget(makeForm());
    body()->addWidget(makeProgress());
    start_ = addButton(tr("导出"), QStringLiteral("reportStart"), true);
    connect(start_, &QPushButton::clicked, this, &DataReportDialog::start);
    close_ = addButton(tr("关闭"), QStringLiteral("reportClose"), false);
    connect(close_, &QPushButton::clicked, this, &DataReportDialog::reject);
    connect(&fetch_, &SensorExport::sigProgress, this, [this](qint64 done, qint64 total) {
        bar_->setValue(total > 0 ? static_cast<int>(std::min(done, total) * BarLength / 2 / total) : 0);
        text_->setText(tr("正在读取数据 %1 / %2 条").arg(counted(done), counted(total)));
    });
    connect(&fetch_, &SensorExport::sigDone, this, &DataReportDialog::write);
    connect(&fetch_, &SensorExport::sigFailed, this, &DataReportDialog::finish);
    timer_.setInterval(Beat);
    connect(&timer_, &QTimer::timeout, this, &DataReportDialog::follow);
    showChosen();
    showRunning(false);
}

DataReportDialog::~DataReportDialog() = default;

QWidget* DataReportDialog::makeForm() {
    form_ = new QWidget(this);
    QFormLayout* const form = account::makeForm();
    form_->setLayout(form);
    form->setContentsMargins(0, 0, 0, 0);
    choose_ = new QPushButton(form_);
    choose_->setObjectName(QStringLiteral("reportInputs"));
    choose_->setAutoDefault(false);
    connect(choose_, &QPushButton::clicked, this, &DataReportDialog::pick);
    form->addRow(tr("采集输入"), choose_);
    range_ = new TimeRangeEdit(form_);
    range_->setLastDays(1);
    for (auto* const button : range_->findChildren<QToolButton*>()) // drawn for the dark pages otherwise
        button->setIcon(svgIcon(QStringLiteral("calendar"), theme::TextOnLight));
    form->addRow(tr("时间"), range_);
    const auto makeChoice = [this](const QString& objectName, const QString& name) {
        auto* const choice = new QComboBox(form_);
        choice->setObjectName(objectName);
        choice->setAccessibleName(name);
        return choice;
    };
    step_ = makeChoice(QStringLiteral("reportStep"), tr("间隔"));
    step_->addItem(tr("原始数据"), 0);
    step_->addItem(tr("分钟"), 60);
    step_->addItem(tr("小时"), 3600);
    step_->addItem(tr("天"), 86400);
    form->addRow(tr("间隔"), step_);
    format_ = makeChoice(QStringLiteral("reportFormat"), tr("格式"));
    format_->addItem(tr("表格文档(.xls)"), QStringLiteral("xls"));
    format_->addItem(tr("文本文档(.txt)"), QStringLiteral("txt"));
    form->addRow(tr("格式"), format_);
    return form_;
}

QWidget* DataReportDialog::makeProgress() {
    auto* const progress = new QWidget(this);
    auto* const column = new QVBoxLayout(progress);
    column->setContentsMargins(0, 0, 0, 0);
    bar_ = new QProgressBar(progress);
    bar_->setObjectName(QStringLiteral("reportBar"));
    bar_->setAccessibleName(tr("导出进度"));
    bar_->setRange(0, BarLength);
    bar_->setTextVisible(false);
    text_ = new QLabel(progress);
    text_->setObjectName(QStringLiteral("reportText"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    column->addWidget(bar_);
    column->addWidget(text_);
    return progress;
}

void DataReportDialog::pick() {
    InputPicker picker(inputs_, {chosen_, MostInputs}, this);
    if (picker.exec() != QDialog::Accepted)
        return;
    chosen_ = picker.chosen();
    showChosen();
}

void DataReportDialog::showChosen() {
    QString text = tr("请选择采集输入");
    const auto first = std::find_if(inputs_.begin(), inputs_.end(),
                                    [this](const InputRecord& input) { return chosen_.value(0) == input.pid; });
    if (chosen_.size() == 1 && first != inputs_.end())
        text = first->path();
    else if (!chosen_.isEmpty())
        text = tr("已选 %1 个采集输入").arg(chosen_.size());
    choose_->setAccessibleName(tr("采集输入：%1").arg(text));
    choose_->setText(choose_->fontMetrics()
                         .elidedText(text, Qt::ElideMiddle, 360) // px
                         .replace(QLatin1Char('&'), QStringLiteral("&&")));
}

void DataReportDialog::start() {
    QString problem;
    if (chosen_.isEmpty())
        problem = tr("请选择采集输入!");
    else if (range_->start() >= range_->end())
        problem = tr("开始时间应早于结束时间!");
    showProblem(problem);
    if (!problem.isEmpty())
        return;
    const QString suffix = format_->currentData().toString();
    const QString proposal =
        manage::documentsFolder() + QLatin1Char('/') +
        tr("数据报表-%1.%2").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss")), suffix);
    const QString file = chooseNewFile(
        this, tr("导出"), proposal, suffix == QLatin1String("xls") ? tr("表格文档 (*.xls)") : tr("文本文档 (*.txt)"));
    if (!file.isEmpty())
        exportTo(LogExport::withSuffix(file, suffix == QLatin1String("xls") ? LogExport::Format::Workbook
                                                                            : LogExport::Format::Text));
}

void DataReportDialog::exportTo(const QString& file) {
    file_ = file;
    ReportPlan plan;
    for (const InputRecord& input : qAsConst(inputs_)) {
        if (chosen_.contains(input.pid))
            plan.inputs += input;
    }
    plan.begin = range_->start().toSecsSinceEpoch();
    plan.end = range_->end().toSecsSinceEpoch();
    plan.step = step_->currentData().toInt();
    showRunning(true);
    text_->setText(tr("正在读取数据..."));
    fetch_.start(plan);
}

void DataReportDialog::write() {
    const auto table = fetch_.takeTable();
    if (table == nullptr || table->rows.isEmpty()) {
        finish(tr("该时间段内没有数据记录!"));
        return;
    }
    text_->setText(tr("正在写入文件..."));
    writing_ = std::make_unique<LogExport>(table, formatOf(file_), file_);
    timer_.start();
}

void DataReportDialog::follow() {
    const LogExport::State state = writing_->state();
    const qint64 total = std::max(1, writing_->totalSteps());
    bar_->setValue(static_cast<int>(BarLength / 2 + writing_->steps() * qint64{BarLength} / 2 / total));
    if (state == LogExport::State::Running)
        return;
    timer_.stop();
    writing_.reset();
    if (state == LogExport::State::Done)
        logChange(context_, QStringLiteral("导出数据报表"),
                  QStringLiteral("采集输入 %1 个，%2").arg(chosen_.size()).arg(file_));
    finish(state == LogExport::State::Done        ? tr("导出完成：%1").arg(file_)
           : state == LogExport::State::Cancelled ? tr("导出已取消")
                                                  : tr("文件写入失败!"));
}

void DataReportDialog::finish(const QString& text) {
    showRunning(false);
    text_->setText(text);
    text_->setAccessibleName(text);
}

void DataReportDialog::showRunning(bool isRunning) {
    form_->setEnabled(!isRunning);
    start_->setEnabled(!isRunning);
    close_->setText(isRunning ? tr("取消") : tr("关闭"));
    bar_->setVisible(isRunning);
    bar_->setValue(0);
}

void DataReportDialog::reject() {
    if (writing_ != nullptr) {
        writing_->cancel(); // `follow` sees the end
        return;
    }
    if (fetch_.isRunning()) {
        fetch_.cancel();
        finish(tr("导出已取消"));
        return;
    }
    FramedDialog::reject();
}

} // namespace corvanta::sensor
