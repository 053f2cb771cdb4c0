#include "map/ui/SetElectronMapDialog.h"

#include "account/ui/AccountForm.h"
#include "base/AppEvents.h"
#include "base/RequestBuilder.h"
#include "manageWidget/ui/ManageSend.h"
#include "map/ui/MapSend.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace corvanta::map {
namespace {

constexpr int LongestName = 64; // characters

/// As the service has it: a text, where it is one.
QString distanceText(const MapRecord& map, const char* key) {
    return map.rest.value(QStringLiteral("range"))
        .toMap()
        .value(QStringLiteral("distance"))
        .toMap()
        .value(QLatin1String(key))
        .toString();
}

} // namespace

SetElectronMapDialog::SetElectronMapDialog(const AppContext& context, const MapRecord& map, QWidget* parent)
    : FramedDialog(tr("编辑地图信息"), parent)
    , context_(context)
    , map_(map) {
    setObjectName(QStringLiteral("SetElectronMapDialog"));
    setAccessibleName(windowTitle());
    QFormLayout* const form = account::makeForm();
    name_ = account::addField(*form, tr("地图名称"), tr("地图名称"), QStringLiteral("mapName"));
    name_->setMaxLength(std::max(LongestName, map.name.size())); // what is there is not cut
    name_->setText(map.name);
    if (map.type == MapType::Local) {
        distanceX_ =
            account::addField(*form, tr("实际水平距离:"), tr("实际水平距离"), QStringLiteral("mapDistanceX"));
        distanceX_->setText(distanceText(map, "w"));
        distanceY_ =
            account::addField(*form, tr("实际垂直距离:"), tr("实际垂直距离"), QStringLiteral("mapDistanceY"));
        distanceY_->setText(distanceText(map, "h"));
    }
    body()->addLayout(form);
    save_ = addButton(tr("保存"), QStringLiteral("mapSave"), true);
    connect(save_, &QPushButton::clicked, this, &SetElectronMapDialog::save);
    connect(addButton(tr("取消"), QStringLiteral("mapCancel"), false), &QPushButton::clicked, this, &QDialog::reject);
    name_->setFocus();
}

void SetElectronMapDialog::save() {
    MapDraft draft;
    draft.name = name_->text();
    draft.type = map_.type;
    if (distanceX_ != nullptr) {
        draft.distanceX = distanceX_->text();
        draft.distanceY = distanceY_->text();
    }
    if (const auto problem = checkEdited(draft)) {
        account::tell(*problem, this);
        return;
    }
    QVariantMap info = mapInfo(draft);
    info.insert(QStringLiteral("mapid"), map_.id);
    manage::send(context_, this,
                 {.json = requests::accountRequest(QStringLiteral("添加（编辑）地图信息"),
                                                   {{QStringLiteral("mapinfo"), info}}),
                  .busy = save_,
                  .done = [this, name = draft.name.trimmed()](const QVariantMap&) {
                      logChange(context_, QStringLiteral("编辑地图信息"), name);
                      account::tell(tr("保存成功!"), parentWidget());
                      emit context_.events.sig_updateMapList();
                      accept();
                  }});
}

} // namespace corvanta::map
