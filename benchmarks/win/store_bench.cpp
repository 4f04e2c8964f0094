// Loading and saving a large desktop where the product runs, beside plain reading
// and writing of the same bytes in the same files through the same interface.
// Prints rows "name | measured | peer or limit | ratio | aim | ok?"; the peers run
// in turn with what they are compared with.
//
//   store_bench.exe [LOADS [SAVES]]
//
// Works in a folder below the current one. Ends with 0 whatever the figures are.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/desktop_store.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_flusher.h"
#include "platform/win32/win32_msg_box.h"
#include "platform/win32/win32_text_codec.h"

namespace varnowick {
namespace {

constexpr int kContainers = 40;
constexpr int kShortcuts = 250;  // in each
constexpr double kLoadAim = 3;   // times plain reading
constexpr double kSaveAim = 2;
constexpr unsigned kMostWaiting = 60'000;  // ms

double now() {
  LARGE_INTEGER ticks{};
  LARGE_INTEGER perSecond{};
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&perSecond);
  return static_cast<double>(ticks.QuadPart) * 1000.0 / static_cast<double>(perSecond.QuadPart);
}

Document largeDocument() {
  Document d;
  for (int c = 0; c < kContainers; ++c) {
    clsContainer container;
    container.name = L"Container " + std::to_wstring(c);
    container.savedRect = container.rect = {{150}, {300}, {3000}, {2400}};
    const Panel panel{d.workspace.containers.add(container)};
    for (int i = 0; i < kShortcuts; ++i) {
      clsShortcut s;
      s.parent = panel;
      s.FullCaption = L"Shortcut number " + std::to_wstring(i);
      s.Path = L"C:\\Program Files\\Some Vendor\\Product\\program" + std::to_wstring(i) + L".exe";
      s.Parameters = i % 4 == 0 ? L"/open \"C:\\Documents\\file.txt\"" : L"";
      s.Tags = i % 3 == 0 ? L"work,tools" : L"";
      s.position = {{static_cast<float>(i % 10 * 900)}, {static_cast<float>(i / 10 * 915)}};
      d.workspace.shortcuts.add(std::move(s));
    }
  }
  return d;
}

double quantile(std::vector<double> values, double q) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(q * static_cast<double>(values.size() - 1) + 0.5)];
}

// Alternates, so that what else the machine does meets both alike; the first pair
// fills the caches of the system.
void compare(const char* name, int times, double aim, const char* peerName,
             const std::function<double()>& ours, const std::function<double()>& peer) {
  std::vector<double> one;
  std::vector<double> other;
  for (int i = -1; i < times; ++i) {
    const double a = ours();
    const double b = peer();
    if (i < 0) continue;
    one.push_back(a);
    other.push_back(b);
  }
  const double ratio = quantile(one, 0.5) / quantile(other, 0.5);
  std::printf("%s | %.1f ms (%.1f..%.1f) | %.1f ms (%.1f..%.1f) %s | %.2f | at most %.1f | %s\n",
              name, quantile(one, 0.5), quantile(one, 0.25), quantile(one, 0.75),
              quantile(other, 0.5), quantile(other, 0.25), quantile(other, 0.75), peerName, ratio,
              aim, ratio <= aim ? "yes" : "NO");
  std::fflush(stdout);
}

bool run(int loads, int saves) {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  folder += L"\\store_bench";
  Win32Files files;
  Win32TextCodec codec;
  Win32MsgBox msgBox;
  Doorbell doorbell;
  Win32Flusher flusher(doorbell);
  DesktopStore store({files, flusher, {}}, codec, msgBox, folder);
  const Document document = largeDocument();
  if (!store.SaveDesktop(document, false) || !store.finish(kMostWaiting)) return false;

  std::vector<std::pair<std::wstring, std::string>> contents;
  for (int i = -1; i < kContainers; ++i) {
    const std::wstring path =
        i < 0 ? store.settingsPath() : store.containerPath(static_cast<std::size_t>(i));
    contents.emplace_back(path, files.read(path).bytes);
  }
  bool good = true;
  compare(
      "load, 40 x 250 shortcuts (i686)", loads, kLoadAim, "plain reading",
      [&] {
        Document loaded;
        const double began = now();
        good &= store.LoadSettings(loaded)->empty();
        const double passed = now() - began;
        good &= loaded.workspace.shortcuts.count() == kContainers * kShortcuts;
        return passed;
      },
      [&] {
        const double began = now();
        for (const auto& [path, bytes] : contents)
          good &= files.read(path).bytes.size() == bytes.size();
        return now() - began;
      });
  // What the window's thread pays: it waits for the journal to be flushed, and for
  // nothing else. The rest of the flushing is done before the peer is measured.
  const auto save = [&] {
    const double began = now();
    good &= static_cast<bool>(store.SaveDesktop(document, false));
    const double passed = now() - began;
    good &= store.finish(kMostWaiting);
    return passed;
  };
  compare("save, flushed (i686)", saves, kSaveAim, "plain writing, flushed", save, [&] {
    const double began = now();
    for (const auto& [path, bytes] : contents) good &= static_cast<bool>(files.write(path, bytes));
    return now() - began;
  });
  for (const auto& [path, bytes] : contents) files.remove(path);
  files.remove(store.containersFolder());
  files.remove(folder);
  return good;
}

}  // namespace
}  // namespace varnowick

int wmain(int count, wchar_t** arguments) {
  const auto argument = [&](int index, int otherwise) {
    return count > index ? static_cast<int>(std::wcstol(arguments[index], nullptr, 10)) : otherwise;
  };
  if (varnowick::run(std::max(argument(1, 41), 1), std::max(argument(2, 11), 1))) return 0;
  std::fprintf(stderr, "store_bench: files could not be written or read back\n");
  return 1;
}
