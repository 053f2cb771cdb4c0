#pragma once

#include "account/PhoneFlow.h"
#include "base/AppContext.h"

#include <QTimer>
#include <QWidget>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

/// The pages number, code and password (some uses have no password), with "上一步" and "下一步". They check, ask the
/// service and tell what is wrong; what comes after a success is their owner's. The countdown stops with them.
class PhoneFlowPages final : public QWidget {
    Q_OBJECT
public:
    PhoneFlowPages(const AppContext& context, corvanta::account::FlowUse use, QWidget* parent);

    /// A number to begin with. `isFixed`: it cannot be changed.
    void setNumber(const QString& number, bool isFixed);
    /// Goes back to the first page with empty entries; a countdown that runs goes on.
    void restart();
    /// Shows a page, counted from 0, whatever has been proved.
    void showPage(int page);
    const corvanta::account::PhoneFlow& flow() const { return flow_; }

public slots:
    /// One second of the countdown has gone by.
    void tick();
    void back();
    void forward();

signals:
    /// The service has done it. The password is empty where none was asked for.
    void sigDone(QString number, QString password);

private:
    enum Page { NumberPage, CodePage, PasswordPage };

    void addNumberPage();
    void addCodePage();
    void addPasswordPage();
    QFormLayout* addPage(const char* hint, const char* objectName);
    QPushButton* makeCodeButton(const QString& objectName);
    void showCountdown();
    void askForCode();
    void sendCode(const QString& number);
    void leaveNumberPage();
    void leaveCodePage();
    void leavePasswordPage();
    void submit(const QString& password);
    QString number() const;

    AppContext context_;
    corvanta::account::PhoneFlow flow_;
    QStackedWidget* pages_;
    QComboBox* region_ = nullptr;
    QLineEdit* number_ = nullptr;
    QLineEdit* code_ = nullptr;
    QLineEdit* password_ = nullptr;
    QLineEdit* repeated_ = nullptr;
    QLabel* sentTo_ = nullptr;         ///< on the code page
    QPushButton* codeButtons_[2] = {}; ///< on the first two pages; they always show the same
    QPushButton* back_;
    QPushButton* forward_;
    QTimer clock_;
};
