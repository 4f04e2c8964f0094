// Whether a dialog, menu or message box of ours is open: while one is, the bar
// stays where it is and nothing else is started. Once the program ends nothing is
// asked any more.
#pragma once

#include <functional>

#include "platform/msg_box.h"

namespace varnowick {

class ModalDepth {
 public:
  bool active() const { return depth_ > 0; }
  // The session is over, or the main window goes: boxes that are open are torn down
  // and have said nothing, and no further ones come up.
  void end() { ended_ = true; }
  bool ended() const { return ended_; }
  // Called when a dialog or box has been closed and nothing else is open.
  void whenDone(std::function<void()> done) { done_ = std::move(done); }

  class Scope {
   public:
    explicit Scope(ModalDepth& depth) : Scope(depth, true) {}
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() {
      if (--depth_.depth_ == 0 && tells_ && depth_.done_) depth_.done_();
    }

   protected:
    Scope(ModalDepth& depth, bool tells) : depth_(depth), tells_(tells) { ++depth_.depth_; }

   private:
    ModalDepth& depth_;
    bool tells_;
  };
  // A menu lies where the mouse is: whoever leaves it leaves the bar.
  class MenuScope : public Scope {
   public:
    explicit MenuScope(ModalDepth& depth) : Scope(depth, false) {}
  };

 private:
  int depth_ = 0;
  bool ended_ = false;
  std::function<void()> done_;
};

// Passes every box on and counts it while it is open.
class ModalMsgBox : public MsgBox {
 public:
  ModalMsgBox(MsgBox& inner, ModalDepth& depth) : inner_(inner), depth_(depth) {}
  MsgAnswer show(const std::wstring& text, unsigned style, const std::wstring& caption) override {
    if (depth_.ended()) return MsgAnswer::None;
    const ModalDepth::Scope scope(depth_);
    const MsgAnswer answer = inner_.show(text, style, caption);
    // What the system answers for a box that goes with its window is not to be relied on.
    return depth_.ended() ? MsgAnswer::None : answer;
  }

 private:
  MsgBox& inner_;
  ModalDepth& depth_;
};

}  // namespace varnowick
