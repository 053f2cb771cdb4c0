#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QRect>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

/// The internal event bus: who wants to know of something connects here, whoever reports it emits here.
///
/// The order of the signals is part of the interface (their indices are stable); new ones are added at the end.
/// Lives in the GUI thread, and is emitted there only.
class AppEvents : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Whether a map takes alarms (`sig_showAlarmOnMap`), so that the way there can be offered.
    bool showsAlarmsOnMap() const {
        return isSignalConnected(QMetaMethod::fromSignal(&AppEvents::sig_showAlarmOnMap));
    }

signals:
    /// The interface language changed.
    void updateLang();
    /// The window title was computed anew.
    void updateTitle(QString title);
    /// Full-screen video is to be left. (The name's spelling is known to its users.)
    void quitVidoFullScreenEvent();
    /// A sign-in or a sign-out has been processed.
    void sLonginAndLogoutEvent();
    /// The SDK reported an alarm, and alarms are accepted.
    void Onsig_TriggerAlarm(QVariantMap Map);
    /// An alarm is to be shown on the maps.
    void sig_triggerAlarm(QVariantMap triggerMap);
    /// A data file of a device is to be downloaded.
    void sig_DownDatFile(QString ipncid, QString filename);
    /// The application is closing.
    void sig_AppClosed();
    /// A downloaded picture is ready.
    void SignalDownLoadPic(int index, QVariant value);
    /// The device list is to be read again from the SDK.
    void sig_deviceFresh();
    /// Group list and device map, handed to a receiver together.
    void sig_updateList(QVariantList vGroups, QVariantMap vDevices);
    /// A modal tip is to be shown.
    void sig_tip(QString title, QString context);
    /// The sign-in dialog is to be shown.
    void sig_loginTip();
    /// The SDK reported the sign-out.
    void sig_logout();
    /// The SDK reported that the signed-in account's device list is available.
    void sig_login();
    /// The device tree is to be rebuilt from the stored lists.
    void sig_updateList();
    /// A new list of devices on the local network arrived.
    void sig_freshlocal(QVariantMap vMap);
    /// The local tree is to be rebuilt from the stored map.
    void sig_freshlocal();
    /// A wait overlay is to be shown or hidden.
    void sig_wait(bool b, QRect WindowsRECT, int waitTime);
    /// The sensor list changed.
    void sig_updateSensorList();
    /// The first video tile is to take the focus.
    void sig_setfirstItemVideofocus();
    /// New OSD settings of a device.
    void sig_updateOSDList(QVariantMap vMap);
    /// New sensor values.
    void sig_UpdateSensorInputData(QString time, QVariantList datalist);
    /// A sensor was removed from the maps.
    void sig_DeleteMapIcon(QString SenSorPid);
    /// A line for the message bar.
    void sig_MessageBar(QString);
    /// The device order changed.
    void sig_updateDeviceIndex();
    /// The map list changed.
    void sig_updateMapList();
    /// The map icon list changed.
    void sig_updateIconlist();

    /// An operation and its value for the main window, which passes it on as its own `sigDeal`.
    void sig_deal(QString operation, QVariant value);
    /// A text message that no gateway has taken, for the user to read: "phonenumber", "text", "time".
    void sig_sms(QVariantMap message);
    /// The service has ended the sign-in and says why ("password", "unbind"); comes after `sig_logout`.
    void sig_logoutReason(QString reason);
    /// The user wants to see on the map where an alarm is.
    void sig_showAlarmOnMap(QString ipncid, QVariantMap trigger);
};
