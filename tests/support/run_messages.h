// The message loop of a test. Windows only; the implementation is
// tests/platform/win32/run_messages.cpp.
#pragma once

#include <functional>

namespace varnowick {

// Handles this thread's messages until that is so. False when it has not become so
// within the longest time that a loaded machine may take.
bool runMessagesUntil(const std::function<bool()>& done);

}  // namespace varnowick
