; The list of plug-in folders that get a copy, and the search for them.
;
; The list is a file beside the installer's own temporary ones, since the language has no arrays: each
; section, counted from 1, holds a Folder and the Bits of the editor that reads it. An entry that was
; taken out has no Bits.

Var FolderFile
Var FolderCount
; Parameters and results of the functions below: a folder without a closing backslash, and "32", "64", or
; empty where that is not known.
Var Folder
Var Bits
; What the search falls back to for a folder whose files do not tell.
Var LikelyBits

Function StartFolderList
  StrCpy $FolderFile "$PLUGINSDIR\folders.ini"
  ; With this mark the system keeps all characters of a name.
  FileOpen $0 $FolderFile w
  FileWriteUTF16LE /BOM $0 "$\r$\n"
  FileClose $0
  StrCpy $FolderCount 0
FunctionEnd

; Reads entry $0 into $Folder and $Bits.
Function ReadFolder
  ReadINIStr $Folder $FolderFile $0 Folder
  ReadINIStr $Bits $FolderFile $0 Bits
FunctionEnd

Function WithoutClosingBackslash
  Push $0
  StrCpy $0 $Folder 1 -1
  ${If} $0 == "\"
    StrCpy $Folder $Folder -1
  ${EndIf}
  Pop $0
FunctionEnd

; Adds $Folder with $Bits. A folder that is listed keeps its place and takes the new bits.
Function AddFolder
  Push $0
  Push $1
  Call WithoutClosingBackslash
  ${For} $0 1 $FolderCount
    ReadINIStr $1 $FolderFile $0 Folder
    ${IfThen} $1 == $Folder ${|} ${ExitFor} ${|}
  ${Next}
  ${If} $0 > $FolderCount
    StrCpy $FolderCount $0
  ${EndIf}
  WriteINIStr $FolderFile $0 Folder $Folder
  WriteINIStr $FolderFile $0 Bits $Bits
  Pop $1
  Pop $0
FunctionEnd

; $R1 becomes "32" or "64" for the Windows program or library at the path in $R0, else empty.
Function BitsOfFile
  StrCpy $R1 ""
  ClearErrors
  FileOpen $R2 $R0 r
  ${If} ${Errors}
    Return
  ${EndIf}
  ; The offset of the header stands at 60; behind its four letters, the machine.
  FileSeek $R2 60
  FileReadByte $R2 $R3
  FileReadByte $R2 $R4
  IntOp $R3 $R3 + 0
  IntOp $R4 $R4 * 256
  IntOp $R3 $R3 + $R4
  FileSeek $R2 $R3
  FileReadByte $R2 $R3
  FileReadByte $R2 $R4
  ${If} $R3 = 0x50
  ${AndIf} $R4 = 0x45
    FileReadByte $R2 $R3
    FileReadByte $R2 $R3
    FileReadByte $R2 $R3
    FileReadByte $R2 $R4
    ${If} $R3 = 0x4C
    ${AndIf} $R4 = 0x01
      StrCpy $R1 32
    ${ElseIf} $R3 = 0x64
    ${AndIf} $R4 = 0x86
      StrCpy $R1 64
    ${EndIf}
  ${EndIf}
  FileClose $R2
FunctionEnd

; Joins the bits of the files in the folder $R5 that match $R6 into $Bits, which becomes "mixed" where
; they differ. This plug-in itself and uninstallers, which are often 32-bit, do not count.
Function BitsOfFiles
  FindFirst $R7 $R8 "$R5\$R6"
  ${DoWhile} $R8 != ""
    StrCpy $R0 $R8 5
    ${If} $R8 != "${PLUGIN}"
    ${AndIf} $R0 != "unins"
      StrCpy $R0 "$R5\$R8"
      Call BitsOfFile
      ${If} $R1 == ""
        Nop
      ${ElseIf} $Bits == ""
        StrCpy $Bits $R1
      ${ElseIf} $Bits != $R1
        StrCpy $Bits mixed
      ${EndIf}
    ${EndIf}
    FindNext $R7 $R8
  ${Loop}
  FindClose $R7
FunctionEnd

; Joins the bits of the plug-ins in $Folder and in the folders right below it into $Bits.
Function BitsOfPlugins
  StrCpy $R6 "*.8bf"
  StrCpy $R5 $Folder
  Call BitsOfFiles
  FindFirst $1 $2 "$Folder\*.*"
  ${DoWhile} $2 != ""
    ${If} $2 != "."
    ${AndIf} $2 != ".."
    ${AndIf} ${FileExists} "$Folder\$2\*.*"
      StrCpy $R5 "$Folder\$2"
      Call BitsOfFiles
    ${EndIf}
    FindNext $1 $2
  ${Loop}
  FindClose $1
FunctionEnd

; $Bits becomes those of the editor that reads $Folder, as far as files tell: the plug-ins that are in it
; already, else the programs of the nearest folder above it that has any. Empty if they do not agree.
Function BitsOfFolder
  ${IfNot} ${RunningX64}
    StrCpy $Bits 32
    Return
  ${EndIf}
  Push $1
  Push $2
  StrCpy $Bits ""
  Call BitsOfPlugins
  StrCpy $R6 "*.exe"
  StrCpy $R5 $Folder
  ${For} $1 1 3
    ${IfThen} $Bits != "" ${|} ${ExitFor} ${|}
    ${GetParent} $R5 $R5
    StrLen $2 $R5
    ${IfThen} $2 < 3 ${|} ${ExitFor} ${|}
    Call BitsOfFiles
  ${Next}
  ${IfThen} $Bits == mixed ${|} StrCpy $Bits "" ${|}
  Pop $2
  Pop $1
FunctionEnd

; Lists the $Folder that the search came upon, if it is there and its bits can be told.
Function AddFoundFolder
  Call WithoutClosingBackslash
  ${If} $Folder != ""
  ${AndIf} ${FileExists} "$Folder\*.*"
    Call BitsOfFolder
    ${IfThen} $Bits == "" ${|} StrCpy $Bits $LikelyBits ${|}
    ${If} $Bits != ""
      Call AddFolder
    ${EndIf}
  ${EndIf}
FunctionEnd

; Editors that register themselves with each version: the plug-in folder as a value or as a key, or only
; the folder of the program.
!macro SearchVersions ROOT KEY
  StrCpy $0 0
  ${Do}
    EnumRegKey $1 ${ROOT} "${KEY}" $0
    ${IfThen} $1 == "" ${|} ${ExitDo} ${|}
    IntOp $0 $0 + 1
    ReadRegStr $Folder ${ROOT} "${KEY}\$1" "PluginPath"
    ${If} $Folder == ""
      ReadRegStr $Folder ${ROOT} "${KEY}\$1\PluginPath" ""
    ${EndIf}
    ${If} $Folder == ""
      ReadRegStr $Folder ${ROOT} "${KEY}\$1" "ApplicationPath"
      ${If} $Folder != ""
        Call WithoutClosingBackslash
        StrCpy $Folder "$Folder\Plug-ins"
      ${EndIf}
    ${EndIf}
    Call AddFoundFolder
  ${Loop}
!macroend

; $Folder, if it holds plug-ins: many programs have a folder of that name for plug-ins of their own kind.
Function AddFolderWithPlugins
  ${If} ${FileExists} "$Folder\*.8bf"
    Call AddFoundFolder
  ${EndIf}
FunctionEnd

; Programs that the system knows by name: those beside which plug-ins stand are editors that read them.
!macro SearchPrograms ROOT
  StrCpy $0 0
  ${Do}
    EnumRegKey $1 ${ROOT} "${APP_PATHS}" $0
    ${IfThen} $1 == "" ${|} ${ExitDo} ${|}
    IntOp $0 $0 + 1
    ReadRegStr $2 ${ROOT} "${APP_PATHS}\$1" ""
    StrCpy $3 $2 1
    ${If} $3 == '"'
      StrCpy $2 $2 -1 1
    ${EndIf}
    ${If} $2 != ""
      ${GetParent} $2 $3
      StrCpy $R0 $2
      Call BitsOfFile
      StrCpy $LikelyBits $R1
      StrCpy $Folder "$3\Plug-ins"
      Call AddFolderWithPlugins
      StrCpy $Folder "$3\Plug-ins\Filters"
      Call AddFolderWithPlugins
      StrCpy $Folder "$3\Plugins"
      Call AddFolderWithPlugins
    ${EndIf}
  ${Loop}
!macroend

!macro SearchRegistry ROOT
  Push $LikelyBits
  !insertmacro SearchVersions ${ROOT} "Software\Adobe\Photoshop"
  !insertmacro SearchVersions ${ROOT} "Software\Adobe\Photoshop Elements"
  !insertmacro SearchPrograms ${ROOT}
  Pop $LikelyBits
!macroend

; Lists the plug-in folders of all editors that can be found. A program writes to its own half of the
; machine's registry; the user's is one for all.
Function SearchFolders
  StrCpy $LikelyBits 32
  SetRegView 32
  !insertmacro SearchRegistry HKLM
  ${If} ${RunningX64}
    StrCpy $LikelyBits 64
    SetRegView 64
    !insertmacro SearchRegistry HKLM
    StrCpy $LikelyBits ""
  ${EndIf}
  !insertmacro SearchRegistry HKCU
FunctionEnd

; Lists the folders that the installation of an older version was given, as far as they are there.
Function AddRememberedFolders
  ReadRegDWORD $1 SHCTX "${UNINSTALL_KEY}" "PluginFolders"
  ${For} $0 1 $1
    ReadRegStr $Folder SHCTX "${UNINSTALL_KEY}" "PluginFolder$0"
    ReadRegStr $Bits SHCTX "${UNINSTALL_KEY}" "PluginBits$0"
    ${If} $Bits != ""
    ${AndIf} ${FileExists} "$Folder\*.*"
      Call AddFolder
    ${EndIf}
  ${Next}
FunctionEnd

; Lists the folders in $1, which semicolons part, with $Bits.
Function AddFolders
  Push $0
  ${Do}
    ${WordFind} $1 ";" "+1" $Folder
    ${If} $Folder != ""
      Call AddFolder
    ${EndIf}
    ClearErrors
    ${WordFind} $1 ";" "E+1}" $0
    ${IfThen} ${Errors} ${|} ${ExitDo} ${|}
    StrCpy $1 $0
  ${LoopUntil} $1 == ""
  ClearErrors
  Pop $0
FunctionEnd

; Lists the folders of /PLUGINS32= and /PLUGINS64=. The system splits the command line, since shells put
; the quotes of a name with blanks in different places.
Function AddFoldersOfCommandLine
  StrCpy $1 $CMDLINE
  System::Call 'shell32::CommandLineToArgvW(w r1, *i .r2) p.r3'
  IntOp $2 $2 - 1
  ${For} $0 1 $2
    IntOp $4 $0 * ${POINTER_SIZE}
    IntOp $4 $3 + $4
    System::Call '*$4(w .r1)'
    StrCpy $4 $1 11
    StrCpy $1 $1 "" 11
    ${If} $4 == "/PLUGINS32="
      StrCpy $Bits 32
      Call AddFolders
    ${ElseIf} $4 == "/PLUGINS64="
      StrCpy $Bits 64
      Call AddFolders
    ${EndIf}
  ${Next}
  System::Call 'kernel32::LocalFree(p r3)'
FunctionEnd
