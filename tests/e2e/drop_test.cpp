// What other programs drop on the bar or leave on the clipboard becomes
// shortcuts, and nothing else.
#include "tests/e2e/harness/drag_source.h"
#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using Record = std::map<std::string, std::string>;

struct Expected {
  std::string caption;
  std::string type;
  std::string path;
  std::string parameters{};
  bool asks = false;  // before it is started
};

class DropTest : public ProgramTest {
 protected:
  Bar startOpen() {
    write(SettingsFile(), {{.name = L"Tools"}});
    Bar bar = startBar();
    bar.expand();
    return bar;
  }
  void check(const std::string& file, const std::vector<Expected>& all) {
    EXPECT_EQ(countSavedShortcuts(file), all.size());
    for (const Expected& e : all) {
      SCOPED_TRACE(e.caption);
      Record record = savedShortcut(file, e.caption);
      EXPECT_EQ(record["[LinkType]"], e.type);
      EXPECT_EQ(record["[LinkPath]"], e.path);
      EXPECT_EQ(record["[LinkParam]"], e.parameters);
      EXPECT_EQ(record["[Confirm]"], e.asks ? "1" : "0");
    }
  }
};
using MainDrop = DropTest;

TEST_F(MainDrop, FilesFoldersAndLinksBecomeWhatTheyLeadTo) {
  const std::wstring probe = folder().addLaunchProbe();
  const std::wstring text = folder().file(L"A letter.txt");
  const std::wstring below = folder().file(L"Folder.of things");
  const std::wstring shellLink = folder().file(L"Probe link.lnk");
  const std::wstring webLink = folder().file(L"Page.url");
  writeFile(text, "letter");
  CreateDirectoryW(below.c_str(), nullptr);
  writeShellLink(shellLink, probe, L"-a \"b c\"");
  writeFile(webLink, "[InternetShortcut]\r\nURL=http://example.org/page\r\n");
  Bar bar = startOpen();
  DragSource source(offerFiles({text, probe, below, shellLink, webLink}));
  if (!bar.isOut()) bar.expand();
  require(L"the bar to be reachable with the mouse",
          [&] { return WindowFromPoint(bar.emptyPlace()) == bar.window(); });
  expectSaved(
      [&] { EXPECT_NE(source.dragTo(bar.emptyPlace()), static_cast<DWORD>(DROPEFFECT_NONE)); });
  check(recovery(), {{"A letter.txt", " 2", ansi(text)},
                     {"launch_probe", " 2", ansi(probe)},
                     {"Folder.of things", " 2", ansi(below)},
                     {"Probe link", " 2", ansi(probe), "-a \"b c\""},
                     {"Page", " 1", "http://example.org/page"}});
  EXPECT_EQ(countSavedShortcuts(file(0)), 0U);
  EXPECT_FALSE(launched(probe));
}

TEST_F(DropTest, TheClipboardIsReadLikeADrop) {
  const std::wstring text = folder().file(L"A letter.txt");
  writeFile(text, "letter");
  Bar bar = startOpen();
  const struct {
    Offer offer;
    Expected expected;
  } rows[] = {
      {offerFiles({text}), {"A letter.txt", " 2", ansi(text)}},
      {offerText(L" http://example.org/x \r\n"),
       {"example.org", " 1", "http://example.org/x", "", true}},
      {offerAddress(L"http://example.org/y", L"Title"),
       {"Title", " 1", "http://example.org/y", "", true}},
      {offerText(L"\"\\\\no-such-host-xyz\\pub\\a b.doc\" \"C:\\c d.txt\""),
       {"a b.doc", " 2", "\\\\no-such-host-xyz\\pub\\a b.doc", "", true}},
  };
  std::vector<Expected> all;
  for (const auto& row : rows) {
    putOnClipboard(row.offer);
    bar.focus();
    expectSaved([] { keyboard::chord({VK_CONTROL, 'V'}); });
    all.push_back(row.expected);
    if (row.expected.caption == "a b.doc")
      all.push_back({"c d.txt", " 2", "C:\\c d.txt", "", true});
    check(recovery(), all);
  }
  // Any other text is offered as a note.
  putOnClipboard(offerText(L"Milk\nand bread"));
  bar.focus();
  keyboard::chord({VK_CONTROL, 'V'});
  expectSaved([&] { message().press(IDYES); });
  const std::string note = folder().read(L"Containers\\1.con");
  EXPECT_EQ(savedValue(note, "[Name]"), "Milk");
  EXPECT_NE(note.find("Milk\r\nand bread"), std::string::npos);
}

// The data lie about themselves: counts and lengths that do not fit.
TEST_F(DropTest, DamagedFormatsDoNoHarm) {
  Offer cutOff = offerFiles({L"C:\\a.txt"});
  cutOff[0].bytes.resize(cutOff[0].bytes.size() - 8);
  const Offer offers[] = {
      cutOff,
      {{CF_HDROP, std::string(7, '\xFF')}},
      {{CF_UNICODETEXT, std::string(1, 'x')}},
      {{RegisterClipboardFormatW(L"UniformResourceLocatorW"), std::string(3, 'h')}},
  };
  Bar bar = startOpen();
  for (const Offer& offer : offers) {
    putOnClipboard(offer);
    bar.focus();
    keyboard::chord({VK_CONTROL, 'V'});
    // Whatever it makes of it, it goes on.
    expectSaved([&] {
      waitFor([&] { return anyDialog(program().process()).open(); }, 500);
      if (const DialogWindow told = anyDialog(program().process()); told.open()) told.press(IDOK);
      bar.focus();
      keyboard::chord({VK_CONTROL, 'L'});
    });
    expectSaved([] { keyboard::chord({VK_CONTROL, 'L'}); });
  }
}

}  // namespace
}  // namespace varnowick::e2e
