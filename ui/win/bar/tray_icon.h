// The icon in the notification area with its tooltip and balloons. It has a
// hidden window of its own and decides nothing about what a click opens.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "platform/win32/handles.h"
#include "sidebar/tray_events.h"
#include "ui/win/toolkit/messages.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

class TrayIcon final : public Window {
 public:
  struct Callbacks {
    std::function<void()> clicked;
    std::function<void(POINT screen)> menu;
    std::function<void()> balloonClicked;  // may be empty
  };
  explicit TrayIcon(Callbacks callbacks) : callbacks_(std::move(callbacks)) {}
  ~TrayIcon() override;

  // Shows or removes the icon. An icon that the taskbar cannot take yet appears
  // as soon as there is a taskbar.
  void show(bool on);
  bool shown() const { return present_; }
  // At most 127 characters are kept.
  void setTooltip(const std::wstring& text);
  // A balloon at the icon; at most 63 and 255 characters. Where the icon is
  // switched off, it is there as long as the balloon. False when it was refused.
  bool balloon(const std::wstring& title, const std::wstring& text, bool warning = false);

  static constexpr UINT kMessage = kMsgTrayIcon;  // of the icon, to its own window
  static constexpr UINT kIconId = 1;

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  bool ready();
  void update();
  bool add();
  void remove();
  void onIcon(UINT event);
  void balloonGone();
  POINT iconPoint() const;

  Callbacks callbacks_;
  TrayEvents events_;
  std::wstring tooltip_ = L"Varnowick";
  IconHandle icon_;
  bool wanted_ = false;
  bool balloonShown_ = false;
  bool present_ = false;
};

}  // namespace varnowick
