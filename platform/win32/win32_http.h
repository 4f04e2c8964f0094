// Http on the system's own engine. Every request is sent without cookies, names
// or passwords: nothing of the user goes out with it. Redirects are followed
// here, to http and https only.
#pragma once

#include <windows.h>

#include "platform/http.h"

namespace varnowick {

class Win32Http : public Http {
 public:
  // When the event is set, every request ends at once with an error. It is only
  // borrowed; nullptr for none.
  explicit Win32Http(HANDLE cancel = nullptr) : cancel_(cancel) {}
  // Waits in the calling thread and runs no messages meanwhile.
  HttpReply get(const HttpRequest& request) override;

 private:
  HANDLE cancel_;
};

}  // namespace varnowick
