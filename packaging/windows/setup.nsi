; SPDX-License-Identifier: GPL-3.0-or-later
; Installs for the current user, without administrator rights. The farm's data is in another folder and is never touched.
; Given by package.sh: VERSION, STAGE (what to install), ICON, OUT. Options of the setup: /S installs silently, /D=FOLDER elsewhere.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
!include MUI2.nsh
!include FileFunc.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\FarmMonitoring"
!define MENU "$SMPROGRAMS\Farm Monitoring"

Name "Farm Monitoring"
OutFile "${OUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\FarmMonitoring"
InstallDirRegKey HKCU "Software\FarmMonitoring" "Folder"
BrandingText "Farm Monitoring ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Farm Monitoring"
VIAddVersionKey FileDescription "Setup of Farm Monitoring"
VIAddVersionKey CompanyName "Torvane Data"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright "GPL-3.0-or-later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\bin\FarmMonitoring.exe"
!insertmacro MUI_PAGE_LICENSE "${STAGE}/Licences/FarmMonitoring.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "The program will be removed. Your farm's data in $LOCALAPPDATA\farm-monitoring stays."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A program that runs cannot be replaced, and may hold what has just been typed.
!macro RefuseWhileOpen PROGRAM
    ClearErrors
    ${If} ${FileExists} "$INSTDIR\bin\${PROGRAM}.exe"
        FileOpen $0 "$INSTDIR\bin\${PROGRAM}.exe" a
        ${If} ${Errors}
            MessageBox MB_ICONSTOP "$INSTDIR\bin\${PROGRAM}.exe cannot be replaced. Close the program, then try again." /SD IDOK
            SetErrorLevel 2
            Quit
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

!macro RefuseWhileAnyIsOpen
    !insertmacro RefuseWhileOpen FarmMonitoring
    !insertmacro RefuseWhileOpen MainModule
    !insertmacro RefuseWhileOpen farmdata
!macroend


Section
    !insertmacro RefuseWhileAnyIsOpen
    SetOverwrite on
    ClearErrors
    SetOutPath "$INSTDIR\bin"
    File "${STAGE}/FarmMonitoring.exe"
    File "${STAGE}/MainModule.exe"
    File "${STAGE}/farmdata.exe"
    SetOutPath "$INSTDIR\share\farm-monitoring\Templates"
    File "${STAGE}/Templates/*.xls"
    SetOutPath "$INSTDIR\Licences"
    File "${STAGE}/Licences/*.txt"
    ; A full disk, or a folder that cannot be written to.
    ${If} ${Errors}
        SetErrorLevel 2
        Abort "Farm Monitoring could not be written to $INSTDIR."
    ${EndIf}

    ; The folder of the farm, in which the command prompt begins. It stays when the program is removed.
    CreateDirectory "$LOCALAPPDATA\farm-monitoring"
    CreateDirectory "${MENU}"
    SetOutPath "$INSTDIR\bin"
    CreateShortcut "${MENU}\Farm Monitoring.lnk" "$INSTDIR\bin\FarmMonitoring.exe"
    CreateShortcut "${MENU}\Main Module.lnk" "$INSTDIR\bin\MainModule.exe"
    SetOutPath "$LOCALAPPDATA\farm-monitoring"
    CreateShortcut "${MENU}\Command prompt for farmdata.lnk" "$SYSDIR\cmd.exe" '/k set "PATH=$INSTDIR\bin;%PATH%"' "$INSTDIR\bin\farmdata.exe"
    SetOutPath "$INSTDIR"

    WriteUninstaller "$INSTDIR\Uninstall.exe"
    CreateShortcut "${MENU}\Uninstall Farm Monitoring.lnk" "$INSTDIR\Uninstall.exe"
    WriteRegStr HKCU "Software\FarmMonitoring" "Folder" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Farm Monitoring"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "Publisher" "Torvane Data"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\bin\FarmMonitoring.exe"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    IntFmt $0 "0x%08X" $0
    WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

Section Uninstall
    !insertmacro RefuseWhileAnyIsOpen
    ; Only what the setup has installed, so that a folder chosen by mistake loses nothing.
    Delete "$INSTDIR\bin\FarmMonitoring.exe"
    Delete "$INSTDIR\bin\MainModule.exe"
    Delete "$INSTDIR\bin\farmdata.exe"
    RMDir "$INSTDIR\bin"
    Delete "$INSTDIR\share\farm-monitoring\Templates\*.xls"
    RMDir "$INSTDIR\share\farm-monitoring\Templates"
    RMDir "$INSTDIR\share\farm-monitoring"
    RMDir "$INSTDIR\share"
    Delete "$INSTDIR\Licences\*.txt"
    RMDir "$INSTDIR\Licences"
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR"
    Delete "${MENU}\*.lnk"
    RMDir "${MENU}"
    DeleteRegKey HKCU "${UNINSTALL}"
    DeleteRegKey HKCU "Software\FarmMonitoring"
SectionEnd
