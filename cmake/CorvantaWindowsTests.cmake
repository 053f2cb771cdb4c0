# The tests that run on Windows, too. The others need what only Linux has: other programs as peers (cameras, brokers,
# servers), signals, pseudo terminals, file systems of their own; they are left out of a Windows build. So is
# tst_PasswordVault: the system protects passwords there, see tst_WindowsSystem.
set(corvanta_windows_tests
  # the system
  tst_WindowsSystem tst_WindowsCrash tst_WindowsReadOnly tst_WindowsScaling tst_WindowsWall
  # rules and parts without a display
  tst_CallbackGate tst_DataTree tst_DeviceModel tst_RequestBuilder tst_ScreenPoll tst_ServerErrors tst_Settings
  tst_TaskQueue tst_TcpSocketManage tst_SqlHelp tst_LogRows tst_LogLoader tst_TablePager tst_PhoneFlow
  tst_LinkageRules tst_Alarms tst_ManageRules tst_PtzControl tst_MapRules tst_Rotation tst_StoredFiles tst_FileDeletion
  tst_FoundFiles tst_RoomMaker tst_AvMessage tst_LiveSessions tst_Placement tst_FrameBuffer tst_DropRule
  tst_SavedWorkspace tst_SettingRules tst_TileGrid tst_SensorRules tst_QrRules tst_Calibration tst_QrPictures
  tst_LaserSpot tst_LaserRules tst_LaserFiles tst_VideoMeasurer tst_AppManager tst_MeasureRoad
  tst_ClipExport tst_MediaFile tst_PlaybackClock tst_PlaybackSession tst_Timeline
  # the embedded SDK
  tst_embedded_Linkage tst_AnnexB tst_FrameRing tst_Pictures tst_Loops tst_LoopViews tst_RtspAddress tst_RtspMessages
  tst_Scene tst_MeasuringLoops tst_embedded_AccountRequests tst_embedded_AddedDevices tst_embedded_AlarmNotices
  tst_embedded_Alarms tst_embedded_CallbackKeeper
  tst_embedded_DeviceAdmin tst_embedded_DeviceParameters tst_embedded_Linkages tst_embedded_Maps tst_embedded_Messages
  tst_embedded_Ptz tst_embedded_Registration tst_embedded_ServiceConfig tst_embedded_Sharing tst_embedded_SignIn
  tst_embedded_Store tst_embedded_Text tst_embedded_Video tst_embedded_VideoChange tst_embedded_VideoChangeEnds
  tst_embedded_VideoEnds tst_embedded_SharedLibrary tst_embedded_Measuring
  # windows
  tst_GLYuvWidget tst_ItemVideo tst_PictureBeat tst_PictureViewer tst_FileTable tst_LoginDialog tst_Fwidget tst_Wall
  # the program
  tst_Program tst_Processes tst_Layouts tst_OpenVideo tst_Restart tst_ChangeSettings tst_Keys tst_Recording)
