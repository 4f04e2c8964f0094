#include "platform/win32/ole_session.h"

#include <ole2.h>

namespace varnowick {
namespace {

bool g_started = false;  // on the interface thread, the only caller

}  // namespace

bool ensureOle() {
  if (!g_started) g_started = SUCCEEDED(OleInitialize(nullptr));
  return g_started;
}

void endOle() {
  if (g_started) OleUninitialize();
  g_started = false;
}

}  // namespace varnowick
