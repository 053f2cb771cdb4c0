#include "base/JsonText.h"
#include "base/RequestBuilder.h"
#include "base/RequestTables.h"

#include <QSet>
#include <QtTest>

namespace requests = corvanta::requests;

class tst_RequestBuilder final : public QObject {
    Q_OBJECT
private slots:
    void envelopes_data();
    void envelopes();
    void everyNameHasARow();
    void callersValuesAreWritten();
    void unknownNamesGiveNothing();
};

void tst_RequestBuilder::envelopes_data() {
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* family, const char* operation, const char* expected) {
        QTest::newRow(operation) << family << QString::fromUtf8(operation) << QString::fromUtf8(expected);
    };
    row("direct", "登录", R"({"a":1,"type":"login"})");
    row("direct", "退出", R"({"a":1,"type":"logout"})");
    row("direct", "请求刷新列表", R"({"a":1,"type":"freshlist"})");
    row("direct", "请求刷新本地列表", R"({"a":1,"type":"freshlocal"})");
    row("direct", "更改视频操作", R"({"a":1,"type":"avchange"})");
    row("direct", "获取版本信息", R"({"a":1,"type":"version"})");
    row("direct", "获取我的设备", R"({"a":1,"type":"ipnclist"})");
    row("direct", "获取本地设备", R"({"a":1,"type":"localdevice"})");
    row("direct", "获取传感器最新数据", R"({"a":1,"type":"sensordataupdate"})");
    row("direct", "请求同步执行代码", R"({"a":1,"type":"try"})");
    row("direct", "本地设备修改有线ip", R"({"a":1,"type":"setnet"})");
    row("direct", "本地设备修改配置无线账号密码", R"({"a":1,"type":"apconfig"})");
    row("direct", "保存二维码测距配置", R"({"a":1,"type":"QRinfo"})");
    row("direct", "保存激光光斑测距配置", R"({"a":1,"type":"Laserinfo"})");
    row("account", "验证是否注册", R"({"reqtype":"urlreq","urlreq":{"clienttype":"checkphone","params":{"a":1}}})");
    row("account", "发送手机注册验证码",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"logincode","params":{"a":1}}})");
    row("account", "发送修改密码验证码",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"changepascode","params":{"a":1}}})");
    row("account", "发送重新绑定手机验证码",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"rebindcode","params":{"a":1}}})");
    row("account", "登录账号", R"({"reqtype":"urlreq","urlreq":{"reqtype":"logon","params":{"a":1}}})");
    row("account", "验证短信验证码是否正确",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"checkmessagecode","params":{"a":1}}})");
    row("account", "提交注册手机账号",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"loginphone","params":{"a":1},"code":1}})");
    row("account", "提交修改密码",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"changephonepas","params":{"a":1},"code":1}})");
    row("account", "获取个人信息",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"getpersioninfo","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "上传个人头像",
        R"({"reqtype":"urlreq","urlreq":{"reqtype":"uploadhead","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "下载个人头像",
        R"({"reqtype":"urlreq","urlreq":{"reqtype":"downhead","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "下载用户文件",
        R"({"reqtype":"urlreq","urlreq":{"reqtype":"userdown","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "删除地图",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"delmap","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "获取短信发送记录",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"getsmsrecords","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "设置手机昵称",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"setphoneparam","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "设置手机账号下设备相关参数",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"setipncparam","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "新建分组",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"addgroup","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "删除分组",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"delgroup","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "编辑分组",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"editgroup","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "添加设备",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"addipnc","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "删除设备",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"delipnc","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "添加好友",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"addfriend","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "删除好友",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"delfriend","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "编辑好友备注",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"setfriendparam","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "获取好友列表",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"getfriends","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "获取好友所有分享设备列表",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"getalldevicesharelist","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "设置摄像头是否分享给好友",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"setfrienddeviceshare","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "获取传感器模板",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"sensortype","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "获取通信接口",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"moduleinterface","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "提交传感器管理",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"submitsensorinfo","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "删除传感器",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"delsensor","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "获取下拉名称列表",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"getsysnames","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "获取通知规则",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"getreportrules","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "提交通知规则",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"submitreportrules","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "删除通知规则",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"delreportrules","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "获取联动策略",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"getlinkplan","params":{"a":1},"useloginphone":"phonenumber"}})");
    row("account", "删除联动策略",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"dellinkplan","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "提交联动策略",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"submitlinkplan","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "阈值设置",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"changesensorinput","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "设置设备排序",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"movedeviceindex","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "设置json排序",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"movejsonindex","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "设置分组排序",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"movegroupindex","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "解除电脑账号绑定",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"unbindphonemode","params":{"a":1,"phonetype":"pc"},"useloginphone":"phonenumber","code":1}})");
    row("account", "重新绑定电脑",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"rebindphone","params":{"a":1,"phonetype":"pc"},"code":1}})");
    row("account", "添加（编辑）地图信息",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"submitmap","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "提交地图传感器",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"submitmapsensor","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "删除地图传感器",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"delmapsensor","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "删除用户文件",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"deluserfile","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("account", "设置地图分享",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"setmapshare","params":{"a":1},"useloginphone":"phonenumber","code":1}})");
    row("device", "获取传感器采集输入数据",
        R"({"reqtype":"serverreq","serverreq":{"type":"sensordatareq","sensordatareq":{"a":1,"ipncid":"7"}}})");
    row("device", "传感器采集输入数据导出",
        R"({"reqtype":"serverreq","serverreq":{"type":"sensordataexport","sensordataexport":{"a":1,"ipncid":"7"}}})");
    row("device", "获取设备是否在线", R"({"reqtype":"serverreq","serverreq":{"type":"ipncstate","ipncid":"7"}})");
    row("device", "获取云台信息",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["ptzcaps","ptzpresets","ptzcruises","ptzstate"]})");
    row("device", "云台控制", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"x":2}})");
    row("device", "获取设备网络参数", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["netstate"]})");
    row("device", "获取设备升级状态", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["upgradestate"]})");
    row("device", "读取设备参数", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg"})");
    row("device", "探测网络摄像机", R"({"a":1,"ipncid":"7","reqtype":"onvifprobe"})");
    row("device", "获取SD卡信息",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["hasdisk","sdused","sdleft","sdinsert"]})");
    row("device", "获取SD卡文件列表", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"sdlist":1}})");
    row("device", "删除SD卡文件", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"delsdfilelist":1}})");
    row("device", "下载SD卡文件", R"({"a":1,"ipncid":"7","reqtype":"downsdfile"})");
    row("device", "上传摄像机升级文件", R"({"a":1,"ipncid":"7","reqtype":"uploadipncfile"})");
    row("device", "获取参数设置",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["bitrate1","framerate1","resolution1","bitrate2","framerate2","resolution2","brightness","contrast","saturation","sharpness","mirror","flip","datestampenable1","timestampenable1","logoenable1","logoposition1","textenable1","detailinfo1","datestampenable2","timestampenable2","logoenable2","logoposition2","textenable2","detailinfo2","jpgpushtype","alarmenablejpg","motionenable","exttriggerinput","alarmduration","sdaenable","sdrenable","packetTime","recordduration","packetTimeName","schedulalarmtiming","jpgtimerduration","softwareversion","kernelversion","biosversion"]})");
    row("device", "获取摄像机ftp设置",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["ftpenable","ftprecord","ftpjpg","ftpdat","ftpip","ftpport","ftpusr","ftppwd","ftpoffsaveday"]})");
    row("device", "获取TIOSD设置",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["datestampenable1","timestampenable1","logoenable1","logoposition1","textenable1","detailinfo1","datestampenable2","timestampenable2","logoenable2","logoposition2","textenable2","detailinfo2"]})");
    row("device", "获取录像，抓拍方式",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["jpgpushtype","alarmenablejpg","motionenable","exttriggerinput","alarmduration","sdaenable","sdrenable","packetTime","recordduration","packetTimeName","schedulalarmtiming","jpgtimerduration"]})");
    row("device", "设置设备参数", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"x":2}})");
    row("device", "设置录像抓拍方式", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"x":2}})");
    row("device", "设置图像设置", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"x":2}})");
    row("device", "设置图像抓拍设置", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"x":2}})");
    row("device", "获取图像设置",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["bitrate1","framerate1","resolution1","bitrate2","framerate2","resolution2","brightness","contrast","saturation","sharpness","mirror","flip"]})");
    row("device", "获取图像抓拍设置",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["alarmjpgformart","alarmjpgformartname"]})");
    row("device", "设置SD卡格式化", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"sdformat":1}})");
    row("device", "获取设备版本信息",
        R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","getcmds":["softwareversion","kernelversion","biosversion"]})");
    row("device", "重启设备", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"ipcamrestartcmd":1}})");
    row("device", "恢复出厂设置", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg","setcmds":{"paradefaultcmd":1}})");
    row("device", "设置时区",
        R"({"reqtype":"urlreq","urlreq":{"clienttype":"setipncadminparam","params":{"a":1,"ipncid":"7"},"useloginphone":"phonenumber","code":1}})");
    row("device", "上传用户文件", R"({"a":1,"ipncid":"7","reqtype":"userupload"})");
    row("device", "获取设备最新版本信息", R"({"a":1,"ipncid":"7","reqtype":"ipnclatestver"})");
    row("device", "设置设备升级", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg"})");
    row("device", "上报采集输入", R"({"a":1,"ipncid":"7","reqtype":"p2pmsg"})");
}

void tst_RequestBuilder::envelopes() {
    QFETCH(QString, family);
    QFETCH(QString, operation);
    QFETCH(QString, expected);
    QVariantMap parameters{{QStringLiteral("a"), 1}};
    if (family == QLatin1String("device"))
        parameters.insert(QStringLiteral("ipncid"), QStringLiteral("7"));
    if (expected.contains(QLatin1String("\"x\"")))
        parameters.insert(QStringLiteral("cmdlist"), QVariantMap{{QStringLiteral("x"), 2}});
    const std::string text = family == QLatin1String("direct")    ? requests::directCommand(operation, parameters)
                             : family == QLatin1String("account") ? requests::accountRequest(operation, parameters)
                                                                  : requests::deviceRequest(operation, parameters);
    QCOMPARE(corvanta::json::parseObject(text), corvanta::json::parseObject(expected.toStdString()));
}

// No entry of the tables goes unchecked, and none is there twice.
void tst_RequestBuilder::everyNameHasARow() {
    QSet<QString> names;
    for (const auto& entry : requests::directTable())
        names.insert(entry.operation);
    for (const auto& entry : requests::accountTable())
        names.insert(entry.operation);
    for (const auto& entry : requests::deviceTable())
        names.insert(entry.operation);
    const int entries =
        requests::directTable().size() + requests::accountTable().size() + requests::deviceTable().size();
    QCOMPARE(names.size(), entries);
    QCOMPARE(entries, 98);
}

void tst_RequestBuilder::callersValuesAreWritten() {
    const QVariantMap list = corvanta::json::parseObject(requests::deviceRequest(
        QStringLiteral("获取SD卡文件列表"), {{QStringLiteral("ipncid"), QStringLiteral("7")},
                                             {QStringLiteral("filepathvalue"), QStringLiteral("/mnt")},
                                             {QStringLiteral("timeout"), 30},
                                             {QStringLiteral("sdlist"), QStringLiteral("2024-03-05")}}));
    QCOMPARE(list.value(QStringLiteral("filepathvalue")).toString(), QStringLiteral("/mnt"));
    QCOMPARE(list.value(QStringLiteral("timeout")).toInt(), 30);
    QCOMPARE(list.value(QStringLiteral("setcmds")).toMap(),
             (QVariantMap{{QStringLiteral("sdlist"), QStringLiteral("2024-03-05")}}));
    QVERIFY(!list.contains(QStringLiteral("sdlist")));
}

void tst_RequestBuilder::unknownNamesGiveNothing() {
    QVERIFY(requests::directCommand(QStringLiteral("登录账号")).empty());
    QVERIFY(requests::accountRequest(QStringLiteral("登录")).empty());
    QVERIFY(requests::deviceRequest(QString()).empty());
}

QTEST_GUILESS_MAIN(tst_RequestBuilder)
#include "tst_RequestBuilder.moc"
