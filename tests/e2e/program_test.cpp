#include "tests/e2e/program_test.h"

#include <algorithm>

#include "platform/win32/handles.h"

namespace varnowick::e2e {
namespace {

class Desktop : public testing::Environment {
 public:
  void SetUp() override {
    seeRealPixels();
    // Some systems start a process for the desktop with the first window; it must
    // not be one of the program's children.
    GetDesktopWindow();
    const WindowDc screen(nullptr);
    apartment_ = std::make_unique<ComApartment>();
  }
  void TearDown() override { apartment_.reset(); }

 private:
  std::unique_ptr<ComApartment> apartment_;
};

[[maybe_unused]] const testing::Environment* const kDesktop =
    testing::AddGlobalTestEnvironment(new Desktop);

}  // namespace

void ProgramTest::SetUp() {
  mouse::moveTo({GetSystemMetrics(SM_CXSCREEN) / 2, GetSystemMetrics(SM_CYSCREEN) / 2});
  events_ = std::make_unique<Events>();
  folder_ = std::make_unique<ProgramFolder>();
}

void ProgramTest::TearDown() {
  program_.reset();
  folder_.reset();
  events_.reset();
}

RunningProgram& ProgramTest::start() {
  program_.reset();
  program_ = std::make_unique<RunningProgram>(*folder_, *events_);
  return *program_;
}

Bar ProgramTest::startBar() { return Bar(start(), *events_); }

std::vector<std::wstring> ProgramTest::answerUntil(const std::wstring& what,
                                                   const std::function<bool()>& condition) {
  std::vector<std::wstring> told;
  require(what, [&] {
    if (const DialogWindow dialog = anyDialog(program().process()); dialog.open()) {
      told.push_back(dialog.text());
      dialog.press(dialog.buttons().at(0));
    }
    return condition();
  });
  return told;
}

std::vector<std::wstring> ProgramTest::startAnsweringDialogs() {
  start();
  return answerUntil(L"the program to load", [&] {
    if (!program().running()) throw HarnessError(L"the program ended while loading");
    return events().count(kEventLoaded, program().process()) > 0;
  });
}

std::vector<std::wstring> ProgramTest::closeAnsweringDialogs() {
  PostMessageW(program().mainWindow(), WM_CLOSE, 0, 0);
  const std::vector<std::wstring> told =
      answerUntil(L"the program to end", [&] { return !program().running(); });
  EXPECT_EQ(program().waitForExit(), 0U);
  return told;
}

void ProgramTest::write(const SettingsFile& settings, const std::vector<ContainerRow>& containers) {
  folder().write(L"Varnowick.ini", settings.bytes());
  for (std::size_t i = 0; i < containers.size(); ++i)
    folder().write(L"Containers\\" + std::to_wstring(i) + L".con", containerFile(containers[i]));
}

std::string ProgramTest::file(int number) {
  return folder().read(L"Containers\\" + std::to_wstring(number) + L".con");
}

void ProgramTest::expectSaved(const std::function<void()>& action, int line) {
  events().expect(kEventSaved, L"saved, in line " + std::to_wstring(line), action);
}

void ProgramTest::openMenuAt(POINT at) {
  events().expect(kEventMenuOpened, L"menu opened", [&] { mouse::rightClick(at); });
  require(L"the menu's window", [] { return FindWindowW(L"#32768", nullptr) != nullptr; });
}

void ProgramTest::chooseFromMenu(POINT at, MenuId menu, Command command) {
  openMenuAt(at);
  const std::vector<ShownMenuRow> rows = shownMenu(menu, {});
  const auto stops = [](const ShownMenuRow& row) {
    return row.command != Command::None || !row.caption.empty();
  };
  const auto wanted = std::find_if(rows.begin(), rows.end(),
                                   [&](const ShownMenuRow& row) { return row.command == command; });
  if (wanted == rows.end()) throw HarnessError(L"the menu has no such row");
  auto row = rows.begin();
  for (int depth = 0; depth <= wanted->depth; ++depth) {
    // The head of the submenu in which it stands, or itself. Right opens a submenu
    // at its first row.
    auto stop = wanted;
    while (stop->depth > depth) --stop;
    if (depth > 0) {
      keyboard::press(VK_RIGHT);
      ++row;
    } else {
      keyboard::press(VK_DOWN);
    }
    for (; row != stop; ++row)
      if (row->depth == depth && stops(*row)) keyboard::press(VK_DOWN);
  }
  keyboard::press(VK_RETURN);
}

RECT windowAt(double left, double top, double width, double height) {
  // Edge by edge, so that neighbouring windows stay neighbours.
  return {toPixels(left), toPixels(top), toPixels(left + width), toPixels(top + height)};
}

std::string describe(const RECT& r) {
  return "(" + std::to_string(r.left) + "," + std::to_string(r.top) + " - " +
         std::to_string(r.right) + "," + std::to_string(r.bottom) + ")";
}

}  // namespace varnowick::e2e
