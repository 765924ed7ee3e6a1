; The page on which the user sees and changes the list of plug-in folders.

Var FolderBox
; The entry of the list that is selected, counted from 1; 0 if none is.
Var Selected

; Shows the list; an entry that was taken out has no line. A long folder can be scrolled.
Function ShowFolders
  SendMessage $FolderBox ${LB_RESETCONTENT} 0 0
  StrCpy $2 0
  ${For} $0 1 $FolderCount
    Call ReadFolder
    ${If} $Bits != ""
      ${NSD_LB_AddString} $FolderBox "$Bits-bit: $Folder"
      StrLen $1 "$Bits-bit: $Folder"
      ${IfThen} $1 > $2 ${|} StrCpy $2 $1 ${|}
    ${EndIf}
  ${Next}
  ; An average character is four dialog units wide.
  IntOp $2 $2 * 4
  System::Call '*(i 0, i 0, i r2, i 0) p.r1'
  System::Call 'user32::MapDialogRect(p $HWNDPARENT, p r1)'
  System::Call '*$1(i, i, i .r2, i)'
  System::Free $1
  SendMessage $FolderBox ${LB_SETHORIZONTALEXTENT} $2 0
FunctionEnd

; Finds the entry of the selected line: the lines are the entries that have bits, in their order.
Function FindSelected
  StrCpy $Selected 0
  SendMessage $FolderBox ${LB_GETCURSEL} 0 0 $1
  ${If} $1 < 0
    Return
  ${EndIf}
  ${For} $0 1 $FolderCount
    Call ReadFolder
    ${If} $Bits != ""
      IntOp $1 $1 - 1
      ${If} $1 < 0
        StrCpy $Selected $0
        Return
      ${EndIf}
    ${EndIf}
  ${Next}
FunctionEnd

Function OnAdd
  Pop $0
  nsDialogs::SelectFolderDialog "The folder from which the image editor reads plug-ins" "$PROGRAMFILES64"
  Pop $Folder
  ${If} $Folder == error
    Return
  ${EndIf}
  Call BitsOfFolder
  ${If} $Bits == ""
    StrCpy $Bits 64
    MessageBox MB_YESNO|MB_ICONQUESTION "Is the image editor that reads$\r$\n$Folder$\r$\na 64-bit program?" IDYES known
    StrCpy $Bits 32
  known:
  ${EndIf}
  Call AddFolder
  Call ShowFolders
FunctionEnd

Function OnRemove
  Pop $0
  Call FindSelected
  ${If} $Selected <> 0
    WriteINIStr $FolderFile $Selected Bits ""
    Call ShowFolders
  ${EndIf}
FunctionEnd

Function OnOtherBits
  Pop $0
  Call FindSelected
  ${If} $Selected <> 0
    IntOp $Bits 96 - $Bits
    WriteINIStr $FolderFile $Selected Bits $Bits
    Call ShowFolders
  ${EndIf}
FunctionEnd

Function ShowFolderPage
  !insertmacro MUI_HEADER_TEXT "Image editors" "Choose the folders that get the plug-in."
  nsDialogs::Create 1018
  Pop $0
  ${If} $0 == error
    Abort
  ${EndIf}
  ${NSD_CreateLabel} 0 0 100% 20u "An image editor reads plug-ins from a folder of its own. The plug-in \
    and its help are copied to the folders in this list, for 32-bit or for 64-bit editors."
  Pop $0
  nsDialogs::CreateControl ${__NSD_ListBox_CLASS} ${__NSD_ListBox_STYLE}|${WS_HSCROLL} \
    ${__NSD_ListBox_EXSTYLE} 0 24u 100% 90u ""
  Pop $FolderBox
  ${NSD_CreateButton} 0 120u 80u 15u "&Add a folder..."
  Pop $0
  ${NSD_OnClick} $0 OnAdd
  ${NSD_CreateButton} 84u 120u 80u 15u "&Remove"
  Pop $0
  ${NSD_OnClick} $0 OnRemove
  ${If} ${RunningX64}
    ${NSD_CreateButton} 168u 120u 80u 15u "&32 or 64 bits"
    Pop $0
    ${NSD_OnClick} $0 OnOtherBits
  ${EndIf}
  Call ShowFolders
  nsDialogs::Show
FunctionEnd

; Goes on only with a list that is meant to be empty, or one whose folders can be written.
Function LeaveFolderPage
  SendMessage $FolderBox ${LB_GETCOUNT} 0 0 $0
  ${If} $0 = 0
    MessageBox MB_OKCANCEL|MB_ICONINFORMATION "No folder is chosen. To use the plug-in, add one of the \
      folders win32 and win64 in$\r$\n$INSTDIR$\r$\nto the plug-in folders in your image editor's \
      settings." IDOK go
    Abort
  go:
  ${EndIf}
again:
  Call CheckTargets
  ${If} $Problem != ""
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION $Problem IDRETRY again
    Abort
  ${EndIf}
FunctionEnd
