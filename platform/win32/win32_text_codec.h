// The system's code page and UTF-8 behind TextCodec. It knows nothing of files.
//
// The inside of the program is UTF-16. Well-formed text makes every round trip.
// A surrogate without its partner (possible in a file name or on the clipboard)
// is no character: no code page and no valid UTF-8 can hold it, and writing it
// all the same would make the whole file invalid UTF-8, read back as garbage. It
// is written as U+FFFD, so that one mark is lost instead of the file.
#pragma once

#include "platform/text_codec.h"

namespace varnowick {

class Win32TextCodec : public TextCodec {
 public:
  // 0 is the code page that the system is set to.
  explicit Win32TextCodec(unsigned codePage = 0) : codePage_(codePage) {}
  std::wstring fromAnsi(std::string_view bytes) override;
  std::optional<std::string> toAnsi(std::wstring_view text) override;
  // Each byte that is no part of a valid sequence becomes U+FFFD.
  std::wstring fromUtf8(std::string_view bytes) override;
  std::string toUtf8(std::wstring_view text) override;
  std::wstring fromUtf16Le(std::string_view bytes) override;

 private:
  unsigned codePage_;
};

}  // namespace varnowick
