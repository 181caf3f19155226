; The installer. ./package runs makensis with
;   VERSION, FILE_VERSION   as the program shows them and as its properties do
;   FILES                   the folder of the files to install
;   FILE_LIST               a line "!insertmacro ${ACTION} NAME" for each of them
;   ICON, PICTURE           the program's icon, and what stands beside the last page
;   OUTPUT                  the installer to make
;   SIGN                    when programs are to be signed: the script that signs one
;
; With /S it asks nothing and ends with 2 when it has changed nothing: the program is saving, or what
; is installed is newer, which /FORCE replaces all the same. Only the last page uses a plugin, so that
; a silent run unpacks no library; what NSIS loads itself it takes from the system's folder only.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true
ManifestSupportedOS Win10

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WinVer.nsh
!include WinMessages.nsh
!include WordFunc.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Trimbrook"
!define SHORTCUT "$SMPROGRAMS\Trimbrook.lnk"
!define MAIN_WINDOW_CLASS "frmTrimbrook"
!define SAVE_WINDOW_CLASS "frmSaveFile"
!define DISC_WINDOW_CLASS "frmSaveToCD"
!define NOTHING_CHANGED 2

Name "Trimbrook ${VERSION}"
BrandingText " "
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Trimbrook"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
; A file that cannot be written ends the installation: a silent one would go on without it.
AllowSkipFiles off
ShowInstDetails nevershow
ShowUninstDetails nevershow
!ifdef SIGN
  !uninstfinalize '"${SIGN}" "%1"' = 0
!endif

VIProductVersion "${FILE_VERSION}"
VIAddVersionKey CompanyName "Trimbrook"
VIAddVersionKey FileDescription "Trimbrook ${VERSION} setup"
VIAddVersionKey FileVersion "${FILE_VERSION}"
VIAddVersionKey LegalCopyright ""
VIAddVersionKey ProductName "Trimbrook"
VIAddVersionKey ProductVersion "${FILE_VERSION}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "Trimbrook ${VERSION} is installed"
!define MUI_INSTFILESPAGE_FINISHHEADER_SUBTEXT "It is in the start menu."
!define MUI_INSTFILESPAGE_ABORTHEADER_TEXT "Nothing has been changed"
!define MUI_INSTFILESPAGE_ABORTHEADER_SUBTEXT " "
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_FINISHPAGE_TITLE "Trimbrook ${VERSION} is installed"
!define MUI_FINISHPAGE_TEXT "It is in the start menu."
!define MUI_FINISHPAGE_RUN "$INSTDIR\Trimbrook.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Start Trimbrook"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; The same for the installer and, with the names that NSIS wants there, for the uninstaller.
!macro DefineWaiting UN
  ; Sets $R1 to "yes" when the file $R0 is missing or can be changed, unlike that of a running
  ; program.
  Function ${UN}CheckFree
    StrCpy $R1 "yes"
    ${IfNot} ${FileExists} "$INSTDIR\$R0"
      Return
    ${EndIf}
    ClearErrors
    FileOpen $R2 "$INSTDIR\$R0" a
    ${If} ${Errors}
      StrCpy $R1 "no"
    ${Else}
      FileClose $R2
    ${EndIf}
  FunctionEnd

  ; Closes the program's windows as their close button does: one that is saving refuses.
  Function ${UN}CloseProgram
    FindWindow $R2 "${MAIN_WINDOW_CLASS}" "" 0 0
    ${While} $R2 <> 0
      FindWindow $R3 "${MAIN_WINDOW_CLASS}" "" 0 $R2
      SendMessage $R2 ${WM_CLOSE} 0 0 /TIMEOUT=1000
      StrCpy $R2 $R3
    ${EndWhile}
  FunctionEnd

  ; Waits for the end of a save, which nothing is to disturb. It is told at once, since a save can
  ; take an hour.
  Function ${UN}AwaitSave
    look:
    FindWindow $R2 "${SAVE_WINDOW_CLASS}"
    ${If} $R2 = 0
      FindWindow $R2 "${DISC_WINDOW_CLASS}"
    ${EndIf}
    ${If} $R2 = 0
      Return
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Trimbrook is saving.$\r$\n$\r$\nLet it finish, \
      close it, and press Retry." /SD IDCANCEL IDRETRY look
    Abort
  FunctionEnd

  ; Waits until the file $R0 can be changed, or ends the whole before anything has been changed.
  Function ${UN}AwaitFree
    Call ${UN}CheckFree
    ${If} $R1 == "yes"
      Return
    ${EndIf}
    Call ${UN}AwaitSave
    FindWindow $R2 "${MAIN_WINDOW_CLASS}"
    ${If} $R2 <> 0
      MessageBox MB_OKCANCEL|MB_ICONINFORMATION "Trimbrook is running and will be closed." \
        /SD IDOK IDCANCEL refuse
    ${EndIf}
    close:
    Call ${UN}CloseProgram
    ${For} $R4 1 20
      Sleep 250
      Call ${UN}CheckFree
      ${If} $R1 == "yes"
        Return
      ${EndIf}
    ${Next}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$R0 is in use.$\r$\n$\r$\nWhen Trimbrook \
      is saving, let it finish, close it, and press Retry." /SD IDCANCEL IDRETRY close
    refuse:
    Abort
  FunctionEnd
!macroend
!insertmacro DefineWaiting ""
!insertmacro DefineWaiting "un."

!macro ForEachFile ACTION
  !include "${FILE_LIST}"
!macroend

!macro AwaitFree NAME
  StrCpy $R0 "${NAME}"
  Call AwaitFree
!macroend

!macro un.AwaitFree NAME
  StrCpy $R0 "${NAME}"
  Call un.AwaitFree
!macroend

!macro Install NAME
  File "${FILES}/${NAME}"
!macroend

!macro Remove NAME
  Delete "$INSTDIR\${NAME}"
!macroend

Function .onInit
  ${IfNot} ${AtLeastWin10}
    MessageBox MB_OK|MB_ICONSTOP "Trimbrook ${VERSION} needs Windows 10 or later." /SD IDOK
    Abort
  ${EndIf}
  Call AskBeforeOlder
FunctionEnd

; A newer program is not replaced by this one unless that is wanted.
Function AskBeforeOlder
  ReadRegStr $R0 HKCU "${UNINSTALL_KEY}" "DisplayVersion"
  ${VersionCompare} "$R0" "${VERSION}" $R1
  ${If} $R1 != 1  ; Not newer; an installed one that has no number is older.
    Return
  ${EndIf}
  ${GetParameters} $R2
  ClearErrors
  ${GetOptions} $R2 "/FORCE" $R3
  ${IfNot} ${Errors}
    Return
  ${EndIf}
  MessageBox MB_YESNO|MB_DEFBUTTON2|MB_ICONEXCLAMATION "Trimbrook $R0 is installed, which is newer \
    than ${VERSION}.$\r$\n$\r$\nDo you want to replace it?" /SD IDNO IDYES replace
  SetErrorLevel ${NOTHING_CHANGED}
  Quit
  replace:
FunctionEnd

Section "Trimbrook" MAIN
  !insertmacro ForEachFile AwaitFree
  SetOutPath "$INSTDIR"
  !insertmacro ForEachFile Install
  Delete "$INSTDIR\NOTICE"  ; Its name until it got an ending.
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "${SHORTCUT}" "$INSTDIR\Trimbrook.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Trimbrook"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Trimbrook"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Trimbrook.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  SectionGetSize ${MAIN} $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  !insertmacro ForEachFile un.AwaitFree
  !insertmacro ForEachFile Remove
  Delete "$INSTDIR\uninstall.exe"
  ; Removed only when it is empty.
  RMDir "$INSTDIR"
  Delete "${SHORTCUT}"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
