; The installer: for one user, without an administrator's rights, and with what the user has made kept when it goes.
; Made by packaging/windows/build, which says VERSION, STAGE (the folder that is packed), FILES (what is removed again),
; ICON and OUTPUT.
Unicode true
RequestExecutionLevel user
SetCompressor /SOLID lzma

!include MUI2.nsh
!include FileFunc.nsh

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Corvanta"
!define RUN "Software\Microsoft\Windows\CurrentVersion\Run"

Name "Corvanta"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Corvanta"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Corvanta"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Corvanta"
VIAddVersionKey "LegalCopyright" ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\corvanta.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${STAGE}/licences/Corvanta.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "SimpChinese"
!insertmacro MUI_LANGUAGE "English"

LangString KeepData ${LANG_SIMPCHINESE} "保留账号、设置、日志和地图等数据？$\n（录像和抓拍不会被删除。）"
LangString KeepData ${LANG_ENGLISH} "Keep accounts, settings, logs and maps?$\n(Recordings and pictures are never removed.)"
LangString Running ${LANG_SIMPCHINESE} "Corvanta 正在运行，请先退出。"
LangString Running ${LANG_ENGLISH} "Corvanta is running. Please end it first."

; A program that runs has its file open: Windows lets nobody write to it.
!macro DemandEnded
    ClearErrors
    ${If} ${FileExists} "$INSTDIR\corvanta.exe"
        FileOpen $0 "$INSTDIR\corvanta.exe" a
        ${If} ${Errors}
            MessageBox MB_OK|MB_ICONSTOP "$(Running)" /SD IDOK
            SetErrorLevel 3
            Quit
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

; A folder with other things in it gets one of our own below it: the uninstaller must be able to take all of ours away
; without asking whose it is.
!macro OwnFolder
    ${DirState} "$INSTDIR" $0
    ${If} $0 == 1
    ${AndIfNot} ${FileExists} "$INSTDIR\corvanta.exe"
    ${AndIfNot} ${FileExists} "$INSTDIR\dataBase.db"
        StrCpy $INSTDIR "$INSTDIR\Corvanta"
    ${EndIf}
!macroend

Section
    !insertmacro OwnFolder
    !insertmacro DemandEnded
    SetOutPath "$INSTDIR"
    File /r "${STAGE}/*"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortCut "$SMPROGRAMS\Corvanta.lnk" "$INSTDIR\corvanta.exe"
    CreateShortCut "$DESKTOP\Corvanta.lnk" "$INSTDIR\corvanta.exe"
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegStr HKCU "${KEY}" "DisplayName" "Corvanta"
    WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\corvanta.exe"
    WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${KEY}" "EstimatedSize" "$0"
    WriteRegDWORD HKCU "${KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

; What the program makes for its user, in one of the two folders that it can have chosen for it.
!macro DeleteData FOLDER
    RMDir /r "${FOLDER}\config"
    RMDir /r "${FOLDER}\service"
    RMDir /r "${FOLDER}\workspaces"
    Delete "${FOLDER}\dataBase.db"
    Delete "${FOLDER}\dataBase.db-*"
    Delete "${FOLDER}\*.DMP"
!macroend

Section "Uninstall"
    !insertmacro DemandEnded
    ; Without anybody to ask the data is kept, unless /DELETEDATA says otherwise.
    ${GetParameters} $1
    ${GetOptions} $1 "/DELETEDATA" $2
    ${If} ${Errors}
        MessageBox MB_YESNO|MB_ICONQUESTION "$(KeepData)" /SD IDYES IDYES keep
    ${EndIf}
    !insertmacro DeleteData "$INSTDIR"
    !insertmacro DeleteData "$LOCALAPPDATA\corvanta"
    RMDir "$LOCALAPPDATA\corvanta"
keep:
    !include "${FILES}"
    Delete "$INSTDIR\versionMd5.json"
    Delete "$INSTDIR\versionMd5.json.sig"
    Delete "$INSTDIR\uninstall.exe"
    Delete "$SMPROGRAMS\Corvanta.lnk"
    Delete "$DESKTOP\Corvanta.lnk"
    SetOutPath "$TEMP" ; a folder that is in use stays
    RMDir "$INSTDIR"
    DeleteRegKey HKCU "${KEY}"
    ; It does not start with Windows any more.
    DeleteRegValue HKCU "${RUN}" "wirtepad"
SectionEnd
