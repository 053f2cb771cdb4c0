#pragma once

#include "account/ui/HeadIcons.h"
#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"

class PhoneFlowPages;
class QLabel;
class QLineEdit;
class QTabWidget;

/// The signed-in account: number, nickname and head picture, another password, and unbinding this computer.
class PersonalInformationDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `icons` outlives the dialog; it is told of another picture.
    PersonalInformationDialog(const AppContext& context, HeadIcons& icons, QWidget* parent = nullptr);

    /// Takes a file as the new picture, as if it had been chosen; it is shown, and sent by "保存".
    void takeHeadFile(const QString& file);

signals:
    /// This computer has been unbound; the user is told here why he is signed out.
    void sigUnbound();

private:
    QWidget* makeInformation(QWidget* parent);
    QLayout* makeHead(QWidget* parent);
    QWidget* makePassword(QWidget* parent);
    void load();
    void showKeptHead();
    void saveNickname();
    void chooseHead();
    void saveHead();
    void keepHead(const QString& file);
    void passwordChanged(const QString& number, const QString& password);
    void askToUnbind();
    void unbind();

    AppContext context_;
    HeadIcons& icons_;
    const QString account_; ///< the number that was signed in when the dialog opened
    QLineEdit* nickname_ = nullptr;
    QPushButton* saveNickname_ = nullptr;
    QLabel* head_ = nullptr;
    QString headFile_; ///< chosen and not sent yet
    QPushButton* saveHead_ = nullptr;
    QPushButton* unbind_ = nullptr;
    PhoneFlowPages* password_ = nullptr;
};
