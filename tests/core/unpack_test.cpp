#include "core/unpack.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace varnowick {
namespace {

constexpr int kGzip = 31, kZlib = 15, kBare = -15;

std::string packed(std::string bytes, int form) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, form, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string out(bytes.size() + 100, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

TEST(Unpack, EveryFormUpToTheLimit) {
  const std::string text = "some text, some text, and some more " + std::string(200'000, 'x');
  for (const int form : {kGzip, kZlib, kBare}) {
    EXPECT_EQ(unpack(packed(text, form), text.size()).bytes, text) << form;
    EXPECT_TRUE(unpack(packed(text, form), text.size()).whole) << form;
    const Unpacked cut = unpack(packed(text, form), 1000);
    EXPECT_TRUE(cut.tooLong && !cut.whole) << form;
    EXPECT_EQ(cut.bytes, text.substr(0, 1000)) << form;
  }
  EXPECT_EQ(unpack(packed("one ", kGzip) + packed("two", kGzip) + "rest", 100).bytes, "one two");
  EXPECT_TRUE(unpack("", 100).whole);
}

TEST(Unpack, WhatIsBrokenIsNotWhole) {
  const std::string good = packed("some text that is long enough to be cut", kGzip);
  for (std::size_t size = 1; size < good.size(); ++size)
    EXPECT_FALSE(unpack(good.substr(0, size), 1000).whole) << size;
  std::string wrong = good;
  wrong[wrong.size() - 6] ^= 1;  // the check sum
  EXPECT_FALSE(unpack(wrong, 1000).whole);
  EXPECT_FALSE(unpack("<html>", 1000).whole);
}

}  // namespace
}  // namespace varnowick
