// Indexes of the icon cache of any content. The checksum is put right, or no
// input would ever get past it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "shortcuts/icon_cache.h"
#include "tests/fakes/fake_codec.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace varnowick;
  FakeCodec codec;
  std::string bytes(reinterpret_cast<const char*>(data), size);
  decodeIconIndex(bytes, codec);
  std::uint32_t sum = 2166136261U;
  for (const char c : bytes) sum = (sum ^ static_cast<unsigned char>(c)) * 16777619U;
  for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<char>(sum >> (8 * i) & 0xFF));
  const auto entries = decodeIconIndex(bytes, codec);
  if (entries && encodeIconIndex(*entries, codec) != bytes) std::abort();
  return 0;
}
