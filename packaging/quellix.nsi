; The installer and, in it, the uninstaller. tools/package.py calls makensis with
;   VERSION  the program's      FILES  the list of what is installed, made from the folder that is packed
;   OUTPUT   the file to write  KILOBYTES  what is installed
; The uninstaller removes by name what was installed; it never removes a folder that holds anything else.

Unicode false  ; loads on Windows 95
SetCompressor /SOLID lzma
SetDateSave off  ; on for what is installed, whose dates are set; the wizard's picture has that of the clone
Name "Quellix ${VERSION}"
OutFile "${OUTPUT}"
BrandingText "Quellix ${VERSION}"
; The program keeps its lists beside itself and asks for no rights; where a user has to ask for them, it belongs into a folder
; of his own.
RequestExecutionLevel user
ManifestSupportedOS all
ManifestDPIAware true
AllowSkipFiles off
; No folder is known before .onInit; the last part is what "Browse" appends.
InstallDir "nowhere\Quellix"

VIProductVersion "${VERSION}.0.0"
VIAddVersionKey "ProductName" "Quellix"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Quellix Setup"
VIAddVersionKey "CompanyName" "the Quellix authors"
VIAddVersionKey "LegalCopyright" "the Quellix authors"

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include "${FILES}"

!define PROGRAM "Quellix.exe"
!define UNINSTALLER "Uninstall.exe"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quellix"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define RUN_VALUE "Quellix - ${VERSION}"
; Where "Erase Registry Fragment" writes one value.
!define PAGEFILE_KEYS "SYSTEM\CurrentControlSet\Control\Session Manager"
!define MENU "$SMPROGRAMS\Quellix"
!define DESKTOP_LINK "$DESKTOP\Quellix.lnk"

Var program  ; the installed program with its folder's short name, as a Run value may hold it

!define MUI_ICON "${__FILEDIR__}/../src/app/res/quellix_small.ico"
!define MUI_UNICON "${__FILEDIR__}/../src/app/res/quellix_small.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${__FILEDIR__}/wizard.bmp"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_UNFINISHPAGE_NOAUTOCLOSE
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAM}"
!define MUI_FINISHPAGE_RUN_TEXT "Start Quellix"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\manual\index.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Open the manual"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!define MUI_COMPONENTSPAGE_TEXT_TOP "Quellix is removed. Untick what you want to keep."
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; Asks a running Quellix to end, as its title bar does, and waits until its file is free.
!macro CLOSE_RUNNING prefix who
Function ${prefix}CloseRunning
  FindWindow $0 "QuellixMain" "Quellix"
  ${If} $0 <> 0
    MessageBox MB_OKCANCEL|MB_ICONINFORMATION "Quellix is running. ${who} closes it; an erase that is at work ends." \
      /SD IDOK IDOK +2
    Abort
  ${EndIf}
  again:
  FindWindow $0 "QuellixMain" "Quellix"
  ${If} $0 <> 0
    SendMessage $0 ${WM_CLOSE} 0 0 /TIMEOUT=5000
  ${EndIf}
  ${For} $1 1 50
    FindWindow $0 "QuellixMain" "Quellix"
    ${If} $0 = 0
      ${IfNot} ${FileExists} "$INSTDIR\${PROGRAM}"
        Return
      ${EndIf}
      ClearErrors
      FileOpen $0 "$INSTDIR\${PROGRAM}" a
      ${IfNot} ${Errors}
        FileClose $0
        Return
      ${EndIf}
    ${EndIf}
    Sleep 100
  ${Next}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
    "The file ${PROGRAM} is in use, or this user may not change it. Close Quellix and try again." /SD IDCANCEL IDRETRY again
  SetErrorLevel 2
  Abort "Quellix could not be closed."
FunctionEnd
!macroend
!insertmacro CLOSE_RUNNING "" "Setup"
!insertmacro CLOSE_RUNNING "un." "Its removal"

; Sets $0 when this user may install for everybody. Windows 9x knows no such difference.
!macro MAY_INSTALL_FOR_ALL
  StrCpy $0 1
  ClearErrors
  UserInfo::GetAccountType
  ${IfNot} ${Errors}
    Pop $1
    ${If} $1 != ""
    ${AndIf} $1 != "Admin"
      StrCpy $0 0
    ${EndIf}
  ${EndIf}
!macroend

Section "Quellix" SECTION_PROGRAM
  SectionIn RO
  Call CloseRunning
  SetOverwrite on
  SetDateSave on
  !insertmacro INSTALL_FILES
  SetDateSave off
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Quellix"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "the Quellix authors"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Start menu" SECTION_MENU
  CreateDirectory "${MENU}"
  CreateShortCut "${MENU}\Quellix.lnk" "$INSTDIR\${PROGRAM}"
  CreateShortCut "${MENU}\Manual.lnk" "$INSTDIR\manual\index.html"
  CreateShortCut "${MENU}\Remove Quellix.lnk" "$INSTDIR\${UNINSTALLER}"
SectionEnd

Section /o "Desktop icon" SECTION_DESKTOP
  CreateShortCut "${DESKTOP_LINK}" "$INSTDIR\${PROGRAM}"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_PROGRAM} "The program, its companion and the manual."
  !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_MENU} "Entries for the program, the manual and the removal."
  !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_DESKTOP} "An icon that everybody at this screen sees."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  !insertmacro MAY_INSTALL_FOR_ALL
  ${GetParameters} $2
  ClearErrors
  ${GetOptions} $2 "/CurrentUser" $3
  ${IfNot} ${Errors}
    StrCpy $0 0
  ${EndIf}
  ${If} $0 = 1
    SetShellVarContext all
  ${EndIf}
  ReadRegStr $4 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $INSTDIR == "nowhere\Quellix"
    ${If} $4 != ""
      StrCpy $INSTDIR $4
    ${ElseIf} $0 = 1
      StrCpy $INSTDIR "$PROGRAMFILES\Quellix"
    ${Else}
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\Quellix"
    ${EndIf}
  ${EndIf}
  ; Over an earlier version: what was not wanted then is not made now.
  ${If} $4 != ""
    ${IfNot} ${FileExists} "${MENU}\Quellix.lnk"
      !insertmacro UnselectSection ${SECTION_MENU}
    ${EndIf}
    ${If} ${FileExists} "${DESKTOP_LINK}"
      !insertmacro SelectSection ${SECTION_DESKTOP}
    ${EndIf}
  ${EndIf}
FunctionEnd

; The uninstaller.

Section "un.Quellix" UNSECTION_PROGRAM
  SectionIn RO
  Call un.CloseRunning
  GetFullPathName /SHORT $program "$INSTDIR"
  StrCpy $program "$program\${PROGRAM}"
  SetOutPath "$TEMP"
  !insertmacro REMOVE_FILES
  Delete "$INSTDIR\${UNINSTALLER}"
  Delete "${MENU}\Quellix.lnk"
  Delete "${MENU}\Manual.lnk"
  Delete "${MENU}\Remove Quellix.lnk"
  RMDir "${MENU}"
  Delete "${DESKTOP_LINK}"
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  ${EndIf}
  ; Another copy may have registered itself for the start with Windows.
  ReadRegStr $0 HKLM "${RUN_KEY}" "${RUN_VALUE}"
  StrLen $1 "$INSTDIR\${PROGRAM}"
  StrCpy $1 $0 $1
  StrLen $2 $program
  StrCpy $2 $0 $2
  ${If} $1 == "$INSTDIR\${PROGRAM}"
  ${OrIf} $2 == $program
    DeleteRegValue HKLM "${RUN_KEY}" "${RUN_VALUE}"
  ${EndIf}
  RMDir "$INSTDIR"
SectionEnd

; A list with what a save of it leaves that was broken off (src/platform/whole_file.h).
!macro REMOVE_LIST name
  Delete "$INSTDIR\${name}"
  Delete "$INSTDIR\${name}.tmp"
  Delete "$INSTDIR\${name}.old"
  Delete "$INSTDIR\${name}.old.tmp"
!macroend

Section "un.Settings, keep list and shred list" UNSECTION_SETTINGS
  DeleteRegKey HKCU "Software\Quellix"
  DeleteRegValue HKCU "${PAGEFILE_KEYS}\Memory Management" "ClearPageFileAtShutdown"
  DeleteRegKey /ifempty HKCU "${PAGEFILE_KEYS}\Memory Management"
  DeleteRegKey /ifempty HKCU "${PAGEFILE_KEYS}"
  DeleteRegKey /ifempty HKCU "SYSTEM\CurrentControlSet\Control"
  DeleteRegKey /ifempty HKCU "SYSTEM\CurrentControlSet"
  DeleteRegKey /ifempty HKCU "SYSTEM"
  !insertmacro REMOVE_LIST "SafeCookie.dat"
  !insertmacro REMOVE_LIST "QUELLIX_Shred"
  RMDir "$INSTDIR"
SectionEnd

Section "-un.Copy"
  ; It runs as a copy in a temporary folder, which the next start of Windows removes: the folder after the file that is in it.
  ${If} $EXEDIR != $INSTDIR
    RMDir /REBOOTOK "$EXEDIR"
  ${EndIf}
SectionEnd

!insertmacro MUI_UNFUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${UNSECTION_PROGRAM} "What was installed. Files that others put into the folder stay."
  !insertmacro MUI_DESCRIPTION_TEXT ${UNSECTION_SETTINGS} "What you chose in Quellix, and the names in its two lists."
!insertmacro MUI_UNFUNCTION_DESCRIPTION_END

Function un.onInit
  ${GetParameters} $2
  ClearErrors
  ${GetOptions} $2 "/KeepSettings" $3
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${UNSECTION_SETTINGS}
  ${EndIf}
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != $INSTDIR
    Return
  ${EndIf}
  SetShellVarContext all
  !insertmacro MAY_INSTALL_FOR_ALL
  ${If} $0 = 1
    Return
  ${EndIf}
  ; An administrator may have to consent first.
  ClearErrors
  ${GetOptions} $2 "/Consented" $3
  ${If} ${Errors}
    ClearErrors
    ExecShell "runas" "$INSTDIR\${UNINSTALLER}" "$2 /Consented"
    ${IfNot} ${Errors}
      Quit
    ${EndIf}
  ${EndIf}
  MessageBox MB_OK|MB_ICONEXCLAMATION "Quellix was installed for everybody, and only an administrator may remove it." /SD IDOK
  SetErrorLevel 2
  Quit
FunctionEnd
