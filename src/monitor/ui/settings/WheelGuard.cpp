#include "monitor/ui/settings/WheelGuard.h"

#include <QEvent>
#include <QWidget>

#include <memory>

namespace {

class WheelGuard final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* const field = static_cast<QWidget*>(watched);
        if (event->type() != QEvent::Wheel || field->hasFocus())
            return false;
        event->ignore(); // so that it goes on to the page
        return true;
    }
};

} // namespace

void guardWheel(QWidget& field) {
    field.setFocusPolicy(Qt::StrongFocus);
    field.installEventFilter(std::make_unique<WheelGuard>(&field).release()); // the field owns it
}
