// What another program offers for dropping and pasting: a data object of any
// formats, a window from which the mouse drags it, and the clipboard. Knows
// nothing of the program that takes it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/win32/handles.h"

namespace varnowick::e2e {

struct OfferedFormat {
  UINT format = 0;
  std::string bytes{};  // the memory block as it is handed over
};
using Offer = std::vector<OfferedFormat>;

Offer offerFiles(const std::vector<std::wstring>& paths);
Offer offerText(const std::wstring& text);
// As browsers do: the address, and its title as the name of a link file.
Offer offerAddress(const std::wstring& address, const std::wstring& title);

void putOnClipboard(const Offer& offer);

// A small window in the middle of the screen, with a thread of its own because a
// drag keeps its source busy.
class DragSource {
 public:
  explicit DragSource(Offer offer);
  ~DragSource();
  DragSource(const DragSource&) = delete;
  DragSource& operator=(const DragSource&) = delete;

  // Drags with the mouse from the window to that place of the screen and lets go
  // there; the effect that the target chose.
  DWORD dragTo(POINT target);

 private:
  static DWORD WINAPI run(void* self);
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void doDrag();

  Offer offer_;
  KernelHandle thread_;
  HWND window_ = nullptr;
  volatile LONG ready_ = 0;
  volatile LONG begun_ = 0;
  volatile LONG ended_ = 0;
  DWORD effect_ = 0;
};

// Writes a link as the shell does.
void writeShellLink(const std::wstring& link, const std::wstring& target,
                    const std::wstring& arguments);

}  // namespace varnowick::e2e
