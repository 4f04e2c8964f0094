// Link files of any content, as .lnk and as .url.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "shortcuts/addresses.h"
#include "shortcuts/link_files.h"
#include "tests/fakes/fake_codec.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace varnowick;
  FakeCodec codec;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (const auto link = parseShellLink(bytes, codec)) {
    for (const std::wstring* text : {&link->target, &link->arguments, &link->iconLocation})
      if (text->find(L'\0') != std::wstring::npos || text->find(L'\n') != std::wstring::npos)
        std::abort();
  }
  if (const auto link = parseWebLink(bytes, codec)) wholeAddress(link->address);
  extractUrls(codec.fromAnsi(bytes));
  return 0;
}
