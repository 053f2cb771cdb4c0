<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_GB" sourcelanguage="zh_CN">
<context>
    <name>AccountControl</name>
    <message>
        <source>登录密码已被修改，请使用新密码重新登录!</source>
        <translation>The password has been changed. Please sign in again with the new one.</translation>
    </message>
    <message>
        <source>该账号已与当前电脑解除绑定!</source>
        <translation>This account is no longer bound to this computer.</translation>
    </message>
</context>
<context>
    <name>AccountForm</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
</context>
<context>
    <name>AddAndSet_Linkage_Dialog</name>
    <message>
        <source>编辑联动策略</source>
        <translation>Edit linkage rule</translation>
    </message>
    <message>
        <source>新增联动策略</source>
        <translation>New linkage rule</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>联动策略名称</source>
        <translation>Rule name</translation>
    </message>
    <message>
        <source>输入联动策略名称</source>
        <translation>Name of the linkage rule</translation>
    </message>
    <message>
        <source>启用联动策略</source>
        <translation>Enable the rule</translation>
    </message>
    <message>
        <source>启用通知</source>
        <translation>Notify</translation>
    </message>
    <message>
        <source>条件</source>
        <translation>Conditions</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
    <message>
        <source>指定输入</source>
        <translation>Chosen</translation>
    </message>
    <message>
        <source>条件关系</source>
        <translation>Relation</translation>
    </message>
    <message>
        <source>条件有效时长</source>
        <translation>Valid for</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>自定义时长</source>
        <translation>Custom duration</translation>
    </message>
    <message>
        <source>(10～86400s)</source>
        <translation>(10–86400 s)</translation>
    </message>
    <message>
        <source>阀值等级</source>
        <translation>Level</translation>
    </message>
    <message>
        <source>单条件</source>
        <translation>Single</translation>
    </message>
    <message>
        <source>组合条件</source>
        <translation>Combined</translation>
    </message>
    <message>
        <source>动作</source>
        <translation>Actions</translation>
    </message>
    <message>
        <source>单动作</source>
        <translation>Single</translation>
    </message>
    <message>
        <source>组合动作</source>
        <translation>Combined</translation>
    </message>
    <message>
        <source>执行方式</source>
        <translation>Carried out</translation>
    </message>
    <message>
        <source>执行时间间隔</source>
        <translation>Interval</translation>
    </message>
    <message>
        <source>单位：ms</source>
        <translation>in ms</translation>
    </message>
    <message>
        <source>请选择一个条件!</source>
        <translation>Please choose a condition.</translation>
    </message>
    <message>
        <source>请选择一个动作!</source>
        <translation>Please choose an action.</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>AddDeviceDialog</name>
    <message>
        <source>添加设备</source>
        <translation>Add device</translation>
    </message>
    <message>
        <source>添加方式</source>
        <translation>Ways of adding</translation>
    </message>
    <message>
        <source>设备编号</source>
        <translation>Device number</translation>
    </message>
    <message>
        <source>RTSP地址</source>
        <translation>RTSP address</translation>
    </message>
    <message>
        <source>网络发现</source>
        <translation>Search the network</translation>
    </message>
    <message>
        <source>分组</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>加入分组</source>
        <translation>Add to group</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>设备标签上的编号</source>
        <translation>The number on its label</translation>
    </message>
    <message>
        <source>验证码</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>设备标签上的验证码</source>
        <translation>The code on its label</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>不填写则使用设备自己的名称</source>
        <translation>Empty: the device&apos;s own name</translation>
    </message>
    <message>
        <source>主码流</source>
        <translation>Main stream</translation>
    </message>
    <message>
        <source>主码流地址</source>
        <translation>Address of the main stream</translation>
    </message>
    <message>
        <source>子码流</source>
        <translation>Light stream</translation>
    </message>
    <message>
        <source>子码流地址</source>
        <translation>Address of the light stream</translation>
    </message>
    <message>
        <source>不填写则使用主码流</source>
        <translation>Empty: the main stream</translation>
    </message>
    <message>
        <source>用户名</source>
        <translation>User name</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>保存前可以先查看画面</source>
        <translation>You can look at the picture before you save</translation>
    </message>
    <message>
        <source>测试画面</source>
        <translation>Test picture</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>发现的设备</source>
        <translation>Devices found</translation>
    </message>
    <message>
        <source>地址</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>型号</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>摄像机地址</source>
        <translation>Camera address</translation>
    </message>
    <message>
        <source>主机[:端口]</source>
        <translation>host[:port]</translation>
    </message>
    <message>
        <source>摄像机用户名</source>
        <translation>Camera user name</translation>
    </message>
    <message>
        <source>摄像机密码</source>
        <translation>Camera password</translation>
    </message>
    <message>
        <source>探测</source>
        <translation>Probe</translation>
    </message>
    <message>
        <source>填写编号</source>
        <translation>Fill in the number</translation>
    </message>
    <message>
        <source>摄像机的码流</source>
        <translation>Streams of the camera</translation>
    </message>
    <message>
        <source>码流</source>
        <translation>Stream</translation>
    </message>
    <message>
        <source>编码</source>
        <translation>Codec</translation>
    </message>
    <message>
        <source>尺寸</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Frame rate</translation>
    </message>
    <message>
        <source>正在搜索本地网络…</source>
        <translation>Searching the local network…</translation>
    </message>
    <message>
        <source>网络摄像机</source>
        <translation>Network camera</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>已添加</source>
        <translation>Added</translation>
    </message>
    <message>
        <source>未添加</source>
        <translation>Not added</translation>
    </message>
    <message>
        <source>没有发现设备，请检查网络后刷新。</source>
        <translation>No devices were found. Please check the network and refresh.</translation>
    </message>
    <message>
        <source>发现%1个设备</source>
        <translation>Devices found: %1</translation>
    </message>
    <message>
        <source>添加成功!</source>
        <translation>Added.</translation>
    </message>
</context>
<context>
    <name>AddEditFriendDialog</name>
    <message>
        <source>添加好友</source>
        <translation>Add friend</translation>
    </message>
    <message>
        <source>编辑好友信息</source>
        <translation>Edit friend</translation>
    </message>
    <message>
        <source>好友手机号</source>
        <translation>Friend&apos;s phone number</translation>
    </message>
    <message>
        <source>好 友 名 称</source>
        <translation>Friend&apos;s name</translation>
    </message>
    <message>
        <source>好友名称</source>
        <translation>Friend&apos;s name</translation>
    </message>
    <message>
        <source>添加成功后显示</source>
        <translation>Shown once the friend is added</translation>
    </message>
    <message>
        <source>好 友 备 注</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>好友备注</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>请输入好友手机号!</source>
        <translation>Please enter the friend&apos;s phone number.</translation>
    </message>
    <message>
        <source>请输入备注!</source>
        <translation>Please enter a remark.</translation>
    </message>
    <message>
        <source>该用户已经是您的好友,无需重复添加!</source>
        <translation>This user is a friend of yours already.</translation>
    </message>
    <message>
        <source>您输入的手机号有误或者是您要添加的
好友还未注册，请检查手机号输入或先
请通知好友在该平台注册成功后再添加!</source>
        <translation>The phone number is wrong, or the friend has not registered yet.
Please check the number, or ask your friend to register first.</translation>
    </message>
    <message>
        <source>添加好友成功!</source>
        <translation>The friend has been added.</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>AddEditGroupDialog</name>
    <message>
        <source>新增分组</source>
        <translation>Add group</translation>
    </message>
    <message>
        <source>编辑分组</source>
        <translation>Edit group</translation>
    </message>
    <message>
        <source>分组名称</source>
        <translation>Group name</translation>
    </message>
    <message>
        <source>输入新建分组名称</source>
        <translation>Name of the new group</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>请输入名称!</source>
        <translation>Please enter a name.</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>AddressChecks</name>
    <message>
        <source>子网掩码不正确!</source>
        <translation>The netmask is not valid.</translation>
    </message>
    <message>
        <source>IP地址不正确!</source>
        <translation>The IP address is not valid.</translation>
    </message>
    <message>
        <source>网关不正确!</source>
        <translation>The gateway is not valid.</translation>
    </message>
    <message>
        <source>网关与IP地址不在同一网段!</source>
        <translation>The gateway is not in the IP address&apos;s network.</translation>
    </message>
    <message>
        <source>网关不能与IP地址相同!</source>
        <translation>The gateway cannot be the IP address itself.</translation>
    </message>
    <message>
        <source>DNS不正确!</source>
        <translation>The DNS address is not valid.</translation>
    </message>
    <message>
        <source>请输入无线网络名称!</source>
        <translation>Please enter the name of the wireless network.</translation>
    </message>
    <message>
        <source>无线网络名称过长，最多32个字节!</source>
        <translation>The name of the wireless network is too long (at most 32 bytes).</translation>
    </message>
    <message>
        <source>不能包含控制字符!</source>
        <translation>Control characters are not allowed.</translation>
    </message>
    <message>
        <source>开放的网络没有密码!</source>
        <translation>An open network has no password.</translation>
    </message>
    <message>
        <source>无线密码为8到63个字符!</source>
        <translation>The wireless password must have 8 to 63 characters.</translation>
    </message>
    <message>
        <source>%1不正确，格式为 rtsp://主机[:端口]/路径</source>
        <translation>%1 is not valid. The form is rtsp://host[:port]/path</translation>
    </message>
    <message>
        <source>摄像机地址不正确!</source>
        <translation>The camera&apos;s address is not valid.</translation>
    </message>
</context>
<context>
    <name>AlarmCenterPage</name>
    <message>
        <source>报警中心</source>
        <translation>Alarm centre</translation>
    </message>
    <message>
        <source>未确认报警</source>
        <translation>Unacknowledged alarms</translation>
    </message>
    <message>
        <source>没有未确认的报警</source>
        <translation>No unacknowledged alarms</translation>
    </message>
    <message>
        <source>图片无法显示</source>
        <translation>The picture cannot be shown</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Acknowledge</translation>
    </message>
    <message>
        <source>全部确认</source>
        <translation>Acknowledge all</translation>
    </message>
    <message>
        <source>实时视频</source>
        <translation>Live video</translation>
    </message>
    <message>
        <source>回放</source>
        <translation>Playback</translation>
    </message>
    <message>
        <source>电子地图</source>
        <translation>Maps</translation>
    </message>
    <message>
        <source>报警图片</source>
        <translation>Alarm picture</translation>
    </message>
    <message>
        <source>下一张</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>下一张图片</source>
        <translation>Next picture</translation>
    </message>
    <message>
        <source>未确认 %1 条</source>
        <translation>Unacknowledged: %1</translation>
    </message>
    <message>
        <source>没有图片</source>
        <translation>No picture</translation>
    </message>
    <message>
        <source>正在读取...</source>
        <translation>Reading...</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确认全部%1条报警?</source>
        <translation>Acknowledge all alarms (%1)?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>AlarmControl</name>
    <message>
        <source>没有该时间的录像</source>
        <translation>No recording of this time</translation>
    </message>
</context>
<context>
    <name>AlarmPage</name>
    <message>
        <source>声音</source>
        <translation>Sound</translation>
    </message>
    <message>
        <source>报警</source>
        <translation>Alarms</translation>
    </message>
    <message>
        <source>接收</source>
        <translation>Receiving</translation>
    </message>
    <message>
        <source>接收报警</source>
        <translation>Receive alarms</translation>
    </message>
    <message>
        <source>报警声音</source>
        <translation>Alarm sounds</translation>
    </message>
    <message>
        <source>支持wav、mp3、ogg文件；未选择文件时不播放声音</source>
        <translation>WAV, MP3 and OGG files. Without a file nothing is played.</translation>
    </message>
</context>
<context>
    <name>AlarmTableModel</name>
    <message>
        <source>级别</source>
        <translation>Level</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>内容</source>
        <translation>Content</translation>
    </message>
    <message>
        <source>次数</source>
        <translation>Count</translation>
    </message>
    <message>
        <source>最近时间</source>
        <translation>Last</translation>
    </message>
    <message>
        <source>联动策略</source>
        <translation>Linkage rule</translation>
    </message>
    <message>
        <source>首次时间</source>
        <translation>First</translation>
    </message>
</context>
<context>
    <name>AlarmTypes</name>
    <message>
        <source>设备异常报警</source>
        <translation>Device fault alarm</translation>
    </message>
    <message>
        <source>一级阈值报警</source>
        <translation>Level 1 threshold alarm</translation>
    </message>
    <message>
        <source>二级阈值报警</source>
        <translation>Level 2 threshold alarm</translation>
    </message>
    <message>
        <source>三级阈值报警</source>
        <translation>Level 3 threshold alarm</translation>
    </message>
    <message>
        <source>其他报警</source>
        <translation>Other alarm</translation>
    </message>
</context>
<context>
    <name>AppManager</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
</context>
<context>
    <name>Audio</name>
    <message>
        <source>该设备没有声音</source>
        <translation>The device has no sound</translation>
    </message>
    <message>
        <source>该设备不支持对讲</source>
        <translation>The device does not support talking</translation>
    </message>
    <message>
        <source>该设备正在与他人对讲</source>
        <translation>Somebody else is talking to the device</translation>
    </message>
    <message>
        <source>音频已断开(%1)</source>
        <translation>The sound has ended (%1)</translation>
    </message>
</context>
<context>
    <name>AudioControl</name>
    <message>
        <source>正在收听：%1</source>
        <translation>Listening to %1</translation>
    </message>
    <message>
        <source>正在对讲：%1</source>
        <translation>Talking to %1</translation>
    </message>
</context>
<context>
    <name>AvReport</name>
    <message>
        <source>正在获取视频信息...</source>
        <translation>Asking for the video...</translation>
    </message>
    <message>
        <source>正在建立视频连接...</source>
        <translation>Connecting...</translation>
    </message>
    <message>
        <source>正在加载视频数据...</source>
        <translation>Loading the video...</translation>
    </message>
    <message>
        <source>打开成功</source>
        <translation>Opened</translation>
    </message>
    <message>
        <source>打开失败(%1)</source>
        <translation>Could not be opened (%1)</translation>
    </message>
</context>
<context>
    <name>CalendarPopup</name>
    <message>
        <source>日历</source>
        <translation>Calendar</translation>
    </message>
</context>
<context>
    <name>CalibrationRun</name>
    <message>
        <source>已找到角点</source>
        <translation>corners found</translation>
    </message>
    <message>
        <source>没有检测到棋盘,请重新拍照</source>
        <translation>no chessboard found, please take it again</translation>
    </message>
    <message>
        <source>照片尺寸与之前的不同,请重新拍照</source>
        <translation>of another size than those before, please take it again</translation>
    </message>
    <message>
        <source>至少需要%1张可用的照片</source>
        <translation>Usable photos needed: at least %1</translation>
    </message>
    <message>
        <source>开始标定………………</source>
        <translation>Calibrating…</translation>
    </message>
    <message>
        <source>标定失败,请换用角度和位置不同的照片</source>
        <translation>The calibration failed. Please use photos from other angles and places.</translation>
    </message>
    <message>
        <source>标定完成!</source>
        <translation>Calibration finished.</translation>
    </message>
    <message>
        <source>重投影误差：%1 像素</source>
        <translation>Reprojection error: %1 px</translation>
    </message>
    <message>
        <source>第%1张：%2</source>
        <translation>Photo %1: %2</translation>
    </message>
</context>
<context>
    <name>CheckListBox</name>
    <message>
        <source>%1：%2 项</source>
        <translation>%1: %2 chosen</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>CheckPicker</name>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>CheckUpdateVersionDialog</name>
    <message>
        <source>检测更新</source>
        <translation>Check for updates</translation>
    </message>
    <message>
        <source>当前版本：</source>
        <translation>Current version:</translation>
    </message>
    <message>
        <source>版本</source>
        <translation>Build</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>未检测</source>
        <translation>Not checked</translation>
    </message>
    <message>
        <source>尚未设置更新服务器，请在“软件设置”的“软件更新”中填写地址!</source>
        <translation>No update server is set. Please enter its address in the settings, under &quot;Updates&quot;.</translation>
    </message>
    <message>
        <source>正在检测...</source>
        <translation>Checking...</translation>
    </message>
    <message>
        <source>检测失败</source>
        <translation>The check failed</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>Up to date</translation>
    </message>
    <message>
        <source>当前已经是最新版本!</source>
        <translation>This is the newest version.</translation>
    </message>
    <message>
        <source>最新版本 %1</source>
        <translation>Newest version %1</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>检测到新版本!</source>
        <translation>There is a new version.</translation>
    </message>
    <message>
        <source>后台更新</source>
        <translation>Update in the background</translation>
    </message>
    <message>
        <source>暂不更新</source>
        <translation>Not now</translation>
    </message>
</context>
<context>
    <name>Check_Log_Widget</name>
    <message>
        <source>日志</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>日志类型</source>
        <translation>Kind of log</translation>
    </message>
    <message>
        <source>显示与导出</source>
        <translation>View and export</translation>
    </message>
    <message>
        <source>正在读取 %1 条...</source>
        <translation>Reading: %1 rows...</translation>
    </message>
    <message>
        <source>正在读取...</source>
        <translation>Reading...</translation>
    </message>
    <message>
        <source>共 %1 条</source>
        <translation>Rows: %1</translation>
    </message>
    <message>
        <source>已停止，显示前 %1 条</source>
        <translation>Stopped. The first rows are shown: %1</translation>
    </message>
    <message>
        <source>没有符合条件的记录。
报警日志请选择“全部时间”后查询。</source>
        <translation>No rows match.
For the alarm log choose &quot;All times&quot; and search again.</translation>
    </message>
    <message>
        <source>没有符合条件的记录。
请更改查询条件后再查询。</source>
        <translation>No rows match.
Change the conditions and search again.</translation>
    </message>
    <message>
        <source>查询条件</source>
        <translation>Search conditions</translation>
    </message>
    <message>
        <source>分页栏</source>
        <translation>Page bar</translation>
    </message>
    <message>
        <source>编号列</source>
        <translation>Number column</translation>
    </message>
    <message>
        <source>恢复默认布局</source>
        <translation>Restore the default layout</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>文件“%1”已存在，是否替换?</source>
        <translation>The file &quot;%1&quot; exists. Replace it?</translation>
    </message>
    <message>
        <source>导出成功!</source>
        <translation>Exported.</translation>
    </message>
    <message>
        <source>导出失败!</source>
        <translation>The export failed.</translation>
    </message>
</context>
<context>
    <name>CodeCountdown</name>
    <message>
        <source>重新获取验证码</source>
        <translation>Get a new code</translation>
    </message>
    <message>
        <source>获取验证码</source>
        <translation>Get code</translation>
    </message>
    <message>
        <source>%1秒后可以重新获取</source>
        <translation>Get again in %1 s</translation>
    </message>
</context>
<context>
    <name>ConfigPage</name>
    <message>
        <source>设备不在线，无法读取和修改参数。</source>
        <translation>The device is offline. Its parameters cannot be read or changed.</translation>
    </message>
    <message>
        <source>没有该设备的管理权限，只能查看。</source>
        <translation>You do not administer this device and can only look.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>CrashReport</name>
    <message>
        <source>程序崩溃</source>
        <translation>Program crash</translation>
    </message>
    <message>
        <source>&lt;FONT size=4&gt;&lt;div&gt;&lt;b&gt;对于发生的错误，表示诚挚的歉意&lt;/b&gt;&lt;br/&gt;&lt;/div&gt;</source>
        <translation>&lt;FONT size=4&gt;&lt;div&gt;&lt;b&gt;We sincerely apologise for this error&lt;/b&gt;&lt;br/&gt;&lt;/div&gt;</translation>
    </message>
    <message>
        <source>&lt;div&gt;错误代码：%1&lt;/div&gt;&lt;div&gt;错误地址：%2&lt;/div&gt;&lt;/FONT&gt;</source>
        <translation>&lt;div&gt;Error code: %1&lt;/div&gt;&lt;div&gt;Address: %2&lt;/div&gt;&lt;/FONT&gt;</translation>
    </message>
</context>
<context>
    <name>DayBar</name>
    <message>
        <source>前一天 (Ctrl+PgUp)</source>
        <translation>Previous day (Ctrl+PgUp)</translation>
    </message>
    <message>
        <source>日期</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>选择日期</source>
        <translation>Choose a date</translation>
    </message>
    <message>
        <source>后一天 (Ctrl+PgDn)</source>
        <translation>Next day (Ctrl+PgDn)</translation>
    </message>
</context>
<context>
    <name>DayTimeline</name>
    <message>
        <source>时间轴</source>
        <translation>Timeline</translation>
    </message>
</context>
<context>
    <name>DeviceConfigDialog</name>
    <message>
        <source>设备配置</source>
        <translation>Configure device</translation>
    </message>
    <message>
        <source>设备配置分类</source>
        <translation>Configuration pages</translation>
    </message>
    <message>
        <source>基本信息</source>
        <translation>General</translation>
    </message>
    <message>
        <source>视频参数</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>图像</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>OSD</source>
        <translation>OSD</translation>
    </message>
    <message>
        <source>录像与抓拍</source>
        <translation>Recording and snapshots</translation>
    </message>
    <message>
        <source>FTP</source>
        <translation>FTP</translation>
    </message>
    <message>
        <source>SD卡</source>
        <translation>SD card</translation>
    </message>
    <message>
        <source>网络</source>
        <translation>Network</translation>
    </message>
    <message>
        <source>升级</source>
        <translation>Upgrade</translation>
    </message>
    <message>
        <source>维护</source>
        <translation>Maintenance</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>DeviceManageDialog</name>
    <message>
        <source>设备管理</source>
        <translation>Manage devices</translation>
    </message>
    <message>
        <source>搜索设备</source>
        <translation>Search devices</translation>
    </message>
    <message>
        <source>设备列表</source>
        <translation>Device list</translation>
    </message>
    <message>
        <source>全选</source>
        <translation>Select all</translation>
    </message>
    <message>
        <source>添加设备</source>
        <translation>Add device</translation>
    </message>
    <message>
        <source>配置</source>
        <translation>Configure</translation>
    </message>
    <message>
        <source>重命名</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>移到分组</source>
        <translation>Move to group</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>共%1个设备</source>
        <translation>Devices: %1</translation>
    </message>
    <message>
        <source>共%1个设备，已选%2个</source>
        <translation>Devices: %1, selected: %2</translation>
    </message>
</context>
<context>
    <name>DevicePanel</name>
    <message>
        <source>设备</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>搜索设备</source>
        <translation>Search devices</translation>
    </message>
    <message>
        <source>刷新设备列表</source>
        <translation>Refresh the device list</translation>
    </message>
    <message>
        <source>登录</source>
        <translation>Sign in</translation>
    </message>
    <message>
        <source>还没有设备</source>
        <translation>No devices yet</translation>
    </message>
    <message>
        <source>登录后显示设备</source>
        <translation>Devices are shown once you sign in</translation>
    </message>
</context>
<context>
    <name>DeviceParameters</name>
    <message>
        <source>“%1”只能是开或关!</source>
        <translation>&quot;%1&quot; can only be on or off.</translation>
    </message>
    <message>
        <source>“%1”应在%2到%3之间!</source>
        <translation>&quot;%1&quot; must lie between %2 and %3.</translation>
    </message>
    <message>
        <source>“%1”最多%2个字符!</source>
        <translation>&quot;%1&quot; may have at most %2 characters.</translation>
    </message>
    <message>
        <source>“%1”不能包含控制字符!</source>
        <translation>&quot;%1&quot; may not have control characters.</translation>
    </message>
    <message>
        <source>主码流</source>
        <translation>Main stream</translation>
    </message>
    <message>
        <source>子码流</source>
        <translation>Light stream</translation>
    </message>
    <message>
        <source>色彩</source>
        <translation>Colours</translation>
    </message>
    <message>
        <source>画面方向</source>
        <translation>Picture direction</translation>
    </message>
    <message>
        <source>抓拍</source>
        <translation>Snapshots</translation>
    </message>
    <message>
        <source>报警</source>
        <translation>Alarms</translation>
    </message>
    <message>
        <source>录像</source>
        <translation>Recording</translation>
    </message>
    <message>
        <source>FTP服务器</source>
        <translation>FTP server</translation>
    </message>
    <message>
        <source>上传内容</source>
        <translation>What is uploaded</translation>
    </message>
    <message>
        <source>左上角|右上角|左下角|右下角</source>
        <translation>Top left|Top right|Bottom left|Bottom right</translation>
    </message>
    <message>
        <source>不保存|上传FTP|保存到SD卡|上传FTP并保存到SD卡</source>
        <translation>Not kept|Uploaded by FTP|On the SD card|By FTP and on the SD card</translation>
    </message>
    <message>
        <source>码率</source>
        <translation>Bit rate</translation>
    </message>
    <message>
        <source>kbit/s</source>
        <translation>kbit/s</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Frame rate</translation>
    </message>
    <message>
        <source>帧/秒</source>
        <translation>frames/s</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>对比度</source>
        <translation>Contrast</translation>
    </message>
    <message>
        <source>饱和度</source>
        <translation>Saturation</translation>
    </message>
    <message>
        <source>锐度</source>
        <translation>Sharpness</translation>
    </message>
    <message>
        <source>色调</source>
        <translation>Hue</translation>
    </message>
    <message>
        <source>左右镜像</source>
        <translation>Mirror</translation>
    </message>
    <message>
        <source>上下翻转</source>
        <translation>Flip</translation>
    </message>
    <message>
        <source>显示日期</source>
        <translation>Show the date</translation>
    </message>
    <message>
        <source>显示时间</source>
        <translation>Show the time</translation>
    </message>
    <message>
        <source>显示标志</source>
        <translation>Show the logo</translation>
    </message>
    <message>
        <source>标志位置</source>
        <translation>Logo position</translation>
    </message>
    <message>
        <source>显示文字</source>
        <translation>Show a text</translation>
    </message>
    <message>
        <source>文字内容</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>抓拍保存方式</source>
        <translation>Snapshots are kept</translation>
    </message>
    <message>
        <source>定时抓拍间隔</source>
        <translation>Snapshot interval</translation>
    </message>
    <message>
        <source>秒</source>
        <translation>s</translation>
    </message>
    <message>
        <source>报警时抓拍</source>
        <translation>Snapshot at an alarm</translation>
    </message>
    <message>
        <source>抓拍格式</source>
        <translation>Snapshot format</translation>
    </message>
    <message>
        <source>移动侦测</source>
        <translation>Motion detection</translation>
    </message>
    <message>
        <source>外部触发输入</source>
        <translation>External trigger input</translation>
    </message>
    <message>
        <source>报警持续时间</source>
        <translation>Alarm duration</translation>
    </message>
    <message>
        <source>报警录像到SD卡</source>
        <translation>Alarms to the SD card</translation>
    </message>
    <message>
        <source>持续录像到SD卡</source>
        <translation>Always to the SD card</translation>
    </message>
    <message>
        <source>打包时长</source>
        <translation>File length</translation>
    </message>
    <message>
        <source>分钟</source>
        <translation>min</translation>
    </message>
    <message>
        <source>报警录像时长</source>
        <translation>Length of alarm recordings</translation>
    </message>
    <message>
        <source>布防时段</source>
        <translation>Armed time</translation>
    </message>
    <message>
        <source>启用FTP上传</source>
        <translation>Upload by FTP</translation>
    </message>
    <message>
        <source>服务器地址</source>
        <translation>Server address</translation>
    </message>
    <message>
        <source>端口</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>用户名</source>
        <translation>User name</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>上传录像</source>
        <translation>Upload recordings</translation>
    </message>
    <message>
        <source>上传图片</source>
        <translation>Upload pictures</translation>
    </message>
    <message>
        <source>上传数据</source>
        <translation>Upload data</translation>
    </message>
    <message>
        <source>断网后保存</source>
        <translation>Kept without network</translation>
    </message>
    <message>
        <source>天</source>
        <translation>days</translation>
    </message>
    <message>
        <source>%1%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>DeviceTable</name>
    <message>
        <source>管理</source>
        <translation>Administer</translation>
    </message>
    <message>
        <source>视频</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>录像</source>
        <translation>Recordings</translation>
    </message>
    <message>
        <source>云台</source>
        <translation>PTZ</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>未分组</source>
        <translation>No group</translation>
    </message>
    <message>
        <source>在线</source>
        <translation>Online</translation>
    </message>
    <message>
        <source>离线</source>
        <translation>Offline</translation>
    </message>
    <message>
        <source>序号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>设备编号</source>
        <translation>Device number</translation>
    </message>
    <message>
        <source>分组</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>型号</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>地址</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>固件版本</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>Rights</translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
</context>
<context>
    <name>DeviceTree</name>
    <message>
        <source>设备树</source>
        <translation>Device tree</translation>
    </message>
    <message>
        <source>未分组</source>
        <translation>No group</translation>
    </message>
    <message>
        <source>%1：在线 %2，共 %3</source>
        <translation>%1: %2 of %3 online</translation>
    </message>
    <message>
        <source>默认组：其设备占据最前面的窗口</source>
        <translation>Default group: its devices take the first tiles</translation>
    </message>
    <message>
        <source>视频已打开</source>
        <translation>Video is open</translation>
    </message>
    <message>
        <source>在线</source>
        <translation>Online</translation>
    </message>
    <message>
        <source>离线</source>
        <translation>Offline</translation>
    </message>
    <message>
        <source>，正在录像</source>
        <translation>, recording</translation>
    </message>
    <message>
        <source>设备菜单</source>
        <translation>Device menu</translation>
    </message>
    <message>
        <source>关闭视频</source>
        <translation>Close video</translation>
    </message>
    <message>
        <source>打开视频</source>
        <translation>Open video</translation>
    </message>
    <message>
        <source>预览图片</source>
        <translation>Preview picture</translation>
    </message>
    <message>
        <source>停止录像</source>
        <translation>Stop recording</translation>
    </message>
    <message>
        <source>开始录像</source>
        <translation>Start recording</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>移到分组</source>
        <translation>Move to group</translation>
    </message>
    <message>
        <source>设备配置</source>
        <translation>Configure device</translation>
    </message>
    <message>
        <source>联动设置</source>
        <translation>Linkage</translation>
    </message>
    <message>
        <source>传感器设置</source>
        <translation>Sensors</translation>
    </message>
    <message>
        <source>重命名</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>删除设备</source>
        <translation>Delete device</translation>
    </message>
    <message>
        <source>添加设备</source>
        <translation>Add device</translation>
    </message>
    <message>
        <source>分组菜单</source>
        <translation>Group menu</translation>
    </message>
    <message>
        <source>打开本组视频</source>
        <translation>Open the group&apos;s videos</translation>
    </message>
    <message>
        <source>关闭本组视频</source>
        <translation>Close the group&apos;s videos</translation>
    </message>
    <message>
        <source>本组开始录像</source>
        <translation>Record the group</translation>
    </message>
    <message>
        <source>本组停止录像</source>
        <translation>Stop recording the group</translation>
    </message>
    <message>
        <source>设为默认组</source>
        <translation>Make it the default group</translation>
    </message>
    <message>
        <source>新增分组</source>
        <translation>New group</translation>
    </message>
    <message>
        <source>编辑分组</source>
        <translation>Edit group</translation>
    </message>
    <message>
        <source>分组管理</source>
        <translation>Manage groups</translation>
    </message>
    <message>
        <source>设备管理</source>
        <translation>Manage devices</translation>
    </message>
    <message>
        <source>全部展开</source>
        <translation>Expand all</translation>
    </message>
    <message>
        <source>全部收起</source>
        <translation>Collapse all</translation>
    </message>
</context>
<context>
    <name>DowmLoadFileFromFtpServerThread</name>
    <message>
        <source>文件过大</source>
        <translation>The file is too large</translation>
    </message>
    <message>
        <source>临时目录所在磁盘空间不足</source>
        <translation>Not enough room on the drive of the temporary folder</translation>
    </message>
    <message>
        <source>数据解压失败</source>
        <translation>The data could not be unpacked</translation>
    </message>
    <message>
        <source>服务器响应超时</source>
        <translation>The server does not answer</translation>
    </message>
    <message>
        <source>网络错误(%1)</source>
        <translation>Network error (%1)</translation>
    </message>
    <message>
        <source>数据不完整</source>
        <translation>The data are incomplete</translation>
    </message>
    <message>
        <source>无法写入临时目录</source>
        <translation>The temporary folder cannot be written</translation>
    </message>
</context>
<context>
    <name>DriveBar</name>
    <message>
        <source>%1 不可用</source>
        <translation>%1 is not available</translation>
    </message>
    <message>
        <source>%1 可用 %2 / %3</source>
        <translation>%1 free: %2 of %3</translation>
    </message>
    <message>
        <source>剩余空间不超过 %1 时不再写入新文件</source>
        <translation>No new files are written at %1 of free space or less</translation>
    </message>
    <message>
        <source>请检查磁盘是否已连接</source>
        <translation>Please check whether the drive is connected</translation>
    </message>
</context>
<context>
    <name>DriveBars</name>
    <message>
        <source>磁盘空间</source>
        <translation>Drive space</translation>
    </message>
</context>
<context>
    <name>DriveList</name>
    <message>
        <source>盘符列表</source>
        <translation>Drives</translation>
    </message>
    <message>
        <source>盘符(按使用顺序)</source>
        <translation>Drives (in the order of use)</translation>
    </message>
    <message>
        <source>剩余空间</source>
        <translation>Free</translation>
    </message>
    <message>
        <source>总空间</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>%1  (不存在)</source>
        <translation>%1  (missing)</translation>
    </message>
</context>
<context>
    <name>EntryChecks</name>
    <message>
        <source>名称过长，最多%1个字符!</source>
        <translation>The name is too long. Characters allowed: %1.</translation>
    </message>
    <message>
        <source>名称不能包含控制字符!</source>
        <translation>The name must not contain control characters.</translation>
    </message>
</context>
<context>
    <name>ExportDialog</name>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>导出格式</source>
        <translation>Export format</translation>
    </message>
    <message>
        <source>文本文档(.txt)</source>
        <translation>Text file (.txt)</translation>
    </message>
    <message>
        <source>表格文档(.xls)</source>
        <translation>Spreadsheet (.xls)</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>ExportProgress</name>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>正在导出</source>
        <translation>Exporting</translation>
    </message>
    <message>
        <source>导出进度</source>
        <translation>Export progress</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>正在导出，已完成 %1%</source>
        <translation>Exporting, %1% done</translation>
    </message>
    <message>
        <source>，约剩 %1 秒</source>
        <translation>, about %1 s left</translation>
    </message>
    <message>
        <source>正在取消...</source>
        <translation>Cancelling...</translation>
    </message>
</context>
<context>
    <name>FileActions</name>
    <message>
        <source>文件已不存在：%1</source>
        <translation>The file is gone: %1</translation>
    </message>
    <message>
        <source>文件夹已不存在：%1</source>
        <translation>The folder is gone: %1</translation>
    </message>
    <message>
        <source>无法打开文件夹：%1</source>
        <translation>The folder cannot be opened: %1</translation>
    </message>
    <message>
        <source>已复制文件路径</source>
        <translation>The file&apos;s path was copied</translation>
    </message>
    <message>
        <source>已复制 %1 个文件路径</source>
        <translation>Paths copied: %1</translation>
    </message>
    <message>
        <source>确定删除文件“%1”?
删除后无法恢复。</source>
        <translation>Delete the file &quot;%1&quot;?
It cannot be restored.</translation>
    </message>
    <message>
        <source>确定删除所选的 %1 个文件 (%2)?
删除后无法恢复。</source>
        <translation>Delete the selected files (%1, %2)?
They cannot be restored.</translation>
    </message>
    <message>
        <source>删除文件</source>
        <translation>Delete files</translation>
    </message>
    <message>
        <source>已删除 %1 个文件</source>
        <translation>Files deleted: %1</translation>
    </message>
    <message>
        <source>%1 个录像正在写入，不能删除。请先停止录像。</source>
        <translation>Recordings that are being written cannot be deleted: %1. Stop recording first.</translation>
    </message>
    <message>
        <source>%1 个文件不在存储目录中，未删除。</source>
        <translation>Files outside the storage folders were not deleted: %1.</translation>
    </message>
    <message>
        <source>%1 个文件无法删除，请检查权限和磁盘。</source>
        <translation>Files that could not be deleted: %1. Please check rights and drive.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
</context>
<context>
    <name>FileChooser</name>
    <message>
        <source>%1 已存在，确定替换?</source>
        <translation>%1 exists. Replace it?</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>位置</source>
        <translation>Look in</translation>
    </message>
    <message>
        <source>文件名</source>
        <translation>File name</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>后退</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>前进</source>
        <translation>Forward</translation>
    </message>
    <message>
        <source>上一级</source>
        <translation>Parent folder</translation>
    </message>
</context>
<context>
    <name>FileField</name>
    <message>
        <source>未选择文件</source>
        <translation>No file chosen</translation>
    </message>
    <message>
        <source>浏览</source>
        <translation>Browse</translation>
    </message>
    <message>
        <source>浏览：%1</source>
        <translation>Browse: %1</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>清除：%1</source>
        <translation>Clear: %1</translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation>Choose a file</translation>
    </message>
</context>
<context>
    <name>FileForm</name>
    <message>
        <source>查找条件</source>
        <translation>Search conditions</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>全部设备</source>
        <translation>All devices</translation>
    </message>
    <message>
        <source>类别</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>全部类别</source>
        <translation>All kinds</translation>
    </message>
    <message>
        <source>时间范围</source>
        <translation>Time range</translation>
    </message>
    <message>
        <source>今天</source>
        <translation>Today</translation>
    </message>
    <message>
        <source>最近 7 天</source>
        <translation>Last 7 days</translation>
    </message>
    <message>
        <source>最近 30 天</source>
        <translation>Last 30 days</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>%1（%2）</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>查找</source>
        <translation>Search</translation>
    </message>
</context>
<context>
    <name>FileTableModel</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>类别</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>文件名</source>
        <translation>File name</translation>
    </message>
    <message>
        <source>大小</source>
        <translation>Size</translation>
    </message>
</context>
<context>
    <name>FileTableView</name>
    <message>
        <source>文件列表</source>
        <translation>File list</translation>
    </message>
</context>
<context>
    <name>FileTexts</name>
    <message>
        <source>抓拍</source>
        <translation>Snapshot</translation>
    </message>
    <message>
        <source>报警图片</source>
        <translation>Alarm picture</translation>
    </message>
    <message>
        <source>本地录像</source>
        <translation>Local recording</translation>
    </message>
    <message>
        <source>设备录像</source>
        <translation>Device recording</translation>
    </message>
</context>
<context>
    <name>FlowRequest</name>
    <message>
        <source>请求发送失败!</source>
        <translation>The request could not be sent.</translation>
    </message>
</context>
<context>
    <name>FramedDialog</name>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>错误信息</source>
        <translation>Error message</translation>
    </message>
</context>
<context>
    <name>Fwidget</name>
    <message>
        <source>一窗口</source>
        <translation>1 tile</translation>
    </message>
    <message>
        <source>四窗口</source>
        <translation>4 tiles</translation>
    </message>
    <message>
        <source>九窗口</source>
        <translation>9 tiles</translation>
    </message>
    <message>
        <source>十六窗口</source>
        <translation>16 tiles</translation>
    </message>
    <message>
        <source>十八窗口</source>
        <translation>18 tiles</translation>
    </message>
    <message>
        <source>二十五窗口</source>
        <translation>25 tiles</translation>
    </message>
    <message>
        <source>三十六窗口</source>
        <translation>36 tiles</translation>
    </message>
    <message>
        <source>六十四窗口</source>
        <translation>64 tiles</translation>
    </message>
    <message>
        <source>视频窗口</source>
        <translation>Video tiles</translation>
    </message>
    <message>
        <source>画面布局</source>
        <translation>Tile layout</translation>
    </message>
</context>
<context>
    <name>GLYuvWidget</name>
    <message>
        <source>视频画面</source>
        <translation>Video picture</translation>
    </message>
</context>
<context>
    <name>GeneralPage</name>
    <message>
        <source>常规</source>
        <translation>General</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>默认分组</source>
        <translation>Default group</translation>
    </message>
    <message>
        <source>默认分组的设备从第一个窗口开始排列</source>
        <translation>The devices of the default group take the first tiles</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Names</translation>
    </message>
    <message>
        <source>APP名称</source>
        <translation>Application name</translation>
    </message>
    <message>
        <source>公司名称</source>
        <translation>Company name</translation>
    </message>
    <message>
        <source>启动与窗口</source>
        <translation>Start and window</translation>
    </message>
    <message>
        <source>随系统启动</source>
        <translation>Start with the system</translation>
    </message>
    <message>
        <source>启动时恢复上次的状态</source>
        <translation>Restore the last state at the start</translation>
    </message>
    <message>
        <source>窗口模式</source>
        <translation>Window mode</translation>
    </message>
    <message>
        <source>窗口模式在下次启动时生效</source>
        <translation>The window mode takes effect at the next start</translation>
    </message>
    <message>
        <source>第一个分组</source>
        <translation>The first group</translation>
    </message>
    <message>
        <source>%1(不存在)</source>
        <translation>%1 (missing)</translation>
    </message>
    <message>
        <source>无法设置随系统启动</source>
        <translation>Starting with the system could not be set</translation>
    </message>
    <message>
        <source>无法取消随系统启动</source>
        <translation>Starting with the system could not be cleared</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>界面语言</source>
        <translation>Interface language</translation>
    </message>
</context>
<context>
    <name>Handover</name>
    <message>
        <source>无法写入安装目录: %1</source>
        <translation>The installation folder cannot be written: %1</translation>
    </message>
    <message>
        <source>未找到升级程序: %1</source>
        <translation>The updater is missing: %1</translation>
    </message>
    <message>
        <source>升级程序启动失败: %1</source>
        <translation>The updater could not be started: %1</translation>
    </message>
</context>
<context>
    <name>HeadPicture</name>
    <message>
        <source>图片无法读取!</source>
        <translation>The picture cannot be read.</translation>
    </message>
    <message>
        <source>图片不能超过1M，请重新选择!</source>
        <translation>The picture must not be larger than 1 MB. Please choose another one.</translation>
    </message>
    <message>
        <source>图片格式不正确，请选择png或jpg图片!</source>
        <translation>The picture&apos;s format is not supported. Please choose a PNG or JPG picture.</translation>
    </message>
    <message>
        <source>图片尺寸过大，请重新选择!</source>
        <translation>The picture has too many pixels. Please choose another one.</translation>
    </message>
</context>
<context>
    <name>HelpSheet</name>
    <message>
        <source>快捷键</source>
        <translation>Keyboard shortcuts</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>InfoConfigPage</name>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>设备编号</source>
        <translation>Device number</translation>
    </message>
    <message>
        <source>型号</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>序列号</source>
        <translation>Serial number</translation>
    </message>
    <message>
        <source>地址</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>固件版本</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>内核版本</source>
        <translation>Kernel</translation>
    </message>
    <message>
        <source>引导版本</source>
        <translation>Boot loader</translation>
    </message>
    <message>
        <source>时区</source>
        <translation>Time zone</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>ItemVideo</name>
    <message>
        <source>视频窗口 %1</source>
        <translation>Video tile %1</translation>
    </message>
    <message>
        <source>无法显示画面</source>
        <translation>The picture cannot be shown</translation>
    </message>
    <message>
        <source>画面停顿</source>
        <translation>The picture has stopped</translation>
    </message>
    <message>
        <source>等待画面</source>
        <translation>Waiting for a picture</translation>
    </message>
</context>
<context>
    <name>LaserInfo</name>
    <message>
        <source>光斑亮度应为1~255</source>
        <translation>The spot&apos;s brightness must be 1 to 255.</translation>
    </message>
    <message>
        <source>光斑直径应为1~%1像素</source>
        <translation>The spot&apos;s diameter must be 1 to %1 px.</translation>
    </message>
    <message>
        <source>光斑最小直径应小于最大直径</source>
        <translation>The spot&apos;s smallest diameter must be less than the largest one.</translation>
    </message>
    <message>
        <source>光斑圆度应为0~1</source>
        <translation>The spot&apos;s roundness must be 0 to 1.</translation>
    </message>
    <message>
        <source>参考图文件名无效</source>
        <translation>The reference picture&apos;s file name is not valid.</translation>
    </message>
    <message>
        <source>请先设置四个标定点!</source>
        <translation>Please set the four calibration points first.</translation>
    </message>
    <message>
        <source>请输入比例(毫米/像素)!</source>
        <translation>Please enter the scale (mm/px).</translation>
    </message>
    <message>
        <source>比例应大于0且不大于1000毫米/像素</source>
        <translation>The scale must be greater than 0 and no greater than 1000 mm/px.</translation>
    </message>
    <message>
        <source>请先确定光斑初始位置!</source>
        <translation>Please set the spot&apos;s initial position first.</translation>
    </message>
</context>
<context>
    <name>LaserMeter</name>
    <message>
        <source>光斑不在标定平面上</source>
        <translation>The spot is not on the calibrated plane</translation>
    </message>
</context>
<context>
    <name>LaserScale</name>
    <message>
        <source>标定点坐标不是有效的数字</source>
        <translation>The coordinates of the calibration points are not valid numbers.</translation>
    </message>
    <message>
        <source>标定点不能重合</source>
        <translation>Calibration points must not coincide.</translation>
    </message>
    <message>
        <source>任意三个标定点不能在一条直线上</source>
        <translation>No three calibration points may lie on one line.</translation>
    </message>
    <message>
        <source>标定点的图上位置与实际坐标不对应,请检查顺序</source>
        <translation>The places in the picture do not match the real coordinates. Please check the order of the points.</translation>
    </message>
</context>
<context>
    <name>LaserSpot</name>
    <message>
        <source>没有可用的图片</source>
        <translation>There is no usable picture</translation>
    </message>
    <message>
        <source>参考图与图片大小不一致,请重新拍参考图</source>
        <translation>The reference picture has another size, please take it again</translation>
    </message>
    <message>
        <source>没有找到足够亮的光斑</source>
        <translation>No spot is bright enough</translation>
    </message>
    <message>
        <source>光斑颜色不符</source>
        <translation>The spot has another colour</translation>
    </message>
    <message>
        <source>光斑太小</source>
        <translation>The spot is too small</translation>
    </message>
    <message>
        <source>光斑太大</source>
        <translation>The spot is too large</translation>
    </message>
    <message>
        <source>光斑不够圆</source>
        <translation>The spot is not round enough</translation>
    </message>
    <message>
        <source>光斑超出画面边缘</source>
        <translation>The spot reaches beyond the picture</translation>
    </message>
    <message>
        <source>画面中有多个光斑</source>
        <translation>There are several spots in the picture</translation>
    </message>
</context>
<context>
    <name>LinkageBoards</name>
    <message>
        <source>(已删除)</source>
        <translation>(deleted)</translation>
    </message>
</context>
<context>
    <name>LinkageComboxConditionDialog</name>
    <message>
        <source>组合条件</source>
        <translation>Combined condition</translation>
    </message>
    <message>
        <source>条件</source>
        <translation>Conditions</translation>
    </message>
    <message>
        <source>请先添加条件!</source>
        <translation>Please add conditions first.</translation>
    </message>
    <message>
        <source>请选择一个条件!</source>
        <translation>Please choose a condition.</translation>
    </message>
    <message>
        <source>条件关系</source>
        <translation>Relation</translation>
    </message>
</context>
<context>
    <name>LinkageComboxlActionDialog</name>
    <message>
        <source>组合动作</source>
        <translation>Combined action</translation>
    </message>
    <message>
        <source>动作</source>
        <translation>Actions</translation>
    </message>
    <message>
        <source>请先添加动作!</source>
        <translation>Please add actions first.</translation>
    </message>
    <message>
        <source>请选择一个动作!</source>
        <translation>Please choose an action.</translation>
    </message>
    <message>
        <source>执行方式</source>
        <translation>Carried out</translation>
    </message>
    <message>
        <source>执行时间间隔</source>
        <translation>Interval</translation>
    </message>
    <message>
        <source>单位：ms</source>
        <translation>in ms</translation>
    </message>
</context>
<context>
    <name>LinkageForm</name>
    <message>
        <source>执行时间间隔</source>
        <translation>Interval</translation>
    </message>
    <message>
        <source>至少100ms</source>
        <translation>at least 100 ms</translation>
    </message>
</context>
<context>
    <name>LinkagePlan</name>
    <message>
        <source>请输入执行时间间隔!</source>
        <translation>Please enter the interval.</translation>
    </message>
    <message>
        <source>请输入正确的执行时间间隔!</source>
        <translation>Please enter a valid interval.</translation>
    </message>
    <message>
        <source>选择的输入不能相同!</source>
        <translation>The chosen inputs must differ.</translation>
    </message>
    <message>
        <source>请输入条件有效时长!</source>
        <translation>Please enter how long the condition is valid.</translation>
    </message>
    <message>
        <source>请输入联动策略名称!</source>
        <translation>Please enter the rule&apos;s name.</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
</context>
<context>
    <name>LinkageSignalActionDialog</name>
    <message>
        <source>单动作</source>
        <translation>Single action</translation>
    </message>
    <message>
        <source>控制输出</source>
        <translation>Output</translation>
    </message>
    <message>
        <source>请选择一个动作!</source>
        <translation>Please choose an action.</translation>
    </message>
</context>
<context>
    <name>LinkageSignalConditionDialog</name>
    <message>
        <source>单条件</source>
        <translation>Single condition</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>请选择采集输入!</source>
        <translation>Please choose an input.</translation>
    </message>
</context>
<context>
    <name>LinkageWords</name>
    <message>
        <source>与</source>
        <translation>And</translation>
    </message>
    <message>
        <source>或</source>
        <translation>Or</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
    <message>
        <source>轮询</source>
        <translation>In turn</translation>
    </message>
    <message>
        <source>一级阀值</source>
        <translation>Level 1</translation>
    </message>
    <message>
        <source>二级阀值</source>
        <translation>Level 2</translation>
    </message>
    <message>
        <source>三级阀值</source>
        <translation>Level 3</translation>
    </message>
    <message>
        <source>永久</source>
        <translation>For ever</translation>
    </message>
    <message>
        <source>【设备名称】</source>
        <translation>[device name]</translation>
    </message>
    <message>
        <source>【联动策略名称】</source>
        <translation>[rule name]</translation>
    </message>
    <message>
        <source>【一级阀值】</source>
        <translation>[level]</translation>
    </message>
    <message>
        <source>【传感器名称】</source>
        <translation>[sensor name]</translation>
    </message>
    <message>
        <source>【传感器输入名称】</source>
        <translation>[input name]</translation>
    </message>
    <message>
        <source>【报警值】</source>
        <translation>[alarm value]</translation>
    </message>
    <message>
        <source>【单位】</source>
        <translation>[unit]</translation>
    </message>
</context>
<context>
    <name>ListDialog</name>
    <message>
        <source>搜索</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>目前系统不支持多选删除，请选择一个需要删除项！</source>
        <translation>Several entries cannot be deleted at once. Please choose one.</translation>
    </message>
</context>
<context>
    <name>Listener</name>
    <message>
        <source>没有可用的声音输出设备</source>
        <translation>There is no sound output</translation>
    </message>
</context>
<context>
    <name>LogTableView</name>
    <message>
        <source>日志列表</source>
        <translation>Log rows</translation>
    </message>
</context>
<context>
    <name>LoginDialog</name>
    <message>
        <source>账号不能为空，请录入</source>
        <translation>Please enter your account.</translation>
    </message>
    <message>
        <source>密码不能为空，请录入</source>
        <translation>Please enter your password.</translation>
    </message>
    <message>
        <source>登录</source>
        <translation>Sign in</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>登      录</source>
        <translation>Sign in</translation>
    </message>
    <message>
        <source>手机号</source>
        <translation>Phone number</translation>
    </message>
    <message>
        <source>手机号(与手机客户端共用)</source>
        <translation>Phone number, as in the app</translation>
    </message>
    <message>
        <source>不再记住该账号</source>
        <translation>Forget this account</translation>
    </message>
    <message>
        <source>密    码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>记住密码</source>
        <translation>Remember password</translation>
    </message>
    <message>
        <source>自动登录</source>
        <translation>Sign in automatically</translation>
    </message>
    <message>
        <source>免费注册</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>忘记密码</source>
        <translation>Forgot password</translation>
    </message>
    <message>
        <source>绑定</source>
        <translation>Bind</translation>
    </message>
    <message>
        <source>代理设置</source>
        <translation>Proxy settings</translation>
    </message>
    <message>
        <source>首次使用：已填入内置账号，可直接登录。</source>
        <translation>First use: the built-in account is filled in, you can sign in.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>正在登录...</source>
        <translation>Signing in...</translation>
    </message>
</context>
<context>
    <name>Logs</name>
    <message>
        <source>报警日志</source>
        <translation>Alarm log</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>报警设备ID/IP</source>
        <translation>Device ID/IP</translation>
    </message>
    <message>
        <source>报警时间</source>
        <translation>Alarm time</translation>
    </message>
    <message>
        <source>报警类型</source>
        <translation>Alarm type</translation>
    </message>
    <message>
        <source>报警信息</source>
        <translation>Alarm message</translation>
    </message>
    <message>
        <source>登陆日志</source>
        <translation>Sign-in log</translation>
    </message>
    <message>
        <source>用户登录名</source>
        <translation>User</translation>
    </message>
    <message>
        <source>登入时间</source>
        <translation>Signed in</translation>
    </message>
    <message>
        <source>登出时间</source>
        <translation>Signed out</translation>
    </message>
    <message>
        <source>操作日志</source>
        <translation>Operation log</translation>
    </message>
    <message>
        <source>操作用户</source>
        <translation>User</translation>
    </message>
    <message>
        <source>操作时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>操作类型</source>
        <translation>Operation</translation>
    </message>
    <message>
        <source>操作信息</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>附加信息</source>
        <translation>More</translation>
    </message>
    <message>
        <source>错误日志</source>
        <translation>Error log</translation>
    </message>
    <message>
        <source>用户名</source>
        <translation>User name</translation>
    </message>
    <message>
        <source>发生时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>错误类型</source>
        <translation>Kind of error</translation>
    </message>
    <message>
        <source>错误信息</source>
        <translation>Error message</translation>
    </message>
</context>
<context>
    <name>MaintainConfigPage</name>
    <message>
        <source>重启设备</source>
        <translation>Restart the device</translation>
    </message>
    <message>
        <source>设备重启期间视频会中断，完成后自动恢复。</source>
        <translation>The video is interrupted during the restart and comes back by itself.</translation>
    </message>
    <message>
        <source>确定重启该设备?</source>
        <translation>Restart the device?</translation>
    </message>
    <message>
        <source>恢复出厂设置</source>
        <translation>Restore factory settings</translation>
    </message>
    <message>
        <source>所有参数恢复为出厂值，设备随后重启。</source>
        <translation>All parameters go back to factory values, and the device restarts.</translation>
    </message>
    <message>
        <source>确定将该设备恢复出厂设置?
所有参数将丢失，无法撤销。</source>
        <translation>Restore the device&apos;s factory settings?
All parameters are lost. This cannot be undone.</translation>
    </message>
    <message>
        <source>命令已发送，请稍候。</source>
        <translation>The command was sent. Please wait.</translation>
    </message>
</context>
<context>
    <name>ManageControl</name>
    <message>
        <source>确定删除以下%1个设备?</source>
        <translation>Delete these devices (%1)?</translation>
    </message>
    <message>
        <source>删除设备</source>
        <translation>Delete device</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>Manage_Friend_Dialog</name>
    <message>
        <source>好友管理</source>
        <translation>Friends</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>头像</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>手机号</source>
        <translation>Phone number</translation>
    </message>
    <message>
        <source>还没有好友，点击“添加”按手机号添加</source>
        <translation>There are no friends yet. Click &quot;Add&quot; to add one by phone number.</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>请选择要编辑的好友!</source>
        <translation>Please choose the friend to edit.</translation>
    </message>
    <message>
        <source>请选择要删除的好友!</source>
        <translation>Please choose the friend to delete.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>删除该好友后，所有分享给
该好友的设备从好友账户中解除，
好友分享给自己的设备也被解除!</source>
        <translation>When the friend is deleted, all devices that you share
with the friend leave the friend&apos;s account, and those
that the friend shares with you leave yours.</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>删除好友成功!</source>
        <translation>The friend has been deleted.</translation>
    </message>
</context>
<context>
    <name>Manage_Groups_Dialog</name>
    <message>
        <source>分组管理</source>
        <translation>Groups</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>还没有分组，点击“新增”新建一个</source>
        <translation>There are no groups yet. Click &quot;Add&quot; to make one.</translation>
    </message>
    <message>
        <source>新增</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>请选择要编辑的分组!</source>
        <translation>Please choose the group to edit.</translation>
    </message>
    <message>
        <source>请选择要删除的分组!</source>
        <translation>Please choose the group to delete.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定要删除选中的分组？确认
该分组下设备已经删除或移动到
其它组！否则将无法删除该分组！</source>
        <translation>Delete the chosen group? Its devices must have been
deleted or moved to another group before, otherwise
the group cannot be deleted.</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>删除分组成功!</source>
        <translation>The group has been deleted.</translation>
    </message>
</context>
<context>
    <name>MapLabel</name>
    <message>
        <source>%1（异常）</source>
        <translation>%1 (abnormal)</translation>
    </message>
    <message>
        <source>时间:%1</source>
        <translation>Time: %1</translation>
    </message>
</context>
<context>
    <name>MapRules</name>
    <message>
        <source>请输入实际距离!</source>
        <translation>Please enter the real width and height.</translation>
    </message>
    <message>
        <source>实际距离应为大于0的数字!</source>
        <translation>The real width and height must be numbers greater than 0.</translation>
    </message>
    <message>
        <source>参考点%1</source>
        <translation>Reference point %1</translation>
    </message>
    <message>
        <source>请输入地图名称!</source>
        <translation>Please enter the map&apos;s name.</translation>
    </message>
    <message>
        <source>请选择地图!</source>
        <translation>Please choose a map.</translation>
    </message>
    <message>
        <source>自定义地图</source>
        <translation>Custom map</translation>
    </message>
    <message>
        <source>在线地图</source>
        <translation>Online map</translation>
    </message>
    <message>
        <source>未知</source>
        <translation>Unknown</translation>
    </message>
    <message>
        <source>其他账号</source>
        <translation>Another account</translation>
    </message>
    <message>
        <source>本账号</source>
        <translation>This account</translation>
    </message>
    <message>
        <source>请输入显示名称!</source>
        <translation>Please enter the shown name.</translation>
    </message>
    <message>
        <source>经度应在-180到180之间!</source>
        <translation>The longitude must be -180 to 180.</translation>
    </message>
    <message>
        <source>纬度应在-90到90之间!</source>
        <translation>The latitude must be -90 to 90.</translation>
    </message>
    <message>
        <source>X坐标应在0到1之间!</source>
        <translation>The X coordinate must be 0 to 1.</translation>
    </message>
    <message>
        <source>Y坐标应在0到1之间!</source>
        <translation>The Y coordinate must be 0 to 1.</translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>消息栏</source>
        <translation>Message bar</translation>
    </message>
    <message>
        <source>关闭所有视频</source>
        <translation>Close all videos</translation>
    </message>
</context>
<context>
    <name>ModulePages</name>
    <message>
        <source>视频</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>回放</source>
        <translation>Playback</translation>
    </message>
    <message>
        <source>文件</source>
        <translation>Files</translation>
    </message>
    <message>
        <source>图表</source>
        <translation>Charts</translation>
    </message>
    <message>
        <source>电子地图</source>
        <translation>Maps</translation>
    </message>
    <message>
        <source>数据</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>日志</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>报警中心</source>
        <translation>Alarm centre</translation>
    </message>
</context>
<context>
    <name>MonitorMainUI</name>
    <message>
        <source>请确认设备[%1]在默认组[%2]中的索引小于%3</source>
        <translation>Please make sure that device [%1] has an index below %3 in the default group [%2]</translation>
    </message>
    <message>
        <source>请确认设备[%1]在左侧设备树中的索引小于%3,或将设备[%1]所在组设为默认组</source>
        <translation>Please make sure that device [%1] has an index below %3 in the device tree, or make the group of device [%1] the default group</translation>
    </message>
    <message>
        <source>主窗口</source>
        <translation>Main window</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定退出软件?</source>
        <translation>Quit the program?</translation>
    </message>
</context>
<context>
    <name>NetworkConfigPage</name>
    <message>
        <source>有线网络</source>
        <translation>Wired network</translation>
    </message>
    <message>
        <source>自动获取地址(DHCP)</source>
        <translation>Obtain the address by DHCP</translation>
    </message>
    <message>
        <source>IP地址</source>
        <translation>IP address</translation>
    </message>
    <message>
        <source>子网掩码</source>
        <translation>Netmask</translation>
    </message>
    <message>
        <source>网关</source>
        <translation>Gateway</translation>
    </message>
    <message>
        <source>DNS</source>
        <translation>DNS</translation>
    </message>
    <message>
        <source>MAC地址</source>
        <translation>MAC address</translation>
    </message>
    <message>
        <source>保存有线网络</source>
        <translation>Save wired network</translation>
    </message>
    <message>
        <source>无线网络</source>
        <translation>Wireless network</translation>
    </message>
    <message>
        <source>网络名称</source>
        <translation>Network name</translation>
    </message>
    <message>
        <source>无线网络名称</source>
        <translation>Name of the wireless network</translation>
    </message>
    <message>
        <source>加密方式</source>
        <translation>Encryption</translation>
    </message>
    <message>
        <source>WPA2</source>
        <translation>WPA2</translation>
    </message>
    <message>
        <source>WPA3</source>
        <translation>WPA3</translation>
    </message>
    <message>
        <source>开放</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>无线密码</source>
        <translation>Wireless password</translation>
    </message>
    <message>
        <source>信号强度</source>
        <translation>Signal strength</translation>
    </message>
    <message>
        <source>保存无线网络</source>
        <translation>Save wireless network</translation>
    </message>
    <message>
        <source>该设备不提供网络参数。</source>
        <translation>The device offers no network parameters.</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>NetworkPage</name>
    <message>
        <source>网络</source>
        <translation>Network</translation>
    </message>
    <message>
        <source>代理</source>
        <translation>Proxy</translation>
    </message>
    <message>
        <source>使用代理服务器</source>
        <translation>Use a proxy server</translation>
    </message>
    <message>
        <source>代理类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>服务器地址</source>
        <translation>Server address</translation>
    </message>
    <message>
        <source>端口</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>用户名</source>
        <translation>User name</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>不需要登录的代理服务器，用户名和密码留空</source>
        <translation>Leave user name and password empty where the proxy wants none</translation>
    </message>
</context>
<context>
    <name>NewDevice</name>
    <message>
        <source>%1过长!</source>
        <translation>%1 is too long.</translation>
    </message>
    <message>
        <source>%1不能包含控制字符!</source>
        <translation>%1 may not have control characters.</translation>
    </message>
    <message>
        <source>请输入设备编号!</source>
        <translation>Please enter the device number.</translation>
    </message>
    <message>
        <source>请输入设备验证码!</source>
        <translation>Please enter the device&apos;s code.</translation>
    </message>
    <message>
        <source>设备编号</source>
        <translation>Device number</translation>
    </message>
    <message>
        <source>设备验证码</source>
        <translation>Device code</translation>
    </message>
    <message>
        <source>请输入主码流地址!</source>
        <translation>Please enter the address of the main stream.</translation>
    </message>
    <message>
        <source>主码流地址</source>
        <translation>Address of the main stream</translation>
    </message>
    <message>
        <source>子码流地址</source>
        <translation>Address of the light stream</translation>
    </message>
    <message>
        <source>用户名</source>
        <translation>User name</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>请输入用户名!</source>
        <translation>Please enter the user name.</translation>
    </message>
    <message>
        <source>请输入设备名称!</source>
        <translation>Please enter the device&apos;s name.</translation>
    </message>
</context>
<context>
    <name>NewSet_Linkage_Dialog</name>
    <message>
        <source>联动设置</source>
        <translation>Linkage rules</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>联动策略名称</source>
        <translation>Rule name</translation>
    </message>
    <message>
        <source>条件</source>
        <translation>Conditions</translation>
    </message>
    <message>
        <source>条件关系</source>
        <translation>Relation</translation>
    </message>
    <message>
        <source>条件有效时长</source>
        <translation>Valid for</translation>
    </message>
    <message>
        <source>阀值等级</source>
        <translation>Level</translation>
    </message>
    <message>
        <source>动作</source>
        <translation>Actions</translation>
    </message>
    <message>
        <source>执行方式</source>
        <translation>Carried out</translation>
    </message>
    <message>
        <source>执行时间间隔</source>
        <translation>Interval</translation>
    </message>
    <message>
        <source>还没有联动策略，点击“新增”新建一个</source>
        <translation>No linkage rules yet. Click &quot;New&quot; to make one.</translation>
    </message>
    <message>
        <source>新增</source>
        <translation>New</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>请选择一个策略!</source>
        <translation>Please choose a rule.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定删除联动策略?</source>
        <translation>Delete the linkage rule?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>删除成功!</source>
        <translation>Deleted.</translation>
    </message>
</context>
<context>
    <name>NewSet_Notify_Dialog</name>
    <message>
        <source>编辑通知规则</source>
        <translation>Edit notification rule</translation>
    </message>
    <message>
        <source>新增通知规则</source>
        <translation>New notification rule</translation>
    </message>
    <message>
        <source>通知规则</source>
        <translation>Notification rules</translation>
    </message>
    <message>
        <source>短信模板</source>
        <translation>Text message template</translation>
    </message>
    <message>
        <source>APP模板</source>
        <translation>App template</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>通知策略名称</source>
        <translation>Rule name</translation>
    </message>
    <message>
        <source>接收人</source>
        <translation>Receivers</translation>
    </message>
    <message>
        <source>关注设备</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>接收通知类型</source>
        <translation>Notified of</translation>
    </message>
    <message>
        <source>接收方式</source>
        <translation>Notified by</translation>
    </message>
    <message>
        <source>短信接收等级</source>
        <translation>Levels by text message</translation>
    </message>
    <message>
        <source>APP接收等级</source>
        <translation>Levels by app</translation>
    </message>
    <message>
        <source>启用</source>
        <translation>Enabled</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>选择</source>
        <translation>Choose</translation>
    </message>
    <message>
        <source>插入</source>
        <translation>Insert</translation>
    </message>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>请先选择接收人!</source>
        <translation>Please choose receivers first.</translation>
    </message>
    <message>
        <source>没有可选的设备!</source>
        <translation>There are no devices to choose.</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
    <message>
        <source>选择%1</source>
        <translation>Choose: %1</translation>
    </message>
    <message>
        <source>%1%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1插入</source>
        <translation>%1: insert</translation>
    </message>
    <message>
        <source>%1预览</source>
        <translation>%1: preview</translation>
    </message>
</context>
<context>
    <name>NotifyRule</name>
    <message>
        <source>通知策略名称不能为空!</source>
        <translation>Please enter the rule&apos;s name.</translation>
    </message>
    <message>
        <source>接收人选择不能为空!</source>
        <translation>Please choose receivers.</translation>
    </message>
    <message>
        <source>关注设备选择不能为空!</source>
        <translation>Please choose devices.</translation>
    </message>
    <message>
        <source>通知类型选择不能为空!</source>
        <translation>Please choose what is notified of.</translation>
    </message>
    <message>
        <source>通知方式选择不能为空！!</source>
        <translation>Please choose how to notify.</translation>
    </message>
    <message>
        <source>短信接收等级和APP接收等级
至少选择一种!</source>
        <translation>Please choose at least one level
by text message or by app.</translation>
    </message>
    <message>
        <source>本机</source>
        <translation>This account</translation>
    </message>
</context>
<context>
    <name>OnlineMapPage</name>
    <message>
        <source>地图</source>
        <translation>Maps</translation>
    </message>
    <message>
        <source>在线地图</source>
        <translation>Online map</translation>
    </message>
    <message>
        <source>地图服务器</source>
        <translation>Map server</translation>
    </message>
    <message>
        <source>留空则使用内置地图；修改后重新打开地图时生效</source>
        <translation>Empty: the built-in map. A change takes effect when a map is opened again.</translation>
    </message>
    <message>
        <source>https://主机/{z}/{x}/{y}.png</source>
        <translation>https://host/{z}/{x}/{y}.png</translation>
    </message>
</context>
<context>
    <name>PageBar</name>
    <message>
        <source>分页栏</source>
        <translation>Page bar</translation>
    </message>
    <message>
        <source>每页行数</source>
        <translation>Rows a page</translation>
    </message>
    <message>
        <source>%1 行/页</source>
        <translation>%1 rows a page</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
    <message>
        <source>第一页</source>
        <translation>First page</translation>
    </message>
    <message>
        <source>上一页</source>
        <translation>Previous page</translation>
    </message>
    <message>
        <source>页码</source>
        <translation>Page number</translation>
    </message>
    <message>
        <source>下一页</source>
        <translation>Next page</translation>
    </message>
    <message>
        <source>最后一页</source>
        <translation>Last page</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
</context>
<context>
    <name>ParameterConfigPage</name>
    <message>
        <source>正在获取画面…</source>
        <translation>Getting the picture…</translation>
    </message>
    <message>
        <source>还原</source>
        <translation>Restore</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>PartList</name>
    <message>
        <source>新建</source>
        <translation>New</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
</context>
<context>
    <name>PersonalInformationDialog</name>
    <message>
        <source>个人信息</source>
        <translation>Personal information</translation>
    </message>
    <message>
        <source>修改密码</source>
        <translation>Change password</translation>
    </message>
    <message>
        <source>解除绑定</source>
        <translation>Unbind</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>当前登录账户：</source>
        <translation>Signed in as:</translation>
    </message>
    <message>
        <source>昵称</source>
        <translation>Nickname</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>保存昵称</source>
        <translation>Save nickname</translation>
    </message>
    <message>
        <source>昵称：</source>
        <translation>Nickname:</translation>
    </message>
    <message>
        <source>头  像</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>头像</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation>Choose file</translation>
    </message>
    <message>
        <source>保存头像</source>
        <translation>Save picture</translation>
    </message>
    <message>
        <source>图片大小：小于1M</source>
        <translation>Size: less than 1 MB</translation>
    </message>
    <message>
        <source>图片格式：png/jpg</source>
        <translation>Format: PNG or JPG</translation>
    </message>
    <message>
        <source>请输入昵称!</source>
        <translation>Please enter a nickname.</translation>
    </message>
    <message>
        <source>设置昵称成功!</source>
        <translation>The nickname has been saved.</translation>
    </message>
    <message>
        <source>选择图像</source>
        <translation>Choose picture</translation>
    </message>
    <message>
        <source>保存头像成功!</source>
        <translation>The picture has been saved.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定解除和当前电脑的绑定？</source>
        <translation>Unbind the account from this computer?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>解除绑定成功!</source>
        <translation>The account is no longer bound to this computer.</translation>
    </message>
</context>
<context>
    <name>PhoneFlow</name>
    <message>
        <source>注册账号</source>
        <translation>Register account</translation>
    </message>
    <message>
        <source>选择国家地区，输入手机号。</source>
        <translation>Choose your country or region and enter your phone number.</translation>
    </message>
    <message>
        <source>请输入手机号!</source>
        <translation>Please enter your phone number.</translation>
    </message>
    <message>
        <source>输入手机收到的验证码。</source>
        <translation>Enter the code that your phone has received.</translation>
    </message>
    <message>
        <source>请先获取验证码!</source>
        <translation>Please get a code first.</translation>
    </message>
    <message>
        <source>请输入验证码!</source>
        <translation>Please enter the code.</translation>
    </message>
    <message>
        <source>验证码已超时!</source>
        <translation>The code has expired.</translation>
    </message>
    <message>
        <source>输入的验证码不正确</source>
        <translation>The code is not correct.</translation>
    </message>
    <message>
        <source>输入账户登录密码。</source>
        <translation>Enter a password for signing in.</translation>
    </message>
    <message>
        <source>输入密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>再次输入密码</source>
        <translation>Repeat password</translation>
    </message>
    <message>
        <source>注册成功！现在是否要登录？是，请点击登录，否，请点击关闭。</source>
        <translation>You have registered. To sign in now, click Sign in, otherwise Close.</translation>
    </message>
    <message>
        <source>该手机已注册!</source>
        <translation>This phone number is registered already.</translation>
    </message>
    <message>
        <source>找回密码</source>
        <translation>Recover password</translation>
    </message>
    <message>
        <source>输入手机号。</source>
        <translation>Enter your phone number.</translation>
    </message>
    <message>
        <source>手机号为空，请输入正确的手机号!</source>
        <translation>Please enter a valid phone number.</translation>
    </message>
    <message>
        <source>输入账户新的登录密码。</source>
        <translation>Enter a new password for signing in.</translation>
    </message>
    <message>
        <source>输入新密码</source>
        <translation>New password</translation>
    </message>
    <message>
        <source>再次输入新密码</source>
        <translation>Repeat new password</translation>
    </message>
    <message>
        <source>密码修改成功！现在是否要登录？是，请点击登录，否，请点击关闭。</source>
        <translation>The password has been changed. To sign in now, click Sign in, otherwise Close.</translation>
    </message>
    <message>
        <source>该手机未注册!</source>
        <translation>This phone number is not registered.</translation>
    </message>
    <message>
        <source>修改密码</source>
        <translation>Change password</translation>
    </message>
    <message>
        <source>验证码将发送到当前登录账户的手机。</source>
        <translation>The code will be sent to the phone of the account that is signed in.</translation>
    </message>
    <message>
        <source>验证码输入为空，请先获取验证码!</source>
        <translation>The code is empty. Please get a code first.</translation>
    </message>
    <message>
        <source>密码修改成功！</source>
        <translation>The password has been changed.</translation>
    </message>
    <message>
        <source>重新绑定电脑</source>
        <translation>Bind computer again</translation>
    </message>
    <message>
        <source>验证码超时!</source>
        <translation>The code has expired.</translation>
    </message>
    <message>
        <source>输入的验证码不正确!</source>
        <translation>The code is not correct.</translation>
    </message>
    <message>
        <source>绑定成功！现在是否要登录？是，请点击登录，否，请点击关闭。</source>
        <translation>The computer is bound. To sign in now, click Sign in, otherwise Close.</translation>
    </message>
    <message>
        <source>手机号格式不正确，请输入5~20位数字!</source>
        <translation>The phone number is not valid. Please enter 5 to 20 digits.</translation>
    </message>
    <message>
        <source>密码不能为空</source>
        <translation>Please enter a password.</translation>
    </message>
    <message>
        <source>两次输入的密码不一致</source>
        <translation>The two passwords differ.</translation>
    </message>
    <message>
        <source>密码长度为8~16位</source>
        <translation>The password must have 8 to 16 characters.</translation>
    </message>
    <message>
        <source>中国大陆 +86</source>
        <translation>Mainland China +86</translation>
    </message>
    <message>
        <source>香港</source>
        <translation>Hong Kong</translation>
    </message>
    <message>
        <source>澳门</source>
        <translation>Macao</translation>
    </message>
    <message>
        <source>台湾</source>
        <translation>Taiwan</translation>
    </message>
    <message>
        <source>美国</source>
        <translation>United States</translation>
    </message>
</context>
<context>
    <name>PhoneFlowDialog</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>登录</source>
        <translation>Sign in</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>PhoneFlowPages</name>
    <message>
        <source>上一步</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>下一步</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>国家地区</source>
        <translation>Country or region</translation>
    </message>
    <message>
        <source>手机号</source>
        <translation>Phone number</translation>
    </message>
    <message>
        <source>验证码</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>8~16位</source>
        <translation>8 to 16 characters</translation>
    </message>
    <message>
        <source>提交</source>
        <translation>Submit</translation>
    </message>
</context>
<context>
    <name>PictureFile</name>
    <message>
        <source>图片文件不存在</source>
        <translation>The picture file does not exist</translation>
    </message>
    <message>
        <source>图片过大</source>
        <translation>The picture is too large</translation>
    </message>
    <message>
        <source>无法读取该图片</source>
        <translation>The picture cannot be read</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Pictures</translation>
    </message>
</context>
<context>
    <name>PictureView</name>
    <message>
        <source>图片</source>
        <translation>Picture</translation>
    </message>
</context>
<context>
    <name>PictureViewer</name>
    <message>
        <source>图片</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>上一张</source>
        <translation>Previous</translation>
    </message>
    <message>
        <source>下一张</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>图片无法显示</source>
        <translation>The picture cannot be shown</translation>
    </message>
    <message>
        <source>文件已不存在</source>
        <translation>The file is gone</translation>
    </message>
    <message>
        <source>正在读取...</source>
        <translation>Reading...</translation>
    </message>
    <message>
        <source>原始大小 (%1%)</source>
        <translation>Original size (%1%)</translation>
    </message>
    <message>
        <source>适合窗口 (%1%)</source>
        <translation>Fit to window (%1%)</translation>
    </message>
</context>
<context>
    <name>Playback</name>
    <message>
        <source>上一段录像</source>
        <translation>Previous recording</translation>
    </message>
    <message>
        <source>后退一帧</source>
        <translation>One frame back</translation>
    </message>
    <message>
        <source>播放</source>
        <translation>Play</translation>
    </message>
    <message>
        <source>前进一帧</source>
        <translation>One frame forward</translation>
    </message>
    <message>
        <source>下一段录像</source>
        <translation>Next recording</translation>
    </message>
    <message>
        <source>减速</source>
        <translation>Slower</translation>
    </message>
    <message>
        <source>加速</source>
        <translation>Faster</translation>
    </message>
    <message>
        <source>标记开始</source>
        <translation>Mark the beginning</translation>
    </message>
    <message>
        <source>标记结束</source>
        <translation>Mark the end</translation>
    </message>
    <message>
        <source>导出标记的片段</source>
        <translation>Export the marked clip</translation>
    </message>
    <message>
        <source>抓拍画面</source>
        <translation>Take a snapshot</translation>
    </message>
    <message>
        <source>跳过无录像的时段</source>
        <translation>Skip times without recordings</translation>
    </message>
    <message>
        <source>打开文件</source>
        <translation>Open files</translation>
    </message>
    <message>
        <source>关闭回放</source>
        <translation>Close playback</translation>
    </message>
    <message>
        <source>后退10秒</source>
        <translation>10 s back</translation>
    </message>
    <message>
        <source>前进10秒</source>
        <translation>10 s forward</translation>
    </message>
    <message>
        <source>到开头</source>
        <translation>To the beginning</translation>
    </message>
    <message>
        <source>到结尾</source>
        <translation>To the end</translation>
    </message>
    <message>
        <source>放大或还原画面</source>
        <translation>Enlarge or restore the picture</translation>
    </message>
    <message>
        <source>空格</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>%1（%2）</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>PollDraft</name>
    <message>
        <source>轮屏%1</source>
        <translation>Polling %1</translation>
    </message>
</context>
<context>
    <name>PollEditor</name>
    <message>
        <source>条目</source>
        <translation>Entries</translation>
    </message>
    <message>
        <source>轮屏条目</source>
        <translation>Polling entries</translation>
    </message>
    <message>
        <source>添加条目</source>
        <translation>Add entry</translation>
    </message>
    <message>
        <source>重命名(F2)</source>
        <translation>Rename (F2)</translation>
    </message>
    <message>
        <source>删除条目(Delete)</source>
        <translation>Delete entry (Delete)</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>可选设备</source>
        <translation>Cameras to choose</translation>
    </message>
    <message>
        <source>按分组生成</source>
        <translation>Make from groups</translation>
    </message>
    <message>
        <source>按分组生成条目</source>
        <translation>Make entries from groups</translation>
    </message>
    <message>
        <source>为每个分组添加一个条目</source>
        <translation>Adds an entry for each group</translation>
    </message>
    <message>
        <source>显示顺序</source>
        <translation>Order</translation>
    </message>
    <message>
        <source>条目中的设备</source>
        <translation>Cameras of the entry</translation>
    </message>
    <message>
        <source>移出设备(Delete)</source>
        <translation>Remove camera (Delete)</translation>
    </message>
    <message>
        <source>%1(不存在)</source>
        <translation>%1 (missing)</translation>
    </message>
    <message>
        <source>还没有摄像机：登录后可以选择</source>
        <translation>No cameras yet: sign in to choose</translation>
    </message>
    <message>
        <source>还没有条目：添加一个，或按分组生成</source>
        <translation>No entries yet: add one, or make them from the groups</translation>
    </message>
    <message>
        <source>未分组</source>
        <translation>No group</translation>
    </message>
    <message>
        <source>没有可添加的分组：分组没有摄像机，或已有同名条目</source>
        <translation>No group to add: groups have no cameras, or there are entries of their names</translation>
    </message>
    <message>
        <source>已添加%1个条目</source>
        <translation>Entries added: %1</translation>
    </message>
</context>
<context>
    <name>PollPage</name>
    <message>
        <source>轮屏</source>
        <translation>Polling</translation>
    </message>
    <message>
        <source>轮屏方式</source>
        <translation>Way of polling</translation>
    </message>
    <message>
        <source>轮屏时间</source>
        <translation>Interval</translation>
    </message>
    <message>
        <source>秒</source>
        <translation>s</translation>
    </message>
    <message>
        <source>轮屏模式</source>
        <translation>Mode</translation>
    </message>
    <message>
        <source>轮屏视频通道</source>
        <translation>Poll videos</translation>
    </message>
    <message>
        <source>轮屏图片预览</source>
        <translation>Poll preview pictures</translation>
    </message>
    <message>
        <source>轮屏列表</source>
        <translation>Polling list</translation>
    </message>
</context>
<context>
    <name>PollRunner</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>正在轮屏，是否停止轮屏?</source>
        <translation>The polling is running. Stop it?</translation>
    </message>
    <message>
        <source>还没有轮屏列表，请先在设置中添加</source>
        <translation>There is no polling list yet. Please add one in the settings.</translation>
    </message>
</context>
<context>
    <name>PortPicker</name>
    <message>
        <source>传感器</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>请选择传感器!</source>
        <translation>Please choose a sensor.</translation>
    </message>
</context>
<context>
    <name>ProxyDialog</name>
    <message>
        <source>代理设置</source>
        <translation>Proxy settings</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>PtzCruisePage</name>
    <message>
        <source>巡航路线</source>
        <translation>Cruise</translation>
    </message>
    <message>
        <source>巡航名称</source>
        <translation>Cruise name</translation>
    </message>
    <message>
        <source>巡航点</source>
        <translation>Cruise points</translation>
    </message>
    <message>
        <source>预置位</source>
        <translation>Preset</translation>
    </message>
    <message>
        <source>停留(秒)</source>
        <translation>Stay (s)</translation>
    </message>
    <message>
        <source>停留秒数</source>
        <translation>Seconds to stay</translation>
    </message>
    <message>
        <source>路线</source>
        <translation>Cruise</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>保存路线</source>
        <translation>Save cruise</translation>
    </message>
    <message>
        <source>删除路线</source>
        <translation>Delete cruise</translation>
    </message>
    <message>
        <source>开始巡航</source>
        <translation>Start cruise</translation>
    </message>
    <message>
        <source>停止巡航</source>
        <translation>Stop cruise</translation>
    </message>
    <message>
        <source>(空)</source>
        <translation>(empty)</translation>
    </message>
    <message>
        <source>(已删除)</source>
        <translation>(deleted)</translation>
    </message>
    <message>
        <source>请输入名称!</source>
        <translation>Please enter a name.</translation>
    </message>
    <message>
        <source>请至少添加一个巡航点!</source>
        <translation>Please add at least one cruise point.</translation>
    </message>
    <message>
        <source>%1（正在巡航）</source>
        <translation>%1 (running)</translation>
    </message>
</context>
<context>
    <name>PtzDialog</name>
    <message>
        <source>云台设置</source>
        <translation>PTZ settings</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>预置位</source>
        <translation>Presets</translation>
    </message>
    <message>
        <source>巡航</source>
        <translation>Cruises</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>该设备没有云台。</source>
        <translation>The device has no PTZ.</translation>
    </message>
    <message>
        <source>正在巡航：路线%1</source>
        <translation>Cruising: cruise %1</translation>
    </message>
    <message>
        <source>按住按钮转动，松开停止。</source>
        <translation>Hold a button to move, release it to stop.</translation>
    </message>
</context>
<context>
    <name>PtzPad</name>
    <message>
        <source>云台控制</source>
        <translation>PTZ control</translation>
    </message>
    <message>
        <source>放大</source>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>云台设置</source>
        <translation>PTZ settings</translation>
    </message>
    <message>
        <source>聚焦近</source>
        <translation>Focus near</translation>
    </message>
    <message>
        <source>聚焦远</source>
        <translation>Focus far</translation>
    </message>
    <message>
        <source>光圈开</source>
        <translation>Open iris</translation>
    </message>
    <message>
        <source>光圈关</source>
        <translation>Close iris</translation>
    </message>
    <message>
        <source>左上</source>
        <translation>Up left</translation>
    </message>
    <message>
        <source>上</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>右上</source>
        <translation>Up right</translation>
    </message>
    <message>
        <source>左</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>回到初始位置</source>
        <translation>Home position</translation>
    </message>
    <message>
        <source>右</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>左下</source>
        <translation>Down left</translation>
    </message>
    <message>
        <source>下</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>右下</source>
        <translation>Down right</translation>
    </message>
</context>
<context>
    <name>PtzPresetPage</name>
    <message>
        <source>预置位列表</source>
        <translation>Presets</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>预置位编号</source>
        <translation>Preset number</translation>
    </message>
    <message>
        <source>预置位名称</source>
        <translation>Preset name</translation>
    </message>
    <message>
        <source>设为当前位置</source>
        <translation>Set to this position</translation>
    </message>
    <message>
        <source>转到</source>
        <translation>Go to</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>请输入名称!</source>
        <translation>Please enter a name.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定删除预置位%1?</source>
        <translation>Delete preset %1?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Open</translation>
    </message>
</context>
<context>
    <name>QrDraft</name>
    <message>
        <source>请先标定摄像机参数!</source>
        <translation>Please calibrate the camera first.</translation>
    </message>
    <message>
        <source>请输入正确的二维码宽度!</source>
        <translation>Please enter the QR code&apos;s width correctly.</translation>
    </message>
    <message>
        <source>请先确定二维码初始位置!</source>
        <translation>Please set the QR code&apos;s initial position first.</translation>
    </message>
</context>
<context>
    <name>RecordControl</name>
    <message>
        <source>抓拍失败：没有可用的存储空间</source>
        <translation>No snapshot: there is no room on the drives</translation>
    </message>
    <message>
        <source>已抓拍：%1</source>
        <translation>Snapshot: %1</translation>
    </message>
    <message>
        <source>抓拍失败(%1)</source>
        <translation>The snapshot failed (%1)</translation>
    </message>
    <message>
        <source>抓拍失败：%1</source>
        <translation>The snapshot failed: %1</translation>
    </message>
</context>
<context>
    <name>RecordMark</name>
    <message>
        <source>正在录像 %1</source>
        <translation>Recording %1</translation>
    </message>
    <message>
        <source>等待录像</source>
        <translation>Waiting to record</translation>
    </message>
</context>
<context>
    <name>RecordPage</name>
    <message>
        <source>录像</source>
        <translation>Recording</translation>
    </message>
    <message>
        <source>录像文件</source>
        <translation>Recording files</translation>
    </message>
    <message>
        <source>录像打包时间</source>
        <translation>File length</translation>
    </message>
    <message>
        <source>分钟</source>
        <translation>min</translation>
    </message>
    <message>
        <source>磁盘</source>
        <translation>Drives</translation>
    </message>
    <message>
        <source>磁盘跳转阈值</source>
        <translation>Free space to keep</translation>
    </message>
    <message>
        <source>剩余空间不足时，录像转到下一个盘符；未勾选盘符时自动选择</source>
        <translation>Without enough free space recording goes on to the next drive. With none ticked a drive is chosen by itself.</translation>
    </message>
</context>
<context>
    <name>Recorder</name>
    <message>
        <source>%1 录像失败(%2)</source>
        <translation>%1: recording failed (%2)</translation>
    </message>
    <message>
        <source>%1 录像磁盘不可用：%2</source>
        <translation>%1: the drive is not available: %2</translation>
    </message>
    <message>
        <source>%1 录像暂停：没有可用的存储空间</source>
        <translation>%1: recording waits, there is no room on the drives</translation>
    </message>
    <message>
        <source>%1 录像文件无法创建：%2</source>
        <translation>%1: the recording could not be created: %2</translation>
    </message>
    <message>
        <source>%1 录像文件未能完整保存：%2</source>
        <translation>%1: the recording could not be saved whole: %2</translation>
    </message>
    <message>
        <source>%1 录像文件已达到最大长度：%2</source>
        <translation>%1: the recording has reached its greatest length: %2</translation>
    </message>
    <message>
        <source>%1 录像写入失败，将转到下一个磁盘：%2</source>
        <translation>%1: writing failed, recording goes on with the next drive: %2</translation>
    </message>
</context>
<context>
    <name>RenameDialog</name>
    <message>
        <source>重命名</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>Device name</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>请输入名称!</source>
        <translation>Please enter a name.</translation>
    </message>
</context>
<context>
    <name>SMSManageDialog</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>接收人</source>
        <translation>Receiver</translation>
    </message>
    <message>
        <source>手机号</source>
        <translation>Phone number</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>内容</source>
        <translation>Content</translation>
    </message>
    <message>
        <source>报警</source>
        <translation>Alarm</translation>
    </message>
    <message>
        <source>验证码</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>成功</source>
        <translation>Sent</translation>
    </message>
    <message>
        <source>失败</source>
        <translation>Failed</translation>
    </message>
    <message>
        <source>余额不足</source>
        <translation>No messages left</translation>
    </message>
    <message>
        <source>短信管理</source>
        <translation>Text messages</translation>
    </message>
    <message>
        <source>基本信息</source>
        <translation>General</translation>
    </message>
    <message>
        <source>发送记录</source>
        <translation>Sent messages</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>剩余短信条数</source>
        <translation>Messages left</translation>
    </message>
    <message>
        <source>提醒手机号</source>
        <translation>Reminder goes to</translation>
    </message>
    <message>
        <source>提醒设定值</source>
        <translation>Remind below</translation>
    </message>
    <message>
        <source>小于设定值短信提醒充值</source>
        <translation>A text message reminds you when fewer are left</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>保存提醒</source>
        <translation>Save reminder</translation>
    </message>
    <message>
        <source>还没有发送记录</source>
        <translation>Nothing has been sent yet</translation>
    </message>
    <message>
        <source>上一步</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>下一步</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>%1 条</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>SdCardConfigPage</name>
    <message>
        <source>容量</source>
        <translation>Capacity</translation>
    </message>
    <message>
        <source>SD卡已用空间</source>
        <translation>Used space of the SD card</translation>
    </message>
    <message>
        <source>格式化</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>文件</source>
        <translation>Files</translation>
    </message>
    <message>
        <source>下载失败</source>
        <translation>Download failed</translation>
    </message>
    <message>
        <source>上一级</source>
        <translation>Up one level</translation>
    </message>
    <message>
        <source>文件类型</source>
        <translation>File type</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
    <message>
        <source>录像</source>
        <translation>Recordings</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Pictures</translation>
    </message>
    <message>
        <source>日期</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>查询</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>SD卡文件</source>
        <translation>Files on the SD card</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>大小</source>
        <translation>Size</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>下载进度</source>
        <translation>Download progress</translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation>Cancel download</translation>
    </message>
    <message>
        <source>已取消</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>下载</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>没有SD卡</source>
        <translation>No SD card</translation>
    </message>
    <message>
        <source>已用%1，剩余%2</source>
        <translation>%1 used, %2 free</translation>
    </message>
    <message>
        <source>日期格式应为 年-月-日，例如2026-01-31!</source>
        <translation>The date must be written year-month-day, such as 2026-01-31.</translation>
    </message>
    <message>
        <source>文件夹</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>保存文件</source>
        <translation>Save file</translation>
    </message>
    <message>
        <source>所有文件 (*)</source>
        <translation>All files (*)</translation>
    </message>
    <message>
        <source>下载完成</source>
        <translation>Download complete</translation>
    </message>
    <message>
        <source>确定删除SD卡上的%1个文件?</source>
        <translation>Delete the chosen files (%1) from the SD card?</translation>
    </message>
    <message>
        <source>%1个文件没有删除!</source>
        <translation>Files that were not deleted: %1</translation>
    </message>
    <message>
        <source>确定格式化SD卡?
卡上的所有文件将丢失，无法恢复。</source>
        <translation>Format the SD card?
All files on it are lost and cannot be restored.</translation>
    </message>
    <message>
        <source>格式化完成!</source>
        <translation>Formatted.</translation>
    </message>
</context>
<context>
    <name>SendAndReact</name>
    <message>
        <source>请求发送失败!</source>
        <translation>The request could not be sent.</translation>
    </message>
</context>
<context>
    <name>SensorTypes</name>
    <message>
        <source>请选择%1!</source>
        <translation>Please choose: %1</translation>
    </message>
    <message>
        <source>%1过长!</source>
        <translation>%1 is too long.</translation>
    </message>
    <message>
        <source>%1应为整数!</source>
        <translation>%1 must be a whole number.</translation>
    </message>
    <message>
        <source>%1应为数字!</source>
        <translation>%1 must be a number.</translation>
    </message>
    <message>
        <source>%1应在%2到%3之间!</source>
        <translation>%1 must lie between %2 and %3.</translation>
    </message>
</context>
<context>
    <name>ServerErrors</name>
    <message>
        <source>服务器不支持该操作!</source>
        <translation>The server does not support this operation.</translation>
    </message>
    <message>
        <source>请求内容有误!</source>
        <translation>The request is not valid.</translation>
    </message>
    <message>
        <source>当前未登录，请先登录!</source>
        <translation>You are not signed in. Please sign in first.</translation>
    </message>
    <message>
        <source>该手机号未注册!</source>
        <translation>This phone number is not registered.</translation>
    </message>
    <message>
        <source>账号或密码错误!</source>
        <translation>Wrong account or password.</translation>
    </message>
    <message>
        <source>没有该操作的权限!</source>
        <translation>You do not have the right to do this.</translation>
    </message>
    <message>
        <source>设备不存在!</source>
        <translation>The device does not exist.</translation>
    </message>
    <message>
        <source>分组不存在!</source>
        <translation>The group does not exist.</translation>
    </message>
    <message>
        <source>分组下还有设备，无法删除!</source>
        <translation>The group still has devices and cannot be deleted.</translation>
    </message>
    <message>
        <source>设备不在线!</source>
        <translation>The device is offline.</translation>
    </message>
    <message>
        <source>尝试次数过多，请稍后再试!</source>
        <translation>Too many attempts. Please try again later.</translation>
    </message>
    <message>
        <source>该账号已与当前电脑解除绑定，请重新绑定!</source>
        <translation>This account is no longer bound to this computer. Please bind it again.</translation>
    </message>
    <message>
        <source>该手机已注册!</source>
        <translation>This phone number is registered already.</translation>
    </message>
    <message>
        <source>输入的验证码不正确</source>
        <translation>The code is not correct</translation>
    </message>
    <message>
        <source>验证码已超时!</source>
        <translation>The code has expired.</translation>
    </message>
    <message>
        <source>该用户不是您的好友!</source>
        <translation>This user is not your friend.</translation>
    </message>
    <message>
        <source>该用户已经是您的好友,无需重复添加!</source>
        <translation>This user is your friend already.</translation>
    </message>
    <message>
        <source>该设备已被添加!</source>
        <translation>The device has been added already.</translation>
    </message>
    <message>
        <source>文件无法读取或格式不正确!</source>
        <translation>The file cannot be read or has the wrong format.</translation>
    </message>
    <message>
        <source>服务器数据保存失败!</source>
        <translation>The server could not save the data.</translation>
    </message>
    <message>
        <source>短信发送失败，请稍后再试!</source>
        <translation>The text message could not be sent. Please try again later.</translation>
    </message>
    <message>
        <source>验证码发送过于频繁，请稍后再试!</source>
        <translation>Too many codes were sent. Please try again later.</translation>
    </message>
    <message>
        <source>不能添加自己为好友!</source>
        <translation>You cannot add yourself as a friend.</translation>
    </message>
    <message>
        <source>设备验证码错误!</source>
        <translation>The device&apos;s code is wrong.</translation>
    </message>
    <message>
        <source>摄像机的用户名或密码错误!</source>
        <translation>Wrong user name or password of the camera.</translation>
    </message>
    <message>
        <source>摄像机时间与本机相差过大，请先校时!</source>
        <translation>The camera&apos;s clock differs too much from this computer&apos;s. Please set it first.</translation>
    </message>
    <message>
        <source>摄像机拒绝了请求!</source>
        <translation>The camera refused the request.</translation>
    </message>
    <message>
        <source>摄像机没有可用的视频流!</source>
        <translation>The camera has no usable video stream.</translation>
    </message>
    <message>
        <source>正被联动策略使用，无法删除!</source>
        <translation>A linkage rule uses it. It cannot be deleted.</translation>
    </message>
    <message>
        <source>采集输入或控制输出不存在!</source>
        <translation>The input or output does not exist.</translation>
    </message>
    <message>
        <source>控制输出写入失败!</source>
        <translation>The output could not be switched.</translation>
    </message>
    <message>
        <source>数量已达上限!</source>
        <translation>The limit has been reached.</translation>
    </message>
    <message>
        <source>非主账号无操作权限!</source>
        <translation>Only the main account may do this.</translation>
    </message>
    <message>
        <source>请先删除该地图上的所有标记点!</source>
        <translation>Please delete all markers of this map first.</translation>
    </message>
    <message>
        <source>地图不存在!</source>
        <translation>The map does not exist.</translation>
    </message>
    <message>
        <source>标记点不存在!</source>
        <translation>The marker does not exist.</translation>
    </message>
    <message>
        <source>已有同名文件!</source>
        <translation>There is a file of this name already.</translation>
    </message>
    <message>
        <source>Http请求返回未发现文件404</source>
        <translation>The HTTP server does not have the file (404)</translation>
    </message>
    <message>
        <source>Http请求服务器返回出错</source>
        <translation>The HTTP server answered with an error</translation>
    </message>
    <message>
        <source>操作失败(%1)</source>
        <translation>The operation failed (%1)</translation>
    </message>
    <message>
        <source>服务器没有响应，请稍后再试!</source>
        <translation>The server does not answer. Please try again later.</translation>
    </message>
</context>
<context>
    <name>ServiceWords</name>
    <message>
        <source>01 读线圈</source>
        <translation>01 Read coils</translation>
    </message>
    <message>
        <source>02 读离散输入</source>
        <translation>02 Read discrete inputs</translation>
    </message>
    <message>
        <source>03 读保持寄存器</source>
        <translation>03 Read holding registers</translation>
    </message>
    <message>
        <source>04 读输入寄存器</source>
        <translation>04 Read input registers</translation>
    </message>
    <message>
        <source>05 写线圈</source>
        <translation>05 Write coil</translation>
    </message>
    <message>
        <source>06 写单个寄存器</source>
        <translation>06 Write single register</translation>
    </message>
    <message>
        <source>16 写多个寄存器</source>
        <translation>16 Write multiple registers</translation>
    </message>
    <message>
        <source>16位无符号</source>
        <translation>16 bits, unsigned</translation>
    </message>
    <message>
        <source>16位有符号</source>
        <translation>16 bits, signed</translation>
    </message>
    <message>
        <source>32位无符号</source>
        <translation>32 bits, unsigned</translation>
    </message>
    <message>
        <source>32位有符号</source>
        <translation>32 bits, signed</translation>
    </message>
    <message>
        <source>32位浮点</source>
        <translation>32 bits, floating point</translation>
    </message>
    <message>
        <source>GPIO 芯片或目录</source>
        <translation>GPIO chip or folder</translation>
    </message>
    <message>
        <source>上</source>
        <translation>Top</translation>
    </message>
    <message>
        <source>串口</source>
        <translation>Serial port</translation>
    </message>
    <message>
        <source>串口 Modbus RTU</source>
        <translation>Serial Modbus RTU</translation>
    </message>
    <message>
        <source>主机</source>
        <translation>Host</translation>
    </message>
    <message>
        <source>主题</source>
        <translation>Topic</translation>
    </message>
    <message>
        <source>二维码</source>
        <translation>QR code</translation>
    </message>
    <message>
        <source>亮度</source>
        <translation>Brightness</translation>
    </message>
    <message>
        <source>从站地址</source>
        <translation>Slave address</translation>
    </message>
    <message>
        <source>位</source>
        <translation>Bit</translation>
    </message>
    <message>
        <source>停止位</source>
        <translation>Stop bits</translation>
    </message>
    <message>
        <source>偶校验</source>
        <translation>Even</translation>
    </message>
    <message>
        <source>功能码</source>
        <translation>Function code</translation>
    </message>
    <message>
        <source>取反</source>
        <translation>Invert</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>坐标</source>
        <translation>Coordinate</translation>
    </message>
    <message>
        <source>奇校验</source>
        <translation>Odd</translation>
    </message>
    <message>
        <source>字节顺序</source>
        <translation>Byte order</translation>
    </message>
    <message>
        <source>定位传感器</source>
        <translation>Position sensor</translation>
    </message>
    <message>
        <source>宽</source>
        <translation>Width</translation>
    </message>
    <message>
        <source>寄存器地址</source>
        <translation>Register address</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>左</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>引脚</source>
        <translation>Pin</translation>
    </message>
    <message>
        <source>数据位</source>
        <translation>Data bits</translation>
    </message>
    <message>
        <source>数据格式</source>
        <translation>Data format</translation>
    </message>
    <message>
        <source>数据键</source>
        <translation>Data key</translation>
    </message>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>服务器</source>
        <translation>Server</translation>
    </message>
    <message>
        <source>校验</source>
        <translation>Parity</translation>
    </message>
    <message>
        <source>模拟</source>
        <translation>Simulated</translation>
    </message>
    <message>
        <source>波特率</source>
        <translation>Baud rate</translation>
    </message>
    <message>
        <source>测量</source>
        <translation>Measures</translation>
    </message>
    <message>
        <source>激光光斑</source>
        <translation>Laser spot</translation>
    </message>
    <message>
        <source>用户名</source>
        <translation>User name</translation>
    </message>
    <message>
        <source>移动</source>
        <translation>Motion</translation>
    </message>
    <message>
        <source>端口</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>网络 Modbus TCP</source>
        <translation>Network Modbus TCP</translation>
    </message>
    <message>
        <source>表达式</source>
        <translation>Expression</translation>
    </message>
    <message>
        <source>视频分析</source>
        <translation>Video analysis</translation>
    </message>
    <message>
        <source>超时(ms)</source>
        <translation>Timeout (ms)</translation>
    </message>
    <message>
        <source>跟随第几路输出(0 为否)</source>
        <translation>Follows output no. (0: none)</translation>
    </message>
    <message>
        <source>软件接口</source>
        <translation>Software interface</translation>
    </message>
    <message>
        <source>连接方式</source>
        <translation>Connection</translation>
    </message>
    <message>
        <source>通用输入输出</source>
        <translation>General purpose I/O</translation>
    </message>
    <message>
        <source>采集周期(ms)</source>
        <translation>Sampling period (ms)</translation>
    </message>
    <message>
        <source>高</source>
        <translation>Height</translation>
    </message>
    <message>
        <source>与</source>
        <translation>And</translation>
    </message>
    <message>
        <source>或</source>
        <translation>Or</translation>
    </message>
    <message>
        <source>短信</source>
        <translation>Text message</translation>
    </message>
    <message>
        <source>APP通知</source>
        <translation>App notification</translation>
    </message>
    <message>
        <source>阈值报警</source>
        <translation>Threshold alarm</translation>
    </message>
    <message>
        <source>设备离线</source>
        <translation>Device offline</translation>
    </message>
    <message>
        <source>其他报警</source>
        <translation>Other alarm</translation>
    </message>
</context>
<context>
    <name>Set_Authority_Dialog</name>
    <message>
        <source>权限设置</source>
        <translation>Rights</translation>
    </message>
    <message>
        <source>接收分享</source>
        <translation>Shared with me</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>好友</source>
        <translation>Friend</translation>
    </message>
    <message>
        <source>输入好友名称/下拉选择</source>
        <translation>Type a friend&apos;s name or choose one</translation>
    </message>
    <message>
        <source>可访问设备</source>
        <translation>Accessible devices</translation>
    </message>
    <message>
        <source>1.未选中表示好友无权限访问该设备</source>
        <translation>1. Not checked: the friend may not access the device</translation>
    </message>
    <message>
        <source>2.选中表示该好友有权限访问该设备</source>
        <translation>2. Checked: the friend may access the device</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>输入设备名称/下拉选择</source>
        <translation>Type a device&apos;s name or choose one</translation>
    </message>
    <message>
        <source>可访问好友</source>
        <translation>Friends with access</translation>
    </message>
    <message>
        <source>1.未选中表示设备不能被这些好友访问</source>
        <translation>1. Not checked: these friends may not access the device</translation>
    </message>
    <message>
        <source>2.选中表示设备可以被这些好友访问</source>
        <translation>2. Checked: these friends may access the device</translation>
    </message>
    <message>
        <source>好友权限</source>
        <translation>Friends&apos; rights</translation>
    </message>
    <message>
        <source>设备权限</source>
        <translation>Device rights</translation>
    </message>
    <message>
        <source>搜索</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>分享给你的设备</source>
        <translation>Devices shared with you</translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation>Device name</translation>
    </message>
    <message>
        <source>设备ID</source>
        <translation>Device ID</translation>
    </message>
</context>
<context>
    <name>Set_Notify_Dialog</name>
    <message>
        <source>通知规则</source>
        <translation>Notification rules</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>ID</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>通知策略名称</source>
        <translation>Rule name</translation>
    </message>
    <message>
        <source>接收人</source>
        <translation>Receivers</translation>
    </message>
    <message>
        <source>关注分组</source>
        <translation>Groups</translation>
    </message>
    <message>
        <source>关注设备</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>接收通知类型</source>
        <translation>Notified of</translation>
    </message>
    <message>
        <source>接收方式</source>
        <translation>Notified by</translation>
    </message>
    <message>
        <source>短信接收等级</source>
        <translation>Levels by text message</translation>
    </message>
    <message>
        <source>APP接收等级</source>
        <translation>Levels by app</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>还没有通知规则，点击“新增”新建一个</source>
        <translation>No notification rules yet. Click &quot;New&quot; to make one.</translation>
    </message>
    <message>
        <source>新增</source>
        <translation>New</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>启用</source>
        <translation>Enabled</translation>
    </message>
    <message>
        <source>禁用</source>
        <translation>Disabled</translation>
    </message>
    <message>
        <source>请选择一个通知策略!</source>
        <translation>Please choose a notification rule.</translation>
    </message>
    <message>
        <source>请选择要删除的通知策略!</source>
        <translation>Please choose the notification rule to delete.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>请确认删除!</source>
        <translation>Delete it?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>删除成功!</source>
        <translation>Deleted.</translation>
    </message>
</context>
<context>
    <name>SettingChecks</name>
    <message>
        <source>%1不能超过%2个字符</source>
        <translation>%1 must not be longer than %2 characters</translation>
    </message>
    <message>
        <source>%1含有不能显示的字符</source>
        <translation>%1 has characters that cannot be shown</translation>
    </message>
    <message>
        <source>APP名称</source>
        <translation>Application name</translation>
    </message>
    <message>
        <source>%1不能为空，请录入</source>
        <translation>%1 must not be empty</translation>
    </message>
    <message>
        <source>公司名称</source>
        <translation>Company name</translation>
    </message>
    <message>
        <source>不限</source>
        <translation>No limit</translation>
    </message>
    <message>
        <source>视频打开最长时间应为“不限”或1到%1的整数</source>
        <translation>The longest opening time must be “No limit” or a whole number from 1 to %1</translation>
    </message>
    <message>
        <source>请录入代理服务器地址</source>
        <translation>Enter the proxy server&apos;s address</translation>
    </message>
    <message>
        <source>代理服务器地址不正确</source>
        <translation>The proxy server&apos;s address is not correct</translation>
    </message>
    <message>
        <source>代理端口应为1到65535的整数</source>
        <translation>The proxy port must be a whole number from 1 to 65535</translation>
    </message>
    <message>
        <source>请录入代理用户名，或清空密码</source>
        <translation>Enter the proxy user name, or clear the password</translation>
    </message>
    <message>
        <source>%1的声音文件应为wav、mp3或ogg文件</source>
        <translation>The sound file of %1 must be a wav, mp3 or ogg file</translation>
    </message>
    <message>
        <source>%1的声音文件不存在或无法读取</source>
        <translation>The sound file of %1 does not exist or cannot be read</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>软件设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>设置分类</source>
        <translation>Settings pages</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>应用</source>
        <translation>Apply</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>放弃修改?</source>
        <translation>Discard the changes?</translation>
    </message>
</context>
<context>
    <name>ShareView</name>
    <message>
        <source>搜索</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>全选</source>
        <translation>Select all</translation>
    </message>
</context>
<context>
    <name>Shortcuts</name>
    <message>
        <source>退出全屏/还原画面</source>
        <translation>Leave full screen / restore the tile</translation>
    </message>
    <message>
        <source>打开或关闭所选设备的视频</source>
        <translation>Open or close the selected device&apos;s video</translation>
    </message>
    <message>
        <source>关闭所选窗口的视频</source>
        <translation>Close the selected tile&apos;s video</translation>
    </message>
    <message>
        <source>选择布局：1/4/9/16/18/25/36/64窗口</source>
        <translation>Choose a layout: 1/4/9/16/18/25/36/64 tiles</translation>
    </message>
    <message>
        <source>移动所选窗口</source>
        <translation>Select another tile</translation>
    </message>
    <message>
        <source>画面放大时转动云台、变焦</source>
        <translation>Pan, tilt and zoom while a tile is enlarged</translation>
    </message>
    <message>
        <source>放大或还原所选窗口</source>
        <translation>Enlarge or restore the selected tile</translation>
    </message>
    <message>
        <source>全屏</source>
        <translation>Full screen</translation>
    </message>
    <message>
        <source>显示或隐藏设备树</source>
        <translation>Show or hide the device tree</translation>
    </message>
    <message>
        <source>搜索设备</source>
        <translation>Search devices</translation>
    </message>
    <message>
        <source>刷新设备列表</source>
        <translation>Refresh the device list</translation>
    </message>
    <message>
        <source>开始/停止轮屏</source>
        <translation>Start/stop polling</translation>
    </message>
    <message>
        <source>关闭所有视频</source>
        <translation>Close all videos</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>空格</source>
        <translation>Space</translation>
    </message>
</context>
<context>
    <name>SingleApplication</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>该软件正在运行!</source>
        <translation>The program is running already.</translation>
    </message>
</context>
<context>
    <name>SmsWindow</name>
    <message>
        <source>短信</source>
        <translation>Text messages</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>手机号</source>
        <translation>Phone</translation>
    </message>
    <message>
        <source>内容</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>复制验证码；没有验证码时复制全文</source>
        <translation>Copies the code, or the whole text where there is none</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>启动</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>启动画面</source>
        <translation>Start page</translation>
    </message>
    <message>
        <source>显示启动画面</source>
        <translation>Show the start page</translation>
    </message>
    <message>
        <source>启动画面图片</source>
        <translation>Picture of the start page</translation>
    </message>
    <message>
        <source>图片预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>自动进入软件</source>
        <translation>Enter by itself</translation>
    </message>
    <message>
        <source>启动画面显示3秒后自动进入软件</source>
        <translation>Enters 3 s after the start page was shown</translation>
    </message>
    <message>
        <source>没有图片</source>
        <translation>No picture</translation>
    </message>
    <message>
        <source>请选择启动画面图片</source>
        <translation>Please choose a picture for the start page</translation>
    </message>
</context>
<context>
    <name>StartPicture</name>
    <message>
        <source>启动画面</source>
        <translation>Start page</translation>
    </message>
    <message>
        <source>进入软件</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>进入软件(%1)</source>
        <translation>Enter (%1)</translation>
    </message>
</context>
<context>
    <name>StoredFilesPage</name>
    <message>
        <source>文件</source>
        <translation>Files</translation>
    </message>
    <message>
        <source>显示方式</source>
        <translation>View</translation>
    </message>
    <message>
        <source>列表</source>
        <translation>List</translation>
    </message>
    <message>
        <source>时间轴</source>
        <translation>Timeline</translation>
    </message>
    <message>
        <source>进度</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>在文件夹中显示</source>
        <translation>Show in folder</translation>
    </message>
    <message>
        <source>复制路径</source>
        <translation>Copy path</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>查找条件已更改，请再次查找</source>
        <translation>The conditions have changed. Please search again.</translation>
    </message>
    <message>
        <source>查找条件已更改。
请点击“查找”。</source>
        <translation>The conditions have changed.
Please click &quot;Search&quot;.</translation>
    </message>
    <message>
        <source>共 %1 个文件，%2</source>
        <translation>Files: %1, %2</translation>
    </message>
    <message>
        <source>没有找到文件。
请更改时间、设备或类别后再查找。</source>
        <translation>No files were found.
Change time, devices or kinds and search again.</translation>
    </message>
    <message>
        <source>正在查找...</source>
        <translation>Searching...</translation>
    </message>
    <message>
        <source>正在删除 %1 / %2</source>
        <translation>Deleting %1 / %2</translation>
    </message>
    <message>
        <source>文件夹 %1 / %2，找到 %3 个文件</source>
        <translation>Folder %1 / %2, files found: %3</translation>
    </message>
    <message>
        <source>已取消，%1</source>
        <translation>Cancelled, %1</translation>
    </message>
</context>
<context>
    <name>Talker</name>
    <message>
        <source>没有可用的声音输入设备</source>
        <translation>There is no sound input</translation>
    </message>
</context>
<context>
    <name>TestPicture</name>
    <message>
        <source>测试画面</source>
        <translation>Test picture</translation>
    </message>
    <message>
        <source>正在获取画面…</source>
        <translation>Getting the picture…</translation>
    </message>
    <message>
        <source>请求发送失败!</source>
        <translation>The request could not be sent.</translation>
    </message>
</context>
<context>
    <name>ThumbnailStrip</name>
    <message>
        <source>缩略图</source>
        <translation>Thumbnails</translation>
    </message>
</context>
<context>
    <name>TileAddress</name>
    <message>
        <source>请输入正确的地图服务器地址，例如 https://主机/{z}/{x}/{y}.png</source>
        <translation>Please enter a valid address of a map server, for example https://host/{z}/{x}/{y}.png</translation>
    </message>
</context>
<context>
    <name>TileMenu</name>
    <message>
        <source>打开视频</source>
        <translation>Open video</translation>
    </message>
    <message>
        <source>开始录像</source>
        <translation>Start recording</translation>
    </message>
    <message>
        <source>停止录像</source>
        <translation>Stop recording</translation>
    </message>
    <message>
        <source>开启音频</source>
        <translation>Sound on</translation>
    </message>
    <message>
        <source>关闭音频</source>
        <translation>Sound off</translation>
    </message>
    <message>
        <source>开启对讲</source>
        <translation>Start talking</translation>
    </message>
    <message>
        <source>关闭对讲</source>
        <translation>Stop talking</translation>
    </message>
    <message>
        <source>抓拍照片</source>
        <translation>Snapshot</translation>
    </message>
    <message>
        <source>云台设置</source>
        <translation>PTZ settings</translation>
    </message>
    <message>
        <source>平铺</source>
        <translation>Stretch</translation>
    </message>
    <message>
        <source>保持原始比例</source>
        <translation>Keep the ratio</translation>
    </message>
    <message>
        <source>退出全屏</source>
        <translation>Leave full screen</translation>
    </message>
    <message>
        <source>停   止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>轮屏图片预览</source>
        <translation>Poll preview pictures</translation>
    </message>
    <message>
        <source>轮屏视频通道</source>
        <translation>Poll videos</translation>
    </message>
    <message>
        <source>视频窗口菜单</source>
        <translation>Tile menu</translation>
    </message>
    <message>
        <source>画面比例</source>
        <translation>Picture ratio</translation>
    </message>
</context>
<context>
    <name>TimeRangeEdit</name>
    <message>
        <source>开始时间</source>
        <translation>From</translation>
    </message>
    <message>
        <source>结束时间</source>
        <translation>To</translation>
    </message>
    <message>
        <source>选择日期</source>
        <translation>Choose a date</translation>
    </message>
    <message>
        <source>选择日期：%1</source>
        <translation>Choose a date: %1</translation>
    </message>
</context>
<context>
    <name>TimeZones</name>
    <message>
        <source>国际日期变更线西</source>
        <translation>International date line west</translation>
    </message>
    <message>
        <source>中途岛</source>
        <translation>Midway</translation>
    </message>
    <message>
        <source>夏威夷</source>
        <translation>Hawaii</translation>
    </message>
    <message>
        <source>阿拉斯加</source>
        <translation>Alaska</translation>
    </message>
    <message>
        <source>太平洋时间(美国和加拿大)</source>
        <translation>Pacific time (US and Canada)</translation>
    </message>
    <message>
        <source>山地时间(美国和加拿大)</source>
        <translation>Mountain time (US and Canada)</translation>
    </message>
    <message>
        <source>中部时间(美国和加拿大)</source>
        <translation>Central time (US and Canada)</translation>
    </message>
    <message>
        <source>东部时间(美国和加拿大)</source>
        <translation>Eastern time (US and Canada)</translation>
    </message>
    <message>
        <source>大西洋时间(加拿大)</source>
        <translation>Atlantic time (Canada)</translation>
    </message>
    <message>
        <source>纽芬兰</source>
        <translation>Newfoundland</translation>
    </message>
    <message>
        <source>巴西利亚, 布宜诺斯艾利斯</source>
        <translation>Brasília, Buenos Aires</translation>
    </message>
    <message>
        <source>中大西洋</source>
        <translation>Mid-Atlantic</translation>
    </message>
    <message>
        <source>亚速尔群岛</source>
        <translation>Azores</translation>
    </message>
    <message>
        <source>伦敦, 都柏林, 里斯本</source>
        <translation>London, Dublin, Lisbon</translation>
    </message>
    <message>
        <source>柏林, 巴黎, 罗马, 马德里</source>
        <translation>Berlin, Paris, Rome, Madrid</translation>
    </message>
    <message>
        <source>雅典, 开罗, 耶路撒冷</source>
        <translation>Athens, Cairo, Jerusalem</translation>
    </message>
    <message>
        <source>莫斯科, 伊斯坦布尔, 巴格达</source>
        <translation>Moscow, Istanbul, Baghdad</translation>
    </message>
    <message>
        <source>德黑兰</source>
        <translation>Tehran</translation>
    </message>
    <message>
        <source>迪拜, 巴库</source>
        <translation>Dubai, Baku</translation>
    </message>
    <message>
        <source>喀布尔</source>
        <translation>Kabul</translation>
    </message>
    <message>
        <source>伊斯兰堡, 塔什干</source>
        <translation>Islamabad, Tashkent</translation>
    </message>
    <message>
        <source>孟买, 新德里</source>
        <translation>Mumbai, New Delhi</translation>
    </message>
    <message>
        <source>加德满都</source>
        <translation>Kathmandu</translation>
    </message>
    <message>
        <source>达卡, 阿拉木图</source>
        <translation>Dhaka, Almaty</translation>
    </message>
    <message>
        <source>仰光</source>
        <translation>Yangon</translation>
    </message>
    <message>
        <source>曼谷, 河内, 雅加达</source>
        <translation>Bangkok, Hanoi, Jakarta</translation>
    </message>
    <message>
        <source>北京, 香港, 台北, 新加坡</source>
        <translation>Beijing, Hong Kong, Taipei, Singapore</translation>
    </message>
    <message>
        <source>东京, 首尔</source>
        <translation>Tokyo, Seoul</translation>
    </message>
    <message>
        <source>阿德莱德, 达尔文</source>
        <translation>Adelaide, Darwin</translation>
    </message>
    <message>
        <source>悉尼, 墨尔本, 关岛</source>
        <translation>Sydney, Melbourne, Guam</translation>
    </message>
    <message>
        <source>所罗门群岛</source>
        <translation>Solomon Islands</translation>
    </message>
    <message>
        <source>奥克兰, 斐济</source>
        <translation>Auckland, Fiji</translation>
    </message>
    <message>
        <source>努库阿洛法</source>
        <translation>Nuku&apos;alofa</translation>
    </message>
</context>
<context>
    <name>TimelinePane</name>
    <message>
        <source>没有找到文件。
请更改时间、设备或类别后再查找。</source>
        <translation>No files were found.
Change time, devices or kinds and search again.</translation>
    </message>
    <message>
        <source>这一天没有文件。
最近有文件的日期是 %1。</source>
        <translation>No files on this day.
The nearest day with files is %1.</translation>
    </message>
</context>
<context>
    <name>TipDialog</name>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>TopBar</name>
    <message>
        <source>标题栏</source>
        <translation>Title bar</translation>
    </message>
    <message>
        <source>开始轮屏</source>
        <translation>Start polling</translation>
    </message>
    <message>
        <source>音量</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>软件设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>登录</source>
        <translation>Sign in</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimise</translation>
    </message>
    <message>
        <source>全屏</source>
        <translation>Full screen</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation>Keyboard shortcuts</translation>
    </message>
    <message>
        <source>检测更新</source>
        <translation>Check for updates</translation>
    </message>
    <message>
        <source>账号</source>
        <translation>Account</translation>
    </message>
    <message>
        <source>个人信息</source>
        <translation>Personal page</translation>
    </message>
    <message>
        <source>好友管理</source>
        <translation>Friends</translation>
    </message>
    <message>
        <source>分组管理</source>
        <translation>Manage groups</translation>
    </message>
    <message>
        <source>权限设置</source>
        <translation>Rights</translation>
    </message>
    <message>
        <source>设备管理</source>
        <translation>Manage devices</translation>
    </message>
    <message>
        <source>通知规则</source>
        <translation>Notification rules</translation>
    </message>
    <message>
        <source>短信管理</source>
        <translation>Text messages</translation>
    </message>
    <message>
        <source>退出登录</source>
        <translation>Sign out</translation>
    </message>
    <message>
        <source>退出全屏</source>
        <translation>Leave full screen</translation>
    </message>
    <message>
        <source>停止轮屏</source>
        <translation>Stop polling</translation>
    </message>
</context>
<context>
    <name>UnionDialog</name>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>UpdateControl</name>
    <message>
        <source>没有需要更新的文件</source>
        <translation>No files need updating</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>检测到新版本!</source>
        <translation>There is a new version.</translation>
    </message>
    <message>
        <source>后台更新</source>
        <translation>Update in the background</translation>
    </message>
    <message>
        <source>忽略该版本</source>
        <translation>Ignore this version</translation>
    </message>
    <message>
        <source>下载完成!</source>
        <translation>The download is complete.</translation>
    </message>
    <message>
        <source>现在安装</source>
        <translation>Install now</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>UpdateDescription</name>
    <message>
        <source>目录层级过深</source>
        <translation>folders are nested too deeply</translation>
    </message>
    <message>
        <source>条目格式错误</source>
        <translation>an entry has the wrong form</translation>
    </message>
    <message>
        <source>条目过多</source>
        <translation>there are too many entries</translation>
    </message>
    <message>
        <source>文件名非法</source>
        <translation>invalid file name</translation>
    </message>
    <message>
        <source>路径过长</source>
        <translation>a path is too long</translation>
    </message>
    <message>
        <source>文件名重复</source>
        <translation>a file name is there twice</translation>
    </message>
    <message>
        <source>MD5格式错误</source>
        <translation>an MD5 has the wrong form</translation>
    </message>
    <message>
        <source>文件过大</source>
        <translation>the file is too large</translation>
    </message>
    <message>
        <source>没有文件列表</source>
        <translation>there is no list of files</translation>
    </message>
    <message>
        <source>升级程序名非法</source>
        <translation>invalid name of the updater</translation>
    </message>
    <message>
        <source>文件名非法: %1</source>
        <translation>Invalid file name: %1</translation>
    </message>
    <message>
        <source>文件无法读取: %1</source>
        <translation>The file cannot be read: %1</translation>
    </message>
    <message>
        <source>文件无法写入: %1</source>
        <translation>The file cannot be written: %1</translation>
    </message>
    <message>
        <source>更新描述文件不合法(%1)，已拒绝更新!</source>
        <translation>The description of the update is not valid (%1). The update was refused.</translation>
    </message>
    <message>
        <source>服务器地址错误或JSON格式错误!</source>
        <translation>Wrong server address or JSON format.</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>软件更新</source>
        <translation>Updates</translation>
    </message>
    <message>
        <source>当前版本</source>
        <translation>Current version</translation>
    </message>
    <message>
        <source>更新服务器</source>
        <translation>Update server</translation>
    </message>
    <message>
        <source>启动时向该服务器检测新版本，留空则不检测</source>
        <translation>Asked for new versions at the start. Empty: nothing is asked.</translation>
    </message>
    <message>
        <source>http://主机:端口</source>
        <translation>http://host:port</translation>
    </message>
</context>
<context>
    <name>UpdateProgress</name>
    <message>
        <source>剩余 %1</source>
        <translation>%1 left</translation>
    </message>
    <message>
        <source>正在下载 %1/%2: %3</source>
        <translation>Downloading %1/%2: %3</translation>
    </message>
    <message>
        <source>正在比对文件</source>
        <translation>Comparing files</translation>
    </message>
    <message>
        <source>下载完成!</source>
        <translation>The download is complete.</translation>
    </message>
    <message>
        <source>正在校验文件</source>
        <translation>Verifying files</translation>
    </message>
    <message>
        <source>正在启动升级程序</source>
        <translation>Starting the updater</translation>
    </message>
</context>
<context>
    <name>UpdateServer</name>
    <message>
        <source>更新服务器地址格式错误，例如 http://192.168.1.10:8080</source>
        <translation>The address of the update server is not valid. An example: http://192.168.1.10:8080</translation>
    </message>
</context>
<context>
    <name>UpgradeConfigPage</name>
    <message>
        <source>版本</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>当前版本</source>
        <translation>Current version</translation>
    </message>
    <message>
        <source>最新版本</source>
        <translation>Newest version</translation>
    </message>
    <message>
        <source>更新说明</source>
        <translation>Release notes</translation>
    </message>
    <message>
        <source>检查新版本</source>
        <translation>Check for a new version</translation>
    </message>
    <message>
        <source>升级到最新版本</source>
        <translation>Upgrade to the newest version</translation>
    </message>
    <message>
        <source>确定升级到%1?
升级期间请勿断电。</source>
        <translation>Upgrade to %1?
Do not cut the power meanwhile.</translation>
    </message>
    <message>
        <source>升级</source>
        <translation>Upgrade</translation>
    </message>
    <message>
        <source>从文件升级</source>
        <translation>Upgrade from a file</translation>
    </message>
    <message>
        <source>升级文件</source>
        <translation>Upgrade file</translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation>Choose a file</translation>
    </message>
    <message>
        <source>上传并升级</source>
        <translation>Upload and upgrade</translation>
    </message>
    <message>
        <source>确定用该文件升级?
升级期间请勿断电。</source>
        <translation>Upgrade with this file?
Do not cut the power meanwhile.</translation>
    </message>
    <message>
        <source>升级进度</source>
        <translation>Upgrade progress</translation>
    </message>
    <message>
        <source>取消上传</source>
        <translation>Cancel upload</translation>
    </message>
    <message>
        <source>已取消</source>
        <translation>Cancelled</translation>
    </message>
    <message>
        <source>正在上传 %1</source>
        <translation>Uploading %1</translation>
    </message>
    <message>
        <source>上传失败</source>
        <translation>Upload failed</translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation>Up to date</translation>
    </message>
    <message>
        <source>选择升级文件</source>
        <translation>Choose an upgrade file</translation>
    </message>
    <message>
        <source>所有文件 (*)</source>
        <translation>All files (*)</translation>
    </message>
    <message>
        <source>正在上传</source>
        <translation>Uploading</translation>
    </message>
    <message>
        <source>等待设备重启…</source>
        <translation>Waiting for the device to restart…</translation>
    </message>
    <message>
        <source>设备没有恢复连接</source>
        <translation>The device has not come back</translation>
    </message>
    <message>
        <source>正在下载</source>
        <translation>Downloading</translation>
    </message>
    <message>
        <source>正在写入</source>
        <translation>Writing</translation>
    </message>
    <message>
        <source>正在重启</source>
        <translation>Restarting</translation>
    </message>
    <message>
        <source>升级完成</source>
        <translation>Upgraded</translation>
    </message>
    <message>
        <source>升级失败：%1</source>
        <translation>The upgrade failed: %1</translation>
    </message>
</context>
<context>
    <name>Version</name>
    <message>
        <source>由系统的软件包管理器更新</source>
        <translation>Updated by the system&apos;s package manager</translation>
    </message>
</context>
<context>
    <name>VideoPage</name>
    <message>
        <source>视频</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>画面</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>画面比例</source>
        <translation>Picture ratio</translation>
    </message>
    <message>
        <source>打开视频</source>
        <translation>Opening</translation>
    </message>
    <message>
        <source>视频打开最长时间</source>
        <translation>Longest opening time</translation>
    </message>
    <message>
        <source>单位：分钟。超过该时间仍未打开时提示失败</source>
        <translation>In minutes. A video that has not opened by then has failed.</translation>
    </message>
    <message>
        <source>平铺</source>
        <translation>Stretch</translation>
    </message>
    <message>
        <source>原始比例</source>
        <translation>Original</translation>
    </message>
</context>
<context>
    <name>VisionBackend</name>
    <message>
        <source>缺少图像识别组件，请重新安装程序!</source>
        <translation>The component that looks at pictures is missing, please install the program again!</translation>
    </message>
</context>
<context>
    <name>VolumePopup</name>
    <message>
        <source>静音</source>
        <translation>Mute</translation>
    </message>
    <message>
        <source>音量</source>
        <translation>Volume</translation>
    </message>
</context>
<context>
    <name>WaitOverlay</name>
    <message>
        <source>请稍候</source>
        <translation>Please wait</translation>
    </message>
</context>
<context>
    <name>WebMapLoader</name>
    <message>
        <source>当前版本不包含在线地图组件，无法打开在线地图!</source>
        <translation>This version comes without online maps, so the map cannot be opened.</translation>
    </message>
    <message>
        <source>以管理员身份运行时无法打开在线地图，请以普通用户身份启动程序!</source>
        <translation>Online maps cannot be opened with an administrator&apos;s rights. Please start the program as an ordinary user.</translation>
    </message>
</context>
<context>
    <name>WebMapPage</name>
    <message>
        <source>在线地图</source>
        <translation>Online map</translation>
    </message>
    <message>
        <source>放大</source>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>设置标记参数</source>
        <translation>Marker settings</translation>
    </message>
    <message>
        <source>拖动标记</source>
        <translation>Move marker</translation>
    </message>
    <message>
        <source>删除标记</source>
        <translation>Delete marker</translation>
    </message>
    <message>
        <source>清除报警</source>
        <translation>Clear alarm</translation>
    </message>
    <message>
        <source>添加地图</source>
        <translation>Add map</translation>
    </message>
    <message>
        <source>打开地图</source>
        <translation>Open map</translation>
    </message>
    <message>
        <source>关闭地图</source>
        <translation>Close map</translation>
    </message>
    <message>
        <source>管理地图</source>
        <translation>Manage maps</translation>
    </message>
    <message>
        <source>自适应标记点</source>
        <translation>Fit markers</translation>
    </message>
    <message>
        <source>zh-CN</source>
        <extracomment>The tag of the language that this is translated into, as pages tell theirs.</extracomment>
        <translation>en</translation>
    </message>
</context>
<context>
    <name>WindowMode</name>
    <message>
        <source>普通窗口</source>
        <translation>Normal window</translation>
    </message>
    <message>
        <source>最大化</source>
        <translation>Maximised</translation>
    </message>
    <message>
        <source>全屏</source>
        <translation>Full screen</translation>
    </message>
    <message>
        <source>置顶</source>
        <translation>Always on top</translation>
    </message>
    <message>
        <source>隐藏设备树</source>
        <translation>Hide the device tree</translation>
    </message>
</context>
<context>
    <name>corvanta::map::AddMapwidget</name>
    <message>
        <source>添加地图</source>
        <translation>Add map</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>地图名称</source>
        <translation>Map name</translation>
    </message>
    <message>
        <source>地图图片</source>
        <translation>Map picture</translation>
    </message>
    <message>
        <source>实际水平距离:</source>
        <translation>Real width:</translation>
    </message>
    <message>
        <source>实际水平距离</source>
        <translation>Real width</translation>
    </message>
    <message>
        <source>实际垂直距离:</source>
        <translation>Real height:</translation>
    </message>
    <message>
        <source>实际垂直距离</source>
        <translation>Real height</translation>
    </message>
    <message>
        <source>米</source>
        <translation>Metres</translation>
    </message>
    <message>
        <source>导入图片长宽比参考：16：9</source>
        <translation>Suggested aspect ratio of the picture: 16:9</translation>
    </message>
    <message>
        <source>浏览</source>
        <translation>Browse</translation>
    </message>
    <message>
        <source>选择地图图片</source>
        <translation>Choose map picture</translation>
    </message>
    <message>
        <source>选择地图</source>
        <translation>Choose map</translation>
    </message>
    <message>
        <source>上传地图成功!</source>
        <translation>The map has been uploaded.</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::ElectronMapwidget</name>
    <message>
        <source>正在加载地图...</source>
        <translation>Loading map...</translation>
    </message>
    <message>
        <source>自定义地图</source>
        <translation>Custom map</translation>
    </message>
    <message>
        <source>地图图片无法读取!</source>
        <translation>The map&apos;s picture cannot be read.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::FailurePane</name>
    <message>
        <source>地图无法显示</source>
        <translation>The map cannot be shown</translation>
    </message>
    <message>
        <source>重新加载</source>
        <translation>Reload</translation>
    </message>
</context>
<context>
    <name>corvanta::map::FileFetcher</name>
    <message>
        <source>文件下载失败!</source>
        <translation>The file could not be downloaded.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::FwidgetElectronMap</name>
    <message>
        <source>电子地图</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>一地图</source>
        <translation>One map</translation>
    </message>
    <message>
        <source>二地图</source>
        <translation>Two maps</translation>
    </message>
    <message>
        <source>四地图</source>
        <translation>Four maps</translation>
    </message>
    <message>
        <source>九地图</source>
        <translation>Nine maps</translation>
    </message>
    <message>
        <source>管理地图</source>
        <translation>Manage maps</translation>
    </message>
    <message>
        <source>该报警的设备未放置在地图上!</source>
        <translation>The device of this alarm is not placed on any map.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::ItemMapWidget</name>
    <message>
        <source>地图窗口 %1</source>
        <translation>Map window %1</translation>
    </message>
    <message>
        <source>地图图片下载失败!</source>
        <translation>The map&apos;s picture could not be downloaded.</translation>
    </message>
    <message>
        <source>放大</source>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>自适应标记点</source>
        <translation>Fit markers</translation>
    </message>
    <message>
        <source>地图菜单</source>
        <translation>Map menu</translation>
    </message>
    <message>
        <source>重新加载</source>
        <translation>Reload</translation>
    </message>
    <message>
        <source>未添加地图，请点击鼠标右键开始添加地图!</source>
        <translation>There are no maps yet. Right-click to add one.</translation>
    </message>
    <message>
        <source>请右键打开地图!</source>
        <translation>Right-click to open a map.</translation>
    </message>
    <message>
        <source>当前版本不支持该类型的地图!</source>
        <translation>This version does not support this type of map.</translation>
    </message>
    <message>
        <source>地图图片无法读取!</source>
        <translation>The map&apos;s picture cannot be read.</translation>
    </message>
    <message>
        <source>添加地图</source>
        <translation>Add map</translation>
    </message>
    <message>
        <source>打开地图</source>
        <translation>Open map</translation>
    </message>
    <message>
        <source>关闭地图</source>
        <translation>Close map</translation>
    </message>
    <message>
        <source>管理地图</source>
        <translation>Manage maps</translation>
    </message>
    <message>
        <source>%1（分享）</source>
        <translation>%1 (shared)</translation>
    </message>
</context>
<context>
    <name>corvanta::map::ManageMapWidget</name>
    <message>
        <source>管理地图</source>
        <translation>Manage maps</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>地图名称</source>
        <translation>Map name</translation>
    </message>
    <message>
        <source>地图模式</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>归属</source>
        <translation>Owner</translation>
    </message>
    <message>
        <source>还没有地图，点击“添加”开始添加</source>
        <translation>There are no maps yet. Click &quot;Add&quot; to add one.</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>标记管理</source>
        <translation>Markers</translation>
    </message>
    <message>
        <source>分享</source>
        <translation>Share</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>请选择要编辑的地图!</source>
        <translation>Please choose the map to edit.</translation>
    </message>
    <message>
        <source>无编辑地图权限!</source>
        <translation>You have no right to edit this map.</translation>
    </message>
    <message>
        <source>请选择要管理标记的地图!</source>
        <translation>Please choose the map whose markers are to be managed.</translation>
    </message>
    <message>
        <source>无操作权限!</source>
        <translation>You have no right to do this.</translation>
    </message>
    <message>
        <source>请选择要分享的地图!</source>
        <translation>Please choose the map to share.</translation>
    </message>
    <message>
        <source>还没有好友，请先添加好友!</source>
        <translation>There are no friends yet. Please add one first.</translation>
    </message>
    <message>
        <source>设置地图分享</source>
        <translation>Share map</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
    <message>
        <source>请选择要删除的地图!</source>
        <translation>Please choose the map to delete.</translation>
    </message>
    <message>
        <source>无删除地图权限!</source>
        <translation>You have no right to delete this map.</translation>
    </message>
    <message>
        <source>当前地图已经打开,无法删除!</source>
        <translation>The map is open, so it cannot be deleted.</translation>
    </message>
    <message>
        <source>请先删除该地图上的所有标记点!</source>
        <translation>Please delete all markers of this map first.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确认要删除该地图吗？</source>
        <translation>Delete the map?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>删除地图成功!</source>
        <translation>The map has been deleted.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapCanvas</name>
    <message>
        <source>地图</source>
        <translation>Map</translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapIconDeleteDialog</name>
    <message>
        <source>标记管理</source>
        <translation>Markers</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>标记点名称</source>
        <translation>Marker name</translation>
    </message>
    <message>
        <source>该地图上没有标记点</source>
        <translation>There are no markers on this map</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>请选择要删除的标记点!</source>
        <translation>Please choose the marker to delete.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定删除标记?</source>
        <translation>Delete the marker?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>删除成功!</source>
        <translation>Deleted.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapMangerMarkDialog</name>
    <message>
        <source>设置标记参数</source>
        <translation>Marker settings</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>显示名称</source>
        <translation>Shown name</translation>
    </message>
    <message>
        <source>显示方式</source>
        <translation>Label</translation>
    </message>
    <message>
        <source>经度</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>X坐标</source>
        <translation>X coordinate</translation>
    </message>
    <message>
        <source>标记图标</source>
        <translation>Marker icon</translation>
    </message>
    <message>
        <source>显示数据</source>
        <translation>Show data</translation>
    </message>
    <message>
        <source>实时更新</source>
        <translation>Update live</translation>
    </message>
    <message>
        <source>纬度</source>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>Y坐标</source>
        <translation>Y coordinate</translation>
    </message>
    <message>
        <source>总是显示</source>
        <translation>Always shown</translation>
    </message>
    <message>
        <source>鼠标移入显示</source>
        <translation>Shown under the mouse</translation>
    </message>
    <message>
        <source>设置图标</source>
        <translation>Set icon</translation>
    </message>
    <message>
        <source>默认图标</source>
        <translation>Default icon</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>传感器</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>是否显示</source>
        <translation>Shown</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapMarkDataTabelDialog</name>
    <message>
        <source>表格数据</source>
        <translation>Data table</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>传感器</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>数值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>通讯</source>
        <translation>Link</translation>
    </message>
    <message>
        <source>读取时间</source>
        <translation>Read at</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>该传感器没有采集输入</source>
        <translation>This sensor has no inputs</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>异常</source>
        <translation>Abnormal</translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapMarkVideoDiolag</name>
    <message>
        <source>实时视频</source>
        <translation>Live video</translation>
    </message>
    <message>
        <source>关闭视频</source>
        <translation>Close video</translation>
    </message>
    <message>
        <source>打开视频</source>
        <translation>Open video</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapSession</name>
    <message>
        <source>设备不存在</source>
        <translation>The device does not exist</translation>
    </message>
    <message>
        <source>无操作权限!</source>
        <translation>You have no right to do this.</translation>
    </message>
    <message>
        <source>移动失败!</source>
        <translation>The marker could not be moved.</translation>
    </message>
    <message>
        <source>设备不存在!</source>
        <translation>The device does not exist.</translation>
    </message>
    <message>
        <source>标记菜单</source>
        <translation>Marker menu</translation>
    </message>
    <message>
        <source>设置标记参数</source>
        <translation>Marker settings</translation>
    </message>
    <message>
        <source>拖动标记</source>
        <translation>Move marker</translation>
    </message>
    <message>
        <source>删除标记</source>
        <translation>Delete marker</translation>
    </message>
    <message>
        <source>清除报警</source>
        <translation>Clear alarm</translation>
    </message>
    <message>
        <source>设置参考点坐标</source>
        <translation>Reference points</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定删除标记?</source>
        <translation>Delete the marker?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>删除成功!</source>
        <translation>Deleted.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapSetIocnDialog</name>
    <message>
        <source>图标库</source>
        <translation>Icon library</translation>
    </message>
    <message>
        <source>图片库</source>
        <translation>Library</translation>
    </message>
    <message>
        <source>本地图片</source>
        <translation>Local picture</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>图标文件</source>
        <translation>Icon file</translation>
    </message>
    <message>
        <source>png或jpg图片，不超过1MB</source>
        <translation>PNG or JPG picture, 1 MB at most</translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation>Choose file</translation>
    </message>
    <message>
        <source>上传文件</source>
        <translation>Upload file</translation>
    </message>
    <message>
        <source>上传图标成功!</source>
        <translation>The icon has been uploaded.</translation>
    </message>
    <message>
        <source>%1（公共图标）</source>
        <translation>%1 (public icon)</translation>
    </message>
    <message>
        <source>请选择要设置的图标!</source>
        <translation>Please choose the icon to set.</translation>
    </message>
    <message>
        <source>请先选择要添加的图标!</source>
        <translation>Please choose the icon to add first.</translation>
    </message>
    <message>
        <source>已经添加该图标!</source>
        <translation>This icon has been added already.</translation>
    </message>
    <message>
        <source>请选择要删除的图标!</source>
        <translation>Please choose the icon to delete.</translation>
    </message>
    <message>
        <source>公共图标无法删除!</source>
        <translation>Public icons cannot be deleted.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定删除图标“%1”?</source>
        <translation>Delete the icon &quot;%1&quot;?</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>删除图标成功!</source>
        <translation>The icon has been deleted.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::MyWebEngineView</name>
    <message>
        <source>在线地图</source>
        <translation>Online map</translation>
    </message>
    <message>
        <source>地图页面加载失败</source>
        <translation>The map&apos;s page could not be loaded</translation>
    </message>
    <message>
        <source>地图页面已停止</source>
        <translation>The map&apos;s page has stopped</translation>
    </message>
</context>
<context>
    <name>corvanta::map::ReferencePointDialog</name>
    <message>
        <source>设置参考点坐标</source>
        <translation>Reference points</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>传感器不存在!</source>
        <translation>The sensor does not exist.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>参考点</source>
        <translation>Reference point</translation>
    </message>
    <message>
        <source>X (米)</source>
        <translation>X (m)</translation>
    </message>
    <message>
        <source>Y (米)</source>
        <translation>Y (m)</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>坐标应为数字!</source>
        <translation>The coordinates must be numbers.</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::SetElectronMapDialog</name>
    <message>
        <source>编辑地图信息</source>
        <translation>Edit map</translation>
    </message>
    <message>
        <source>地图名称</source>
        <translation>Map name</translation>
    </message>
    <message>
        <source>实际水平距离:</source>
        <translation>Real width:</translation>
    </message>
    <message>
        <source>实际水平距离</source>
        <translation>Real width</translation>
    </message>
    <message>
        <source>实际垂直距离:</source>
        <translation>Real height:</translation>
    </message>
    <message>
        <source>实际垂直距离</source>
        <translation>Real height</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>corvanta::map::UploadBar</name>
    <message>
        <source>停止上传</source>
        <translation>Stop upload</translation>
    </message>
    <message>
        <source>上传进度</source>
        <translation>Upload progress</translation>
    </message>
    <message>
        <source>%1 / %2，约剩 %3 秒</source>
        <translation>%1 / %2, about %3 s left</translation>
    </message>
    <message>
        <source>文件无法读取!</source>
        <translation>The file cannot be read.</translation>
    </message>
    <message>
        <source>请选择png或jpg格式的图片!</source>
        <translation>Please choose a PNG or JPG picture.</translation>
    </message>
    <message>
        <source>图片过大!</source>
        <translation>The picture is too large.</translation>
    </message>
</context>
<context>
    <name>corvanta::playback::ExportDialog</name>
    <message>
        <source>导出片段</source>
        <translation>Export clip</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>正在导出 %1</source>
        <translation>Exporting %1</translation>
    </message>
    <message>
        <source>导出进度</source>
        <translation>Export progress</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>已导出 %1</source>
        <translation>Exported: %1</translation>
    </message>
    <message>
        <source>%1，从标记前 %2 秒的关键帧开始</source>
        <translation>%1, beginning at the key frame %2 s before the mark</translation>
    </message>
    <message>
        <source>导出已取消</source>
        <translation>The export was cancelled</translation>
    </message>
    <message>
        <source>标记的范围内没有录像</source>
        <translation>There is no recording in the marked range</translation>
    </message>
    <message>
        <source>录像文件无法读取</source>
        <translation>The recording cannot be read</translation>
    </message>
    <message>
        <source>标记的范围内录像的格式或尺寸不同，不能合并为一个文件</source>
        <translation>The recordings in the marked range differ in format or size and do not go into one file</translation>
    </message>
    <message>
        <source>只能导出为 .avi 或 .mp4 文件</source>
        <translation>Only .avi and .mp4 files can be exported</translation>
    </message>
    <message>
        <source>无法写入 %1，请检查磁盘空间和权限</source>
        <translation>%1 cannot be written. Please check drive space and rights.</translation>
    </message>
</context>
<context>
    <name>corvanta::playback::PlaybackControls</name>
    <message>
        <source>回放控制</source>
        <translation>Playback controls</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>速度 %1 倍</source>
        <translation>Speed %1 times</translation>
    </message>
</context>
<context>
    <name>corvanta::playback::PlaybackPage</name>
    <message>
        <source>文件不存在或无权读取</source>
        <translation>the file is missing or may not be read</translation>
    </message>
    <message>
        <source>不是视频文件或已损坏</source>
        <translation>no video file, or damaged</translation>
    </message>
    <message>
        <source>文件中没有画面</source>
        <translation>the file has no pictures</translation>
    </message>
    <message>
        <source>录像未完成，尚无画面</source>
        <translation>the recording is not finished and has no pictures yet</translation>
    </message>
    <message>
        <source>不支持的视频编码</source>
        <translation>unsupported video coding</translation>
    </message>
    <message>
        <source>回放</source>
        <translation>Playback</translation>
    </message>
    <message>
        <source>没有要回放的录像。
请在录像文件中选择，或打开单个文件。</source>
        <translation>Nothing to play.
Choose recordings in the files, or open single files.</translation>
    </message>
    <message>
        <source>打开文件</source>
        <translation>Open files</translation>
    </message>
    <message>
        <source>最多同时回放 %1 路，其余未打开</source>
        <translation>At most %1 cameras are played at once. The others were not opened.</translation>
    </message>
    <message>
        <source>无法播放 %1</source>
        <translation>Cannot play %1</translation>
    </message>
    <message>
        <source>%1 个文件无法播放，如 %2</source>
        <translation>Files that cannot be played: %1, such as %2</translation>
    </message>
    <message>
        <source>请先标记要导出的开始和结束</source>
        <translation>Please mark the beginning and the end first</translation>
    </message>
    <message>
        <source>录像</source>
        <translation>Recording</translation>
    </message>
    <message>
        <source>导出片段</source>
        <translation>Export clip</translation>
    </message>
    <message>
        <source>MP4 视频 (*.mp4);;AVI 视频 (*.avi)</source>
        <translation>MP4 video (*.mp4);;AVI video (*.avi)</translation>
    </message>
    <message>
        <source>标记的范围内没有录像</source>
        <translation>There is no recording in the marked range</translation>
    </message>
    <message>
        <source>没有可以抓拍的画面</source>
        <translation>There is no picture to be taken</translation>
    </message>
    <message>
        <source>抓拍画面</source>
        <translation>Take a snapshot</translation>
    </message>
    <message>
        <source>JPEG 图片 (*.jpg);;PNG 图片 (*.png)</source>
        <translation>JPEG picture (*.jpg);;PNG picture (*.png)</translation>
    </message>
    <message>
        <source>画面已保存到 %1</source>
        <translation>The picture was saved to %1</translation>
    </message>
    <message>
        <source>画面无法保存</source>
        <translation>The picture could not be saved</translation>
    </message>
    <message>
        <source>打开录像文件</source>
        <translation>Open recordings</translation>
    </message>
    <message>
        <source>录像 (*.avi *.mp4);;其他视频 (*.mkv *.mov *.ts *.flv);;所有文件 (*)</source>
        <translation>Recordings (*.avi *.mp4);;Other videos (*.mkv *.mov *.ts *.flv);;All files (*)</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>corvanta::playback::PlaybackTile</name>
    <message>
        <source>正在读取录像…</source>
        <translation>Reading the recording…</translation>
    </message>
    <message>
        <source>此时没有录像</source>
        <translation>No recording at this time</translation>
    </message>
    <message>
        <source>录像文件无法读取</source>
        <translation>The recording cannot be read</translation>
    </message>
    <message>
        <source>无法显示画面</source>
        <translation>The picture cannot be shown</translation>
    </message>
    <message>
        <source>回放：%1</source>
        <translation>Playback: %1</translation>
    </message>
    <message>
        <source>回放：%1，%2</source>
        <translation>Playback: %1, %2</translation>
    </message>
    <message>
        <source>仅关键帧</source>
        <translation>key frames only</translation>
    </message>
</context>
<context>
    <name>corvanta::playback::PlaybackWall</name>
    <message>
        <source>回放画面</source>
        <translation>Playback pictures</translation>
    </message>
</context>
<context>
    <name>corvanta::playback::TimeAxis</name>
    <message>
        <source>时间轴</source>
        <translation>Timeline</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::BoardDialog</name>
    <message>
        <source>编辑传感器</source>
        <translation>Edit sensor</translation>
    </message>
    <message>
        <source>新增传感器</source>
        <translation>New sensor</translation>
    </message>
    <message>
        <source>传感器的设置</source>
        <translation>Settings of the sensor</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>控制输出</source>
        <translation>Outputs</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>通信接口</source>
        <translation>Interface</translation>
    </message>
    <message>
        <source>传感器参数</source>
        <translation>Parameters of the sensor</translation>
    </message>
    <message>
        <source>采集输入列表</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>控制输出列表</source>
        <translation>Outputs</translation>
    </message>
    <message>
        <source>数值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>通讯</source>
        <translation>State</translation>
    </message>
    <message>
        <source>新增</source>
        <translation>New</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>立即读取</source>
        <translation>Read now</translation>
    </message>
    <message>
        <source>立即写入</source>
        <translation>Write now</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Good</translation>
    </message>
    <message>
        <source>异常</source>
        <translation>Fault</translation>
    </message>
    <message>
        <source>确定删除“%1”? 保存后，其数据记录也会被删除。</source>
        <translation>Delete &quot;%1&quot;? Its recorded samples go when you save.</translation>
    </message>
    <message>
        <source>确定删除“%1”?</source>
        <translation>Delete &quot;%1&quot;?</translation>
    </message>
    <message>
        <source>名称应为1到%1个字符!</source>
        <translation>The name must have 1 to %1 characters.</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::CalibrationDialog</name>
    <message>
        <source>两点校准</source>
        <translation>Two-point calibration</translation>
    </message>
    <message>
        <source>在两个不同的测量点上，填写原始值和真实值。</source>
        <translation>Enter the raw and the true value at two different points.</translation>
    </message>
    <message>
        <source>原始值</source>
        <translation>Raw value</translation>
    </message>
    <message>
        <source>真实值</source>
        <translation>True value</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>第%1点原始值</source>
        <translation>Raw value of point %1</translation>
    </message>
    <message>
        <source>第%1点真实值</source>
        <translation>True value of point %1</translation>
    </message>
    <message>
        <source>读取</source>
        <translation>Read</translation>
    </message>
    <message>
        <source>读取第%1点</source>
        <translation>Read point %1</translation>
    </message>
    <message>
        <source>第%1点</source>
        <translation>Point %1</translation>
    </message>
    <message>
        <source>系数 %1，偏移 %2</source>
        <translation>Factor %1, offset %2</translation>
    </message>
    <message>
        <source>两点的原始值和真实值都应不同</source>
        <translation>Raw and true values of the points must differ</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ChartPage</name>
    <message>
        <source>图表</source>
        <translation>Charts</translation>
    </message>
    <message>
        <source>%1 个图表</source>
        <translation>Charts: %1</translation>
    </message>
    <message>
        <source>报警数据</source>
        <translation>Alarm data</translation>
    </message>
    <message>
        <source>数据报表</source>
        <translation>Data report</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>该设备没有采集输入!</source>
        <translation>The device has no inputs.</translation>
    </message>
    <message>
        <source>报警: %1 %2</source>
        <translation>Alarm: %1 %2</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ChartPlot</name>
    <message>
        <source>曲线</source>
        <translation>Curves</translation>
    </message>
    <message>
        <source>%1 %2级%3 %4</source>
        <translation>%1 level %2 %3 %4</translation>
    </message>
    <message>
        <source>上限</source>
        <translation>upper</translation>
    </message>
    <message>
        <source>下限</source>
        <translation>lower</translation>
    </message>
    <message>
        <source>异常</source>
        <translation>Fault</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ChartTile</name>
    <message>
        <source>图表 %1</source>
        <translation>Chart %1</translation>
    </message>
    <message>
        <source>将设备拖到此处，或点击“添加采集输入”</source>
        <translation>Drag a device here, or click &quot;Add inputs&quot;</translation>
    </message>
    <message>
        <source>跟随最新数据</source>
        <translation>Follow the newest data</translation>
    </message>
    <message>
        <source>时间范围</source>
        <translation>Time range</translation>
    </message>
    <message>
        <source>保存为图片</source>
        <translation>Save as picture</translation>
    </message>
    <message>
        <source>添加采集输入</source>
        <translation>Add inputs</translation>
    </message>
    <message>
        <source>曲线菜单</source>
        <translation>Curve menu</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>阈值设置</source>
        <translation>Thresholds</translation>
    </message>
    <message>
        <source>1 分钟</source>
        <translation>1 minute</translation>
    </message>
    <message>
        <source>10 分钟</source>
        <translation>10 minutes</translation>
    </message>
    <message>
        <source>1 小时</source>
        <translation>1 hour</translation>
    </message>
    <message>
        <source>6 小时</source>
        <translation>6 hours</translation>
    </message>
    <message>
        <source>1 天</source>
        <translation>1 day</translation>
    </message>
    <message>
        <source>7 天</source>
        <translation>7 days</translation>
    </message>
    <message>
        <source>30 天</source>
        <translation>30 days</translation>
    </message>
    <message>
        <source>1 年</source>
        <translation>1 year</translation>
    </message>
    <message>
        <source>前一段</source>
        <translation>Earlier</translation>
    </message>
    <message>
        <source>后一段</source>
        <translation>Later</translation>
    </message>
    <message>
        <source>图片 (*.png)</source>
        <translation>Picture (*.png)</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>图片保存失败!</source>
        <translation>The picture could not be saved.</translation>
    </message>
    <message>
        <source>图表菜单</source>
        <translation>Chart menu</translation>
    </message>
    <message>
        <source>清空图表</source>
        <translation>Empty the chart</translation>
    </message>
    <message>
        <source>%1（异常）</source>
        <translation>%1 (fault)</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::DatPage</name>
    <message>
        <source>报警数据</source>
        <translation>Alarm data</translation>
    </message>
    <message>
        <source>报警数据文件</source>
        <translation>Alarm data files</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>文件</source>
        <translation>File</translation>
    </message>
    <message>
        <source>报警数据图表</source>
        <translation>Chart of alarm data</translation>
    </message>
    <message>
        <source>没有报警数据。发生阈值报警时，设备会保存报警前后的数据。</source>
        <translation>No alarm data. Devices keep the data around a threshold alarm.</translation>
    </message>
    <message>
        <source>请在列表中选择一个文件</source>
        <translation>Please choose a file in the list</translation>
    </message>
    <message>
        <source>该文件不是报警数据，或无法读取。</source>
        <translation>The file holds no alarm data or cannot be read.</translation>
    </message>
    <message>
        <source>采集输入 %1</source>
        <translation>Input %1</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::DataReportDialog</name>
    <message>
        <source>数据报表</source>
        <translation>Data report</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>正在读取数据 %1 / %2 条</source>
        <translation>Reading %1 / %2 records</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>间隔</source>
        <translation>Interval</translation>
    </message>
    <message>
        <source>原始数据</source>
        <translation>Raw data</translation>
    </message>
    <message>
        <source>分钟</source>
        <translation>Minute</translation>
    </message>
    <message>
        <source>小时</source>
        <translation>Hour</translation>
    </message>
    <message>
        <source>天</source>
        <translation>Day</translation>
    </message>
    <message>
        <source>格式</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>表格文档(.xls)</source>
        <translation>Spreadsheet (.xls)</translation>
    </message>
    <message>
        <source>文本文档(.txt)</source>
        <translation>Text file (.txt)</translation>
    </message>
    <message>
        <source>导出进度</source>
        <translation>Export progress</translation>
    </message>
    <message>
        <source>请选择采集输入</source>
        <translation>Please choose inputs</translation>
    </message>
    <message>
        <source>已选 %1 个采集输入</source>
        <translation>Inputs chosen: %1</translation>
    </message>
    <message>
        <source>采集输入：%1</source>
        <translation>Inputs: %1</translation>
    </message>
    <message>
        <source>请选择采集输入!</source>
        <translation>Please choose inputs.</translation>
    </message>
    <message>
        <source>开始时间应早于结束时间!</source>
        <translation>The beginning must be before the end.</translation>
    </message>
    <message>
        <source>数据报表-%1.%2</source>
        <translation>data-report-%1.%2</translation>
    </message>
    <message>
        <source>表格文档 (*.xls)</source>
        <translation>Spreadsheet (*.xls)</translation>
    </message>
    <message>
        <source>文本文档 (*.txt)</source>
        <translation>Text file (*.txt)</translation>
    </message>
    <message>
        <source>正在读取数据...</source>
        <translation>Reading data...</translation>
    </message>
    <message>
        <source>该时间段内没有数据记录!</source>
        <translation>There are no records in this time.</translation>
    </message>
    <message>
        <source>正在写入文件...</source>
        <translation>Writing the file...</translation>
    </message>
    <message>
        <source>导出完成：%1</source>
        <translation>Exported: %1</translation>
    </message>
    <message>
        <source>导出已取消</source>
        <translation>The export was cancelled</translation>
    </message>
    <message>
        <source>文件写入失败!</source>
        <translation>The file could not be written.</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::InputPicker</name>
    <message>
        <source>选择采集输入</source>
        <translation>Choose inputs</translation>
    </message>
    <message>
        <source>搜索采集输入</source>
        <translation>Search inputs</translation>
    </message>
    <message>
        <source>搜索设备或采集输入</source>
        <translation>Search devices or inputs</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>传感器</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>已选 %1 个，最多 %2 个</source>
        <translation>%1 chosen, at most %2</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::PortDialog</name>
    <message>
        <source>采集输入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>控制输出</source>
        <translation>Output</translation>
    </message>
    <message>
        <source>采集输入与控制输出的设置</source>
        <translation>Settings of inputs and outputs</translation>
    </message>
    <message>
        <source>基本</source>
        <translation>General</translation>
    </message>
    <message>
        <source>通信参数</source>
        <translation>Link</translation>
    </message>
    <message>
        <source>校准</source>
        <translation>Calibration</translation>
    </message>
    <message>
        <source>阈值</source>
        <translation>Thresholds</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>附加信息</source>
        <translation>More</translation>
    </message>
    <message>
        <source>上传并保存数据记录</source>
        <translation>Upload and keep samples</translation>
    </message>
    <message>
        <source>系数</source>
        <translation>Factor</translation>
    </message>
    <message>
        <source>偏移</source>
        <translation>Offset</translation>
    </message>
    <message>
        <source>两点校准</source>
        <translation>Two-point calibration</translation>
    </message>
    <message>
        <source>数值 = 原始值 × 系数 + 偏移</source>
        <translation>value = raw value × factor + offset</translation>
    </message>
    <message>
        <source>名称应为1到%1个字符!</source>
        <translation>The name must have 1 to %1 characters.</translation>
    </message>
    <message>
        <source>系数应为不等于0的数字!</source>
        <translation>The factor must be a number other than 0.</translation>
    </message>
    <message>
        <source>偏移应为数字!</source>
        <translation>The offset must be a number.</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::SensorDialog</name>
    <message>
        <source>传感器设置</source>
        <translation>Sensors</translation>
    </message>
    <message>
        <source>传感器列表</source>
        <translation>Sensors</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>通信接口</source>
        <translation>Interface</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>控制输出</source>
        <translation>Outputs</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>正在读取传感器类型...</source>
        <translation>Reading the sensor types...</translation>
    </message>
    <message>
        <source>新增</source>
        <translation>New</translation>
    </message>
    <message>
        <source>新增传感器</source>
        <translation>New sensor</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>测距配置</source>
        <translation>Set up measuring</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>模板：%1</source>
        <translation>Template: %1</translation>
    </message>
    <message>
        <source>在线</source>
        <translation>Online</translation>
    </message>
    <message>
        <source>离线</source>
        <translation>Offline</translation>
    </message>
    <message>
        <source>该设备还没有传感器，请点击“新增”</source>
        <translation>The device has no sensors yet. Please click &quot;New&quot;.</translation>
    </message>
    <message>
        <source>确定删除传感器“%1”? 其采集输入和数据记录也会被删除。</source>
        <translation>Delete the sensor &quot;%1&quot;? Its inputs and samples are deleted, too.</translation>
    </message>
    <message>
        <source>删除传感器</source>
        <translation>Delete sensor</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::SensorExport</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>传感器</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>最小值</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>平均值</source>
        <translation>Mean</translation>
    </message>
    <message>
        <source>最大值</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>数值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>通讯</source>
        <translation>State</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Good</translation>
    </message>
    <message>
        <source>异常</source>
        <translation>Fault</translation>
    </message>
    <message>
        <source>请求发送失败!</source>
        <translation>The request could not be sent.</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::SensorPage</name>
    <message>
        <source>数据</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>没有采集输入。
登录后，在设备树中右击设备，选择“传感器设置”添加传感器。</source>
        <translation>No inputs.
Sign in, right-click a device in the tree and choose &quot;Sensors&quot; to add one.</translation>
    </message>
    <message>
        <source>所属分组</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>搜索采集输入</source>
        <translation>Search inputs</translation>
    </message>
    <message>
        <source>搜索</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>数据报表</source>
        <translation>Data report</translation>
    </message>
    <message>
        <source>采集输入列表</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>全部分组</source>
        <translation>All groups</translation>
    </message>
    <message>
        <source>全部设备</source>
        <translation>All devices</translation>
    </message>
    <message>
        <source>共 %1 个</source>
        <translation>Inputs: %1</translation>
    </message>
    <message>
        <source>%1 / %2 个</source>
        <translation>Inputs: %1 / %2</translation>
    </message>
    <message>
        <source>采集输入菜单</source>
        <translation>Input menu</translation>
    </message>
    <message>
        <source>显示图表</source>
        <translation>Show chart</translation>
    </message>
    <message>
        <source>立即读取</source>
        <translation>Read now</translation>
    </message>
    <message>
        <source>传感器设置</source>
        <translation>Sensors</translation>
    </message>
    <message>
        <source>阈值设置</source>
        <translation>Thresholds</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::SensorTableModel</name>
    <message>
        <source>正常</source>
        <translation>Good</translation>
    </message>
    <message>
        <source>异常</source>
        <translation>Fault</translation>
    </message>
    <message>
        <source>编号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>所属分组</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>传感器</source>
        <translation>Sensor</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>数值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>通讯</source>
        <translation>State</translation>
    </message>
    <message>
        <source>读取时间</source>
        <translation>Read at</translation>
    </message>
    <message>
        <source>记录开始时间</source>
        <translation>Recorded since</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ThresholdDialog</name>
    <message>
        <source>阈值设置</source>
        <translation>Thresholds</translation>
    </message>
    <message>
        <source>%1（%2）</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ThresholdForm</name>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>上限</source>
        <translation>Upper limit</translation>
    </message>
    <message>
        <source>下限</source>
        <translation>Lower limit</translation>
    </message>
    <message>
        <source>%1级阈值</source>
        <translation>Level %1 threshold</translation>
    </message>
    <message>
        <source>回差</source>
        <translation>Hysteresis</translation>
    </message>
    <message>
        <source>数值回到阈值以内超过回差后，报警才会恢复</source>
        <translation>An alarm ends once the value is back inside the threshold by more than the hysteresis</translation>
    </message>
    <message>
        <source>%1应为数字!</source>
        <translation>%1 must be a number.</translation>
    </message>
    <message>
        <source>%1级阈值的上限应大于下限!</source>
        <translation>The upper limit of level %1 must be above the lower one.</translation>
    </message>
    <message>
        <source>回差应为不小于0的数字!</source>
        <translation>The hysteresis must be a number of 0 or more.</translation>
    </message>
    <message>
        <source>%1级阈值上限</source>
        <translation>Upper limit of level %1</translation>
    </message>
    <message>
        <source>%1级阈值下限</source>
        <translation>Lower limit of level %1</translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::WriteDialog</name>
    <message>
        <source>立即写入</source>
        <translation>Write now</translation>
    </message>
    <message>
        <source>数值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>数值（%1）</source>
        <translation>Value (%1)</translation>
    </message>
    <message>
        <source>写入</source>
        <translation>Write</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>数值应为数字!</source>
        <translation>The value must be a number.</translation>
    </message>
</context>
<context>
    <name>corvanta::update::UpdateDownload</name>
    <message>
        <source>无法清空临时目录: %1</source>
        <translation>The temporary folder cannot be emptied: %1</translation>
    </message>
    <message>
        <source>无法创建临时目录: %1</source>
        <translation>The temporary folder cannot be made: %1</translation>
    </message>
    <message>
        <source>文件校验失败</source>
        <translation>The file does not match its checksum</translation>
    </message>
    <message>
        <source>下载失败: %1
%2</source>
        <translation>The download failed: %1
%2</translation>
    </message>
    <message>
        <source>已下载的文件不完整，请重新下载!</source>
        <translation>The downloaded files are incomplete. Please download again.</translation>
    </message>
</context>
<context>
    <name>corvanta::update::UpdateProgressView</name>
    <message>
        <source>更新进度</source>
        <translation>Update progress</translation>
    </message>
    <message>
        <source>取消更新</source>
        <translation>Cancel the update</translation>
    </message>
</context>
<context>
    <name>corvanta::update::VersionCheck</name>
    <message>
        <source>更新描述文件的签名不正确，已拒绝更新!</source>
        <translation>The signature of the update is wrong. The update was refused.</translation>
    </message>
    <message>
        <source>更新描述文件没有签名，已拒绝更新!</source>
        <translation>The update is not signed. It was refused.</translation>
    </message>
</context>
<context>
    <name>corvanta::video::LivePane</name>
    <message>
        <source>实时视频</source>
        <translation>Live video</translation>
    </message>
    <message>
        <source>还没有视频画面，请等视频打开后再试!</source>
        <translation>There is no picture yet. Please try again when the video is open.</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::CalibrationPage</name>
    <message>
        <source>二维码宽度：</source>
        <translation>Code width</translation>
    </message>
    <message>
        <source>照片数量</source>
        <translation>Photos</translation>
    </message>
    <message>
        <source>棋盘行角点数</source>
        <translation>Row corners</translation>
    </message>
    <message>
        <source>棋盘列角点数</source>
        <translation>Column corners</translation>
    </message>
    <message>
        <source>棋盘格每格宽</source>
        <translation>Square width</translation>
    </message>
    <message>
        <source>棋盘格每格长</source>
        <translation>Square length</translation>
    </message>
    <message>
        <source>相机标定</source>
        <translation>Calibrate camera</translation>
    </message>
    <message>
        <source>标定进度</source>
        <translation>Calibration progress</translation>
    </message>
    <message>
        <source>标定记录</source>
        <translation>Calibration record</translation>
    </message>
    <message>
        <source>标定的过程和结果</source>
        <translation>Course and result of the calibration</translation>
    </message>
    <message>
        <source>摄像机参数</source>
        <translation>Camera parameters</translation>
    </message>
    <message>
        <source>尚未标定摄像机。</source>
        <translation>The camera is not calibrated yet.</translation>
    </message>
    <message>
        <source>摄像机矩阵：
%1
畸变系数：
%2</source>
        <translation>Camera matrix:
%1
Distortion coefficients:
%2</translation>
    </message>
    <message>
        <source>请输入正确的棋盘格宽度和长度!</source>
        <translation>Please enter the width and length of the squares correctly.</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::InputsTable</name>
    <message>
        <source>采集输入列表</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>上报</source>
        <translation>Report</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>坐标</source>
        <translation>Axis</translation>
    </message>
    <message>
        <source>该传感器还没有采集输入，请先在“编辑”中新增。</source>
        <translation>This sensor has no inputs yet. Please add some with &quot;Edit&quot; first.</translation>
    </message>
    <message>
        <source>选中的输入在测量后上报相对初始位置的位移。</source>
        <translation>After a measurement the checked inputs report the displacement from the initial position.</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::LaserScalePage</name>
    <message>
        <source>抓拍后，选中一行，在照片上点击该点，再填写它在靶面上的位置(mm)。</source>
        <translation>Take a photo, choose a row, click its point in the photo, then enter where it is on the target (mm).</translation>
    </message>
    <message>
        <source>抓拍</source>
        <translation>Take photo</translation>
    </message>
    <message>
        <source>换算方式</source>
        <translation>Conversion</translation>
    </message>
    <message>
        <source>比例 (毫米/像素)</source>
        <translation>Scale (mm/px)</translation>
    </message>
    <message>
        <source>四点</source>
        <translation>Four points</translation>
    </message>
    <message>
        <source>比例</source>
        <translation>Scale</translation>
    </message>
    <message>
        <source>毫米/像素</source>
        <translation>mm/px</translation>
    </message>
    <message>
        <source>四个标定点</source>
        <translation>Four calibration points</translation>
    </message>
    <message>
        <source>像素X</source>
        <translation>Pixel X</translation>
    </message>
    <message>
        <source>像素Y</source>
        <translation>Pixel Y</translation>
    </message>
    <message>
        <source>X (mm)</source>
        <translation>X (mm)</translation>
    </message>
    <message>
        <source>Y (mm)</source>
        <translation>Y (mm)</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::LaserSetDialog</name>
    <message>
        <source>激光光斑测距配置</source>
        <translation>Laser spot distance measurement</translation>
    </message>
    <message>
        <source>已找到光斑：中心 (%1, %2)，直径 %3 像素，圆度 %4，亮度差 %5。</source>
        <translation>Spot found: centre (%1, %2), diameter %3 px, roundness %4, contrast %5.</translation>
    </message>
    <message>
        <source>已设置的参考图在本机读不到，请重新拍参考图。</source>
        <translation>The reference picture cannot be read on this computer. Please take it again.</translation>
    </message>
    <message>
        <source>光斑</source>
        <translation>Spot</translation>
    </message>
    <message>
        <source>比例</source>
        <translation>Scale</translation>
    </message>
    <message>
        <source>初始位置</source>
        <translation>Initial position</translation>
    </message>
    <message>
        <source>已拍参考图，保存后生效。请打开激光，再查找光斑。</source>
        <translation>The reference picture has been taken and is used once saved. Switch the laser on, then find the spot.</translation>
    </message>
    <message>
        <source>光斑不在靶面上。</source>
        <translation>The spot is not on the target.</translation>
    </message>
    <message>
        <source>初始值确定成功!</source>
        <translation>The initial position has been set.</translation>
    </message>
    <message>
        <source>初始值确定失败!</source>
        <translation>The initial position could not be set.</translation>
    </message>
    <message>
        <source>照片无法保存，请检查磁盘空间和权限!</source>
        <translation>The photo cannot be saved. Please check the free space and the rights of the drive.</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::LaserSpotPage</name>
    <message>
        <source>光斑颜色</source>
        <translation>Spot colour</translation>
    </message>
    <message>
        <source>不限</source>
        <translation>Any</translation>
    </message>
    <message>
        <source>红</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>绿</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>蓝</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>亮度差 (1~255)</source>
        <translation>Contrast (1–255)</translation>
    </message>
    <message>
        <source>最小直径 (像素)</source>
        <translation>Smallest diameter (px)</translation>
    </message>
    <message>
        <source>最大直径 (像素)</source>
        <translation>Largest diameter (px)</translation>
    </message>
    <message>
        <source>圆度 (0~1)</source>
        <translation>Roundness (0–1)</translation>
    </message>
    <message>
        <source>拍参考图</source>
        <translation>Take reference</translation>
    </message>
    <message>
        <source>清除参考图</source>
        <translation>Clear reference</translation>
    </message>
    <message>
        <source>查找光斑</source>
        <translation>Find spot</translation>
    </message>
    <message>
        <source>已有参考图：与它一样亮的地方不算光斑。</source>
        <translation>There is a reference picture: what is as bright in it is no spot.</translation>
    </message>
    <message>
        <source>没有参考图。画面中有灯光或反光时，请关闭激光后拍一张参考图。</source>
        <translation>There is no reference picture. Where lamps or reflections are in the picture, switch the laser off and take one.</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::MeasureDialog</name>
    <message>
        <source>还没有照片。抓拍后，照片和测到的结果显示在这里。</source>
        <translation>There is no photo yet. Once one is taken, it is shown here with what was measured.</translation>
    </message>
    <message>
        <source>画面</source>
        <translation>Picture</translation>
    </message>
    <message>
        <source>实时视频</source>
        <translation>Live video</translation>
    </message>
    <message>
        <source>照片</source>
        <translation>Photo</translation>
    </message>
    <message>
        <source>测距的设置</source>
        <translation>Settings of the measurement</translation>
    </message>
    <message>
        <source>关闭视频</source>
        <translation>Close video</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>打开视频</source>
        <translation>Open video</translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>该设备的编号不能作为文件夹名称，无法保存照片!</source>
        <translation>The device&apos;s ID cannot be a folder&apos;s name, so photos cannot be saved.</translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation>Saved.</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::PhotoList</name>
    <message>
        <source>未拍</source>
        <translation>Not taken</translation>
    </message>
    <message>
        <source>检查中</source>
        <translation>Checking</translation>
    </message>
    <message>
        <source>无棋盘</source>
        <translation>No board</translation>
    </message>
    <message>
        <source>可用</source>
        <translation>Usable</translation>
    </message>
    <message>
        <source>抓拍</source>
        <translation>Take photo</translation>
    </message>
    <message>
        <source>重拍</source>
        <translation>Retake</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>清空</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>照片列表</source>
        <translation>Photos</translation>
    </message>
    <message>
        <source>已拍 %1 / %2 张，可用 %3 张</source>
        <translation>Taken: %1 / %2, usable: %3</translation>
    </message>
    <message>
        <source>照片已拍满，可选中一张重拍或删除。</source>
        <translation>All photos have been taken. Choose one to retake or delete.</translation>
    </message>
    <message>
        <source>照片无法保存，请检查磁盘空间和权限!</source>
        <translation>The photo cannot be saved. Please check the free space and the rights of the drive.</translation>
    </message>
    <message>
        <source>照片无法删除!</source>
        <translation>The photo cannot be deleted.</translation>
    </message>
    <message>
        <source>清空照片</source>
        <translation>Clear photos</translation>
    </message>
    <message>
        <source>确定删除这%1张照片?</source>
        <translation>Delete all photos? Photos: %1</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::PictureView</name>
    <message>
        <source>照片</source>
        <translation>Photo</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::PositionPage</name>
    <message>
        <source>设置已改变，原来的初始位置不再有效，请重新设置。</source>
        <translation>The settings have changed, so the initial position no longer holds. Please set it again.</translation>
    </message>
    <message>
        <source>位置</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>坐标</source>
        <translation>Axis</translation>
    </message>
    <message>
        <source>初始 (mm)</source>
        <translation>Initial (mm)</translation>
    </message>
    <message>
        <source>当前 (mm)</source>
        <translation>Current (mm)</translation>
    </message>
    <message>
        <source>位移 (mm)</source>
        <translation>Moved (mm)</translation>
    </message>
    <message>
        <source>设置初始位置</source>
        <translation>Set initial position</translation>
    </message>
    <message>
        <source>测量当前位置</source>
        <translation>Measure position</translation>
    </message>
    <message>
        <source>未设置</source>
        <translation>Not set</translation>
    </message>
</context>
<context>
    <name>corvanta::vision::QRcodeInputsetDialog</name>
    <message>
        <source>二维码测距配置</source>
        <translation>QR code distance measurement</translation>
    </message>
    <message>
        <source>相机标定</source>
        <translation>Calibration</translation>
    </message>
    <message>
        <source>初始位置</source>
        <translation>Initial position</translation>
    </message>
    <message>
        <source>正在测量...</source>
        <translation>Measuring...</translation>
    </message>
    <message>
        <source>照片无法保存，请检查磁盘空间和权限!</source>
        <translation>The photo cannot be saved. Please check the free space and the rights of the drive.</translation>
    </message>
    <message>
        <source>初始值确定成功!</source>
        <translation>The initial position has been set.</translation>
    </message>
    <message>
        <source>初始值确定失败!</source>
        <translation>The initial position could not be set.</translation>
    </message>
    <message>
        <source>画面中没有测到二维码。</source>
        <translation>No QR code was measured in the picture.</translation>
    </message>
</context>
<context>
    <name>serchFormLog</name>
    <message>
        <source>查询条件</source>
        <translation>Search conditions</translation>
    </message>
    <message>
        <source>日志类型</source>
        <translation>Kind of log</translation>
    </message>
    <message>
        <source>全部时间</source>
        <translation>All times</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>查询</source>
        <translation>Search</translation>
    </message>
</context>
</TS>
