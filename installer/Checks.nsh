; Whether files can be written and replaced, looked at before anything is changed, so that an installation
; or its removal is done as a whole or not at all.

; What is in the way, in words; empty if nothing is. With it the exit status of a silent run.
Var Problem
Var ProblemStatus
!define STATUS_NOT_WRITABLE 3
!define STATUS_IN_USE 4

; $Problem tells why the file $R0 cannot be replaced; it stays as it is if the file can be, or is not there.
!macro CheckFileFunction UN
  Function ${UN}CheckFile
    ${IfNot} ${FileExists} $R0
      Return
    ${EndIf}
    ; Opened for reading and writing, shared with nobody, only if it exists. A library that is loaded
    ; cannot be opened for writing.
    System::Call 'kernel32::CreateFileW(w R0, i 0xC0000000, i 0, p 0, i 3, i 0, p 0) p.R1 ?e'
    Pop $R2
    ${If} $R1 != -1
      System::Call 'kernel32::CloseHandle(p R1)'
    ${ElseIf} $R2 = 32 ; ERROR_SHARING_VIOLATION
    ${OrIf} $R2 = 1224 ; ERROR_USER_MAPPED_FILE
      StrCpy $Problem "$R0 is in use. Close the image editor that has loaded it."
      StrCpy $ProblemStatus ${STATUS_IN_USE}
    ${Else}
      StrCpy $Problem "$R0 cannot be replaced (system error $R2)."
      StrCpy $ProblemStatus ${STATUS_NOT_WRITABLE}
    ${EndIf}
  FunctionEnd
!macroend
!insertmacro CheckFileFunction ""
!insertmacro CheckFileFunction "un."

; $Problem tells why nothing can be written to the folder $R0, or that it is not there.
Function CheckFolder
  ${IfNot} ${FileExists} "$R0\*.*"
    StrCpy $Problem "There is no folder $R0."
    StrCpy $ProblemStatus ${STATUS_NOT_WRITABLE}
    Return
  ${EndIf}
  ; A new file, which goes when it is closed.
  StrCpy $R2 "$R0\Zandermolite.tmp"
  System::Call 'kernel32::CreateFileW(w R2, i 0x40000000, i 0, p 0, i 1, i 0x04000000, p 0) p.R1'
  ${If} $R1 == -1
    StrCpy $Problem "Nothing can be written to $R0. Choose another folder, or start the \
      installer as an administrator."
    StrCpy $ProblemStatus ${STATUS_NOT_WRITABLE}
  ${Else}
    System::Call 'kernel32::CloseHandle(p R1)'
  ${EndIf}
FunctionEnd

; The program's folder is made if need be, and does not stay if it serves no purpose.
Function CheckProgramFolder
  StrCpy $R0 "$INSTDIR\win32\${PLUGIN}"
  Call CheckFile
  StrCpy $R0 "$INSTDIR\win64\${PLUGIN}"
  Call CheckFile
  ${If} $Problem == ""
    CreateDirectory $INSTDIR
    StrCpy $R0 $INSTDIR
    Call CheckFolder
    RMDir $INSTDIR
  ${EndIf}
FunctionEnd

; $Problem tells what is in the way of the installation.
Function CheckTargets
  StrCpy $Problem ""
  ${For} $0 1 $FolderCount
    Call ReadFolder
    ${If} $Bits != ""
      StrCpy $R0 $Folder
      Call CheckFolder
      StrCpy $R0 "$Folder\${PLUGIN}"
      Call CheckFile
      ${IfThen} $Problem != "" ${|} Return ${|}
    ${EndIf}
  ${Next}
  Call CheckProgramFolder
FunctionEnd

; $Problem tells what is in the way of the removal.
Function un.CheckTargets
  StrCpy $Problem ""
  StrCpy $R0 "$INSTDIR\win32\${PLUGIN}"
  Call un.CheckFile
  StrCpy $R0 "$INSTDIR\win64\${PLUGIN}"
  Call un.CheckFile
  ReadRegDWORD $1 SHCTX "${UNINSTALL_KEY}" "PluginFolders"
  ${For} $0 1 $1
    ReadRegStr $Folder SHCTX "${UNINSTALL_KEY}" "PluginFolder$0"
    StrCpy $R0 "$Folder\${PLUGIN}"
    Call un.CheckFile
  ${Next}
FunctionEnd
