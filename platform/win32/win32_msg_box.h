// The system's message box. It works before the program has any window; once
// there is one it is told, so that boxes belong to it.
#pragma once

#include <functional>

#include "platform/msg_box.h"
#include "platform/shell.h"

namespace varnowick {

class Win32MsgBox : public MsgBox {
 public:
  // Asked at every box for the window that owns it; none is a good answer.
  void setOwner(std::function<OwnerWindow()> owner) { owner_ = std::move(owner); }
  MsgAnswer show(const std::wstring& text, unsigned style, const std::wstring& caption) override;

 private:
  std::function<OwnerWindow()> owner_;
};

}  // namespace varnowick
