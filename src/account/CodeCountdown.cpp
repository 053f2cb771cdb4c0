#include "account/CodeCountdown.h"

#include <QCoreApplication>

void CodeCountdown::tick() {
    if (isRunning())
        --left_;
}

QString CodeCountdown::buttonText() const {
    if (isOver())
        return QCoreApplication::translate("CodeCountdown", "重新获取验证码");
    if (!isRunning() || left_ == Start)
        return QCoreApplication::translate("CodeCountdown", "获取验证码");
    return QString::number(left_) + QCoreApplication::translate("CodeCountdown", "秒后可以重新获取");
}
