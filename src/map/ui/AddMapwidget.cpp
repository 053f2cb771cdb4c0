#include "map/ui/AddMapwidget.h"

#include "account/ui/AccountForm.h"
#include "base/AppEvents.h"
#include "base/RequestBuilder.h"
#include "base/ui/FileChooser.h"
#include "base/ui/Theme.h"
#include "manageWidget/ui/ManageSend.h"
#include "map/PicturePyramid.h"
#include "map/ui/MapSend.h"
#include "map/ui/UploadBar.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta::map {
namespace {
constexpr int LongestName = 64; // characters
} // namespace

AddMapwidget::AddMapwidget(const AppContext& context, QWidget* parent)
    : FramedDialog(tr("添加地图"), parent)
    , context_(context) {
    setObjectName(QStringLiteral("AddMapwidget"));
    setAccessibleName(windowTitle());
    build();
    save_ = addButton(tr("保存"), QStringLiteral("mapSave"), true);
    connect(save_, &QPushButton::clicked, this, &AddMapwidget::save);
    connect(addButton(tr("取消"), QStringLiteral("mapCancel"), false), &QPushButton::clicked, this, &QDialog::reject);
    connect(bar_, &UploadBar::sigEnded, this, [this] { save_->setEnabled(true); });
    connect(bar_, &UploadBar::sigFailed, this, [this](const QString& text) { account::tell(text, this); });
    name_->setFocus();
}

void AddMapwidget::build() {
    auto* const kinds = new QHBoxLayout;
    local_ = new QRadioButton(typeText(MapType::Local), this);
    local_->setObjectName(QStringLiteral("mapLocal"));
    online_ = new QRadioButton(typeText(MapType::Online), this);
    online_->setObjectName(QStringLiteral("mapOnline"));
    for (QRadioButton* const button : {local_, online_}) {
        button->setAccessibleName(button->text());
        kinds->addWidget(button);
    }
    kinds->addStretch(1);
    body()->addLayout(kinds);
    QFormLayout* const form = account::makeForm();
    name_ = account::addField(*form, tr("地图名称"), tr("地图名称"), QStringLiteral("mapName"));
    name_->setMaxLength(LongestName);
    body()->addLayout(form);
    pictureForm_ = new QWidget(this);
    auto* const column = new QVBoxLayout(pictureForm_);
    column->setContentsMargins(0, 0, 0, 0);
    QFormLayout* const pictureRows = account::makeForm();
    column->addLayout(pictureRows);
    pictureRows->addRow(tr("地图图片"), buildPicture());
    distanceX_ =
        account::addField(*pictureRows, tr("实际水平距离:"), tr("实际水平距离"), QStringLiteral("mapDistanceX"));
    distanceY_ =
        account::addField(*pictureRows, tr("实际垂直距离:"), tr("实际垂直距离"), QStringLiteral("mapDistanceY"));
    for (QLineEdit* const edit : {distanceX_, distanceY_})
        edit->setPlaceholderText(tr("米"));
    // The rows above and those of a picture stand in one column.
    int widest = 0;
    for (int row = 0; row < pictureRows->rowCount(); ++row)
        widest = std::max(widest, pictureRows->itemAt(row, QFormLayout::LabelRole)->widget()->sizeHint().width());
    form->labelForField(name_)->setMinimumWidth(widest);
    auto* const hint = new QLabel(tr("导入图片长宽比参考：16：9"), pictureForm_);
    hint->setObjectName(QStringLiteral("mapRatioHint"));
    hint->setProperty("role", QStringLiteral("hint"));
    column->addWidget(hint);
    body()->addWidget(pictureForm_);
    bar_ = new UploadBar(context_.gateway, this);
    body()->addWidget(bar_);
    connect(local_, &QRadioButton::toggled, this, &AddMapwidget::showKind);
    local_->setChecked(true);
}

QWidget* AddMapwidget::buildPicture() {
    auto* const holder = new QWidget(pictureForm_);
    auto* const row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    picture_ = new QLineEdit(holder);
    picture_->setObjectName(QStringLiteral("mapPicture"));
    picture_->setAccessibleName(tr("地图图片"));
    picture_->setReadOnly(true);
    picture_->setMinimumWidth(240); // px
    auto* const open = new QPushButton(tr("浏览"), holder);
    open->setObjectName(QStringLiteral("mapBrowse"));
    open->setAccessibleName(tr("选择地图图片"));
    open->setAutoDefault(false);
    connect(open, &QPushButton::clicked, this, &AddMapwidget::browse);
    row->addWidget(picture_, 1);
    row->addWidget(open);
    return holder;
}

void AddMapwidget::showKind() {
    pictureForm_->setVisible(local_->isChecked());
    adjustSize();
}

void AddMapwidget::browse() {
    const QString path =
        chooseFile(this, tr("选择地图"), QStandardPaths::writableLocation(QStandardPaths::PicturesLocation),
                   QStringLiteral("Image Files(*.png *.jpg)"));
    if (!path.isEmpty())
        picture_->setText(path);
}

MapDraft AddMapwidget::entered() const {
    return {name_->text(), local_->isChecked() ? MapType::Local : MapType::Online, picture_->text(),
            distanceX_->text(), distanceY_->text()};
}

void AddMapwidget::save() {
    const MapDraft draft = entered();
    if (const auto problem = checkNew(draft)) {
        account::tell(*problem, this);
        return;
    }
    if (draft.type == MapType::Local)
        upload(draft);
    else
        submit(draft);
}

void AddMapwidget::upload(const MapDraft& draft) {
    const QString problem = pictureProblem(draft.picture, PicturePyramid::LargestFile, PicturePyramid::MostPixels);
    if (!problem.isEmpty()) {
        account::tell(problem, this);
        return;
    }
    disconnect(bar_, &UploadBar::sigDone, this, nullptr);
    connect(bar_, &UploadBar::sigDone, this,
            [this, draft](const QVariantMap& resp) { added(draft, resp, tr("上传地图成功!")); });
    save_->setEnabled(false);
    bar_->start(draft.picture, QStringLiteral("maps"), {{QStringLiteral("mapinfo"), mapInfo(draft)}});
}

void AddMapwidget::submit(const MapDraft& draft) {
    manage::send(context_, this,
                 {.json = requests::accountRequest(QStringLiteral("添加（编辑）地图信息"),
                                                   {{QStringLiteral("mapinfo"), mapInfo(draft)}}),
                  .busy = save_,
                  .done = [this, draft](const QVariantMap& resp) {
                      added(draft, resp, tr("保存成功!"));
                  }});
}

void AddMapwidget::added(const MapDraft& draft, const QVariantMap& resp, const QString& text) {
    logChange(context_, QStringLiteral("添加地图"), draft.name.trimmed());
    account::tell(text, parentWidget());
    emit context_.events.sig_updateMapList();
    emit sigAdded(resp.value(QStringLiteral("mapid")).toString());
    accept();
}

} // namespace corvanta::map
