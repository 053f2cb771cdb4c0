<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_GB" sourcelanguage="zh_CN">
<context>
    <name>AccountControl</name>
    <message>
        <source>登录密码已被修改，请使用新密码重新登录!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该账号已与当前电脑解除绑定!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AccountForm</name>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AccountLog</name>
    <message>
        <source>账号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好友管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>权限设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>注册账号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>找回密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>修改密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重新绑定电脑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>解除电脑绑定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置昵称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存头像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加好友</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑好友信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除好友</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分享设备给好友</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消分享设备</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AddAndSet_Linkage_Dialog</name>
    <message>
        <source>编辑联动策略</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增联动策略</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>联动策略名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入联动策略名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启用联动策略</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启用通知</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>指定输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条件关系</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条件有效时长</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>自定义</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>自定义时长</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(10～86400s)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>阀值等级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>组合条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>动作</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单动作</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>组合动作</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>执行方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>执行时间间隔</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位：ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择一个条件!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择一个动作!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AddDeviceDialog</name>
    <message>
        <source>添加设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>RTSP地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>网络发现</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>加入分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备标签上的编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备标签上的验证码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>不填写则使用设备自己的名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>主码流</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>主码流地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>子码流</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>子码流地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>不填写则使用主码流</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>用户名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存前可以先查看画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>测试画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>刷新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>发现的设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>型号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>状态</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>主机[:端口]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机用户名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>探测</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>填写编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机的码流</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>码流</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>尺寸</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>帧率</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在搜索本地网络…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>网络摄像机</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有发现设备，请检查网络后刷新。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>发现%1个设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AddEditFriendDialog</name>
    <message>
        <source>添加好友</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑好友信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好友手机号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好 友 名 称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好友名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加成功后显示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好 友 备 注</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好友备注</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入好友手机号!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入备注!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该用户已经是您的好友,无需重复添加!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>您输入的手机号有误或者是您要添加的
好友还未注册，请检查手机号输入或先
请通知好友在该平台注册成功后再添加!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加好友成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AddEditGroupDialog</name>
    <message>
        <source>新增分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入新建分组名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入名称!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AlarmCenterPage</name>
    <message>
        <source>报警中心</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未确认报警</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有未确认的报警</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片无法显示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确认</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部确认</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实时视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>回放</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>电子地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下一张</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下一张图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未确认 %1 条</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在读取...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确认报警</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确认全部%1条报警?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部确认报警</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AlarmControl</name>
    <message>
        <source>没有该时间的录像</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AlarmPage</name>
    <message>
        <source>声音</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收报警</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警声音</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>支持wav、mp3、ogg文件；未选择文件时不播放声音</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AlarmTableModel</name>
    <message>
        <source>级别</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>内容</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>次数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最近时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>联动策略</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>首次时间</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AppManager</name>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AudioControl</name>
    <message>
        <source>正在收听：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在对讲：%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>AvReport</name>
    <message>
        <source>正在获取视频信息...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在建立视频连接...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在加载视频数据...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开成功</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开失败(%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CalendarPopup</name>
    <message>
        <source>日历</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CalibrationRun</name>
    <message>
        <source>第%1张：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已找到角点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有检测到棋盘,请重新拍照</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片尺寸与之前的不同,请重新拍照</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>至少需要%1张可用的照片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开始标定………………</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标定失败,请换用角度和位置不同的照片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标定完成!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重投影误差：%1 像素</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CheckListBox</name>
    <message>
        <source>%1：%2 项</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CheckPicker</name>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CheckUpdateVersionDialog</name>
    <message>
        <source>检测更新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前版本：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>状态</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未检测</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>尚未设置更新服务器，请在“软件设置”的“软件更新”中填写地址!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在检测...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>检测失败</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前已经是最新版本!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最新版本 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>检测到新版本!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>后台更新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>暂不更新</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Check_Log_Widget</name>
    <message>
        <source>日志</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>日志类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示与导出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在读取 %1 条...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在读取...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>共 %1 条</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已停止，显示前 %1 条</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有符合条件的记录。
报警日志请选择“全部时间”后查询。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有符合条件的记录。
请更改查询条件后再查询。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>查询条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分页栏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号列</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>恢复默认布局</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件“%1”已存在，是否替换?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出失败!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CodeCountdown</name>
    <message>
        <source>重新获取验证码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>获取验证码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>秒后可以重新获取</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConfigPage</name>
    <message>
        <source>设备不在线，无法读取和修改参数。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有该设备的管理权限，只能查看。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CrashReport</name>
    <message>
        <source>程序崩溃</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;FONT size=4&gt;&lt;div&gt;&lt;b&gt;对于发生的错误，表示诚挚的歉意&lt;/b&gt;&lt;br/&gt;&lt;/div&gt;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;div&gt;错误代码：%1&lt;/div&gt;&lt;div&gt;错误地址：%2&lt;/div&gt;&lt;/FONT&gt;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DayBar</name>
    <message>
        <source>前一天 (Ctrl+PgUp)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>日期</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择日期</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>后一天 (Ctrl+PgDn)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DayTimeline</name>
    <message>
        <source>时间轴</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceConfigDialog</name>
    <message>
        <source>设备配置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备配置分类</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>基本信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>视频参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OSD</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像与抓拍</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FTP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SD卡</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>网络</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>维护</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceManageDialog</name>
    <message>
        <source>设备管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>搜索设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全选</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>配置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重命名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移到分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>共%1个设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>共%1个设备，已选%2个</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移动设备</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DevicePanel</name>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>搜索设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>刷新设备列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登录后显示设备</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceParameters</name>
    <message>
        <source>“%1”只能是开或关!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1”应在%2到%3之间!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1”最多%2个字符!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1”不能包含控制字符!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceTable</name>
    <message>
        <source>管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>云台</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>在线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>离线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>序号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>状态</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>型号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>固件版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>权限</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceTree</name>
    <message>
        <source>设备树</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1：在线 %2，共 %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>默认组：其设备占据最前面的窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>视频已打开</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>在线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>离线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>，正在录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备菜单</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>预览图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停止录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开始录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移到分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备配置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>联动设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重命名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组菜单</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开本组视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭本组视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>本组开始录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>本组停止录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设为默认组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部展开</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部收起</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DriveBar</name>
    <message>
        <source>%1 不可用</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 可用 %2 / %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>剩余空间不超过 %1 时不再写入新文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请检查磁盘是否已连接</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DriveBars</name>
    <message>
        <source>磁盘空间</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DriveList</name>
    <message>
        <source>盘符列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>盘符(按使用顺序)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>剩余空间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>总空间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1  (不存在)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EntryChecks</name>
    <message>
        <source>名称过长，最多%1个字符!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称不能包含控制字符!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportDialog</name>
    <message>
        <source>导出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出格式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文本文档(.txt)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>表格文档(.xls)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ExportProgress</name>
    <message>
        <source>导出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在导出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在导出，已完成 %1%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>，约剩 %1 秒</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在取消...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileActions</name>
    <message>
        <source>文件已不存在：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件夹已不存在：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无法打开文件夹：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已复制文件路径</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已复制 %1 个文件路径</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除文件“%1”?
删除后无法恢复。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除所选的 %1 个文件 (%2)?
删除后无法恢复。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已删除 %1 个文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 个录像正在写入，不能删除。请先停止录像。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 个文件不在存储目录中，未删除。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 个文件无法删除，请检查权限和磁盘。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileChooser</name>
    <message>
        <source>%1 已存在，确定替换?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileField</name>
    <message>
        <source>未选择文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>浏览</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>浏览：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>清除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>清除：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileForm</name>
    <message>
        <source>查找条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>类别</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部类别</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间范围</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>今天</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最近 7 天</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最近 30 天</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>自定义</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1（%2）</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停止</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>查找</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileTableModel</name>
    <message>
        <source>时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>类别</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>大小</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileTableView</name>
    <message>
        <source>文件列表</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileTexts</name>
    <message>
        <source>抓拍</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>本地录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备录像</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FlowRequest</name>
    <message>
        <source>服务器没有响应，请稍后再试!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请求发送失败!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FramedDialog</name>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>错误信息</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Fwidget</name>
    <message>
        <source>一窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>四窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>九窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>十六窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>十八窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>二十五窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>三十六窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>六十四窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>视频窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面布局</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GLYuvWidget</name>
    <message>
        <source>视频画面</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GeneralPage</name>
    <message>
        <source>常规</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>默认分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>默认分组的设备从第一个窗口开始排列</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>APP名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>公司名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启动与窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>随系统启动</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启动时恢复上次的状态</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>窗口模式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>窗口模式在下次启动时生效</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>第一个分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1(不存在)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无法设置随系统启动</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无法取消随系统启动</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>语言</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>界面语言</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Handover</name>
    <message>
        <source>无法写入安装目录: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未找到升级程序: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级程序启动失败: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HeadPicture</name>
    <message>
        <source>图片无法读取!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片不能超过1M，请重新选择!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片格式不正确，请选择png或jpg图片!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片尺寸过大，请重新选择!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HelpSheet</name>
    <message>
        <source>快捷键</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>InfoConfigPage</name>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>型号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>序列号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>固件版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>内核版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>引导版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时区</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置时区</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ItemVideo</name>
    <message>
        <source>视频窗口 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无法显示画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面停顿</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>等待画面</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LaserMeter</name>
    <message>
        <source>光斑不在标定平面上</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinkageBoards</name>
    <message>
        <source>(已删除)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinkageComboxConditionDialog</name>
    <message>
        <source>组合条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先添加条件!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择一个条件!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条件关系</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinkageComboxlActionDialog</name>
    <message>
        <source>组合动作</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>动作</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先添加动作!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择一个动作!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>执行方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>执行时间间隔</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位：ms</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinkageForm</name>
    <message>
        <source>执行时间间隔</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>至少100ms</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinkageLog</name>
    <message>
        <source>联动设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通知规则</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>短信管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警处理</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinkageSignalActionDialog</name>
    <message>
        <source>单动作</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>控制输出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择一个动作!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinkageSignalConditionDialog</name>
    <message>
        <source>单条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择采集输入!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LinkageWords</name>
    <message>
        <source>与</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>或</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮询</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>一级阀值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>二级阀值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>三级阀值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>永久</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>【设备名称】</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>【联动策略名称】</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>【一级阀值】</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>【传感器名称】</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>【传感器输入名称】</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>【报警值】</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>【单位】</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ListDialog</name>
    <message>
        <source>搜索</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>目前系统不支持多选删除，请选择一个需要删除项！</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Listener</name>
    <message>
        <source>没有可用的声音输出设备</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LogTableView</name>
    <message>
        <source>日志列表</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LoginDialog</name>
    <message>
        <source>账号不能为空，请录入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码不能为空，请录入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登      录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>手机号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>手机号(与手机客户端共用)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>不再记住该账号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密    码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>记住密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>自动登录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>免费注册</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>忘记密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>绑定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>代理设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>首次使用：已填入内置账号，可直接登录。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在登录...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Logs</name>
    <message>
        <source>报警日志</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警设备ID/IP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登陆日志</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>用户登录名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登入时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登出时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>操作日志</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>操作用户</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>操作时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>操作类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>操作信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>附加信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>错误日志</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>用户名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>发生时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>错误类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>错误信息</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MaintainConfigPage</name>
    <message>
        <source>重启设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备重启期间视频会中断，完成后自动恢复。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定重启该设备?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>恢复出厂设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>所有参数恢复为出厂值，设备随后重启。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定将该设备恢复出厂设置?
所有参数将丢失，无法撤销。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>命令已发送，请稍候。</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ManageControl</name>
    <message>
        <source>确定删除以下%1个设备?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ManageLog</name>
    <message>
        <source>设备管理</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Manage_Friend_Dialog</name>
    <message>
        <source>好友管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>头像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>备注</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>手机号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有好友，点击“添加”按手机号添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要编辑的好友!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要删除的好友!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除该好友后，所有分享给
该好友的设备从好友账户中解除，
好友分享给自己的设备也被解除!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除好友成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Manage_Groups_Dialog</name>
    <message>
        <source>分组管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有分组，点击“新增”新建一个</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要编辑的分组!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要删除的分组!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定要删除选中的分组？确认
该分组下设备已经删除或移动到
其它组！否则将无法删除该分组！</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除分组成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MapLabel</name>
    <message>
        <source>（异常）</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MapLog</name>
    <message>
        <source>电子地图</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>消息栏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭所有视频</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ModulePages</name>
    <message>
        <source>视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>回放</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>电子地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数据</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>日志</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警中心</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MonitorMainUI</name>
    <message>
        <source>请确认设备[%1]在默认组[%2]中的索引小于%3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请确认设备[%1]在左侧设备树中的索引小于%3,或将设备[%1]所在组设为默认组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>主窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定退出软件?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>NetworkConfigPage</name>
    <message>
        <source>有线网络</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>自动获取地址(DHCP)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>IP地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>子网掩码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>网关</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DNS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MAC地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存有线网络</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无线网络</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>网络名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无线网络名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>加密方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>WPA2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>WPA3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开放</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无线密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>信号强度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存无线网络</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该设备不提供网络参数。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>修改有线网络</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>修改无线网络</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>NetworkPage</name>
    <message>
        <source>网络</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>代理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>使用代理服务器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>代理类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>服务器地址</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>端口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>用户名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>不需要登录的代理服务器，用户名和密码留空</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>NewSet_Linkage_Dialog</name>
    <message>
        <source>联动设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>联动策略名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条件关系</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条件有效时长</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>阀值等级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>动作</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>执行方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>执行时间间隔</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有联动策略，点击“新增”新建一个</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择一个策略!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除联动策略?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除联动策略</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>NewSet_Notify_Dialog</name>
    <message>
        <source>编辑通知规则</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增通知规则</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通知规则</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>短信模板</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>APP模板</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通知策略名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收人</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关注设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收通知类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>短信接收等级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>APP接收等级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启用</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>状态</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>插入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>预览</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先选择接收人!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有可选的设备!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OnlineMapPage</name>
    <message>
        <source>地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>在线地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图服务器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>留空则使用内置地图；修改后重新打开地图时生效</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PageBar</name>
    <message>
        <source>分页栏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>每页行数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 行/页</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>第一页</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上一页</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>页码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下一页</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最后一页</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ParameterConfigPage</name>
    <message>
        <source>正在获取画面…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还原</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>修改设备参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PartList</name>
    <message>
        <source>新建</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PersonalInformationDialog</name>
    <message>
        <source>个人信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>修改密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>解除绑定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前登录账户：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>昵称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存昵称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>昵称：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>头  像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>头像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存头像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片大小：小于1M</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片格式：png/jpg</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入昵称!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置昵称成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择图像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存头像成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定解除和当前电脑的绑定？</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>解除绑定成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PhoneFlow</name>
    <message>
        <source>注册账号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择国家地区，输入手机号。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入手机号!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入手机收到的验证码。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先获取验证码!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入验证码!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码已超时!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入的验证码不正确</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入账户登录密码。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>再次输入密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>注册成功！现在是否要登录？是，请点击登录，否，请点击关闭。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该手机已注册!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>找回密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入手机号。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>手机号为空，请输入正确的手机号!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入账户新的登录密码。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入新密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>再次输入新密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码修改成功！现在是否要登录？是，请点击登录，否，请点击关闭。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该手机未注册!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>修改密码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码将发送到当前登录账户的手机。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码输入为空，请先获取验证码!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码修改成功！</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重新绑定电脑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码超时!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入的验证码不正确!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>绑定成功！现在是否要登录？是，请点击登录，否，请点击关闭。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>手机号格式不正确，请输入5~20位数字!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码不能为空</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>两次输入的密码不一致</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>密码长度为8~16位</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PhoneFlowDialog</name>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PhoneFlowPages</name>
    <message>
        <source>上一步</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下一步</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>国家地区</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>手机号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>8~16位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提交</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PictureView</name>
    <message>
        <source>图片</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PictureViewer</name>
    <message>
        <source>图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上一张</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下一张</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片无法显示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件已不存在</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在读取...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>原始大小 (%1%)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>适合窗口 (%1%)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Playback</name>
    <message>
        <source>上一段录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>后退一帧</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>播放</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>前进一帧</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下一段录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>减速</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>加速</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记开始</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记结束</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出标记的片段</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>抓拍画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>跳过无录像的时段</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭回放</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>后退10秒</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>前进10秒</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>到开头</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>到结尾</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>放大或还原画面</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PollDraft</name>
    <message>
        <source>轮屏%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PollEditor</name>
    <message>
        <source>条目</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏条目</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加条目</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重命名(F2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除条目(Delete)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>可选设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>按分组生成</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>按分组生成条目</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>为每个分组添加一个条目</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示顺序</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条目中的设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移出设备(Delete)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1(不存在)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有摄像机：登录后可以选择</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有条目：添加一个，或按分组生成</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有可添加的分组：分组没有摄像机，或已有同名条目</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已添加%1个条目</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PollPage</name>
    <message>
        <source>轮屏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>秒</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏模式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏视频通道</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏图片预览</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏列表</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PollRunner</name>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在轮屏，是否停止轮屏?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有轮屏列表，请先在设置中添加</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PortPicker</name>
    <message>
        <source>传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择传感器!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProxyDialog</name>
    <message>
        <source>代理设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PtzCruisePage</name>
    <message>
        <source>巡航路线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>巡航名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>巡航点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>预置位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停留(秒)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停留秒数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>路线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存路线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除路线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除巡航路线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开始巡航</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停止巡航</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(空)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>（正在巡航）</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>路线%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>(已删除)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入名称!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请至少添加一个巡航点!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置巡航路线</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PtzDialog</name>
    <message>
        <source>云台设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>速度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>预置位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>巡航</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>刷新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该设备没有云台。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在巡航：路线%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>按住按钮转动，松开停止。</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PtzLine</name>
    <message>
        <source>左</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>右</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>缩小</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>放大</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>聚焦近</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>聚焦远</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光圈关</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光圈开</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>云台回到初始位置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移动摄像机</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PtzPad</name>
    <message>
        <source>云台控制</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>放大</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>缩小</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>云台设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>聚焦近</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>聚焦远</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光圈开</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光圈关</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>左上</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>右上</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>左</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>回到初始位置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>右</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>左下</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>右下</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PtzPresetPage</name>
    <message>
        <source>预置位列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>预置位编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>预置位名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设为当前位置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>转到</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>转到预置位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入名称!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置预置位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除预置位%1?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除预置位</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>&amp;Open</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QrDraft</name>
    <message>
        <source>请先标定摄像机参数!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入正确的二维码宽度!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先确定二维码初始位置!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordControl</name>
    <message>
        <source>抓拍失败：没有可用的存储空间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已抓拍：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>抓拍失败(%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordMark</name>
    <message>
        <source>正在录像 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>等待录像</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecordPage</name>
    <message>
        <source>录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像打包时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分钟</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>磁盘</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>磁盘跳转阈值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>剩余空间不足时，录像转到下一个盘符；未勾选盘符时自动选择</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Recorder</name>
    <message>
        <source>%1 录像失败(%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 录像磁盘不可用：%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 录像暂停：没有可用的存储空间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 录像文件无法创建：%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 录像文件未能完整保存：%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 录像文件已达到最大长度：%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 录像写入失败，将转到下一个磁盘：%2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RenameDialog</name>
    <message>
        <source>重命名</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入名称!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重命名设备</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SMSManageDialog</name>
    <message>
        <source>时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收人</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>手机号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>状态</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>内容</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>成功</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>失败</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>余额不足</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>短信管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>基本信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>发送记录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>剩余短信条数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提醒手机号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提醒设定值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>小于设定值短信提醒充值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存提醒</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有发送记录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上一步</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下一步</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 条</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置短信提醒</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SdCardConfigPage</name>
    <message>
        <source>容量</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SD卡已用空间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>格式化</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下载失败</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上一级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>日期</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>查询</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SD卡文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>大小</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下载进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消下载</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下载</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有SD卡</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已用%1，剩余%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>日期格式应为 年-月-日，例如2026-01-31!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件夹</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>所有文件 (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下载完成</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除SD卡上的%1个文件?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除SD卡文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1个文件没有删除!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定格式化SD卡?
卡上的所有文件将丢失，无法恢复。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>格式化SD卡</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>格式化完成!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SendAndReact</name>
    <message>
        <source>服务器没有响应，请稍后再试!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请求发送失败!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SensorLog</name>
    <message>
        <source>传感器设置</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ServerErrors</name>
    <message>
        <source>服务器不支持该操作!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请求内容有误!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前未登录，请先登录!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该手机号未注册!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>账号或密码错误!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有该操作的权限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备不存在!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组不存在!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组下还有设备，无法删除!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备不在线!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>尝试次数过多，请稍后再试!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该账号已与当前电脑解除绑定，请重新绑定!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该手机已注册!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入的验证码不正确</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码已超时!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该用户不是您的好友!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该用户已经是您的好友,无需重复添加!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该设备已被添加!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件无法读取或格式不正确!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>服务器数据保存失败!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>短信发送失败，请稍后再试!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>验证码发送过于频繁，请稍后再试!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>不能添加自己为好友!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备验证码错误!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机的用户名或密码错误!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机时间与本机相差过大，请先校时!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机拒绝了请求!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机没有可用的视频流!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正被联动策略使用，无法删除!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入或控制输出不存在!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>控制输出写入失败!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数量已达上限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>非主账号无操作权限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先删除该地图上的所有标记点!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图不存在!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记点不存在!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已有同名文件!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Http请求返回未发现文件404</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Http请求服务器返回出错</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>操作失败(%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Set_Authority_Dialog</name>
    <message>
        <source>权限设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收分享</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好友</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入好友名称/下拉选择</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>可访问设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1.未选中表示好友无权限访问该设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2.选中表示该好友有权限访问该设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入设备名称/下拉选择</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>可访问好友</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1.未选中表示设备不能被这些好友访问</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>2.选中表示设备可以被这些好友访问</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好友权限</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备权限</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>搜索</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分享给你的设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备ID</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Set_Notify_Dialog</name>
    <message>
        <source>通知规则</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通知策略名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收人</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关注分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关注设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收通知类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>接收方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>短信接收等级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>APP接收等级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>状态</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有通知规则，点击“新增”新建一个</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启用</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>禁用</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择一个通知策略!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要删除的通知策略!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请确认删除!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除通知规则</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>软件设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置分类</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>应用</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>放弃修改?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingsLog</name>
    <message>
        <source>软件设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>修改软件设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>，</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ShareView</name>
    <message>
        <source>搜索</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全选</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Shortcuts</name>
    <message>
        <source>退出全屏/还原画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开或关闭所选设备的视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭所选窗口的视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择布局：1/4/9/16/18/25/36/64窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移动所选窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面放大时转动云台、变焦</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>放大或还原所选窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全屏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示或隐藏设备树</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>搜索设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>刷新设备列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开始/停止轮屏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭所有视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>帮助</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SingleApplication</name>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该软件正在运行!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SmsWindow</name>
    <message>
        <source>短信</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>手机号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>内容</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>复制</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>复制验证码；没有验证码时复制全文</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>启动</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启动画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示启动画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启动画面图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片预览</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>自动进入软件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启动画面显示3秒后自动进入软件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择启动画面图片</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StartPicture</name>
    <message>
        <source>启动画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>进入软件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>进入软件(%1)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>StoredFilesPage</name>
    <message>
        <source>文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间轴</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>在文件夹中显示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>复制路径</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>查找条件已更改，请再次查找</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>查找条件已更改。
请点击“查找”。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已取消，</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>共 %1 个文件，%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有找到文件。
请更改时间、设备或类别后再查找。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在查找...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在删除 %1 / %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件夹 %1 / %2，找到 %3 个文件</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Talker</name>
    <message>
        <source>没有可用的声音输入设备</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TestPicture</name>
    <message>
        <source>测试画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>服务器没有响应，请稍后再试!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在获取画面…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请求发送失败!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ThumbnailStrip</name>
    <message>
        <source>缩略图</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TileAddress</name>
    <message>
        <source>请输入正确的地图服务器地址，例如 https://主机/{z}/{x}/{y}.png</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TileMenu</name>
    <message>
        <source>打开视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开始录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停止录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开启音频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭音频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开启对讲</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭对讲</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>抓拍照片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>云台设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>平铺</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保持原始比例</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>退出全屏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停   止</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏图片预览</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>轮屏视频通道</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>视频窗口菜单</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面比例</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TimeRangeEdit</name>
    <message>
        <source>开始时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>结束时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择日期</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择日期：%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TimelinePane</name>
    <message>
        <source>没有找到文件。
请更改时间、设备或类别后再查找。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>这一天没有文件。
最近有文件的日期是 %1。</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TipDialog</name>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TopBar</name>
    <message>
        <source>标题栏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开始轮屏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>音量</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>软件设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>帮助</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>登录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最小化</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全屏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>退出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>快捷键</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>检测更新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>账号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>个人信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>好友管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分组管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>权限设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通知规则</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>短信管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>退出登录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>退出全屏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停止轮屏</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UnionDialog</name>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateControl</name>
    <message>
        <source>没有需要更新的文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>检测到新版本!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>后台更新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>忽略该版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下载完成!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>现在安装</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>软件更新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>安装新版本</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateDescription</name>
    <message>
        <source>目录层级过深</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条目格式错误</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>条目过多</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件名非法</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>路径过长</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件名重复</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MD5格式错误</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件过大</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有文件列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级程序名非法</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>软件更新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>更新服务器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>启动时向该服务器检测新版本，留空则不检测</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateServer</name>
    <message>
        <source>更新服务器地址格式错误，例如 http://192.168.1.10:8080</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpgradeConfigPage</name>
    <message>
        <source>版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最新版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>更新说明</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>检查新版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级到最新版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定升级到%1?
升级期间请勿断电。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>从文件升级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上传并升级</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定用该文件升级?
升级期间请勿断电。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消上传</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在上传 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上传失败</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已是最新版本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择升级文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>所有文件 (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在上传</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>等待设备重启…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备没有恢复连接</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在下载</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在写入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在重启</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级完成</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>升级失败：%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VideoPage</name>
    <message>
        <source>视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面比例</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>视频打开最长时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位：分钟。超过该时间仍未打开时提示失败</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VolumePopup</name>
    <message>
        <source>静音</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>音量</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WaitOverlay</name>
    <message>
        <source>请稍候</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WebMapLoader</name>
    <message>
        <source>当前版本不包含在线地图组件，无法打开在线地图!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>以管理员身份运行时无法打开在线地图，请以普通用户身份启动程序!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WindowMode</name>
    <message>
        <source>普通窗口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最大化</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全屏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>置顶</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>隐藏设备树</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::AddMapwidget</name>
    <message>
        <source>添加地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实际水平距离:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实际水平距离</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实际垂直距离:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实际垂直距离</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>米</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导入图片长宽比参考：16：9</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>浏览</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择地图图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上传地图成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::ElectronMapwidget</name>
    <message>
        <source>正在加载地图...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>自定义地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图图片无法读取!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::FailurePane</name>
    <message>
        <source>地图无法显示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重新加载</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::FileFetcher</name>
    <message>
        <source>文件下载失败!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::FwidgetElectronMap</name>
    <message>
        <source>电子地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>一地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>二地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>四地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>九地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>管理地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该报警的设备未放置在地图上!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::ItemMapWidget</name>
    <message>
        <source>地图窗口 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图图片下载失败!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>放大</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>缩小</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>自适应标记点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图菜单</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重新加载</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未添加地图，请点击鼠标右键开始添加地图!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请右键打开地图!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前版本不支持该类型的地图!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图图片无法读取!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>（分享）</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>管理地图</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::ManageMapWidget</name>
    <message>
        <source>管理地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图模式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>归属</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有地图，点击“添加”开始添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分享</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要编辑的地图!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无编辑地图权限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要管理标记的地图!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无操作权限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要分享的地图!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有好友，请先添加好友!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置地图分享</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要删除的地图!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无删除地图权限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前地图已经打开,无法删除!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先删除该地图上的所有标记点!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确认要删除该地图吗？</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除地图成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapCanvas</name>
    <message>
        <source>地图</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapIconDeleteDialog</name>
    <message>
        <source>标记管理</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记点名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该地图上没有标记点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要删除的标记点!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除标记?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除标记</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapMangerMarkDialog</name>
    <message>
        <source>设置标记参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>经度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X坐标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记图标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示数据</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实时更新</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>纬度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y坐标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>总是显示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>鼠标移入显示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置图标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>默认图标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>是否显示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapMarkDataTabelDialog</name>
    <message>
        <source>表格数据</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通讯</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>读取时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该传感器没有采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正常</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>异常</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapMarkVideoDiolag</name>
    <message>
        <source>实时视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapSession</name>
    <message>
        <source>设备不存在</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无操作权限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加标记</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移动标记</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移动失败!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备不存在!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记菜单</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置标记参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>拖动标记</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除标记</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>清除报警</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置参考点坐标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除标记?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapSetIocnDialog</name>
    <message>
        <source>图标库</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片库</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>本地图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图标文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>png或jpg图片，不超过1MB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选择文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上传文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上传图标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上传图标成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1（公共图标）</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要设置的图标!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先选择要添加的图标!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已经添加该图标!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择要删除的图标!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>公共图标无法删除!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除图标“%1”?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除图标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除图标成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MapWebView</name>
    <message>
        <source>在线地图</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::MyWebEngineView</name>
    <message>
        <source>在线地图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图页面加载失败</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图页面已停止</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::ReferencePointDialog</name>
    <message>
        <source>设置参考点坐标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器不存在!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>参考点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X (米)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y (米)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>坐标应为数字!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::SetElectronMapDialog</name>
    <message>
        <source>编辑地图信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>地图名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实际水平距离:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实际水平距离</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实际垂直距离:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实际垂直距离</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::map::UploadBar</name>
    <message>
        <source>停止上传</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上传进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>，约剩 %1 秒</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::playback::ExportDialog</name>
    <message>
        <source>导出片段</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在导出 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已导出 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1，从标记前 %2 秒的关键帧开始</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出已取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记的范围内没有录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像文件无法读取</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记的范围内录像的格式或尺寸不同，不能合并为一个文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>只能导出为 .avi 或 .mp4 文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无法写入 %1，请检查磁盘空间和权限</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::playback::PlaybackControls</name>
    <message>
        <source>回放控制</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>暂停</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>速度 %1 倍</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::playback::PlaybackPage</name>
    <message>
        <source>文件不存在或无权读取</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>不是视频文件或已损坏</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件中没有画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像未完成，尚无画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>不支持的视频编码</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>回放</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有要回放的录像。
请在录像文件中选择，或打开单个文件。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最多同时回放 %1 路，其余未打开</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无法播放 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 个文件无法播放，如 %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先标记要导出的开始和结束</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出片段</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MP4 视频 (*.mp4);;AVI 视频 (*.avi)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标记的范围内没有录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有可以抓拍的画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>抓拍画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>JPEG 图片 (*.jpg);;PNG 图片 (*.png)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面已保存到 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面无法保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开录像文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像 (*.avi *.mp4);;其他视频 (*.mkv *.mov *.ts *.flv);;所有文件 (*)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::playback::PlaybackTile</name>
    <message>
        <source>正在读取录像…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>此时没有录像</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>录像文件无法读取</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无法显示画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>回放：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>回放：%1，%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>仅关键帧</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::playback::PlaybackWall</name>
    <message>
        <source>回放画面</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::playback::TimeAxis</name>
    <message>
        <source>时间轴</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::BoardDialog</name>
    <message>
        <source>编辑传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器的设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>控制输出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通信接口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>控制输出列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通讯</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>立即读取</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>立即写入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正常</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>异常</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输入%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>输出%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除“%1”? 保存后，其数据记录也会被删除。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除“%1”?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称应为1到%1个字符!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2，采集输入 %3 个，控制输出 %4 个</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::CalibrationDialog</name>
    <message>
        <source>两点校准</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>在两个不同的测量点上，填写原始值和真实值。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>原始值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>真实值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>第%1点原始值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>第%1点真实值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>读取</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>读取第%1点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>第%1点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>系数 %1，偏移 %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>两点的原始值和真实值都应不同</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ChartPage</name>
    <message>
        <source>图表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 个图表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警数据</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数据报表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该设备没有采集输入!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警: %1 %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ChartPlot</name>
    <message>
        <source>曲线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2级%3 %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上限</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下限</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>异常</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ChartTile</name>
    <message>
        <source>图表 %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>将设备拖到此处，或点击“添加采集输入”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>跟随最新数据</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间范围</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存为图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>添加采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>（异常）</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>曲线菜单</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>移除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>阈值设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 分钟</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>10 分钟</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 小时</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>6 小时</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 天</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>7 天</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>30 天</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 年</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>前一段</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>后一段</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片 (*.png)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>提示</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图片保存失败!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>图表菜单</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>清空图表</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::DatPage</name>
    <message>
        <source>报警数据</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警数据文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>报警数据图表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有报警数据。发生阈值报警时，设备会保存报警前后的数据。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请在列表中选择一个文件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该文件不是报警数据，或无法读取。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入 %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::DataReportDialog</name>
    <message>
        <source>数据报表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在读取数据 %1 / %2 条</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>间隔</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>原始数据</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>分钟</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>小时</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>天</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>格式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>表格文档(.xls)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文本文档(.txt)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已选 %1 个采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请选择采集输入!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>开始时间应早于结束时间!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数据报表-%1.%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>表格文档 (*.xls)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文本文档 (*.txt)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在读取数据...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该时间段内没有数据记录!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在写入文件...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出数据报表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入 %1 个，%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出完成：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>导出已取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件写入失败!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::Field</name>
    <message>
        <source>请选择%1!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1过长!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1应在%2到%3之间!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::InputPicker</name>
    <message>
        <source>选择采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>搜索采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>搜索设备或采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已选 %1 个，最多 %2 个</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::PortDialog</name>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>控制输出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入与控制输出的设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>基本</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通信参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>校准</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>阈值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>附加信息</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上传并保存数据记录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>系数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>偏移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>两点校准</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值 = 原始值 × 系数 + 偏移</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称应为1到%1个字符!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>系数应为不等于0的数字!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>偏移应为数字!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::SensorDialog</name>
    <message>
        <source>传感器设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通信接口</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>控制输出</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>状态</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在读取传感器类型...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>新增传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编辑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>测距配置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>模板：%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>在线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>离线</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该设备还没有传感器，请点击“新增”</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除传感器“%1”? 其采集输入和数据记录也会被删除。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::SensorExport</name>
    <message>
        <source>服务器没有响应，请稍后再试!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最小值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>平均值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最大值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通讯</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正常</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>异常</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请求发送失败!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::SensorPage</name>
    <message>
        <source>数据</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有采集输入。
登录后，在设备树中右击设备，选择“传感器设置”添加传感器。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>所属分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>搜索采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>搜索</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数据报表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>共 %1 个</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 / %2 个</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入菜单</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>显示图表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>立即读取</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>阈值设置</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::SensorTableModel</name>
    <message>
        <source>正常</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>异常</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>编号</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>所属分组</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设备</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>单位</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>通讯</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>读取时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>记录开始时间</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ThresholdDialog</name>
    <message>
        <source>阈值设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1（%2）</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::ThresholdForm</name>
    <message>
        <source>无</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上限</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下限</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1级阈值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>回差</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值回到阈值以内超过回差后，报警才会恢复</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1应为数字!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1级阈值的上限应大于下限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>回差应为不小于0的数字!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::sensor::WriteDialog</name>
    <message>
        <source>立即写入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值（%1）</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>写入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>数值应为数字!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>写入控制输出</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::update::UpdateDownload</name>
    <message>
        <source>无法清空临时目录: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无法创建临时目录: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>文件校验失败</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>下载失败: %1
%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已下载的文件不完整，请重新下载!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::update::UpdateProgressView</name>
    <message>
        <source>更新进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消更新</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::update::VersionCheck</name>
    <message>
        <source>更新描述文件的签名不正确，已拒绝更新!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>更新描述文件没有签名，已拒绝更新!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::video::LivePane</name>
    <message>
        <source>实时视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>还没有视频画面，请等视频打开后再试!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision</name>
    <message>
        <source>光斑亮度应为1~255</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑直径应为1~%1像素</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑最小直径应小于最大直径</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑圆度应为0~1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有可用的图片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>参考图与图片大小不一致,请重新拍参考图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有找到足够亮的光斑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑颜色不符</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑太小</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑太大</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑不够圆</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑超出画面边缘</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面中有多个光斑</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::CalibrationPage</name>
    <message>
        <source>二维码宽度：</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片数量</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>棋盘行角点数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>棋盘列角点数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>棋盘格每格宽</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>棋盘格每格长</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>相机标定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标定进度</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标定记录</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标定的过程和结果</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机参数</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>尚未标定摄像机。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>摄像机矩阵：
%1
畸变系数：
%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入正确的棋盘格宽度和长度!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::InputsTable</name>
    <message>
        <source>采集输入列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>上报</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>名称</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>坐标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该传感器还没有采集输入，请先在“编辑”中新增。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>选中的输入在测量后上报相对初始位置的位移。</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::LaserInfo</name>
    <message>
        <source>参考图文件名无效</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先设置四个标定点!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请输入比例(毫米/像素)!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>比例应大于0且不大于1000毫米/像素</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>请先确定光斑初始位置!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::LaserScale</name>
    <message>
        <source>标定点坐标不是有效的数字</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标定点不能重合</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>任意三个标定点不能在一条直线上</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>标定点的图上位置与实际坐标不对应,请检查顺序</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::LaserScalePage</name>
    <message>
        <source>抓拍后，选中一行，在照片上点击该点，再填写它在靶面上的位置(mm)。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>抓拍</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>换算方式</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>比例 (毫米/像素)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>四点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>比例</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>毫米/像素</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>四个标定点</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>像素X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>像素Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X (mm)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y (mm)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::LaserSetDialog</name>
    <message>
        <source>激光光斑测距配置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已找到光斑：中心 (%1, %2)，直径 %3 像素，圆度 %4，亮度差 %5。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已设置的参考图在本机读不到，请重新拍参考图。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>比例</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>初始位置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已拍参考图，保存后生效。请打开激光，再查找光斑。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>光斑不在靶面上。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>初始值确定成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>初始值确定失败!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片无法保存，请检查磁盘空间和权限!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::LaserSpotPage</name>
    <message>
        <source>光斑颜色</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>不限</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>红</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>绿</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>蓝</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>亮度差 (1~255)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最小直径 (像素)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>最大直径 (像素)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>圆度 (0~1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>拍参考图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>清除参考图</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>查找光斑</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已有参考图：与它一样亮的地方不算光斑。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>没有参考图。画面中有灯光或反光时，请关闭激光后拍一张参考图。</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::MeasureDialog</name>
    <message>
        <source>还没有照片。抓拍后，照片和测到的结果显示在这里。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>实时视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>测距的设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>关闭</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>打开视频</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>采集输入</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>该设备的编号不能作为文件夹名称，无法保存照片!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>传感器设置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>保存成功!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::PhotoList</name>
    <message>
        <source>未拍</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>检查中</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>无棋盘</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>可用</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>抓拍</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>重拍</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>删除</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>清空</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片列表</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>已拍 %1 / %2 张，可用 %3 张</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片已拍满，可选中一张重拍或删除。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片无法保存，请检查磁盘空间和权限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片无法删除!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>清空照片</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>确定删除这%1张照片?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::PictureView</name>
    <message>
        <source>照片</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::PositionPage</name>
    <message>
        <source>设置已改变，原来的初始位置不再有效，请重新设置。</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>位置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>坐标</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>初始 (mm)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>当前 (mm)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>位移 (mm)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>设置初始位置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>测量当前位置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>未设置</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>corvanta::vision::QRcodeInputsetDialog</name>
    <message>
        <source>二维码测距配置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>相机标定</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>初始位置</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>正在测量...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>照片无法保存，请检查磁盘空间和权限!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>初始值确定成功!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>初始值确定失败!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>画面中没有测到二维码。</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>serchFormLog</name>
    <message>
        <source>查询条件</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>日志类型</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>全部时间</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>停止</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>查询</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
