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
    return QCoreApplication::translate("CodeCountdown", "%1秒后可以重新获取").arg(left_);
}
