// The line that offers to take a removal back: what it says, and how long it has
// something to say. It knows the history and no window; the window ends it in time.
#pragma once

#include <string>

#include "core/undo_history.h"

namespace varnowick {

class RemovedLine {
 public:
  // After anything may have been changed. A removal makes a new line, any other step
  // ends it. True when the line is another one now.
  bool update(const UndoHistory& history);
  // True when there was a line.
  bool end();
  const std::wstring& text() const { return text_; }  // empty: no line

 private:
  std::wstring text_;
  unsigned version_ = 0;
};

}  // namespace varnowick
