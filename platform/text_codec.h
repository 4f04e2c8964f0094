// Conversion between the bytes of files and text: the system's ANSI code page,
// UTF-8, and the UTF-16 that some of the system's own file formats hold. Only
// what reads and writes files calls it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace varnowick {

class TextCodec {
 public:
  virtual ~TextCodec() = default;
  // Bytes the code page does not define become U+FFFD.
  virtual std::wstring fromAnsi(std::string_view bytes) = 0;
  // Nothing when the code page cannot hold the text exactly (no best fit).
  virtual std::optional<std::string> toAnsi(std::wstring_view text) = 0;
  virtual std::wstring fromUtf8(std::string_view bytes) = 0;
  virtual std::string toUtf8(std::wstring_view text) = 0;
  // Little-endian. A surrogate without its partner becomes U+FFFD; an odd last
  // byte is left out.
  virtual std::wstring fromUtf16Le(std::string_view bytes) = 0;
};

}  // namespace varnowick
