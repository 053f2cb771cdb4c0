#pragma once

#include "base/AppContext.h"
#include "base/ui/FramedDialog.h"
#include "manageWidget/NewDevice.h"

class FlowRequest;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;
class TestPicture;

/// The dialog "添加设备": by number and word, by RTSP address, or from what is found on the local network. Found
/// network cameras are probed and their addresses filled into the second page.
class AddDeviceDialog final : public FramedDialog {
    Q_OBJECT
public:
    /// `groupId`: the group that is chosen at first.
    AddDeviceDialog(const AppContext& context, const QString& groupId, QWidget* parent);

    enum class Page { Number, Address, Found };
    void showPage(Page page);

private:
    QWidget* numberPage();
    QWidget* addressPage();
    QWidget* foundPage();
    void buildPicture();
    void refreshFound();
    void showFound(const QVariantMap& found);
    void takeFound();
    void probe();
    void showProbed(const corvanta::manage::ProbedCamera& camera);
    void takeProfile(const QTreeWidgetItem& item);
    void testPicture();
    corvanta::manage::NewDevice entered() const;
    void save();
    const corvanta::manage::FoundDevice* chosenFound() const;
    void showChoice();

    AppContext context_;
    QTabWidget* tabs_ = nullptr;
    QComboBox* group_ = nullptr;
    TestPicture* picture_ = nullptr;
    QPushButton* test_ = nullptr;
    QPushButton* save_ = nullptr;

    QLineEdit* ipncId_ = nullptr;
    QLineEdit* word_ = nullptr;
    QLineEdit* ownName_ = nullptr;

    QLineEdit* name_ = nullptr;
    QLineEdit* main_ = nullptr;
    QLineEdit* light_ = nullptr;
    QLineEdit* user_ = nullptr;
    QLineEdit* password_ = nullptr;
    QString onvif_; ///< where the camera on the second page was probed; empty when it was not

    QTreeWidget* foundList_ = nullptr;
    QLabel* foundState_ = nullptr;
    QLineEdit* service_ = nullptr;
    QLineEdit* foundUser_ = nullptr;
    QLineEdit* foundPassword_ = nullptr;
    QPushButton* probe_ = nullptr;
    QPushButton* take_ = nullptr;
    QTreeWidget* profiles_ = nullptr;
    QVector<corvanta::manage::FoundDevice> found_;
    FlowRequest* probing_ = nullptr;
};
