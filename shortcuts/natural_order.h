// The order in which names are sorted for people.
#pragma once

#include <string_view>

namespace varnowick {

// The order of names: numbers within them by value, ASCII letters whatever their
// case, everything else by code; the same on every system.
bool naturalLess(std::wstring_view a, std::wstring_view b);

}  // namespace varnowick
