#include "account/ui/SmsWindow.h"

#include "base/ui/PlainToolTip.h"
#include "base/ui/Worded.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QPushButton>
#include <QRegularExpression>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QSize Usual(720, 200);      // px
constexpr int Gap = 16;           // px, to the corner of the window below
constexpr int LongestShown = 512; // characters of a message
enum Column { TimeColumn, PhoneColumn, TextColumn };

} // namespace

SmsWindow::SmsWindow()
    : FramedDialog({}) {
    setObjectName(QStringLiteral("SmsWindow"));
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setSizeGripEnabled(true);
    list_ = new QTreeWidget(this);
    list_->setObjectName(QStringLiteral("messages"));
    list_->setColumnCount(TextColumn + 1);
    list_->setRootIsDecorated(false);
    list_->setAllColumnsShowFocus(true);
    list_->setColumnWidth(TimeColumn, 148); // px
    list_->setColumnWidth(PhoneColumn, 104);
    list_->header()->setStretchLastSection(true);
    body()->addWidget(list_, 1);
    auto* const copyButton = addButton({}, QStringLiteral("smsCopy"), true);
    auto* const close = addButton({}, QStringLiteral("smsClose"), false);
    corvanta::worded(this, [this, copyButton, close] {
        setWindowTitle(tr("短信"));
        setAccessibleName(windowTitle());
        list_->setAccessibleName(windowTitle());
        list_->setHeaderLabels({tr("时间"), tr("手机号"), tr("内容")});
        copyButton->setText(tr("复制"));
        copyButton->setAccessibleName(copyButton->text());
        copyButton->setToolTip(tr("复制验证码；没有验证码时复制全文"));
        close->setText(tr("关闭"));
        close->setAccessibleName(close->text());
    });
    connect(copyButton, &QPushButton::clicked, this, &SmsWindow::copy);
    connect(close, &QPushButton::clicked, this, &SmsWindow::hide);
    resize(Usual);
}

void SmsWindow::add(const QVariantMap& message, const QWidget* owner) {
    const auto textAt = [&message](const char* key) {
        return message.value(QLatin1String(key)).toString().left(LongestShown);
    };
    auto* const item = new QTreeWidgetItem({textAt("time"), textAt("phonenumber"), textAt("text")});
    item->setToolTip(TextColumn, corvanta::plainToolTip(item->text(TextColumn)));
    list_->insertTopLevelItem(0, item); // the list owns it
    while (list_->topLevelItemCount() > Most)
        delete list_->takeTopLevelItem(Most);
    list_->setCurrentItem(item);
    if (!isVisible() && owner != nullptr) {
        const QPoint corner = owner->mapToGlobal(QPoint(owner->width(), owner->height()));
        move(corner - QPoint(width() + Gap, height() + Gap));
    }
    show();
    raise();
}

void SmsWindow::copy() {
    const QTreeWidgetItem* const item = list_->currentItem();
    if (item == nullptr)
        return;
    static const QRegularExpression code(QStringLiteral("(?<![0-9])[0-9]{6}(?![0-9])"));
    const QRegularExpressionMatch found = code.match(item->text(TextColumn));
    QApplication::clipboard()->setText(found.hasMatch() ? found.captured() : item->text(TextColumn));
}
