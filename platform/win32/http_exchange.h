// One exchange on the system's own http engine, in the calling thread. Every request
// is sent without cookies, names or passwords of the user. Redirects are followed
// here: to http and https only, and from https never to http.
#pragma once

#include <windows.h>

#include "platform/fetcher.h"

namespace varnowick {

// Waits, and runs no messages meanwhile; when the event is set it ends at once, as a
// failure that nobody reads. Never throws for what the other side does.
FetchReply exchangeOverHttp(const FetchRequest& request, HANDLE cancel);

}  // namespace varnowick
