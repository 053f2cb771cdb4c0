#pragma once

class QWidget;

/// Lets the wheel scroll the page under `field` instead of changing a field that the user does not write in.
void guardWheel(QWidget& field);
