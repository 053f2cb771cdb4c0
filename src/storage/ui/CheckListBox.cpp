#include "storage/ui/CheckListBox.h"

#include "base/ui/PlainToolTip.h"

#include <QKeyEvent>
#include <QListView>
#include <QScreen>
#include <QStandardItemModel>
#include <QStylePainter>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int IdRole = Qt::UserRole + 1;
constexpr int MostRows = 12; ///< seen at once

QStandardItem* makeItem(const CheckListBox::Entry& entry, bool isTicked) {
    auto* const item = new QStandardItem(entry.text);
    item->setData(entry.id, IdRole);
    item->setToolTip(corvanta::plainToolTip(entry.tip));
    item->setData(isTicked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable); // a click anywhere on it ticks it
    return item;
}

} // namespace

CheckListBox::CheckListBox(const QString& objectName, corvanta::Text name, corvanta::Text allText, QWidget* parent)
    : QComboBox(parent)
    , name_(std::move(name))
    , allText_(std::move(allText))
    , popup_(new QFrame(this, Qt::Popup))
    , list_(new QListView(popup_))
    , entries_(new QStandardItemModel(this)) {
    setObjectName(objectName);
    popup_->setObjectName(objectName + QStringLiteral("Popup"));
    popup_->setProperty("checkList", true);
    auto* const column = new QVBoxLayout(popup_);
    column->setContentsMargins(1, 1, 1, 1);
    list_->setObjectName(objectName + QStringLiteral("List"));
    list_->setUniformItemSizes(true);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setModel(entries_);
    list_->installEventFilter(this);
    column->addWidget(list_);
    connect(list_, &QListView::clicked, this, &CheckListBox::toggle);
    setEntries({});
    corvanta::worded(this, [this] { sayWords(); });
}

void CheckListBox::sayWords() {
    setToolTip(name_());
    list_->setAccessibleName(name_());
    entries_->item(0)->setText(allText_());
    showChosen();
    updateGeometry();
}

void CheckListBox::setEntries(const QList<Entry>& entries) {
    const QStringList ticked = chosen();
    const int current = list_->currentIndex().row();
    entries_->clear();
    entries_->appendRow(makeItem({QString(), allText_(), QString()}, true));
    for (const Entry& entry : entries)
        entries_->appendRow(makeItem(entry, false));
    choose(ticked);
    list_->setCurrentIndex(entries_->index(std::max(0, current), 0));
}

QStringList CheckListBox::chosen() const {
    QStringList result;
    for (int row = 1; row < entries_->rowCount(); ++row) {
        if (entries_->item(row)->data(Qt::CheckStateRole).toInt() == Qt::Checked)
            result += entries_->item(row)->data(IdRole).toString();
    }
    return result;
}

void CheckListBox::choose(const QStringList& ids) {
    bool isAny = false;
    for (int row = 1; row < entries_->rowCount(); ++row) {
        QStandardItem& item = *entries_->item(row);
        const bool ticked = ids.contains(item.data(IdRole).toString());
        item.setData(ticked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
        isAny = isAny || ticked;
    }
    entries_->item(0)->setData(isAny ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    showChosen();
}

void CheckListBox::toggle(const QModelIndex& index) {
    if (!index.isValid())
        return;
    QStringList ids = chosen();
    const QString id = index.data(IdRole).toString();
    if (index.row() == 0)
        ids.clear();
    else if (!ids.removeOne(id))
        ids += id;
    choose(ids);
    emit sigChosen();
}

QString CheckListBox::text() const {
    const QStringList ids = chosen();
    if (ids.isEmpty())
        return allText_();
    if (ids.size() > 1)
        return tr("%1：%2 项").arg(name_()).arg(ids.size());
    for (int row = 1; row < entries_->rowCount(); ++row) {
        if (entries_->item(row)->data(IdRole).toString() == ids.first())
            return entries_->item(row)->text();
    }
    return {};
}

void CheckListBox::showChosen() {
    setAccessibleName(tr("%1：%2").arg(name_(), text()));
    update();
}

void CheckListBox::showPopup() {
    const QRect screen = this->screen()->availableGeometry();
    const int row = std::max(list_->sizeHintForRow(0), 20);
    const int rows = std::min(entries_->rowCount(), MostRows);
    const QSize size(std::clamp(list_->sizeHintForColumn(0) + 32, width(), std::max(width(), screen.width() / 2)),
                     rows * row + 4);
    QPoint place = mapToGlobal(QPoint(0, height()));
    if (place.y() + size.height() > screen.bottom())
        place = mapToGlobal(QPoint(0, -size.height()));
    place.setX(std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - size.width())));
    popup_->setGeometry(QRect(place, size));
    popup_->show();
    list_->setFocus();
}

void CheckListBox::hidePopup() {
    popup_->hide();
}

bool CheckListBox::eventFilter(QObject* watched, QEvent* event) {
    // A form that has keys of its own does not get them while the list is open.
    if (watched == list_ && event->type() == QEvent::ShortcutOverride)
        event->accept();
    if (watched == list_ && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Space:
            toggle(list_->currentIndex());
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F4:
        case Qt::Key_Tab:
            hidePopup();
            return true;
        default:
            break;
        }
    }
    return QComboBox::eventFilter(watched, event);
}

void CheckListBox::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_F4:
        showPopup();
        break;
    default:
        event->ignore(); // there is no row to go to
    }
}

void CheckListBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void CheckListBox::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = fontMetrics().elidedText(text(), Qt::ElideRight, field.width() - 4);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

QSize CheckListBox::sizeHint() const {
    return {fontMetrics().horizontalAdvance(allText_()) + 64, QComboBox::sizeHint().height()};
}

QSize CheckListBox::minimumSizeHint() const {
    return {72, QComboBox::minimumSizeHint().height()};
}
