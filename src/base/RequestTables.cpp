#include "base/RequestTables.h"

namespace corvanta::requests {
namespace {

QString u(const char16_t* text) {
    return QString::fromUtf16(text);
}

QStringList imageNames() {
    return {u(u"bitrate1"),   u(u"framerate1"),  u(u"resolution1"), u(u"bitrate2"),
            u(u"framerate2"), u(u"resolution2"), u(u"brightness"),  u(u"contrast"),
            u(u"saturation"), u(u"sharpness"),   u(u"mirror"),      u(u"flip")};
}

QStringList osdNames() {
    return {u(u"datestampenable1"), u(u"timestampenable1"), u(u"logoenable1"),      u(u"logoposition1"),
            u(u"textenable1"),      u(u"detailinfo1"),      u(u"datestampenable2"), u(u"timestampenable2"),
            u(u"logoenable2"),      u(u"logoposition2"),    u(u"textenable2"),      u(u"detailinfo2")};
}

QStringList recordNames() {
    return {u(u"jpgpushtype"),    u(u"alarmenablejpg"), u(u"motionenable"),       u(u"exttriggerinput"),
            u(u"alarmduration"),  u(u"sdaenable"),      u(u"sdrenable"),          u(u"packetTime"),
            u(u"recordduration"), u(u"packetTimeName"), u(u"schedulalarmtiming"), u(u"jpgtimerduration")};
}

QStringList versionNames() {
    return {u(u"softwareversion"), u(u"kernelversion"), u(u"biosversion")};
}

} // namespace

const QList<DirectEntry>& directTable() {
    static const QList<DirectEntry> table = {
        {u(u"登录"), u(u"login")},
        {u(u"退出"), u(u"logout")},
        {u(u"请求刷新列表"), u(u"freshlist")},
        {u(u"请求刷新本地列表"), u(u"freshlocal")},
        {u(u"更改视频操作"), u(u"avchange")},
        {u(u"获取版本信息"), u(u"version")},
        {u(u"获取我的设备"), u(u"ipnclist")},
        {u(u"获取本地设备"), u(u"localdevice")},
        {u(u"获取传感器最新数据"), u(u"sensordataupdate")},
        {u(u"请求同步执行代码"), u(u"try")},
        {u(u"本地设备修改有线ip"), u(u"setnet")},
        {u(u"本地设备修改配置无线账号密码"), u(u"apconfig")},
        {u(u"保存二维码测距配置"), u(u"QRinfo")},
        {u(u"保存激光光斑测距配置"), u(u"Laserinfo")},
    };
    return table;
}

const QList<AccountEntry>& accountTable() {
    static const QList<AccountEntry> table = {
        {.operation = u(u"验证是否注册"), .value = u(u"checkphone")},
        {.operation = u(u"发送手机注册验证码"), .value = u(u"logincode")},
        {.operation = u(u"发送修改密码验证码"), .value = u(u"changepascode")},
        {.operation = u(u"发送重新绑定手机验证码"), .value = u(u"rebindcode")},
        {.operation = u(u"登录账号"), .value = u(u"logon"), .underReqtype = true},
        {.operation = u(u"验证短信验证码是否正确"), .value = u(u"checkmessagecode")},
        {.operation = u(u"提交注册手机账号"), .value = u(u"loginphone"), .changes = true},
        {.operation = u(u"提交修改密码"), .value = u(u"changephonepas"), .changes = true},
        {.operation = u(u"获取个人信息"), .value = u(u"getpersioninfo"), .forUser = true},
        {.operation = u(u"上传个人头像"),
         .value = u(u"uploadhead"),
         .underReqtype = true,
         .forUser = true,
         .changes = true},
        {.operation = u(u"下载个人头像"), .value = u(u"downhead"), .underReqtype = true, .forUser = true},
        {.operation = u(u"下载用户文件"), .value = u(u"userdown"), .underReqtype = true, .forUser = true},
        {.operation = u(u"删除地图"), .value = u(u"delmap"), .forUser = true, .changes = true},
        {.operation = u(u"获取短信发送记录"), .value = u(u"getsmsrecords"), .forUser = true},
        {.operation = u(u"设置手机昵称"), .value = u(u"setphoneparam"), .forUser = true, .changes = true},
        {.operation = u(u"设置手机账号下设备相关参数"),
         .value = u(u"setipncparam"),
         .forUser = true,
         .changes = true},
        {.operation = u(u"新建分组"), .value = u(u"addgroup"), .forUser = true, .changes = true},
        {.operation = u(u"删除分组"), .value = u(u"delgroup"), .forUser = true, .changes = true},
        {.operation = u(u"编辑分组"), .value = u(u"editgroup"), .forUser = true, .changes = true},
        {.operation = u(u"添加设备"), .value = u(u"addipnc"), .forUser = true, .changes = true},
        {.operation = u(u"删除设备"), .value = u(u"delipnc"), .forUser = true, .changes = true},
        {.operation = u(u"添加好友"), .value = u(u"addfriend"), .forUser = true, .changes = true},
        {.operation = u(u"删除好友"), .value = u(u"delfriend"), .forUser = true, .changes = true},
        {.operation = u(u"编辑好友备注"), .value = u(u"setfriendparam"), .forUser = true, .changes = true},
        {.operation = u(u"获取好友列表"), .value = u(u"getfriends"), .forUser = true},
        {.operation = u(u"获取好友所有分享设备列表"), .value = u(u"getalldevicesharelist"), .forUser = true},
        {.operation = u(u"设置摄像头是否分享给好友"),
         .value = u(u"setfrienddeviceshare"),
         .forUser = true,
         .changes = true},
        {.operation = u(u"获取传感器模板"), .value = u(u"sensortype"), .forUser = true},
        {.operation = u(u"获取通信接口"), .value = u(u"moduleinterface"), .forUser = true},
        {.operation = u(u"提交传感器管理"), .value = u(u"submitsensorinfo"), .forUser = true, .changes = true},
        {.operation = u(u"删除传感器"), .value = u(u"delsensor"), .forUser = true, .changes = true},
        {.operation = u(u"获取下拉名称列表"), .value = u(u"getsysnames"), .forUser = true},
        {.operation = u(u"获取通知规则"), .value = u(u"getreportrules"), .forUser = true},
        {.operation = u(u"提交通知规则"), .value = u(u"submitreportrules"), .forUser = true, .changes = true},
        {.operation = u(u"删除通知规则"), .value = u(u"delreportrules"), .forUser = true, .changes = true},
        {.operation = u(u"获取联动策略"), .value = u(u"getlinkplan"), .forUser = true},
        {.operation = u(u"删除联动策略"), .value = u(u"dellinkplan"), .forUser = true, .changes = true},
        {.operation = u(u"提交联动策略"), .value = u(u"submitlinkplan"), .forUser = true, .changes = true},
        {.operation = u(u"阈值设置"), .value = u(u"changesensorinput"), .forUser = true, .changes = true},
        {.operation = u(u"设置设备排序"), .value = u(u"movedeviceindex"), .forUser = true, .changes = true},
        {.operation = u(u"设置json排序"), .value = u(u"movejsonindex"), .forUser = true, .changes = true},
        {.operation = u(u"设置分组排序"), .value = u(u"movegroupindex"), .forUser = true, .changes = true},
        {.operation = u(u"解除电脑账号绑定"),
         .value = u(u"unbindphonemode"),
         .forUser = true,
         .changes = true,
         .binding = true},
        {.operation = u(u"重新绑定电脑"), .value = u(u"rebindphone"), .changes = true, .binding = true},
        {.operation = u(u"添加（编辑）地图信息"), .value = u(u"submitmap"), .forUser = true, .changes = true},
        {.operation = u(u"提交地图传感器"), .value = u(u"submitmapsensor"), .forUser = true, .changes = true},
        {.operation = u(u"删除地图传感器"), .value = u(u"delmapsensor"), .forUser = true, .changes = true},
        {.operation = u(u"删除用户文件"), .value = u(u"deluserfile"), .forUser = true, .changes = true},
        {.operation = u(u"设置地图分享"), .value = u(u"setmapshare"), .forUser = true, .changes = true},
    };
    return table;
}

const QList<DeviceEntry>& deviceTable() {
    using Form = DeviceEntry::Form;
    static const QList<DeviceEntry> table = {
        {u(u"获取传感器采集输入数据"), Form::Server, {u(u"sensordatareq")}},
        {u(u"传感器采集输入数据导出"), Form::Server, {u(u"sensordataexport")}},
        {u(u"获取SD卡信息"), Form::Read, {u(u"hasdisk"), u(u"sdused"), u(u"sdleft"), u(u"sdinsert")}},
        {u(u"获取SD卡文件列表"), Form::WriteNamed, {u(u"sdlist")}},
        {u(u"删除SD卡文件"), Form::WriteNamed, {u(u"delsdfilelist")}},
        {u(u"下载SD卡文件"), Form::Own, {u(u"downsdfile")}},
        {u(u"上传摄像机升级文件"), Form::Own, {u(u"uploadipncfile")}},
        {u(u"获取参数设置"), Form::Read, imageNames() + osdNames() + recordNames() + versionNames()},
        {u(u"获取摄像机ftp设置"),
         Form::Read,
         {u(u"ftpenable"), u(u"ftprecord"), u(u"ftpjpg"), u(u"ftpdat"), u(u"ftpip"), u(u"ftpport"), u(u"ftpusr"),
          u(u"ftppwd"), u(u"ftpoffsaveday")}},
        {u(u"获取TIOSD设置"), Form::Read, osdNames()},
        {u(u"获取录像，抓拍方式"), Form::Read, recordNames()},
        {u(u"设置设备参数"), Form::WriteList, {}},
        {u(u"设置录像抓拍方式"), Form::WriteList, {}},
        {u(u"设置图像设置"), Form::WriteList, {}},
        {u(u"设置图像抓拍设置"), Form::WriteList, {}},
        {u(u"获取图像设置"), Form::Read, imageNames()},
        {u(u"获取图像抓拍设置"), Form::Read, {u(u"alarmjpgformart"), u(u"alarmjpgformartname")}},
        {u(u"设置SD卡格式化"), Form::WriteNamed, {u(u"sdformat")}},
        {u(u"获取设备版本信息"), Form::Read, versionNames()},
        {u(u"重启设备"), Form::WriteNamed, {u(u"ipcamrestartcmd")}},
        {u(u"恢复出厂设置"), Form::WriteNamed, {u(u"paradefaultcmd")}},
        {u(u"设置时区"), Form::Account, {u(u"setipncadminparam")}},
        {u(u"获取设备是否在线"), Form::ServerOf, {u(u"ipncstate")}},
        {u(u"上传用户文件"), Form::Own, {u(u"userupload")}},
        {u(u"获取设备最新版本信息"), Form::Own, {u(u"ipnclatestver")}},
        {u(u"设置设备升级"), Form::Pass, {}},
        {u(u"上报采集输入"), Form::Pass, {}},
        {u(u"获取云台信息"), Form::Read, {u(u"ptzcaps"), u(u"ptzpresets"), u(u"ptzcruises"), u(u"ptzstate")}},
        {u(u"云台控制"), Form::WriteList, {}},
        {u(u"获取设备网络参数"), Form::Read, {u(u"netstate")}},
        {u(u"获取设备升级状态"), Form::Read, {u(u"upgradestate")}},
        {u(u"读取设备参数"), Form::Pass, {}},
        {u(u"读取采集输入"), Form::WriteNamed, {u(u"sensorread")}},
        {u(u"写入控制输出"), Form::WriteNamed, {u(u"sensorwrite")}},
        {u(u"探测网络摄像机"), Form::Own, {u(u"onvifprobe")}},
    };
    return table;
}

} // namespace corvanta::requests
