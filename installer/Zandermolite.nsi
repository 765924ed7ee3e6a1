; The installer for Windows. cmake/installer.cmake says what goes in and runs makensis; README.md tells
; what the program does.
;
;   VERSION        of the product, three numbers
;   PLUGIN_32      the two builds of the plug-in
;   PLUGIN_64
;   ROOT           of the tree
;   FILES          generated: the macros that install and remove the help pages and the licences
;   COPIES_KB      kilobytes of both builds with their help pages
;   OUTPUT         the installer

Unicode true
!include MUI2.nsh
!include nsDialogs.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh
!include x64.nsh

!define POINTER_SIZE 4 ; the installer is a 32-bit program
!define PLUGIN "Zandermolite.8bf"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zandermolite"
!define APP_PATHS "Software\Microsoft\Windows\CurrentVersion\App Paths"

Name "Zandermolite ${VERSION}"
OutFile "${OUTPUT}"
; An administrator is asked, since plug-in folders mostly belong to the machine; everybody else installs
; with the rights that they have.
RequestExecutionLevel highest
SetCompressor /SOLID zlib
; The same installer from the same files.
SetDateSave off
AllowSkipFiles off
ManifestDPIAware true
BrandingText "Zandermolite ${VERSION}"
VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "FileDescription" "Installer of the plug-in Zandermolite, 32-bit and 64-bit"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Zandermolite authors"
VIAddVersionKey "ProductName" "Zandermolite"
VIAddVersionKey "ProductVersion" "${VERSION}"

!include "${FILES}"
!include "PluginFolders.nsh"
!include "Checks.nsh"
!include "FolderPage.nsh"

!define MUI_ICON "${ROOT}/resources/zandermolite.ico"
!define MUI_UNICON "${ROOT}/resources/zandermolite.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_TEXT "The plug-in is installed. Restart your image editor; the plug-in stands in the \
  submenu Brenvalder of its filter menu.$\r$\n$\r$\nFor an editor that was not listed, add one of the folders \
  win32 and win64 in $INSTDIR to the plug-in folders in its settings."
!insertmacro MUI_PAGE_LICENSE "${ROOT}/LICENSE"
!insertmacro MUI_PAGE_DIRECTORY
Page custom ShowFolderPage LeaveFolderPage
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; For all users or for this one: as the command line says, else as the user's rights allow.
Function ChooseUsers
  SetShellVarContext current
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/CURRENTUSER" $1
  ${IfNot} ${Errors}
    Return
  ${EndIf}
  UserInfo::GetAccountType
  Pop $1
  ${If} $1 == "Admin"
    SetShellVarContext all
  ${EndIf}
  ClearErrors
FunctionEnd

; The folder of the last installation, else the usual one.
Function ChooseProgramFolder
  ReadRegStr $INSTDIR SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $INSTDIR == ""
    ReadRegStr $0 SHCTX "Software\Microsoft\Windows\CurrentVersion" "ProgramFilesDir"
    ${If} $0 == ""
      StrCpy $0 "$LOCALAPPDATA\Programs"
    ${EndIf}
    StrCpy $INSTDIR "$0\Zandermolite"
  ${EndIf}
FunctionEnd

Function .onInit
  InitPluginsDir
  Call StartFolderList
  Call ChooseUsers
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/NOSEARCH" $1
  ${If} ${Errors}
    Call SearchFolders
  ${EndIf}
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  Call AddRememberedFolders
  Call AddFoldersOfCommandLine
  ${If} $INSTDIR == ""
    Call ChooseProgramFolder
  ${EndIf}
FunctionEnd

; Ends a run that cannot go on, before anything was changed. A silent one tells why on standard error.
!macro GiveUpFunction UN
  Function ${UN}GiveUp
    ${If} ${Silent}
      System::Call 'kernel32::AttachConsole(i -1)'
      System::Call 'kernel32::GetStdHandle(i -12) p.R0'
      FileWrite $R0 "$Problem$\r$\n"
    ${EndIf}
    SetErrorLevel $ProblemStatus
    Abort $Problem
  FunctionEnd
!macroend
!insertmacro GiveUpFunction ""
!insertmacro GiveUpFunction "un."

; Files that a newer version no longer has do not stay.
Function RemoveOlderVersion
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == ""
  ${OrIfNot} ${FileExists} "$0\Uninstall.exe"
    Return
  ${EndIf}
  CopyFiles /SILENT "$0\Uninstall.exe" "$PLUGINSDIR\Older.exe"
  ClearErrors
  ; It runs in place and to its end with _?=, which comes last and without quotes.
  ExecWait '"$PLUGINSDIR\Older.exe" /S _?=$0' $1
  ${If} ${Errors}
  ${OrIf} $1 <> 0
    StrCpy $Problem "The older version in $0 could not be removed. Close all image editors and try again."
    StrCpy $ProblemStatus ${STATUS_IN_USE}
    MessageBox MB_OK|MB_ICONSTOP $Problem /SD IDOK
    Call GiveUp
  ${EndIf}
  Delete "$0\Uninstall.exe"
  RMDir $0
FunctionEnd

; Registered before the files are written, so that an installation that is cut off can be removed.
Function Register
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Zandermolite ${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "The Zandermolite authors"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  StrCpy $1 0
  ${For} $0 1 $FolderCount
    Call ReadFolder
    ${If} $Bits != ""
      IntOp $1 $1 + 1
      WriteRegStr SHCTX "${UNINSTALL_KEY}" "PluginFolder$1" $Folder
      WriteRegStr SHCTX "${UNINSTALL_KEY}" "PluginBits$1" $Bits
    ${EndIf}
  ${Next}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "PluginFolders" $1
FunctionEnd

; Copies the plug-in for editors of $Bits bits, with its help pages, to $Folder.
Function InstallPlugin
  SetOutPath $Folder
  ${If} $Bits = 32
    File "/oname=${PLUGIN}" "${PLUGIN_32}"
  ${Else}
    File "/oname=${PLUGIN}" "${PLUGIN_64}"
  ${EndIf}
  !insertmacro InstallHelp "$Folder\Brenvalder Help"
FunctionEnd

Section "Zandermolite"
  ; The files of functions do not count by themselves.
  AddSize ${COPIES_KB}
  ${If} ${Silent}
    Call CheckTargets
    ${If} $Problem != ""
      Call GiveUp
    ${EndIf}
  ${EndIf}
  Call RemoveOlderVersion
  SetOutPath $INSTDIR
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  Call Register
  File "${ROOT}/LICENSE"
  !insertmacro InstallLicences "$INSTDIR\licences"
  StrCpy $Folder "$INSTDIR\win32"
  StrCpy $Bits 32
  Call InstallPlugin
  StrCpy $Folder "$INSTDIR\win64"
  StrCpy $Bits 64
  Call InstallPlugin
  ${For} $0 1 $FolderCount
    Call ReadFolder
    ${If} $Bits != ""
      Call InstallPlugin
    ${EndIf}
  ${Next}
  ; A folder that is current cannot be removed.
  SetOutPath $TEMP
  ${GetSize} $INSTDIR "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

; The registration whose folder this uninstaller stands in.
Function un.onInit
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  SetShellVarContext current
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != $INSTDIR
    SetShellVarContext all
  ${EndIf}
FunctionEnd

; Removes what was installed in $Folder. The folder stays, and with it the user's preference file.
Function un.RemovePlugin
  Delete "$Folder\${PLUGIN}"
  !insertmacro RemoveHelp "$Folder\Brenvalder Help"
FunctionEnd

Section "Uninstall"
again:
  Call un.CheckTargets
  ${If} $Problem != ""
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION $Problem /SD IDCANCEL IDRETRY again
    Call un.GiveUp
  ${EndIf}
  ReadRegDWORD $1 SHCTX "${UNINSTALL_KEY}" "PluginFolders"
  ${For} $0 1 $1
    ReadRegStr $Folder SHCTX "${UNINSTALL_KEY}" "PluginFolder$0"
    Call un.RemovePlugin
  ${Next}
  StrCpy $Folder "$INSTDIR\win32"
  Call un.RemovePlugin
  RMDir $Folder
  StrCpy $Folder "$INSTDIR\win64"
  Call un.RemovePlugin
  RMDir $Folder
  !insertmacro RemoveLicences "$INSTDIR\licences"
  Delete "$INSTDIR\LICENSE"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  Delete "$INSTDIR\Uninstall.exe"
  RMDir $INSTDIR
SectionEnd
