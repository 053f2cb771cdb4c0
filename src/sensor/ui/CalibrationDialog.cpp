#include "sensor/ui/CalibrationDialog.h"

#include "base/ui/Theme.h"
#include "sensor/Samples.h"
#include "sensor/ui/SensorSend.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvanta::sensor {

CalibrationDialog::CalibrationDialog(const AppContext& context, const QString& ipncId, int pid, QWidget* parent)
    : FramedDialog(tr("两点校准"), parent)
    , context_(context)
    , ipncId_(ipncId)
    , pid_(pid) {
    setObjectName(QStringLiteral("CalibrationDialog"));
    setAccessibleName(tr("两点校准"));
    auto* const hint = new QLabel(tr("在两个不同的测量点上，填写原始值和真实值。"), this);
    hint->setObjectName(QStringLiteral("hint"));
    body()->addWidget(hint);
    auto* const grid = new QGridLayout;
    grid->setSpacing(2 * theme::Step);
    grid->addWidget(new QLabel(tr("原始值"), this), 0, 1);
    grid->addWidget(new QLabel(tr("真实值"), this), 0, 3);
    points_[0] = addPoint(1, *grid);
    points_[1] = addPoint(2, *grid);
    body()->addLayout(grid);
    text_ = new QLabel(this);
    text_->setObjectName(QStringLiteral("calibrationText"));
    body()->addWidget(text_);
    ok_ = addButton(tr("确定"), QStringLiteral("calibrationOk"), true);
    connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
    connect(addButton(tr("取消"), QStringLiteral("calibrationCancel"), false), &QPushButton::clicked, this,
            &QDialog::reject);
    compute();
}

CalibrationDialog::Point CalibrationDialog::addPoint(int number, QGridLayout& grid) {
    const auto makeEdit = [this](const QString& objectName, const QString& name) {
        auto* const edit = new QLineEdit(this);
        edit->setObjectName(objectName);
        edit->setAccessibleName(name);
        connect(edit, &QLineEdit::textChanged, this, &CalibrationDialog::compute);
        return edit;
    };
    const Point point{makeEdit(QStringLiteral("raw%1").arg(number), tr("第%1点原始值").arg(number)),
                      makeEdit(QStringLiteral("true%1").arg(number), tr("第%1点真实值").arg(number))};
    auto* const read = new QPushButton(tr("读取"), this);
    read->setObjectName(QStringLiteral("read%1").arg(number));
    read->setAccessibleName(tr("读取第%1点").arg(number));
    read->setEnabled(pid_ > 0);
    read->setAutoDefault(false);
    connect(read, &QPushButton::clicked, this, [this, read, edit = point.raw] {
        readNow(context_, this, ipncId_, pid_, read, [edit](const QVariantMap& answer) {
            if (const auto raw = readNumber(answer.value(QStringLiteral("raw"))))
                edit->setText(numberText(*raw));
        });
    });
    grid.addWidget(new QLabel(tr("第%1点").arg(number), this), number, 0);
    grid.addWidget(point.raw, number, 1);
    grid.addWidget(read, number, 2);
    grid.addWidget(point.truth, number, 3);
    return point;
}

void CalibrationDialog::compute() {
    found_.reset();
    std::array<std::optional<CalibrationPoint>, 2> entered;
    for (std::size_t i = 0; i < points_.size() && points_[i].raw != nullptr; ++i) {
        const auto raw = readNumber(points_[i].raw->text().trimmed());
        const auto truth = readNumber(points_[i].truth->text().trimmed());
        if (raw && truth)
            entered[i] = CalibrationPoint{*raw, *truth};
    }
    if (entered[0] && entered[1])
        found_ = calibrated(*entered[0], *entered[1]);
    const bool isComplete = entered[0] && entered[1];
    text_->setText(found_ ? tr("系数 %1，偏移 %2").arg(numberText(found_->scale), numberText(found_->offset))
                   : isComplete ? tr("两点的原始值和真实值都应不同")
                                : QString());
    ok_->setEnabled(found_.has_value());
}

} // namespace corvanta::sensor
