#include "ui/win/images/image_store.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/win32/background.h"
#include "platform/win32/win32_fetcher.h"
#include "platform/win32/win32_files.h"
#include "tests/support/loopback_server.h"
#include "tests/support/run_messages.h"
#include "tests/support/temp_folder.h"
#include "tests/ui/win/images/picture_bytes.h"

namespace varnowick {
namespace {

using Source = ImageRef::Source;

class ImageStoreTest : public testing::Test {
 protected:
  ImageStoreTest() {
    Win32Files files;
    EXPECT_TRUE(files.write(folder_ / L"lock-16.png", pngBytes(16, 16, 0xFFFF0000)));
    EXPECT_TRUE(files.write(folder_ / L"lock-32.png", pngBytes(32, 32, 0xFF0000FF)));
    EXPECT_TRUE(files.write(folder_ / L"document-32.png", pngBytes(32, 32, 0xFF00FF00)));
    EXPECT_TRUE(files.write(folder_ / L"wall.bmp", bmpBytes(20, 10, 0x112233)));
  }

  void start(ImageStore& store) {
    store.start(doorbell_, fetchers_, [&store] { store.deliver(); });
  }
  // Until nothing is under way.
  static void settle(const ImageStore& store) {
    ASSERT_TRUE(runMessagesUntil([&] { return store.idle(); }));
  }
  static std::uint32_t colour(const Bitmap* bitmap) {
    return bitmap == nullptr || bitmap->empty() ? 0 : bitmap->pixels[bitmap->pixels.size() / 2];
  }

  const TempFolder folder_;
  Doorbell doorbell_;
  Win32Fetchers fetchers_{doorbell_};
};

TEST_F(ImageStoreTest, GivesWhatIsThereAndAsksForTheRestOnce) {
  ImageStore store(folder_.path());
  const ImageRef lock{Source::Asset, L"lock"};
  const ImageRef wall{Source::PictureFile, folder_ / L"wall.bmp"};
  EXPECT_EQ(store.find(lock, {16_px, 16_px}), nullptr);
  EXPECT_EQ(store.find(lock, {16_px, 16_px}), nullptr);
  EXPECT_EQ(store.find(lock, {24_px, 24_px}), nullptr);
  EXPECT_EQ(store.find(wall, {40_px, 20_px}), nullptr);
  EXPECT_FALSE(store.idle()) << "nothing is loaded before the window is shown";
  start(store);
  settle(store);
  EXPECT_EQ(colour(store.find(lock, {16_px, 16_px})), 0xFFFF0000U);
  EXPECT_EQ(colour(store.find(lock, {24_px, 24_px})), 0xFF0000FFU) << "the next larger, scaled";
  const Bitmap* picture = store.find(wall, {40_px, 20_px});
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(picture->width, 40);
  EXPECT_EQ(colour(picture), 0xFF112233U);
  // Another size of a picture needs no disk.
  EXPECT_EQ(colour(store.find(wall, {7_px, 9_px})), 0xFF112233U);
  EXPECT_TRUE(store.idle());
}

TEST_F(ImageStoreTest, TellsWhetherAPictureCanBeShown) {
  Win32Files().write(folder_ / L"broken.png", pngBytes(20, 20, 0xFF112233).substr(0, 40));
  ImageStore store(folder_.path());
  const ImageRef wall{Source::PictureFile, folder_ / L"wall.bmp"};
  const ImageRef broken{Source::PictureFile, folder_ / L"broken.png"};
  const ImageRef missing{Source::PictureFile, folder_ / L"missing.png"};
  const Size<Pixels> size{40_px, 20_px};
  EXPECT_EQ(store.state(wall, size), ImageState::Waiting);
  EXPECT_EQ(store.state({Source::PictureFile, L""}, size), ImageState::Failed);
  store.state(broken, size);
  store.state(missing, size);
  start(store);
  settle(store);
  EXPECT_EQ(store.state(wall, size), ImageState::Ready);
  EXPECT_EQ(store.state(broken, size), ImageState::Failed);
  EXPECT_EQ(store.state(missing, size), ImageState::Failed);
  EXPECT_TRUE(store.idle()) << "what has failed is not asked for again";
}

TEST_F(ImageStoreTest, MissingTargetsKeepTheirPlaceholder) {
  ImageStore store(folder_.path());
  start(store);
  store.find({Source::Asset, L"document"}, {32_px, 32_px});
  settle(store);
  const ImageRef targets[] = {
      {Source::IconOf, L"Q:\\no such drive\\program.exe0"},
      {Source::IconOf, L"\\\\no-such-host-anywhere\\share\\a.txt0"},
      {Source::IconOf, std::wstring(5000, L'x') + L".txt0"},
      {Source::IconOf, L"C:\\a|b<c>?.txt0"},
  };
  for (const ImageRef& target : targets) {
    EXPECT_EQ(colour(store.find(target, {32_px, 32_px})), 0xFF00FF00U);
  }
  settle(store);
  for (const ImageRef& target : targets) {
    EXPECT_NE(store.find(target, {32_px, 32_px}), nullptr);
  }
  EXPECT_TRUE(store.idle()) << "failures are not asked for again";
  EXPECT_EQ(store.find({Source::PictureFile, L"Q:\\none.png"}, {500_px, 500_px}), nullptr);
  EXPECT_EQ(store.find({}, {16_px, 16_px}), nullptr);
  EXPECT_EQ(store.find({Source::Asset, L"..\\lock"}, {16_px, 16_px}), nullptr);
}

TEST_F(ImageStoreTest, ForgottenPicturesAreReadAgain) {
  ImageStore store(folder_.path());
  start(store);
  const ImageRef wall{Source::PictureFile, folder_ / L"wall.bmp"};
  store.find(wall, {8_px, 8_px});
  settle(store);
  ASSERT_TRUE(Win32Files().write(folder_ / L"wall.bmp", bmpBytes(4, 4, 0xABCDEF)));
  EXPECT_EQ(colour(store.find(wall, {8_px, 8_px})), 0xFF112233U);
  store.forget(wall);
  store.find(wall, {8_px, 8_px});
  store.forget(wall);  // while it is on its way
  store.find(wall, {8_px, 8_px});
  settle(store);
  EXPECT_EQ(colour(store.find(wall, {8_px, 8_px})), 0xFFABCDEFU);
}

class CachedImageStoreTest : public ImageStoreTest {
 protected:
  CachedImageStoreTest() : data_(folder_ / L"data") {}

  // The colour that a run of the program ends up with.
  std::uint32_t colourInARun(const ImageRef& image, bool web = false) {
    ImageStore store(folder_.path());
    store.useCache(data_);
    if (web) store.setWeb(true, proxy_);
    start(store);
    store.find(image, {32_px, 32_px});
    settle(store);
    return colour(store.find(image, {32_px, 32_px}));
  }
  void overwriteCache(const std::string& bytes, const wchar_t* extension) {
    Win32Files files;
    const std::wstring cache = data_ + L"\\IconCache";
    for (const FileInfo& file : files.list(cache, extension))
      ASSERT_TRUE(files.write(cache + L"\\" + file.name, bytes));
  }

  const std::wstring data_;
  std::wstring proxy_ = L"0";
};

TEST_F(CachedImageStoreTest, ShowsTheIconsOfTheLastRunUntilTheSourceHasChanged) {
  Win32Files files;
  const ImageRef icon{Source::IconOf, folder_ / L"target.ico"};
  ASSERT_TRUE(files.write(icon.name, icoBytes(32, 0xFF00C000)));
  EXPECT_EQ(colourInARun(icon), 0xFF00C000U);
  // What the cache has is shown while its source stays untouched.
  overwriteCache(pngBytes(32, 32, 0xFF010203), L".icn");
  EXPECT_EQ(colourInARun(icon), 0xFF010203U);
  ASSERT_TRUE(files.write(icon.name, icoBytes(32, 0xFFC00000)));
  EXPECT_EQ(colourInARun(icon), 0xFFC00000U);
  ASSERT_TRUE(files.remove(icon.name));
  EXPECT_EQ(colourInARun(icon), 0xFFC00000U) << "a drive that is not there for the moment";
}

TEST_F(CachedImageStoreTest, ReplacesDamagedIcons) {
  Win32Files files;
  const ImageRef icon{Source::IconOf, folder_ / L"target.ico"};
  ASSERT_TRUE(files.write(icon.name, icoBytes(32, 0xFF00C000)));
  for (const wchar_t* what : {L".icn", L".dat"}) {
    for (const std::string& bytes : {std::string(), std::string(500, '\0'), pngClaiming(32, 32),
                                     pngBytes(16, 16, 0xFF112233)}) {
      EXPECT_EQ(colourInARun(icon), 0xFF00C000U);
      overwriteCache(bytes, what);
      EXPECT_EQ(colourInARun(icon), 0xFF00C000U) << bytes.size();
    }
  }
  overwriteCache(pngBytes(32, 32, 0xFF010203), L".icn");
  EXPECT_EQ(colourInARun(icon), 0xFF010203U) << "and they are kept again";
  ImageStore store(folder_.path());
  store.useCache(data_);
  start(store);
  store.find(icon, {32_px, 32_px});
  settle(store);
  store.refresh();
  store.find(icon, {32_px, 32_px});
  settle(store);
  EXPECT_EQ(colour(store.find(icon, {32_px, 32_px})), 0xFF00C000U) << "forgotten on disk, too";
}

TEST_F(CachedImageStoreTest, DrawsSitesAsTheirIconAndAsksOnce) {
  // The proxy stands for a web of public hosts.
  const LoopbackServer server(
      {{"http://a.example:81/", httpAnswer(200, "<link rel=icon href=i.png>")},
       {"http://a.example:81/i.png", httpAnswer(200, pngBytes(16, 16, 0xFF123456))},
       {"http://b.example:81/", httpAnswer(200, "<link rel=icon href=http://127.0.0.1/i.png>")}});
  proxy_ = server.url(L"");
  const ImageRef site{Source::IconOf, L"http://a.example:81/"};
  const ImageRef bad{Source::IconOf, L"http://b.example:81/"};
  EXPECT_NE(colourInARun(site), 0xFF123456U);
  EXPECT_TRUE(server.asked().empty()) << "not without leave";
  EXPECT_EQ(colourInARun(site, true), 0xFF123456U);
  const std::uint32_t anyPage = colourInARun(bad, true);
  const auto asked = server.asked();
  EXPECT_EQ(asked,
            (std::vector<std::string>{"http://a.example:81/", "http://a.example:81/i.png",
                                      "http://b.example:81/", "http://b.example:81/favicon.ico"}));
  EXPECT_EQ(colourInARun(site, true), 0xFF123456U);
  EXPECT_EQ(colourInARun(bad, true), anyPage);
  EXPECT_EQ(server.asked(), asked) << "neither what was found nor what failed";
}

TEST_F(CachedImageStoreTest, SitesThatHaveTheirIconGiveTheirTurnToOthers) {
  std::map<std::string, std::string> pages;
  std::vector<ImageRef> sites;
  for (int i = 0; i < 20; ++i) {
    const std::string page = "http://s" + std::to_string(i) + ".example:81/";
    pages[page] = httpAnswer(200, "<link rel=icon href=i.png>");
    pages[page + "i.png"] = httpAnswer(200, pngBytes(16, 16, 0xFF123456));
    sites.push_back({Source::IconOf, std::wstring(page.begin(), page.end())});
  }
  const LoopbackServer server(pages);
  ImageStore store(folder_.path());
  store.useCache(data_);
  store.setWeb(true, server.url(L""));
  start(store);
  EXPECT_TRUE(runMessagesUntil([&] {
    return std::all_of(sites.begin(), sites.end(), [&](const ImageRef& site) {
      return colour(store.find(site, {32_px, 32_px})) == 0xFF123456U;
    });
  }));
}

TEST_F(CachedImageStoreTest, SlowSitesHoldUpNobody) {
  const LoopbackServer server(
      std::map<std::string, std::string>{{"http://silent.example:81/", ""}});
  Win32Files files;
  const ImageRef icon{Source::IconOf, folder_ / L"target.ico"};
  ASSERT_TRUE(files.write(icon.name, icoBytes(32, 0xFF00C000)));
  ImageStore store(folder_.path());
  store.useCache(data_);
  store.setWeb(true, server.url(L""));
  start(store);
  store.find({Source::IconOf, L"http://silent.example:81/"}, {32_px, 32_px});
  store.find({Source::IconOf, L"\\\\no-such-host-anywhere\\share\\a.txt"}, {32_px, 32_px});
  store.find(icon, {32_px, 32_px});
  EXPECT_TRUE(runMessagesUntil([&] {
    return colour(store.find(icon, {32_px, 32_px})) == 0xFF00C000U;
  }));
  for (int i = 0; i < 1000 && server.asked().empty(); ++i) Sleep(10);
  EXPECT_FALSE(server.asked().empty());
  EXPECT_FALSE(store.idle());
}

TEST_F(ImageStoreTest, EndsWithWorkUnderWay) {
  for (int round = 0; round < 20; ++round) {
    ImageStore store(folder_.path());
    if (round % 2 == 0) start(store);
    for (int i = 0; i < 20; ++i) {
      store.find({Source::IconOf, folder_ / (std::to_wstring(i) + L".txt")}, {32_px, 32_px});
    }
  }
}

TEST(PlaceholderAsset, FollowsTheNameAlone) {
  const struct {
    const wchar_t* name;
    const wchar_t* asset;
  } rows[] = {{L"http://example.org", L"globe"}, {L"C:\\a\\b.txt", L"document"},
              {L"C:\\a.b\\c", L"folder"},        {L"C:\\", L"folder"},
              {L"\\\\host\\share", L"folder"},   {L"a.exe", L"document"}};
  for (const auto& row : rows) {
    EXPECT_EQ(placeholderAsset({Source::IconOf, row.name}), row.asset) << row.name;
  }
}

}  // namespace
}  // namespace varnowick
