// Which hosts belong to the public web, and which to this machine or the network
// around it, that nothing asks without being told to. Judges the name as it is
// written: what a name server makes of it is not known here.
#pragma once

#include <string_view>

namespace varnowick {

// `host` as WebAddress has it. False also for what is no proper host.
bool isPublicHost(std::wstring_view host);

}  // namespace varnowick
