// What a setting says counts from the first moment, for every setting that has an
// effect today. Other suites show [X] to [H] (main_event), [AutoExpand] and its
// delay (containers), [DragToDetach] (detached), [Animate] and [Undock Immediately]
// (docking), [GlobalHotkey] with its letter and modifiers (shortcuts), [LOCKED]
// refusing changes (shortcuts, detached). Nothing follows yet from [Buttons],
// [ShowTime], [CheckForUpdatesOnStartup] and those of feeds but for the proxy.
#include <algorithm>

#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/program_test.h"
#include "tests/support/loopback_server.h"

namespace varnowick::e2e {
namespace {

int opacityOf(HWND window) {
  COLORREF key = 0;
  BYTE alpha = 0;
  DWORD flags = 0;
  if (!GetLayeredWindowAttributes(window, &key, &alpha, &flags)) failWithLastError(L"the opacity");
  return (flags & LWA_ALPHA) != 0 ? alpha : 255;
}

int heightOf(const Bar& bar, const wchar_t* name) {
  const RECT r = bar.accessible().waitFor(name).rect;
  return r.bottom - r.top;
}

// Of text, whose edges mix with the ground.
bool isNear(COLORREF a, COLORREF b) {
  const auto close = [](int x, int y) { return std::abs(x - y) < 90; };
  return close(GetRValue(a), GetRValue(b)) && close(GetGValue(a), GetGValue(b)) &&
         close(GetBValue(a), GetBValue(b));
}

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
  void select(const Bar& bar, const wchar_t* name) {
    bar.accessible().select(bar.accessible().waitFor(name), SELFLAG_TAKESELECTION);
    require(L"the selection",
            [&] { return (bar.accessible().waitFor(name).state & STATE_SYSTEM_SELECTED) != 0; });
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

TEST_F(SettingsTest, ColoursFontsAndSizesAreThoseOfTheFile) {
  const struct {
    const char* key;
    COLORREF colour;
    bool text = false;
  } rows[] = {{"[Background]", RGB(0, 0, 96)},
              {"[ContainerFor]", RGB(0, 80, 0)},
              {"[ContainerLabel]", RGB(110, 0, 0)},
              {"[ContainerTextBack]", RGB(255, 255, 120)},
              {"[ContainerTextFor]", RGB(160, 0, 160), true},
              {"[Foreground]", RGB(255, 160, 0), true}};
  SettingsFile settings;
  settings.set("[Gradient]", "0").set("[DockingColor]", number(RGB(0, 200, 255)));
  for (const auto& row : rows) settings.set(row.key, number(static_cast<int>(row.colour)));
  settings.add({.caption = L"Loose", .y = 6500});
  write(settings, {{.name = L"Work", .y = 300, .height = 2000},
                   {.name = L"Memo", .y = 3000, .height = 2000, .note = "MMMM MMMM\r\n"}});
  int usualHeight = 0;
  {
    Bar bar = startBar();
    RECT strip = bar.rect();
    strip.left = 0;
    require(L"the strip to be painted",
            [&] { return coloursIn(strip).contains(RGB(0, 200, 255)); });
    bar.expand();
    const auto shows = [&](COLORREF colour, bool text) {
      RECT seen = bar.rect();
      seen.left = 0;
      const std::set<COLORREF> all = coloursIn(seen);
      return text ? std::any_of(all.begin(), all.end(),
                                [&](COLORREF c) { return isNear(c, colour); })
                  : all.contains(colour);
    };
    for (const auto& row : rows)
      EXPECT_TRUE(waitFor([&] { return shows(row.colour, row.text); }, 3'000)) << row.key;
    const RECT body = bar.accessible().waitFor(L"Work", ROLE_SYSTEM_GROUPING).rect;
    const auto plain = [&] {
      const int x = (body.left + body.right) / 2;
      return pixelAt({x, body.top + toPixels(500)}) == pixelAt({x, body.bottom - toPixels(100)});
    };
    EXPECT_TRUE(plain()) << "[Gradient] 0";
    usualHeight = heightOf(bar, L"Loose");
    closeProgram();
    write(settings.set("[Gradient]", "1").set("[Large Icon Size]", " 64"));
    Bar second = startBar();
    second.expand();
    EXPECT_TRUE(waitFor([&] { return !plain(); }, 3'000)) << "[Gradient] 1";
    EXPECT_GT(heightOf(second, L"Loose"), usualHeight) << "[Large Icon Size]";
    closeProgram();
  }
}

// 40 by 40 points, the upper half red and the lower one blue.
std::string wallpaper() {
  constexpr int kEdge = 40;
  BITMAPFILEHEADER file{};
  BITMAPINFOHEADER info{};
  info.biSize = sizeof info;
  info.biWidth = info.biHeight = kEdge;
  info.biPlanes = 1;
  info.biBitCount = 32;
  file.bfType = 0x4D42;
  file.bfOffBits = sizeof file + sizeof info;
  file.bfSize = file.bfOffBits + kEdge * kEdge * 4;
  std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
  bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
  for (int i = 0; i < kEdge * kEdge; ++i)
    bytes += i < kEdge * kEdge / 2 ? std::string("\xFF\0\0\0", 4) : std::string("\0\0\xFF\0", 4);
  return bytes;
}

TEST_F(SettingsTest, AWallpaperIsStretchedOrKeepsItsSize) {
  const std::wstring path = folder().path() + L"\\wall.bmp";
  writeFile(path, wallpaper());
  for (const bool stretch : {false, true}) {
    SCOPED_TRACE(stretch);
    write(SettingsFile().set("[Wallpaper]", ansi(path)).set("[Stretch]", stretch ? "1" : "0"));
    Bar bar = startBar();
    bar.expand();
    const RECT panel = bar.accessible().waitFor(L"Workspace").rect;
    const int x = panel.left + 20;
    const COLORREF blue = RGB(0, 0, 255), red = RGB(255, 0, 0);
    EXPECT_TRUE(waitFor([&] { return pixelAt({x, panel.top + 10}) == red; }, 5'000));
    EXPECT_EQ(pixelAt({x, panel.top + 30}), stretch ? red : blue);
    EXPECT_EQ(pixelAt({x, panel.bottom - 10}) == blue, stretch);
    closeProgram();
  }
}

TEST_F(SettingsTest, DeedsFollowThem) {
  for (const bool on : {true, false}) {
    SCOPED_TRACE(on);
    const char* const value = on ? "1" : "0";
    const std::wstring probe = folder().addLaunchProbe();
    ContainerRow work{.name = L"Work", .y = 300, .height = 2600};
    work.shortcuts = {{.caption = L"Probe", .path = probe, .x = 300, .y = 500}};
    SettingsFile settings;
    for (const char* key : {"[ConfirmDelete]", "[FoldOnClick]", "[Dbl-Click]", "[Align]",
                            "[ConfirmStartAllShortcuts]", "[ExtractURLs]"})
      settings.set(key, value);
    write(settings.add({.caption = L"Loose", .path = probe, .x = 300, .y = 4000}), {work});
    Bar bar = startBar();
    bar.focus();

    const POINT loose = centreOf(bar.accessible().waitFor(L"Loose").rect);
    expectSaved([&] { mouse::drag(loose, {loose.x + 37, loose.y + 41}); });
    const auto moved = savedShortcut(folder().read(L"Varnowick.REC"), "Loose");
    EXPECT_EQ(moved.at("[LinkX]") == number(300 + static_cast<int>(toTwips(37))), !on)
        << "[Align]: " << moved.at("[LinkX]");

    putOnClipboard(offerText(L"see http://found.example/ there"));
    bar.focus();
    if (on) {
      expectSaved([] { keyboard::chord({VK_CONTROL, 'V'}); });
    } else {
      keyboard::chord({VK_CONTROL, 'V'});
      waitForDialog(program().process(), kTitle).press(IDNO);
    }
    EXPECT_EQ(bar.accessible().find(L"found.example").has_value(), on) << "[ExtractURLs]";

    select(bar, L"Loose");
    if (on) {
      keyboard::press(VK_DELETE);
      const DialogWindow question = waitForDialog(program().process(), kTitle);
      EXPECT_TRUE(question.text().starts_with(L"Remove Selected Shortcuts?")) << "[ConfirmDelete]";
      question.press(IDNO);
    } else {
      expectSaved([] { keyboard::press(VK_DELETE); });
      EXPECT_FALSE(bar.accessible().find(L"Loose")) << "[ConfirmDelete]";
    }

    bar.focus();
    bar.click(L"Probe");
    if (on) {
      letTimePass(600);
      EXPECT_FALSE(launched(probe)) << "[Dbl-Click]";
    } else {
      waitForLaunch(probe);
      require(L"the bar to be away", [&] { return !bar.isOut(); });
    }

    bar.focus();
    const RECT title = bar.accessible().waitFor(L"Work", ROLE_SYSTEM_STATICTEXT).rect;
    const POINT onTitle{title.left + toPixels(500), (title.top + title.bottom) / 2};
    openMenuAt(onTitle);
    if (on) {
      keyboard::type(L"s");
      const DialogWindow question = waitForDialog(program().process(), kTitle);
      EXPECT_NE(question.text().find(L"Start all"), std::wstring::npos);
      question.press(IDNO);
    } else {
      events().expect(kEventLaunched, L"launched", [] { keyboard::type(L"s"); });
    }

    bar.focus();
    if (on)
      expectSaved([&] { mouse::click(onTitle); });
    else
      mouse::click(onTitle);
    letTimePass(600);
    EXPECT_EQ(bar.accessible().find(L"Unfold Work").has_value(), on) << "[FoldOnClick]";
    closeProgram();
  }
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
  expectSaved([&] { waitForDialog(program().process(), kTitle).press(IDYES); });
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
