; Installs the instrument and its files in a folder where Windows hosts look for VST plug-ins, and the
; VST 3 bundle and the CLAP plug-in, each with its own copy of these files, where they look for those.
; makensis -DVERSION=... -DHOMEPAGE=... -DFILES=FOLDER -DOUTPUT=FILE setup.nsi
; The instrument is 64-bit only, and so is the installer.
Target amd64-unicode
!include MUI2.nsh
!include LogicLib.nsh

!define NAME "Quarzel Strings"
!define PUBLISHER "Tembrilon"
!define VST3 "$COMMONFILES64\VST3\QuarzelStrings.vst3"
!define CLAP "$COMMONFILES64\CLAP\${NAME}"  ; a single file has its resources beside it
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

Name "${NAME} ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\VSTPlugins\${NAME}"
RequestExecutionLevel admin
SetCompressor /SOLID lzma
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${NAME} installer"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "LegalCopyright" "${NAME} contributors, MIT licence"

!define MUI_DIRECTORYPAGE_TEXT_TOP "Choose a folder below the one where your host looks for VST plug-ins. The instrument has a folder of its own: its skins and its bank lie beside it."
!insertmacro MUI_PAGE_LICENSE "${FILES}\licences\QuarzelStrings.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TEXT "${NAME} is installed for VST 2.4, VST 3 and CLAP.$\r$\n$\r$\nIn your sequencer, search for new plug-ins, add an instrument track with ${NAME}, open its window and play."
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\manual.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Read the manual"
!define MUI_FINISHPAGE_LINK "${HOMEPAGE}"
!define MUI_FINISHPAGE_LINK_LOCATION "${HOMEPAGE}"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Function .onInit
    SetRegView 64
    ; An update goes where the last version went, unless /D= says otherwise.
    ReadRegStr $0 HKLM "${UNINSTALL}" "InstallLocation"
    ${If} $0 != ""
    ${AndIf} $INSTDIR == "$PROGRAMFILES64\VSTPlugins\${NAME}"
        StrCpy $INSTDIR $0
    ${EndIf}
FunctionEnd

; Removes what was delivered; skins and banks that the musician added stay.
!macro RemoveResources FOLDER
    Delete "${FOLDER}\default.fxb"
    Delete "${FOLDER}\ZLM_help.rtf"
    RMDir /r "${FOLDER}\skin"
    RMDir /r "${FOLDER}\Night"
    RMDir /r "${FOLDER}\Opera"
!macroend

!macro RemoveAll FOLDER
    !insertmacro RemoveResources "${FOLDER}"
    Delete "${FOLDER}\QuarzelStrings.dll"
    Delete "${FOLDER}\quarzel-render.exe"
    Delete "${FOLDER}\quarzel-skin.exe"
    Delete "${FOLDER}\README.txt"
    Delete "${FOLDER}\manual.html"
    Delete "${FOLDER}\uninstall.exe"
    RMDir /r "${FOLDER}\licences"
    RMDir /r "${FOLDER}\songs"
    RMDir "${FOLDER}"
    !insertmacro RemoveResources "${VST3}\Contents\Resources"
    Delete "${VST3}\Contents\Resources\moduleinfo.json"
    RMDir "${VST3}\Contents\Resources"
    RMDir /r "${VST3}\Contents\x86_64-win"
    RMDir "${VST3}\Contents"
    RMDir "${VST3}"
    !insertmacro RemoveResources "${CLAP}"
    Delete "${CLAP}\QuarzelStrings.clap"
    RMDir "${CLAP}"
!macroend

Section "" main
    ; An older copy must go: hosts would show both, and it may hold files that are no longer used.
    ReadRegStr $0 HKLM "${UNINSTALL}" "InstallLocation"
    ${If} $0 != ""
        DetailPrint "Removing the older copy in $0"
        !insertmacro RemoveAll "$0"
    ${EndIf}

    SetOutPath "$INSTDIR"
    File /r /x QuarzelStrings.vst3 /x QuarzelStrings.clap "${FILES}\*"
    ; Hosts look for VST 3 here alone.
    SetOutPath "${VST3}"
    File /r "${FILES}\QuarzelStrings.vst3\*"
    SetOutPath "${CLAP}"
    File "${FILES}\QuarzelStrings.clap" "${FILES}\default.fxb" "${FILES}\ZLM_help.rtf"
    SetOutPath "${CLAP}\skin"
    File "${FILES}\skin\*"
    SetOutPath "${CLAP}\Night"
    File "${FILES}\Night\*"
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "${NAME}"
    WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL}" "Publisher" "${PUBLISHER}"
    WriteRegStr HKLM "${UNINSTALL}" "URLInfoAbout" "${HOMEPAGE}"
    WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
    SectionGetSize ${main} $1  ; in KiB
    WriteRegDWORD HKLM "${UNINSTALL}" "EstimatedSize" $1
SectionEnd

Function un.onInit
    SetRegView 64
FunctionEnd

Section Uninstall
    !insertmacro RemoveAll "$INSTDIR"
    DeleteRegKey HKLM "${UNINSTALL}"
SectionEnd
