// OLE for the interface thread, which needs it for drops, drags and screen readers:
// all later than the first painting, before which starting it would be the longest
// step of all.
#pragma once

namespace varnowick {

// Starts it unless it has been; false when the system refuses.
bool ensureOle();
// Ends it when it has been started. The last thing a thread does with OLE.
void endOle();

}  // namespace varnowick
