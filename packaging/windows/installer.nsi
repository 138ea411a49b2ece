; The installer and the uninstaller: for one user, without administrator rights, in English, Italian and German.
; Given on the command line: VERSION, LISTS (folder of install.nsh and uninstall.nsh), SETUP (what is made), ICON, PICTURE,
; SIGN (the program that signs a file, or does nothing); where there is a guide, its first page for each language:
; GUIDE_en, GUIDE_it, GUIDE_de (paths below the installation).
; The exit code is 0 when all went well, 2 when the program was running.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true
ManifestSupportedOS all

!include MUI2.nsh

!define TITLE "Corvin4 Manager"
!define PROGRAM "Corvin4Manager.exe"
!define UNINSTALLER "uninstall.exe"
!define REGISTRATION "Software\Microsoft\Windows\CurrentVersion\Uninstall\Corvin4Manager"
!define EXIT_RUNNING 2

Name "${TITLE}"
BrandingText "${TITLE} ${VERSION}"
OutFile "${SETUP}"
InstallDir "$LOCALAPPDATA\Programs\Corvin4Manager"
InstallDirRegKey HKCU "${REGISTRATION}" "InstallLocation"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAM}"
!ifdef GUIDE_en
  ; Offered, not chosen: who only brings the program up to date has read it.
  !define MUI_FINISHPAGE_SHOWREADME
  !define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
  !define MUI_FINISHPAGE_SHOWREADME_TEXT "$(open_guide)"
  !define MUI_FINISHPAGE_SHOWREADME_FUNCTION OpenGuide
!endif
; The installer itself is signed when it is made.
!uninstfinalize '"${SIGN}" "%1"' = 0
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; The first one speaks to users of any other language.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Italian"
!insertmacro MUI_LANGUAGE "German"

LangString running ${LANG_ENGLISH} "${TITLE} is running. Close it, then try again."
LangString running ${LANG_ITALIAN} "${TITLE} è in esecuzione. Chiudilo, poi riprova."
LangString running ${LANG_GERMAN} "${TITLE} läuft gerade. Bitte schließen und noch einmal versuchen."

!ifdef GUIDE_en
  LangString open_guide ${LANG_ENGLISH} "Open the guide"
  LangString open_guide ${LANG_ITALIAN} "Apri la guida"
  LangString open_guide ${LANG_GERMAN} "Anleitung öffnen"
  LangString guide_page ${LANG_ENGLISH} "${GUIDE_en}"
  LangString guide_page ${LANG_ITALIAN} "${GUIDE_it}"
  LangString guide_page ${LANG_GERMAN} "${GUIDE_de}"

  Function OpenGuide
    ExecShell "open" "$INSTDIR\$(guide_page)"
  FunctionEnd
!endif

VIProductVersion "${VERSION}.0.0"
!macro VERSION_TEXTS LANGUAGE DESCRIPTION
  VIAddVersionKey /LANG=${LANGUAGE} "ProductName" "${TITLE}"
  VIAddVersionKey /LANG=${LANGUAGE} "CompanyName" "Q-Arte"
  VIAddVersionKey /LANG=${LANGUAGE} "LegalCopyright" "Q-Arte"
  VIAddVersionKey /LANG=${LANGUAGE} "FileDescription" "${DESCRIPTION}"
  VIAddVersionKey /LANG=${LANGUAGE} "FileVersion" "${VERSION}"
  VIAddVersionKey /LANG=${LANGUAGE} "ProductVersion" "${VERSION}"
!macroend
!insertmacro VERSION_TEXTS ${LANG_ENGLISH} "Installation of ${TITLE}"
!insertmacro VERSION_TEXTS ${LANG_ITALIAN} "Installazione di ${TITLE}"
!insertmacro VERSION_TEXTS ${LANG_GERMAN} "Installation von ${TITLE}"

; Nothing is ever closed by force: a job may be working. A program that runs cannot be opened for writing; one that is not there makes no trouble.
!macro STOP_WHEN_RUNNING
  ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONEXCLAMATION "$(running)" /SD IDOK
      SetErrorLevel ${EXIT_RUNNING}
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

Section
  !insertmacro STOP_WHEN_RUNNING
  ; What an earlier version brought goes first: its list knows files that this one no longer has.
  ${If} ${FileExists} "$INSTDIR\${UNINSTALLER}"
    ExecWait '"$INSTDIR\${UNINSTALLER}" /S _?=$INSTDIR'
    ; It refuses, too, when the program has been started meanwhile.
    !insertmacro STOP_WHEN_RUNNING
  ${EndIf}
  !include "${LISTS}/install.nsh"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  CreateShortcut "$SMPROGRAMS\${TITLE}.lnk" "$INSTDIR\${PROGRAM}"
  WriteRegStr HKCU "${REGISTRATION}" "DisplayName" "${TITLE}"
  WriteRegStr HKCU "${REGISTRATION}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${REGISTRATION}" "DisplayIcon" "$INSTDIR\${PROGRAM}"
  WriteRegStr HKCU "${REGISTRATION}" "Publisher" "Q-Arte"
  WriteRegStr HKCU "${REGISTRATION}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${REGISTRATION}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKCU "${REGISTRATION}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKCU "${REGISTRATION}" "NoModify" 1
  WriteRegDWORD HKCU "${REGISTRATION}" "NoRepair" 1
SectionEnd

; Only what is on the list: whatever else lies in the folder, the settings and the session logs stay.
Section Uninstall
  !insertmacro STOP_WHEN_RUNNING
  !include "${LISTS}/uninstall.nsh"
  Delete "$INSTDIR\${UNINSTALLER}"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${TITLE}.lnk"
  DeleteRegKey HKCU "${REGISTRATION}"
SectionEnd
