// Balloon tooltips of scene nodes: shown when the mouse rests on a node that has
// something to say, gone as soon as the mouse moves on. What it says comes from
// its owner; it knows nodes by id only.
#pragma once

#include <windows.h>

#include <functional>

#include "ui/scene/scene.h"
#include "ui/scene/tooltip_text.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

class BalloonTooltip final : private Window {
 public:
  struct Content {
    TooltipText text;
    PixelRect screen;  // the node on the screen, in pixels
  };
  explicit BalloonTooltip(std::function<Content(NodeId)> content) : content_(std::move(content)) {}
  ~BalloonTooltip() override;

  // The window that the tooltips belong to. Their own windows are made when the
  // mouse first rests there.
  void attach(HWND owner) { owner_ = owner; }
  // The mouse is on that node now, or on none. A mouse that moves on hides what
  // is shown and begins to wait anew.
  void hover(NodeId node);
  // Nothing is shown until the mouse has moved again.
  void hide();
  bool shown() const { return shown_; }
  HWND window() const { return tooltip_; }  // nullptr until then

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  bool makeTimer();
  bool makeTooltip();
  void show();
  void take();
  void stopWaiting();
  void await(UINT milliseconds);

  std::function<Content(NodeId)> content_;
  HWND owner_ = nullptr;
  HWND tooltip_ = nullptr;
  NodeId node_;
  POINT rest_{};  // where the mouse came to rest
  bool shown_ = false;
};

}  // namespace varnowick
