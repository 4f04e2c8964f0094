// Code pages without a system: UTF-8 and one of two small ANSI code pages.
#pragma once

#include "platform/text_codec.h"

namespace varnowick {

class FakeCodec : public TextCodec {
 public:
  enum class CodePage {
    Western,    // as Windows code page 1252, of which 0x80 to 0x9F is only the euro sign
    AsciiOnly,  // cannot hold anything else
  };
  explicit FakeCodec(CodePage page = CodePage::Western) : page_(page) {}

  std::wstring fromAnsi(std::string_view bytes) override;
  std::optional<std::string> toAnsi(std::wstring_view text) override;
  std::wstring fromUtf8(std::string_view bytes) override;
  std::string toUtf8(std::wstring_view text) override;
  std::wstring fromUtf16Le(std::string_view bytes) override;

 private:
  CodePage page_;
};

}  // namespace varnowick
