// Unpacks what servers send packed: gzip and deflate. The bytes are hostile, and a
// few of them may claim to be any number.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace varnowick {

struct Unpacked {
  std::string bytes;
  bool whole = false;    // all of it, and sound
  bool tooLong = false;  // cut off at the limit
};

// No bytes unpack to no bytes.
Unpacked unpack(std::string_view packed, std::size_t mostBytes);

}  // namespace varnowick
