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

// What a source does besides offering.
struct Manners {
  // Deleted as soon as the source may: after its drag, or when it is told of the end.
  std::vector<std::wstring> temporary{};
  bool finishesLater = false;  // its target may finish after the drop
  bool hangs = false;          // when the button comes up; until it is destroyed
};

// A small window in the middle of the screen, with a thread of its own because a
// drag keeps its source busy.
class DragSource {
 public:
  explicit DragSource(Offer offer, Manners manners = {});
  ~DragSource();
  DragSource(const DragSource&) = delete;
  DragSource& operator=(const DragSource&) = delete;

  // Drags with the mouse from the window to that place of the screen and lets go
  // there; the effect that the target chose.
  DWORD dragTo(POINT target);
  // What it was told of a drop that was finished later; none before that.
  bool toldOfEnd() const { return told_ != 0; }

 private:
  static DWORD WINAPI run(void* self);
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void doDrag();

  class Data;
  class Source;
  void deleteTemporary() const;

  Offer offer_;
  Manners manners_;
  KernelHandle goOn_;  // for a source that hangs
  KernelHandle thread_;
  HWND window_ = nullptr;
  volatile LONG ready_ = 0;
  volatile LONG begun_ = 0;
  volatile LONG ended_ = 0;
  volatile LONG told_ = 0;
  DWORD effect_ = 0;
};

// Writes a link as the shell does.
void writeShellLink(const std::wstring& link, const std::wstring& target,
                    const std::wstring& arguments);

}  // namespace varnowick::e2e
