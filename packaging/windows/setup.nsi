; Installs the instrument and its files in a folder where Windows hosts look for VST plug-ins, and the
; VST 3 bundle and the CLAP plug-in, each with its own copy of these files, where they look for those.
; makensis -DVERSION=... -DFILES=FOLDER -DOUTPUT=FILE setup.nsi
; The instrument is 64-bit only, and so is the installer.
Target amd64-unicode
!include MUI2.nsh
!include LogicLib.nsh

!define NAME "Quarzel Strings"
!define CLAP "$COMMONFILES64\CLAP\${NAME}"  ; a single file has its resources beside it
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

Name "${NAME} ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\VSTPlugins\${NAME}"
RequestExecutionLevel admin
SetCompressor /SOLID lzma

!define MUI_DIRECTORYPAGE_TEXT_TOP "Choose a folder below the one where your host looks for VST plug-ins. The instrument has a folder of its own: its skins and its bank lie beside it."
!insertmacro MUI_PAGE_LICENSE "${FILES}\licences\QuarzelStrings.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
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

Section
    SetOutPath "$INSTDIR"
    File /r /x QuarzelStrings.vst3 /x QuarzelStrings.clap "${FILES}\*"
    ; Hosts look for VST 3 here alone.
    SetOutPath "$COMMONFILES64\VST3"
    File /r "${FILES}\QuarzelStrings.vst3"
    SetOutPath "${CLAP}"
    File /r /x QuarzelStrings.vst3 /x QuarzelStrings.dll /x licences "${FILES}\*"
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "${NAME}"
    WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
SectionEnd

Function un.onInit
    SetRegView 64
FunctionEnd

; Removes what was delivered; skins and banks that the musician added stay.
!macro RemoveFiles FOLDER LIBRARY
    Delete "${FOLDER}\${LIBRARY}"
    Delete "${FOLDER}\default.fxb"
    Delete "${FOLDER}\ZLM_help.rtf"
    RMDir /r "${FOLDER}\skin"
    RMDir /r "${FOLDER}\Night"
    RMDir /r "${FOLDER}\Opera"
!macroend

Section Uninstall
    !insertmacro RemoveFiles "$INSTDIR" QuarzelStrings.dll
    Delete "$INSTDIR\uninstall.exe"
    RMDir /r "$INSTDIR\licences"
    RMDir "$INSTDIR"
    RMDir /r "$COMMONFILES64\VST3\QuarzelStrings.vst3"
    !insertmacro RemoveFiles "${CLAP}" QuarzelStrings.clap
    RMDir "${CLAP}"
    DeleteRegKey HKLM "${UNINSTALL}"
SectionEnd
