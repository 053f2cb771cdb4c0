#include "base/ui/BarButton.h"

#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QToolButton>

#include <utility>

namespace corvanta {

QToolButton* barButton(QWidget* parent, const QString& objectName, Text text, const QString& drawing) {
    auto* const button = new QToolButton(parent);
    button->setObjectName(objectName);
    worded(button, [button, text = std::move(text)] {
        button->setText(text());
        button->setAccessibleName(text());
        button->setToolTip(text());
    });
    button->setIcon(svgIcon(drawing, theme::TextOnDark));
    button->setIconSize(QSize(theme::IconSize, theme::IconSize));
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace corvanta
