; The installer: for one user, without an administrator, into a folder in which that user may write, which is where the
; program works. What the user changed there stays when a newer version is laid over it, and when the program goes.
Target amd64-unicode
Unicode true
!include LogicLib.nsh
!include WinVer.nsh
Name "Tarvik 计算"
OutFile "${OUTPUT}"
Icon "${ICON}"
UninstallIcon "${ICON}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Tarvik"
InstallDirRegKey HKCU "Software\Tarvik" "Folder"
SetCompressor /SOLID lzma
LoadLanguageFile "${NSISDIR}\Contrib\Language files\SimpChinese.nlf"

VIProductVersion "${VERSION}.0.0"
VIAddVersionKey /LANG=2052 "ProductName" "Tarvik 计算"
VIAddVersionKey /LANG=2052 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=2052 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=2052 "FileDescription" "Tarvik 计算：安装程序"
VIAddVersionKey /LANG=2052 "LegalCopyright" "2026 the Tarvik maintainers"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarvik"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

; The Qt that the window is made with runs from Windows 10 1809 on.
Function .onInit
  ${IfNot} ${AtLeastWin10}
  ${OrIfNot} ${AtLeastBuild} 17763
    MessageBox MB_ICONSTOP "Tarvik 计算需要 64 位的 Windows 10（1809 以上）或 Windows 11。" /SD IDOK
    SetErrorLevel 3
    Quit
  ${EndIf}
FunctionEnd

; A program that runs cannot be written: nothing is changed before all of them have ended.
!macro Require program
  retry_${program}:
  ClearErrors
  ${If} ${FileExists} "$INSTDIR\${program}.exe"
    FileOpen $0 "$INSTDIR\${program}.exe" a
    ${If} ${Errors}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${program}.exe 正在运行。请关闭它，再按“重试”。" /SD IDCANCEL IDRETRY retry_${program}
      SetErrorLevel 4
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend
!macro RequireAll
  !insertmacro Require "tarvik"
  !insertmacro Require "tarvik-play"
  !insertmacro Require "tarvik-dictionary"
!macroend

Section
  !insertmacro RequireAll
  SetShellVarContext current
  SetOutPath "$INSTDIR"
  SetOverwrite on
  File "${FOLDER}/*.exe"
  !if /FileExists "${FOLDER}/tarvik.exe" ; what belongs to the window; the player alone can be packed, too
    File "${FOLDER}/*.dll"
    File /r "${FOLDER}/platforms"
    File /r "${FOLDER}/styles"
    File /r "${FOLDER}/imageformats"
    File /r "${FOLDER}/translations"
  !endif
  File /r "${FOLDER}/licenses"
  SetOverwrite off
  File /r /x *.exe /x *.dll /x platforms /x styles /x imageformats /x translations /x licenses "${FOLDER}/*"
  CreateShortCut "$SMPROGRAMS\Tarvik 计算.lnk" "$INSTDIR\tarvik.exe"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "Software\Tarvik" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Tarvik 计算"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\tarvik.exe"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "Tarvik"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" ${SIZE}
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  !insertmacro RequireAll
  SetShellVarContext current
  Delete "$INSTDIR\tarvik.exe"
  Delete "$INSTDIR\tarvik-play.exe"
  Delete "$INSTDIR\tarvik-dictionary.exe"
  Delete "$INSTDIR\Qt6Core.dll"
  Delete "$INSTDIR\Qt6Gui.dll"
  Delete "$INSTDIR\Qt6Widgets.dll"
  Delete "$INSTDIR\platforms\qwindows.dll"
  Delete "$INSTDIR\styles\qwindowsvistastyle.dll"
  Delete "$INSTDIR\imageformats\qjpeg.dll"
  Delete "$INSTDIR\translations\qtbase_zh_CN.qm"
  RMDir "$INSTDIR\platforms"
  RMDir "$INSTDIR\styles"
  RMDir "$INSTDIR\imageformats"
  RMDir "$INSTDIR\translations"
  RMDir /r "$INSTDIR\licenses"
  Delete "$SMPROGRAMS\Tarvik 计算.lnk"
  Delete "$INSTDIR\uninstall.exe"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "Software\Tarvik"
  RMDir "$INSTDIR"
SectionEnd
