// What a setting says counts from the first moment, where no other suite shows it.
#include <algorithm>

#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/program_test.h"
#include "tests/support/loopback_server.h"

namespace varnowick::e2e {
namespace {

class SettingsTest : public ProgramTest {
 protected:
  void write(const SettingsFile& settings, const std::vector<ContainerRow>& containers = {}) {
    folder().write(L"Varnowick.ini", settings.bytes());
    for (std::size_t i = 0; i < containers.size(); ++i) {
      std::string file = containerFile(containers[i]);
      // Equal colours: those of the settings.
      const std::string own = "[Forecolor]\r\n 16777215";
      file.replace(file.find(own), own.size(), "[Forecolor]\r\n 4798005");
      folder().write(L"Containers\\" + std::to_wstring(i) + L".con", file);
    }
  }
  // Whether the program has a window of that class, shown or not.
  bool hasWindow(const wchar_t* className, bool visible) {
    const std::vector<HWND> all = windowsOf(program().process());
    return std::any_of(all.begin(), all.end(), [&](HWND window) {
      return classOf(window) == className && (!visible || IsWindowVisible(window));
    });
  }
};

TEST_F(SettingsTest, TheBarStartsAsTheySay) {
  struct Row {
    const char* key;
    const char* value;
    bool floating;  // else at the left edge, collapsed
    const char* seen;
  };
  // What is seen of a bar that has just started.
  const auto seenOf = [&](const Bar& bar) {
    std::string seen = bar.isOut() ? "out" : "strip";
    if (IsZoomed(bar.window())) seen += " maximised";
    seen += " " + std::to_string(opacityOf(bar.window()));
    if (hasWindow(L"VarnowickTray", false)) seen += " tray";
    if (hasWindow(L"VarnowickToolbar", true)) seen += " toolbar";
    return seen;
  };
  for (const Row& row :
       {Row{"[Hidden]", "1", false, "strip 255"}, Row{"[Hidden]", "0", true, "out 255"},
        Row{"[WindowState]", " 1", true, "strip 255"},
        Row{"[WindowState]", " 2", true, "out maximised 255"},
        Row{"[Translucent]", "1", true, "out 200"}, Row{"[Translucent]", "1", false, "strip 200"},
        Row{"[VisibleBorderCollapsed]", "0", false, "strip 1"},
        Row{"[ShowTrayIcon]", "1", false, "strip 255 tray"},
        Row{"[FloatingToolbar]", "1", true, "out 255 toolbar"}}) {
    SCOPED_TRACE(std::string(row.key) + row.value);
    SettingsFile settings;
    if (row.floating) settings.set("[Hidden]", "0").window(6000, 1500, kBarWidth, kBarHeight);
    write(settings.set(row.key, row.value));
    const Bar bar = startBar();
    std::string seen;
    EXPECT_TRUE(waitFor([&] { return (seen = seenOf(bar)) == row.seen; })) << seen;
    closeProgram();
    EXPECT_EQ(savedValue(folder().read(L"Varnowick.ini"), "[WindowState]"),
              seen.find("maximised") == std::string::npos ? " 0" : " 2");
  }
}

TEST_F(SettingsTest, AMaximisedBarKeepsThePlaceThatItComesBackTo) {
  write(SettingsFile()
            .set("[WindowState]", " 2")
            .set("[Hidden]", "0")
            .window(6000, 1500, kBarWidth, kBarHeight));
  const auto saved = [&](const char* key) {
    return savedValue(folder().read(L"Varnowick.ini"), key);
  };
  const auto place = [&] { return saved("[X]") + saved("[Y]") + saved("[W]") + saved("[H]"); };
  const std::string before = place();
  for (const bool comesBack : {false, true}) {
    Bar bar = startBar();
    require(L"the bar to fill the screen", [&] { return IsZoomed(bar.window()) != FALSE; });
    if (comesBack) {
      bar.focus();
      keyboard::press(VK_ESCAPE);
      require(L"the bar to come back as large as it was", [&] {
        RECT r = bar.rect(), was = windowAt(6000, 1500, kBarWidth, kBarHeight);
        OffsetRect(&was, r.left - was.left, r.top - was.top);
        return !IsZoomed(bar.window()) && r == was;
      });
    }
    closeProgram();
    EXPECT_EQ(saved("[WindowState]"), comesBack ? " 0" : " 2");
    EXPECT_EQ(comesBack ? saved("[W]") : place(), comesBack ? number(kBarWidth) : before);
  }
}

TEST_F(SettingsTest, ColoursAreThoseOfTheFile) {
  SettingsFile settings;
  settings.set("[Gradient]", "0").set("[DockingColor]", number(RGB(0, 200, 255)));
  const std::pair<const char*, COLORREF> rows[] = {{"[Background]", RGB(0, 0, 96)},
                                                   {"[ContainerFor]", RGB(0, 80, 0)},
                                                   {"[ContainerLabel]", RGB(110, 0, 0)},
                                                   {"[ContainerTextBack]", RGB(255, 255, 120)}};
  for (const auto& [key, colour] : rows) settings.set(key, number(static_cast<int>(colour)));
  write(settings, {{.name = L"Work", .y = 300, .height = 2000},
                   {.name = L"Memo", .y = 3000, .height = 2000, .note = "MMMM MMMM\r\n"}});
  Bar bar = startBar();
  const auto shows = [&](COLORREF colour) {
    RECT seen = bar.rect();
    seen.left = 0;
    return coloursIn(seen).contains(colour);
  };
  require(L"the strip to be painted", [&] { return shows(RGB(0, 200, 255)); });
  bar.expand();
  for (const auto& [key, colour] : rows)
    EXPECT_TRUE(waitFor([&] { return shows(colour); }, 3'000)) << key;
}

TEST_F(SettingsTest, AWallpaperIsLoadedAndStretched) {
  const std::wstring path = folder().path() + L"\\Images\\picture-64.png";
  write(SettingsFile().set("[Wallpaper]", ansi(path)).set("[Stretch]", "1").set("[Gradient]", "0"));
  Bar bar = startBar();
  bar.expand();
  RECT corner = bar.accessible().waitFor(L"Workspace").rect;
  corner.left += 70;  // where it would end if it kept its size
  corner.top += 70;
  // The panel alone has one colour.
  EXPECT_TRUE(waitFor([&] { return coloursIn(corner).size() > 20; }, 5'000));
}

TEST_F(SettingsTest, IconsOfSitesAreAskedForAtPublicSitesAloneThroughTheProxy) {
  const LoopbackServer proxy({{"http://a.example:81/", httpAnswer(200, "<html>")}});
  write(SettingsFile()
            .set("[RSSUseProxy]", "127.0.0.1:" + std::to_string(proxy.port()))
            .add({.caption = L"Asks",
                  .path = L"http://b.example/",
                  .y = 600,
                  .confirm = true,
                  .web = true})
            .add({.caption = L"Near", .path = proxy.url(L"/near"), .y = 1800, .web = true})
            .add({.caption = L"Lan", .path = L"http://192.168.7.7/x", .y = 3000, .web = true})
            .add({.caption = L"Far",
                  .path = L"http://a.example:81/x?token=1",
                  .y = 4200,
                  .web = true}));
  Bar bar = startBar();
  bar.expand();
  require(L"the site to be asked", [&] { return proxy.asked().size() >= 2; });
  letTimePass(500);
  EXPECT_EQ(proxy.asked(),
            (std::vector<std::string>{"http://a.example:81/", "http://a.example:81/favicon.ico"}));
  const auto refresh = [&] {
    bar.focus();
    keyboard::chord({VK_SHIFT, VK_F5});
  };
  refresh();
  require(L"the site to be asked again", [&] { return proxy.asked().size() == 4; });
  // The default is no proxy, from the next question on.
  bar.openMenu();
  bar.choose(L"td");
  expectSaved([&] { message().press(IDYES); });
  refresh();
  letTimePass(1'500);
  EXPECT_EQ(proxy.asked().size(), 4U);
  closeProgram();
}

// The system of today keeps the usual combination for itself.
TEST_F(SettingsTest, AStandInTakesThePlaceOfTheUsualHotkeyInSilence) {
  ASSERT_TRUE(RegisterHotKey(nullptr, 1, MOD_WIN, 'S'));
  // A blank letter is the usual one.
  write(SettingsFile().set("[GlobalHotkey]", "1").set("[GlobalHotkeyChar]", ""));
  const Bar bar = startBar();
  require(L"the bar to come out", [&] {
    keyboard::chord({VK_LWIN, VK_MENU, 'S'});
    return waitFor([&] { return bar.isOut(); }, 1'000);
  });
  EXPECT_FALSE(hasWindow(L"VarnowickTray", false)) << "no balloon";
  closeProgram();
  UnregisterHotKey(nullptr, 1);
  EXPECT_EQ(savedValue(folder().read(L"Varnowick.ini"), "[GlobalHotkeyChar]"), "S");
}

}  // namespace
}  // namespace varnowick::e2e
