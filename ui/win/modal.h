// Whether a dialog, menu or message box of ours is open: while one is, the bar
// stays where it is and nothing else is started.
#pragma once

#include "platform/msg_box.h"

namespace varnowick {

class ModalDepth {
 public:
  bool active() const { return depth_ > 0; }

  class Scope {
   public:
    explicit Scope(ModalDepth& depth) : depth_(depth) { ++depth_.depth_; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { --depth_.depth_; }

   private:
    ModalDepth& depth_;
  };

 private:
  int depth_ = 0;
};

// Passes every box on and counts it while it is open.
class ModalMsgBox : public MsgBox {
 public:
  ModalMsgBox(MsgBox& inner, ModalDepth& depth) : inner_(inner), depth_(depth) {}
  int show(const std::wstring& text, unsigned style, const std::wstring& caption) override {
    const ModalDepth::Scope scope(depth_);
    return inner_.show(text, style, caption);
  }

 private:
  MsgBox& inner_;
  ModalDepth& depth_;
};

}  // namespace varnowick
