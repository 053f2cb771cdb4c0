#include "base/ui/SvgIcon.h"

#include <QDebug>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

namespace corvanta {
namespace {

class SvgEngine final : public QIconEngine {
public:
    explicit SvgEngine(QByteArray drawing)
        : drawing_(std::move(drawing)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QSvgRenderer renderer(drawing_);
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * 0.4);
        renderer.render(painter, QRectF(rect));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return result;
    }

    QIconEngine* clone() const override { return std::make_unique<SvgEngine>(drawing_).release(); }

private:
    QByteArray drawing_;
};

} // namespace

QIcon svgIcon(const QString& name, const QColor& color) {
    QFile file(QStringLiteral(":/style/img/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug() << "no drawing" << file.fileName();
        return {};
    }
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", color.name().toLatin1());
    return QIcon(std::make_unique<SvgEngine>(drawing).release()); // the icon owns its engine
}

} // namespace corvanta
