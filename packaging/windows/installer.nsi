; The installer for Windows: for one person, without an administrator. It never touches the person's races, which lie
; in %APPDATA%\Keelview from the first start on.
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true
Name "Keelview"
OutFile "${TARGET}"
Icon "${ICON}"
UninstallIcon "${ICON}"
InstallDir "$LOCALAPPDATA\Programs\Keelview"
InstallDirRegKey HKCU "Software\Keelview" "Folder"
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "Keelview"
VIAddVersionKey /LANG=0 "FileDescription" "Keelview, installer"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "LegalCopyright" "The Keelview maintainers, MIT licence"

LoadLanguageFile "${NSISDIR}\Contrib\Language files\English.nlf"
LoadLanguageFile "${NSISDIR}\Contrib\Language files\Japanese.nlf"
LangString TrackFile ${LANG_ENGLISH} "GPS track"
LangString TrackFile ${LANG_JAPANESE} "GPS 航跡"
LangString Running ${LANG_ENGLISH} "Keelview is running. Close it, then go on."
LangString Running ${LANG_JAPANESE} "キールビューが起動しています。終了してから続けてください。"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Keelview"
!define CLASSES "Software\Classes"

; What Keelview reads by its ending: it is offered for these, and takes nobody's place.
!macro ForEachType DO
  !insertmacro ${DO} "trk"
  !insertmacro ${DO} "gpx"
  !insertmacro ${DO} "tcx"
  !insertmacro ${DO} "fit"
  !insertmacro ${DO} "kml"
  !insertmacro ${DO} "kmz"
  !insertmacro ${DO} "geojson"
  !insertmacro ${DO} "vkx"
  !insertmacro ${DO} "igc"
!macroend
!macro OfferType ENDING
  WriteRegStr HKCU "${CLASSES}\.${ENDING}\OpenWithProgids" "Keelview.Track" ""
!macroend
!macro ForgetType ENDING
  DeleteRegValue HKCU "${CLASSES}\.${ENDING}\OpenWithProgids" "Keelview.Track"
!macroend

; A program that runs holds its file: it is closed first, or nothing is changed.
!include LogicLib.nsh
!macro WaitForProgram
  ${IfNot} ${FileExists} "$INSTDIR\bin\keelview.exe"
    Goto free
  ${EndIf}
again:
  ClearErrors
  FileOpen $0 "$INSTDIR\bin\keelview.exe" a
  IfErrors 0 close
  MessageBox MB_OKCANCEL|MB_ICONEXCLAMATION "$(Running)" /SD IDCANCEL IDOK again
  Abort
close:
  FileClose $0
free:
!macroend

Section
  !insertmacro WaitForProgram
  ${If} ${FileExists} "$INSTDIR\bin\keelview.exe" ; the folder may be anyone's else
    RMDir /r "$INSTDIR\bin"
    RMDir /r "$INSTDIR\share\keelview"
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r "${FILES}\*"
  SetOutPath "$INSTDIR\bin"
  CreateShortCut "$SMPROGRAMS\Keelview.lnk" "$INSTDIR\bin\keelview.exe"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  WriteRegStr HKCU "Software\Keelview" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${CLASSES}\Keelview.Track" "" "$(TrackFile)"
  WriteRegStr HKCU "${CLASSES}\Keelview.Track\DefaultIcon" "" "$INSTDIR\bin\keelview.exe,0"
  WriteRegStr HKCU "${CLASSES}\Keelview.Track\shell\open\command" "" '"$INSTDIR\bin\keelview.exe" "%1"'
  !insertmacro ForEachType OfferType
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Keelview"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\bin\keelview.exe"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Keelview maintainers"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd

Section Uninstall
  !insertmacro WaitForProgram
  Delete "$SMPROGRAMS\Keelview.lnk"
  RMDir /r "$INSTDIR\bin"
  RMDir /r "$INSTDIR\share\keelview"
  RMDir "$INSTDIR\share"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  !insertmacro ForEachType ForgetType
  DeleteRegKey HKCU "${CLASSES}\Keelview.Track"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "Software\Keelview"
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd
