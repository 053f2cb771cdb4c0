#include "monitor/ui/settings/ListButton.h"

#include "base/ui/SvgIcon.h"
#include "base/ui/Theme.h"

#include <QToolButton>

namespace theme = corvanta::theme;

QToolButton* listButton(QWidget* parent, const QString& objectName, const QString& text, const QString& drawing) {
    auto* const button = new QToolButton(parent);
    button->setObjectName(objectName);
    button->setAccessibleName(text);
    button->setToolTip(text);
    button->setIcon(corvanta::svgIcon(drawing, theme::TextOnLight));
    button->setIconSize(QSize(theme::IconSize, theme::IconSize));
    return button;
}
