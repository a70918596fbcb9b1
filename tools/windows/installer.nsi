; The installer: for one user, without an administrator, into a folder in which that user may write, which is where the
; program works. What the user changed there stays when a newer version is laid over it, and when the program goes.
Target amd64-unicode
Unicode true
Name "Tarvik 计算"
OutFile "${OUTPUT}"
Icon "${ICON}"
UninstallIcon "${ICON}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Tarvik"
InstallDirRegKey HKCU "Software\Tarvik" "Folder"
SetCompressor /SOLID lzma
LoadLanguageFile "${NSISDIR}\Contrib\Language files\SimpChinese.nlf"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarvik"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Section
  SetShellVarContext current
  SetOutPath "$INSTDIR"
  SetOverwrite on
  File "${FOLDER}/*.exe"
  File "${FOLDER}/*.dll"
  File /r "${FOLDER}/platforms"
  File /r "${FOLDER}/styles"
  File /r "${FOLDER}/imageformats"
  File /r "${FOLDER}/translations"
  File /r "${FOLDER}/licenses"
  SetOverwrite off
  File /r /x *.exe /x *.dll /x platforms /x styles /x imageformats /x translations /x licenses "${FOLDER}/*"
  CreateShortCut "$SMPROGRAMS\Tarvik 计算.lnk" "$INSTDIR\tarvik.exe"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "Software\Tarvik" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Tarvik 计算"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\tarvik.exe"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
SectionEnd

Section "Uninstall"
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
