// Saving, ending and restarting from the main window.

#include "core/settings_table.h"
#include "core/startup.h"
#include "platform/msg_box.h"
#include "platform/win32/dll_path.h"
#include "platform/win32/handles.h"
#include "platform/win32/shutdown_block.h"
#include "ui/win/bar/frm_main.h"

namespace varnowick {
namespace {

// How long the end may wait for the disk; then the journal stays for the next start.
constexpr unsigned kEndPatience = 10'000;     // ms
constexpr unsigned kSessionPatience = 3'000;  // the system waits some 5 s

// Starts the restarter with a handle on which it can wait for this process.
bool startRestarter(const std::wstring& path) {
  KernelHandle self;
  if (!DuplicateHandle(GetCurrentProcess(), GetCurrentProcess(), GetCurrentProcess(), self.put(),
                       SYNCHRONIZE, TRUE, 0))
    return false;
  const auto value = reinterpret_cast<std::uintptr_t>(self.get());
  std::wstring commandLine = L"\"" + path + L"\" " + std::to_wstring(value);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION process{};
  const OwnDllPathForChildren children;
  if (!CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                      &startup, &process))
    return false;
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return true;
}

}  // namespace

SaveResult frmMain::save(bool recovery) {
  timers_.stop(TimerId::TimerSave);
  Settings& settings = document_.settings;
  settings.window = docking_.rectToSave();
  settings.windowState = docking_.windowState();
  settings.hidden = docking_.rules().collapseSide() != ScreenEdge::None;
  SaveResult result = store_.SaveDesktop(document_, recovery);
  if (result.outcome == SaveResult::Outcome::Saved) {
    saveFailureTold_ = false;
    announce(handle(), kEventSaved);
  }
  return result;
}

void frmMain::workspaceChanged() {
  extras_.workspaceChanged();
  undo_.changed();
  const SaveResult result = save(true);
  // The next change would only say the same again.
  if (result || saveFailureTold_) return;
  saveFailureTold_ = true;
  platform_.msgBox.show(saveFailureMessage(result), kMsgOkOnly | kMsgCritical, kProgramTitle);
}

void frmMain::saveWorkspace() {
  const SaveResult result = save(false);
  if (result.outcome == SaveResult::Outcome::Saved)
    platform_.msgBox.show(L"Workspace Saved", kMsgOkOnly | kMsgInformation, kProgramTitle);
  else if (!result)
    platform_.msgBox.show(saveFailureMessage(result), kMsgOkOnly | kMsgCritical, kProgramTitle);
}

void frmMain::loadDefaultSettings() {
  if (!confirmDefaultSettings(platform_.msgBox)) return;
  changeSettings(&InitDefaultSettings);
}

void frmMain::changeSettings(const SettingsChange& change) {
  const Settings before = document_.settings;
  change(document_.settings);
  applySettings(affected(before, document_.settings));
  workspaceChanged();
}

void frmMain::applySettings(unsigned affects) {
  if (affects & kAffectsPalette) applyPalette();
  if (affects & kAffectsLayout) {
    rebuildScene();
    detached_.refreshAll();
  } else if (affects & (kAffectsPalette | kAffectsFrame)) {
    relayout();
  }
  if (affects & kAffectsOpacity) docking_.apply(docking_.rules().opacityChanged(docking_.inputs()));
  if (affects & (kAffectsTray | kAffectsHotkey)) extras_.applySettings();
  if (affects & kAffectsToolbar) extras_.arrange();
  if (affects & kAffectsWeb) images_.setWeb(true, document_.settings.rssUseProxy);
}

void frmMain::restartWithoutRecentChanges() {
  if (!mayLeaveFiles()) return;
  const RestartDecision decision =
      decideRestart(platform_.files, platform_.system, platform_.msgBox);
  if (!decision.restart) return;
  if (const SaveResult givenUp = store_.giveUpRecentChanges(); !givenUp) {
    platform_.msgBox.show(L"The recent changes could not be given up.\r\n\r\n" + givenUp.file +
                              L"\r\n" + givenUp.reason,
                          kMsgExclamation, kProgramTitle);
    return;
  }
  if (!startRestarter(decision.restarterPath)) {
    store_.suppressSaving(false);
    // The recovery copy has gone already.
    workspaceChanged();
    platform_.msgBox.show(L"Can't start: " + decision.restarterPath, kMsgExclamation,
                          kProgramTitle);
    return;
  }
  endProgram();
}

// The process takes the threads that work on files with it.
bool frmMain::mayLeaveFiles() {
  constexpr const wchar_t* kFilesUnderWay =
      L"Files are still being copied, moved or deleted.\r\n\r\nEnd the program all the same?";
  return !folders_.busy() || platform_.msgBox.saysYes(kFilesUnderWay, kMsgQuestion, kProgramTitle);
}

void frmMain::exitProgram() {
  if (!ended_ && mayLeaveFiles()) endProgram();
}

void frmMain::endProgram() {
  if (ended_) return;
  pane_.endEditing();
  detached_.endEditing();
  ended_ = true;
  if (const SaveResult result = save(false); !result) {
    const std::wstring question =
        saveFailureMessage(result) + L"\r\n\r\nEnd the program without saving?";
    ended_ = platform_.msgBox.saysYes(question, kMsgCritical, kProgramTitle);
  }
  if (!ended_) return;
  store_.finish(kEndPatience);
  end();
}

// There is no time for questions: what cannot be saved now stays recoverable.
void frmMain::endSession() {
  if (ended_) return;
  modal_.end();
  {
    const ShutdownBlock block(handle(), L"Varnowick is saving the workspace.");
    pane_.endEditing();
    detached_.endEditing();
    ended_ = true;
    save(false);
    store_.finish(kSessionPatience);
  }
  end();
}

// A message box that was open returns only after the window is gone; what it was
// about must not be written any more.
void frmMain::end() {
  modal_.end();
  store_.suppressSaving(true);
  detached_.closeAll();
  destroy();
}

}  // namespace varnowick
