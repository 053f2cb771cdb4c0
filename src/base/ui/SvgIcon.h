#pragma once

#include <QColor>
#include <QIcon>

/// Icons from our own line drawings.
namespace corvanta {

/// The drawing ":/style/img/<name>.svg" in `color` (its `currentColor`), sharp at every size and scale factor.
/// Disabled it is drawn at 40 % opacity. An unknown name is an empty icon and one debug line.
QIcon svgIcon(const QString& name, const QColor& color);

} // namespace corvanta
