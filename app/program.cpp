#include "app/program.h"

#include <windows.h>

#include "core/desktop_store.h"
#include "core/startup.h"
#include "platform/platform.h"
#include "platform/win32/background.h"
#include "platform/win32/instance_guard.h"
#include "platform/win32/ole_session.h"
#include "platform/win32/win32_clock.h"
#include "platform/win32/win32_fetcher.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_flusher.h"
#include "platform/win32/win32_msg_box.h"
#include "platform/win32/win32_screen.h"
#include "platform/win32/win32_shell.h"
#include "platform/win32/win32_sound.h"
#include "platform/win32/win32_system.h"
#include "platform/win32/win32_text_codec.h"
#include "ui/win/bar/frm_main.h"
#include "ui/win/dialogs/frm_splash.h"
#include "ui/win/toolkit/modal.h"
#include "ui/win/toolkit/modal_shell.h"
#include "ui/win/toolkit/wheel.h"

namespace varnowick {
namespace {

int runMessageLoop() {
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    routeWheel(message);
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

}  // namespace

int Main() {
  Win32Files files;
  Win32TextCodec codec;
  Win32MsgBox systemMsgBox;
  Win32Shell shell;
  Win32System system;
  Win32Sound sound;
  Win32Clock clock;
  Win32Cursor cursor;
  Win32Monitors monitors;
  ModalDepth modal;
  ModalMsgBox msgBox(systemMsgBox, modal);
  ModalShell modalShell(shell, modal);
  const Platform platform{files, codec, msgBox, modalShell, system, sound, clock, cursor, monitors};

  // Drives without a disk must not raise the system's own boxes.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  // Sounds and other files of the program are named bare and found there.
  SetCurrentDirectoryW(system.programFolder().c_str());

  const StartDecision start = decideStart(files, system, msgBox);
  if (!start.mayRun) return 0;
  const InstanceGuard guard(start.dataFolder);
  if (!guard.first()) {
    if (!guard.bringFirstForward())
      msgBox.show(
          L"Varnowick is running already with this data folder, but its window cannot be reached "
          L"from here. It may belong to another session or user, or run with higher "
          L"rights.\r\n\r\n" +
              start.dataFolder,
          kMsgExclamation, kProgramTitle);
    return 0;
  }

  Doorbell doorbell;
  Win32Fetchers fetchers(doorbell);
  Win32Flusher flusher(doorbell);
  DesktopStore store({files, flusher, [](unsigned milliseconds) { Sleep(milliseconds); }}, codec,
                     msgBox, start.dataFolder);
  frmSplash splash;
  flusher.notify([&store] { store.flushed(); });
  frmMain main(platform, store, modal, doorbell, fetchers);
  splash.open();
  if (!main.open()) return 1;
  systemMsgBox.setOwner([&] {
    const HWND owner = IsWindowVisible(main.handle()) ? main.handle() : nullptr;
    return OwnerWindow{reinterpret_cast<std::uintptr_t>(owner)};
  });
  guard.announceWindow(main.handle());
  if (!main.load([&](const std::wstring& text) { splash.progress(text); })) return 0;
  main.show();
  splash.close();
  main.begin();
  if (!ensureOle()) return 1;
  return runMessageLoop();
}

}  // namespace varnowick
