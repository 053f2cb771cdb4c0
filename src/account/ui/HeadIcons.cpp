#include "account/ui/HeadIcons.h"

#include "account/HeadPicture.h"
#include "base/RequestBuilder.h"
#include "base/SdkGateway.h"
#include "base/ui/SendAndReact.h"
#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>

namespace account = corvanta::account;
namespace theme = corvanta::theme;

namespace {

QIcon iconOf(const QString& file) {
    constexpr int side = 4 * theme::IconSize; // sharp on dense screens too
    const QImage picture = account::readHeadPicture(file, side);
    return picture.isNull() ? QIcon() : QIcon(QPixmap::fromImage(account::roundPicture(picture, side)));
}

} // namespace

HeadIcons::HeadIcons(const AppContext& context, QObject* parent)
    : QObject(parent)
    , context_(context) {}

QIcon HeadIcons::icon(const QString& friendPhone) {
    QIcon kept;
    if (const auto file = account::friendHeadFile(context_.paths, friendPhone)) {
        fetch(friendPhone, *file);
        kept = iconOf(*file);
    }
    return kept.isNull() ? corvanta::svgIcon(QStringLiteral("user"), theme::TextOnLight) : kept;
}

QIcon HeadIcons::own() {
    const auto file = account::ownHeadFile(context_.paths, context_.gateway.phoneId());
    if (!file)
        return {};
    fetch(QString(), *file);
    return iconOf(*file);
}

void HeadIcons::fetch(const QString& friendPhone, const QString& file) {
    if (asked_.contains(friendPhone))
        return;
    asked_.insert(friendPhone);
    QDir().mkpath(QFileInfo(file).path());
    // Beside the old one until it is whole and known to be a picture.
    const QString fresh = file + QStringLiteral(".new");
    QVariantMap parameters{{QStringLiteral("downpath"), QFileInfo(fresh).absoluteFilePath()}};
    if (!friendPhone.isEmpty())
        parameters.insert(QStringLiteral("friendphone"), friendPhone);
    corvanta::Reaction reaction;
    reaction.done = [this, friendPhone, file, fresh](const QVariantMap&) {
        if (!account::checkHeadPicture(fresh, theme::IconSize).isValid()) {
            qDebug() << "what the service keeps is no picture" << file;
            QFile::remove(fresh);
            return;
        }
        QFile::remove(file);
        QFile::rename(fresh, file);
        emit sigChanged(friendPhone);
    };
    reaction.failed = [](const QString& text) {
        qDebug() << "no head picture:" << text;
    };
    corvanta::sendAndReact(context_.gateway,
                           corvanta::requests::accountRequest(QStringLiteral("下载个人头像"), parameters), this,
                           std::move(reaction));
}
