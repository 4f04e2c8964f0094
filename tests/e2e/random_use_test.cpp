// A user who does anything anywhere for two minutes, or VARNOWICK_MINUTES: seeded, so
// that it can be told again. Afterwards the program still answers, holds no more windows than
// before, and shows the same after a restart.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>

#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

constexpr unsigned kMinutes = 2;
constexpr unsigned kSeed = 20261121;

unsigned given(const char* variable, unsigned standard) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? standard : static_cast<unsigned>(std::strtoul(value, nullptr, 10));
}

class RandomUser {
 public:
  RandomUser(DWORD process, unsigned seed) : process_(process), random_(seed) {}

  // One thing done; what it was, for a failure message.
  std::string act() {
    // A dialog has to be answered before anything else can go on; mostly by No.
    if (const DialogWindow dialog = anyDialog(process_); dialog.open())
      return answer(dialog, chance(4));
    // What was done last may have opened a menu, whose Exit would end the test.
    if (waitFor([] { return menuIsOpen(); }, 50)) return escape();
    const POINT at = anywhere();
    switch (pick(16)) {
      case 0:
      case 1:
      case 2:
      case 3:
        mouse::click(at);
        return "click" + where(at);
      case 4:
        mouse::doubleClick(at);
        return "double click" + where(at);
      case 5:
        mouse::rightClick(at);
        waitFor([] { return menuIsOpen(); }, 300);
        return "right click" + where(at);
      case 6:
      case 7:
      case 8: {
        const POINT to = chance(6) ? onScreen() : anywhere();
        mouse::drag(at, to);
        return "drag" + where(at) + where(to);
      }
      case 9:
        mouse::wheel(at, static_cast<int>(pick(7)) - 3);
        return "wheel" + where(at);
      case 10:
      case 11: {
        const WORD keys[] = {VK_F1, VK_F2, VK_F3, 'Z', 'A', 'U', 'C', 'N'};
        keyboard::chord({VK_CONTROL, keys[pick(std::size(keys))]});
        return "Ctrl and a key";
      }
      case 12: {
        const WORD keys[] = {VK_ESCAPE, VK_TAB, VK_RETURN, VK_DOWN, VK_LEFT, VK_F2, VK_HOME};
        keyboard::press(keys[pick(std::size(keys))]);
        return "a key";
      }
      case 13:
        if (chance(3)) keyboard::press(VK_DELETE);
        return "Del";
      case 14:
        keyboard::type(L"some words");
        return "typing";
      default:
        mouse::moveTo(at);
        letTimePass(static_cast<DWORD>(pick(700)));
        return "rest" + where(at);
    }
  }

  // True once neither a menu nor a dialog is left.
  bool closeWhatIsOpen() {
    const DialogWindow dialog = anyDialog(process_);
    if (dialog.open()) answer(dialog, false);
    if (menuIsOpen()) escape();
    return !dialog.open() && !menuIsOpen();
  }

  static bool menuIsOpen() { return FindWindowW(L"#32768", nullptr) != nullptr; }

 private:
  std::string answer(const DialogWindow& dialog, bool first) {
    const std::vector<int> buttons = dialog.buttons();
    if (buttons.empty()) return escape();
    const std::string title = toUtf8(dialog.title());
    try {
      dialog.press(first ? buttons.front() : buttons.back());
    } catch (const HarnessError&) {
      // It has put a question of its own, or wants more than a button.
      return escape();
    }
    return "answered " + title;
  }
  std::size_t pick(std::size_t below) { return random_() % below; }
  bool chance(std::size_t oneIn) { return pick(oneIn) == 0; }
  static std::string where(POINT at) {
    return " " + std::to_string(at.x) + "," + std::to_string(at.y);
  }
  std::string escape() {
    keyboard::press(VK_ESCAPE);
    return "Esc";
  }
  POINT onScreen() {
    return {static_cast<LONG>(pick(static_cast<std::size_t>(GetSystemMetrics(SM_CXSCREEN)))),
            static_cast<LONG>(pick(static_cast<std::size_t>(GetSystemMetrics(SM_CYSCREEN))))};
  }
  // On a window of the program, as far as it lies on the screen.
  POINT anywhere() {
    std::vector<RECT> parts;
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    for (const HWND window : windowsOf(process_)) {
      RECT part{};
      const RECT rect = rectOf(window);
      if (IsWindowVisible(window) && IntersectRect(&part, &rect, &screen)) parts.push_back(part);
    }
    if (parts.empty()) return onScreen();
    const RECT& r = parts[pick(parts.size())];
    return {r.left + static_cast<LONG>(pick(static_cast<std::size_t>(r.right - r.left))),
            r.top + static_cast<LONG>(pick(static_cast<std::size_t>(r.bottom - r.top)))};
  }

  DWORD process_;
  std::mt19937 random_;
};

using RandomUse = ProgramTest;

// Of the kind of window of which there are most, how many more than there are windows of
// containers: each of those has its tab and its tooltip.
int windowsBeside(DWORD process) {
  std::map<std::wstring, int> count;
  for (const HWND window : windowsOf(process)) ++count[classOf(window)];
  int most = 0;
  for (const auto& [name, n] : count) most = std::max(most, n - count[L"VarnowickContainer"]);
  return most;
}

// What a reader of the files can tell: everything but where the bar stands.
DataFiles withoutWindow(DataFiles files) {
  for (auto& [name, bytes] : files) {
    if (name != L"Varnowick.ini") continue;
    for (const char* key : {"[X]", "[Y]", "[W]", "[H]", "[Hidden]"}) {
      const std::size_t at = bytes.find(std::string("\r\n") + key + "\r\n");
      if (at == std::string::npos) continue;
      const std::size_t value = at + std::string(key).size() + 4;
      bytes.erase(value, bytes.find("\r\n", value) - value);
    }
  }
  return files;
}

TEST_F(RandomUse, TwoMinutesLeaveEverythingInOrder) {
  const std::wstring probe = folder().addLaunchProbe();
  folder().write(L"Shown\\one.txt", "one");
  folder().write(L"Shown\\two.txt", "two");
  SettingsFile settings;
  settings.set("[AutoExpand]", "1")
      .set("[DragToDetach]", "1")
      .window(kExpandedLeft, 0, 4700, 11000);
  settings.set("[Hidden]", "0");
  for (int i = 0; i < 6; ++i)
    settings.add({.caption = L"Main " + std::to_wstring(i),
                  .path = probe,
                  .x = 120 + i % 3 * 1440,
                  .y = 120 + i / 3 * 1200});
  const std::vector<ShortcutRow> inside{{.caption = L"First", .path = probe, .x = 120, .y = 480},
                                        {.caption = L"Second", .path = probe, .x = 1560, .y = 480}};
  write(settings,
        {{.name = L"Open", .y = 2600, .width = 3600, .height = 1800, .shortcuts = inside},
         {.name = L"Folded", .y = 4560, .width = 3600, .shortcuts = inside, .folded = true},
         {.name = L"Tile", .y = 5100, .shortcuts = inside, .shrunk = true},
         {.name = L"Tile two", .x = 960, .y = 5100, .note = "a note\r\n", .shrunk = true},
         {.name = L"Note", .y = 6200, .height = 1500, .note = "www.example.org\r\nwords\r\n"},
         {.name = L"Folder", .y = 7900, .height = 1500, .folder = folder().file(L"Shown")}});

  startBar();
  const DWORD length = given("VARNOWICK_MINUTES", kMinutes) * 60'000;
  RandomUser user(program().process(), given("VARNOWICK_SEED", kSeed));
  const DWORD began = GetTickCount();
  std::vector<std::string> done;
  int most = 0;
  while (GetTickCount() - began < length) {
    done.push_back(user.act());
    DWORD_PTR answer = 0;
    std::string last;
    for (std::size_t i = done.size() - std::min<std::size_t>(done.size(), 8); i < done.size(); ++i)
      last += done[i] + "; ";
    const bool answers =
        program().running() && SendMessageTimeoutW(program().mainWindow(), WM_NULL, 0, 0,
                                                   SMTO_NORMAL, kPatience, &answer) != 0;
    // It may just be ending.
    if (!answers) waitFor([&] { return !program().running(); }, 3'000);
    ASSERT_TRUE(answers) << (program().running()
                                 ? "it does not answer"
                                 : "it ended with " + std::to_string(program().waitForExit()))
                         << " at step " << done.size() << ": " << last;
    most = std::max(most, windowsBeside(program().process()));
  }
  std::printf("%u things done, at most %d windows of a kind more than there are containers\n",
              static_cast<unsigned>(done.size()), most);
  EXPECT_LT(most, 20) << "windows are left behind";
  // Whatever is open is closed, and what is being edited is taken.
  require(L"the last menus and dialogs to close", [&] { return user.closeWhatIsOpen(); });
  closeAnsweringDialogs();
  const DataFiles before = withoutWindow(folder().state());
  EXPECT_FALSE(folder().exists(L"Varnowick.REC"));
  EXPECT_TRUE(folder().backups().empty()) << "the program could not read what it wrote";
  startAnsweringDialogs();
  closeAnsweringDialogs();
  EXPECT_EQ(withoutWindow(folder().state()), before) << "loading and saving changes nothing";
}

}  // namespace
}  // namespace varnowick::e2e
