// Around the body of every function that the system calls: windows, dialogs,
// threads, enumerations, COM. An exception must not unwind into the system; what
// failed leaves the state as it was.
#pragma once

#include <utility>

namespace varnowick {

// The step's result, or `otherwise` when it throws.
template <class Result, class Step>
Result guardedCallback(Result otherwise, Step&& step) noexcept {
  try {
    return std::forward<Step>(step)();
  } catch (...) {
    return otherwise;
  }
}

}  // namespace varnowick
