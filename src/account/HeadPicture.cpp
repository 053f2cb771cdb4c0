#include "account/HeadPicture.h"

#include "base/AppPaths.h"
#include "base/DataTree.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>

namespace corvanta::account {
namespace {

/// The format by the first bytes, empty for any other than the two that are taken.
QByteArray formatOf(QIODevice& file) {
    const QByteArray first = file.peek(8);
    if (first == QByteArrayLiteral("\x89PNG\r\n\x1a\n"))
        return QByteArrayLiteral("png");
    return first.startsWith(QByteArrayLiteral("\xff\xd8\xff")) ? QByteArrayLiteral("jpeg") : QByteArray();
}

CheckedHead refuse(const char* text) {
    return {QImage(), QCoreApplication::translate("HeadPicture", text)};
}

} // namespace

CheckedHead checkHeadPicture(const QString& file, int side) {
    QFile opened(file);
    if (!opened.open(QIODevice::ReadOnly))
        return refuse(QT_TRANSLATE_NOOP("HeadPicture", "图片无法读取!"));
    if (opened.size() >= LargestHeadFile)
        return refuse(QT_TRANSLATE_NOOP("HeadPicture", "图片不能超过1M，请重新选择!"));
    const QByteArray format = formatOf(opened);
    if (format.isEmpty())
        return refuse(QT_TRANSLATE_NOOP("HeadPicture", "图片格式不正确，请选择png或jpg图片!"));
    QImageReader reader(&opened, format);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!size.isValid())
        return refuse(QT_TRANSLATE_NOOP("HeadPicture", "图片无法读取!"));
    if (size.width() > LargestHeadSide || size.height() > LargestHeadSide)
        return refuse(QT_TRANSLATE_NOOP("HeadPicture", "图片尺寸过大，请重新选择!"));
    QImage picture = reader.read();
    if (picture.isNull()) {
        qDebug() << "a picture cannot be read:" << reader.errorString();
        return refuse(QT_TRANSLATE_NOOP("HeadPicture", "图片无法读取!"));
    }
    return {picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation), QString()};
}

QImage readHeadPicture(const QString& file, int side) {
    return QFile::exists(file) ? checkHeadPicture(file, side).picture : QImage();
}

QImage roundPicture(const QImage& picture, int side) {
    QImage result(side, side, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPainterPath circle;
    circle.addEllipse(0, 0, side, side);
    painter.setClipPath(circle);
    const int shorter = std::min(picture.width(), picture.height());
    const QRect middle((picture.width() - shorter) / 2, (picture.height() - shorter) / 2, shorter, shorter);
    painter.drawImage(QRect(0, 0, side, side), picture, middle);
    return result;
}

std::optional<QString> ownHeadFile(const AppPaths& paths, const QString& phoneId) {
    const auto folder = dataTree::pathComponent(phoneId);
    if (!folder)
        return std::nullopt;
    return paths.userInfo() + *folder + QStringLiteral("/head.jpg");
}

std::optional<QString> friendHeadFile(const AppPaths& paths, const QString& friendPhone) {
    const auto name = dataTree::pathComponent(friendPhone);
    if (!name)
        return std::nullopt;
    return paths.userHead() + *name + QStringLiteral(".jpg");
}

} // namespace corvanta::account
