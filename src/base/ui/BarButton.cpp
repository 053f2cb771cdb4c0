#include "base/ui/BarButton.h"

#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QToolButton>

namespace corvanta {

QToolButton* barButton(QWidget* parent, const QString& objectName, const QString& text, const QString& drawing) {
    auto* const button = new QToolButton(parent);
    button->setObjectName(objectName);
    button->setText(text);
    button->setAccessibleName(text);
    button->setToolTip(text);
    button->setIcon(svgIcon(drawing, theme::TextOnDark));
    button->setIconSize(QSize(theme::IconSize, theme::IconSize));
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace corvanta
