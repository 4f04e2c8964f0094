// Where an exception ends that is thrown in something that COM calls: it must not
// reach the caller, which may be another process.
#pragma once

#include <windows.h>

#include <new>
#include <utility>

namespace varnowick {

// What the work answers, or why it has none.
template <class Work>
HRESULT comGuarded(Work&& work) noexcept {
  try {
    return std::forward<Work>(work)();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace varnowick
