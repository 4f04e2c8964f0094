// The combination that brings up the bar from anywhere. It registers what the
// settings say, on a hidden window of its own, and tells when that is taken; it
// neither changes the settings nor decides what the key opens.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "sidebar/hotkey.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

class GlobalHotkey final : public Window {
 public:
  struct Callbacks {
    std::function<void()> pressed;
    std::function<void(const std::wstring& text)> taken;
  };
  explicit GlobalHotkey(Callbacks callbacks) : callbacks_(std::move(callbacks)) {}
  ~GlobalHotkey() override;

  // Registers, registers anew or gives up the combination. A taken one is told
  // of once; each further call tries it again in silence. Where a stand-in is
  // free, that is registered and nothing told.
  void apply(const Settings& settings);
  // What is registered now.
  std::optional<Hotkey> registered() const { return registered_; }

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  bool tryRegister(int id, Hotkey hotkey) const;
  void release();
  std::vector<Hotkey> freeOnes(Hotkey taken) const;

  Callbacks callbacks_;
  std::optional<Hotkey> registered_;
  std::optional<Hotkey> told_;
  bool held_ = false;
};

}  // namespace varnowick
