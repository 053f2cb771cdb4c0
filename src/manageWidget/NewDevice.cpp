#include "manageWidget/NewDevice.h"

#include "account/EntryChecks.h"
#include "manageWidget/AddressChecks.h"

#include <QCoreApplication>

#include <algorithm>
#include <initializer_list>

namespace corvanta::manage {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(NewDevice)
};

std::optional<QString> fieldProblem(const char* label, const QString& text) {
    const auto isControl = [](QChar one) {
        return one.category() == QChar::Other_Control;
    };
    if (text.size() > NewDevice::LongestField)
        return Texts::tr("%1过长!").arg(Texts::tr(label));
    if (std::any_of(text.begin(), text.end(), isControl))
        return Texts::tr("%1不能包含控制字符!").arg(Texts::tr(label));
    return std::nullopt;
}

std::optional<QString> numberProblem(const NewDevice& device) {
    if (device.ipncId.isEmpty())
        return Texts::tr("请输入设备编号!");
    if (device.word.isEmpty())
        return Texts::tr("请输入设备验证码!");
    if (auto text = fieldProblem(QT_TRANSLATE_NOOP("NewDevice", "设备编号"), device.ipncId))
        return text;
    return fieldProblem(QT_TRANSLATE_NOOP("NewDevice", "设备验证码"), device.word);
}

std::optional<QString> cameraProblem(const NewDevice& device) {
    if (device.main.isEmpty())
        return Texts::tr("请输入主码流地址!");
    if (auto text = checkRtsp(Texts::tr("主码流地址"), device.main))
        return text;
    if (!device.light.isEmpty()) {
        if (auto text = checkRtsp(Texts::tr("子码流地址"), device.light))
            return text;
    }
    if (auto text = fieldProblem(QT_TRANSLATE_NOOP("NewDevice", "用户名"), device.user))
        return text;
    if (auto text = fieldProblem(QT_TRANSLATE_NOOP("NewDevice", "密码"), device.password))
        return text;
    if (device.user.isEmpty() && !device.password.isEmpty())
        return Texts::tr("请输入用户名!");
    return device.onvif.isEmpty() ? std::nullopt : checkCameraService(device.onvif);
}

} // namespace

std::optional<QString> problem(const NewDevice& device) {
    const bool isCamera = device.way != NewDevice::Way::Number;
    if (auto text = isCamera ? cameraProblem(device) : numberProblem(device))
        return text;
    if (device.name.isEmpty() && !isCamera)
        return std::nullopt;
    return account::checkName(device.name, Texts::tr("请输入设备名称!"));
}

QVariantMap parameters(const NewDevice& device) {
    QVariantMap result;
    const auto add = [&result](const char* key, const QString& text) {
        if (!text.isEmpty())
            result.insert(QLatin1String(key), text);
    };
    add("name", device.name);
    add("groupid", device.groupId);
    if (device.way == NewDevice::Way::Number) {
        add("ipncid", device.ipncId);
        add("word", device.word);
        return result;
    }
    add("main", device.main);
    add("light", device.light);
    add("user", device.user);
    add("password", device.password);
    add("onvif", device.onvif);
    return result;
}

QVector<FoundDevice> FoundDevice::listFrom(const QVariantMap& freshlocal) {
    QVector<FoundDevice> found;
    for (auto one = freshlocal.begin(); one != freshlocal.end(); ++one) {
        const QVariantMap map = one.value().toMap();
        if (map.isEmpty())
            continue;
        const auto text = [&map](const char* key) {
            return map.value(QLatin1String(key)).toString();
        };
        FoundDevice device{one.key(), text("name"), text("model"), text("ip"), text("url"), text("mac")};
        device.isAdded = map.value(QStringLiteral("added")).toBool();
        device.isOnvif = map.value(QStringLiteral("onvif")).toBool();
        found += device;
    }
    return found;
}

ProbedCamera ProbedCamera::fromReply(const QVariantMap& resp) {
    const auto text = [](const QVariantMap& map, const char* key) {
        return map.value(QLatin1String(key)).toString();
    };
    ProbedCamera camera{text(resp, "manufacturer"), text(resp, "model"), text(resp, "firmware"),
                        text(resp, "main"),         text(resp, "light"), {}};
    const QVariantList profiles = resp.value(QStringLiteral("profiles")).toList();
    for (const QVariant& one : profiles) {
        const QVariantMap map = one.toMap();
        camera.profiles += Profile{text(map, "name"), text(map, "codec"),
                                   QStringLiteral("%1 x %2").arg(text(map, "w"), text(map, "h")),
                                   map.value(QStringLiteral("fps")).toInt(), text(map, "url")};
    }
    return camera;
}

} // namespace corvanta::manage
