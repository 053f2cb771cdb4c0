#include "e2e/AccountTest.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QtTest>

namespace {
const QString Friend = QStringLiteral("13600136000");
const QString Nickname = QStringLiteral("Harbour watch");
const QString Camera = QStringLiteral("东大门出口");
const QString Received = QStringLiteral("分享给你的设备");
} // namespace

/// What an account tells of itself and shares is seen by its friend at another computer at once.
class tst_PersonalPage final : public AccountTest {
    Q_OBJECT
private slots:
    void friendSeesNameAndPicture();
    void friendSeesWhatIsShared();

private:
    static constexpr int Owner = 0;
    static constexpr int Guest = 1;

    /// Both are signed in; the user sits at the owner's computer.
    void signBothIn();
    /// Whether this colour is seen in a dialog.
    bool shows(const QString& title, QRgb colour) const;
    /// Ticks or clears the friend for the camera on the page of devices.
    void clickFriend();
};

void tst_PersonalPage::signBothIn() {
    STEP(sitAt(Guest));
    STEP(start());
    STEP(signInAs(Friend, Password));
    STEP(sitAt(Owner));
    STEP(start());
    signInAs(Number, Password);
}

bool tst_PersonalPage::shows(const QString& title, QRgb colour) const {
    const Accessible dialog = program().dialog(title);
    const QImage image = Desktop::look(Program::placeInActive(dialog, dialog));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == colour)
                return true;
        }
    }
    return false;
}

void tst_PersonalPage::friendSeesNameAndPicture() {
    const QRgb colour = qRgb(255, 0, 200);
    const QString picture = QFileInfo(data()).dir().filePath(QStringLiteral("head.png"));
    QImage head(64, 64, QImage::Format_RGB32);
    head.fill(colour);
    QVERIFY(head.save(picture));
    STEP(signBothIn());
    STEP(openFromMenu(Person));
    STEP(fill(Person, QStringLiteral("昵称"), Nickname));
    STEP(clickIn(Person, QStringLiteral("保存昵称")));
    STEP(closeTip(QStringLiteral("设置昵称成功!")));
    STEP(clickIn(Person, QStringLiteral("选择文件")));
    STEP(chooseFile(QStringLiteral("选择图像"), picture));
    STEP(clickIn(Person, QStringLiteral("保存头像")));
    STEP(closeTip(QStringLiteral("保存头像成功!")));
    COMES(shows(Person, colour));
    STEP(closeDialog(Person));

    STEP(sitAt(Guest));
    STEP(openFromMenu(Friends));
    COMES(!rowIn(Friends, Friends, Nickname).isNull());
    COMES(shows(Friends, colour));
    STEP(closeDialog(Friends));
    STEP(quit());
    STEP(sitAt(Owner));
    quit();
}

void tst_PersonalPage::clickFriend() {
    tickRow(Rights, QStringLiteral("可访问好友"), QStringLiteral("夜班值班"));
}

void tst_PersonalPage::friendSeesWhatIsShared() {
    STEP(signBothIn());
    STEP(sitAt(Guest));
    STEP(openFromMenu(Rights));
    STEP(clickIn(Rights, QStringLiteral("接收分享")));
    COMES(!rowIn(Rights, Received, QStringLiteral("CAM0001")).isNull());
    QVERIFY(rowIn(Rights, Received, Camera).isNull());

    STEP(sitAt(Owner));
    STEP(openFromMenu(Rights));
    STEP(clickIn(Rights, QStringLiteral("设备权限")));
    STEP(clickIn(Rights, QStringLiteral("设备")));
    Desktop::keys({QStringLiteral("Down"), QStringLiteral("Return")}); // to the second one; the dialog stays open
    STEP(clickFriend());
    STEP(sitAt(Guest));
    COMES(!rowIn(Rights, Received, Camera).isNull());
    COMES(window().hasRow(Camera));

    STEP(sitAt(Owner));
    STEP(clickFriend());
    STEP(sitAt(Guest));
    COMES(rowIn(Rights, Received, Camera).isNull());
    COMES(!window().hasRow(Camera));
    STEP(closeDialog(Rights));
    STEP(quit());
    STEP(sitAt(Owner));
    STEP(closeDialog(Rights));
    quit();
}

QTEST_MAIN(tst_PersonalPage)
#include "tst_PersonalPage.moc"
