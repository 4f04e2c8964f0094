#include "shortcuts/icon_cache.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/fakes/fake_codec.h"
#include "tests/fakes/memory_files.h"

namespace varnowick {
namespace {

std::string png(unsigned char edge) {
  std::string bytes("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\0\0\0\0\0\0", 24);
  bytes[19] = bytes[23] = static_cast<char>(edge);
  return bytes;
}

const std::wstring kIndex = L"C:\\Data\\IconCache\\index.dat";

class IconCacheTest : public testing::Test {
 protected:
  MemoryFiles files;
  FakeCodec codec;
  std::unique_ptr<IconCache> cache = std::make_unique<IconCache>(files, codec, L"C:\\Data");

  void reopen() {
    cache = std::make_unique<IconCache>(files, codec, L"C:\\Data");
    cache->load();
  }
  std::string found(const IconKey& key) {
    const auto icon = cache->find(key);
    if (!icon) return "nothing";
    return icon->file.empty() ? "none" : files.read(icon->file).bytes;
  }
};

TEST_F(IconCacheTest, KeepsIconsOverARestart) {
  const IconKey path{L"C:\\\x20AC\\x.exe", 32, 7}, site{L"http://a.org/", 16, 0};
  EXPECT_TRUE(cache->store(path, png(32)));
  cache->storeNone(site);
  cache->save();
  reopen();
  EXPECT_EQ(found(path), png(32));
  EXPECT_EQ(found(site), "none");
  EXPECT_EQ(found({path.source, 48, 7}), "nothing");
  EXPECT_EQ(found({path.source, 32, 8}), "nothing");

  // What was there is shown until the change is known.
  const auto last = cache->findLast(path.source, 32);
  ASSERT_TRUE(last);
  EXPECT_EQ(last->modifiedTime, 7U);
  EXPECT_EQ(files.read(last->file).bytes, png(32));
  EXPECT_FALSE(cache->findLast(path.source, 48));

  // The new icon of a changed source takes the old one's place on the disk, too.
  EXPECT_TRUE(cache->store({path.source, 32, 8}, png(48)));
  EXPECT_EQ(found({path.source, 32, 8}), png(48));
  EXPECT_EQ(files.contents.size(), 2U);
  cache->clear();
  EXPECT_TRUE(files.contents.empty());
}

TEST_F(IconCacheTest, RefusesWhatIsNoIconOrNoSource) {
  const IconKey key{L"C:\\x.exe", 32, 0};
  std::string wide = png(1);
  wide[18] = '\x04';  // 1025 pixels
  for (const std::string& bytes :
       {"MZ" + std::string(100, 'x'), png(32) + std::string(kMaxIconBytes, 'x'), wide})
    EXPECT_FALSE(cache->store(key, bytes));
  wide[19] = '\0';
  EXPECT_TRUE(cache->store({L"as wide as may be", 32, 0}, wide));
  cache->clear();
  for (const IconKey& bad : {IconKey{L"", 32, 0}, IconKey{L"x", 0, 0}, IconKey{L"x", 1025, 0},
                             IconKey{std::wstring(16385, L'x'), 32, 0}})
    EXPECT_FALSE(cache->store(bad, png(32)));
  files.failure = [](MemoryFiles::Operation, const std::wstring&) {
    return FileStatus{FileStatus::Kind::DiskFull, L"full"};
  };
  EXPECT_FALSE(cache->store(key, png(32)));
  cache->storeNone(key);
  cache->save();
  EXPECT_EQ(cache->count(), 1U);
  EXPECT_TRUE(files.contents.empty());
}

TEST_F(IconCacheTest, TheLeastRecentlyUsedMakesRoom) {
  const auto key = [](std::size_t i) { return IconKey{L"s" + std::to_wstring(i), 16, 0}; };
  for (std::size_t i = 0; i < kMaxCachedIcons; ++i) cache->storeNone(key(i));
  EXPECT_EQ(found(key(0)), "none");
  cache->save();
  reopen();
  cache->storeNone(key(kMaxCachedIcons));
  EXPECT_EQ(cache->count(), kMaxCachedIcons);
  EXPECT_EQ(found(key(0)), "none");
  EXPECT_EQ(found(key(1)), "nothing");
}

// A single bit that is not as it was written empties the cache and stops nothing.
TEST_F(IconCacheTest, DamageEmptiesTheCache) {
  cache->store({L"a", 16, 1}, png(16));
  cache->store({L"b", 16, 2}, png(16));
  cache->save();
  const std::string whole = files.contents[kIndex];
  ASSERT_TRUE(decodeIconIndex(whole, codec));
  for (std::size_t i = 0; i < whole.size(); ++i) {
    EXPECT_FALSE(decodeIconIndex(whole.substr(0, i), codec));
    std::string bent = whole;
    bent[i] = static_cast<char>(bent[i] ^ 4);
    EXPECT_FALSE(decodeIconIndex(bent, codec));
  }
  // Well-formed, and yet leading two places to one file, one place to two, or to no size.
  for (const IconEntry& second : {IconEntry{{L"b", 16, 0}, 1}, IconEntry{{L"a", 16, 0}, 2},
                                  IconEntry{{L"b", 0, 0}, 2}, IconEntry{{L"b", 1025, 0}, 2}})
    EXPECT_FALSE(decodeIconIndex(encodeIconIndex({{{L"a", 16, 0}, 1}, second}, codec), codec));

  files.contents[kIndex] = whole.substr(1);
  reopen();
  EXPECT_EQ(found({L"a", 16, 1}), "nothing");
  EXPECT_TRUE(cache->store({L"c", 16, 3}, png(48)));
  cache->save();
  EXPECT_EQ(files.contents.size(), 2U);  // the strays of before are gone
  reopen();
  EXPECT_EQ(found({L"c", 16, 3}), png(48));

  files.contents.erase(L"C:\\Data\\IconCache\\1.icn");
  EXPECT_EQ(found({L"c", 16, 3}), "nothing");
}

}  // namespace
}  // namespace varnowick
