// Measures the whole program from outside: how soon it shows itself beside a bare
// window of the same kind, what it holds with a large workspace, and what it costs
// while nobody uses it. Prints rows "name | measured | peer or limit | ratio | aim
// | ok?"; the peers run in turn with the program, so that a busy machine slows
// down both.
//
//   process_bench.exe [STARTS [IDLE_SECONDS]]
//
// VARNOWICK_EXE_DIR names the folder of the program. Ends with 0 whatever the
// figures are, and with 1 when something could not be measured.

#include <windows.h>
// These rely on it.
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "benchmarks/win/figures.h"
#include "benchmarks/win/host_process.h"
#include "platform/win32/handles.h"
#include "tests/e2e/harness/data_files.h"
#include "tests/e2e/harness/dialogs.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/program_folder.h"
#include "tests/e2e/harness/waiting.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {
namespace {

constexpr double kStartAim = 1.5;     // times a bare window
constexpr double kMemoryAim = 1.5;    // times a bare window that loads the same
constexpr double kObjectsAim = 100;   // USER objects, whatever the workspace
constexpr double kIdleAim = 0.1;      // per cent of one processor
constexpr DWORD kSettle = 2000;       // ms until icons are loaded and timers rest
constexpr int kExpandedWidth = 4700;  // twips

// Hears when a process has painted for the first time.
class Ear {
 public:
  Ear()
      : hook_(SetWinEventHook(kEventShown, kEventShown, nullptr, &Ear::heard, 0, 0,
                              WINEVENT_OUTOFCONTEXT)) {
    if (hook_ == nullptr) failWithLastError(L"SetWinEventHook");
  }
  ~Ear() { UnhookWinEvent(hook_); }
  Ear(const Ear&) = delete;
  Ear& operator=(const Ear&) = delete;

  // Waits for the event of that process: its time, and the window.
  static double waitFor(DWORD process, HWND& window) {
    const DWORD started = GetTickCount();
    for (;;) {
      pumpMessages();
      if (time_ != 0 && process_ == process) {
        window = window_;
        return time_;
      }
      if (const DWORD passed = GetTickCount() - started; passed > kPatience) {
        throw HarnessError(L"a program that was started does not show itself");
      }
      MsgWaitForMultipleObjects(0, nullptr, FALSE, kPatience, QS_ALLINPUT);
    }
  }

 private:
  static void CALLBACK heard(HWINEVENTHOOK, DWORD, HWND window, LONG, LONG, DWORD, DWORD) {
    time_ = now();
    window_ = window;
    GetWindowThreadProcessId(window, &process_);
  }
  HWINEVENTHOOK hook_;
  static inline double time_ = 0;
  static inline HWND window_ = nullptr;
  static inline DWORD process_ = 0;
};

// A process from its start until this object goes, with all that it starts.
class Started {
 public:
  explicit Started(std::wstring commandLine) : job_(CreateJobObjectW(nullptr, nullptr)) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job_.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const double began = now();
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
      failWithLastError(L"starting " + commandLine);
    }
    process_.reset(process.hProcess);
    id_ = process.dwProcessId;
    const KernelHandle thread(process.hThread);
    AssignProcessToJobObject(job_.get(), process_.get());
    firstPaint_ = Ear::waitFor(id_, window_) - began;
  }
  ~Started() {
    TerminateJobObject(job_.get(), 1);
    WaitForSingleObject(process_.get(), kPatience);
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;

  HANDLE process() const { return process_.get(); }
  DWORD id() const { return id_; }
  HWND window() const { return window_; }
  double firstPaint() const { return firstPaint_; }  // ms

 private:
  KernelHandle job_;
  KernelHandle process_;
  DWORD id_ = 0;
  HWND window_ = nullptr;
  double firstPaint_ = 0;
};

struct Row {
  std::string name;
  std::string measured;
  std::string peer;
  std::optional<double> ratio{};
  std::string aim{};
  std::optional<bool> ok{};
};

void print(const Row& row) {
  char ratio[32] = "-";
  if (row.ratio) std::snprintf(ratio, sizeof ratio, "%.2f", *row.ratio);
  const char* ok = !row.ok ? "-" : *row.ok ? "yes" : "NO";
  std::printf("%s | %s | %s | %s | %s | %s\n", row.name.c_str(), row.measured.c_str(),
              row.peer.c_str(), ratio, row.aim.empty() ? "-" : row.aim.c_str(), ok);
  std::fflush(stdout);
}

std::string text(const char* format, double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, format, value);
  return buffer;
}

double quantile(std::vector<double> values, double q) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(q * static_cast<double>(values.size() - 1) + 0.5)];
}

// The workspace of someone who uses the program every day, or one far beyond it.
struct Size {
  int containers;
  int shortcuts;  // in each
};
constexpr Size kOrdinary{12, 10};
constexpr Size kLarge{40, 250};

DataFiles workspace(Size size, bool collapsed) {
  DataFiles files;
  const int left = collapsed ? -kExpandedWidth + 40 : kExpandedLeft;
  SettingsFile settings;
  settings.window(left, 0, kExpandedWidth, 11000).set("[Hidden]", collapsed ? "1" : "0");
  settings.add({.caption = L"Notepad", .path = L"C:\\windows\\notepad.exe"});
  files[L"Varnowick.ini"] = settings.bytes();
  const wchar_t* const programs[] = {L"notepad.exe", L"regedit.exe", L"explorer.exe", L"hh.exe",
                                     L"winhlp32.exe"};
  for (int c = 0; c < size.containers; ++c) {
    ContainerRow row;
    row.name = L"Container " + std::to_wstring(c);
    row.x = 120;
    row.y = 300 + c * 880;
    row.width = 4200;
    row.height = 850;
    for (int s = 0; s < size.shortcuts; ++s) {
      row.shortcuts.push_back(
          {.caption = L"Shortcut " + std::to_wstring(c) + L"-" + std::to_wstring(s),
           .path = std::wstring(L"C:\\windows\\") + programs[s % 5],
           .x = 60 + s % 5 * 820,
           .y = 300 + s / 5 * 500});
    }
    files[L"Containers\\" + std::to_wstring(c) + L".con"] = containerFile(row);
  }
  return files;
}

std::wstring ownFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring quoted(const std::wstring& path) { return L"\"" + path + L"\""; }

constexpr double kMegabyte = 1024.0 * 1024.0;

double privateMemory(HANDLE process, const std::optional<HostProcess>& host) {
  if (host) return host->privateBytes() / kMegabyte;
  PROCESS_MEMORY_COUNTERS_EX counters{};
  counters.cb = sizeof counters;
  if (!GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                            sizeof counters)) {
    failWithLastError(L"GetProcessMemoryInfo");
  }
  return static_cast<double>(counters.PrivateUsage) / kMegabyte;
}

// The processor time of the process so far, in ms.
double processorTime(HANDLE process, const std::optional<HostProcess>& host) {
  if (host) return host->processorTime();
  FILETIME created{};
  FILETIME ended{};
  FILETIME kernel{};
  FILETIME user{};
  if (!GetProcessTimes(process, &created, &ended, &kernel, &user)) {
    failWithLastError(L"GetProcessTimes");
  }
  const auto milliseconds = [](const FILETIME& t) {
    return (static_cast<double>(t.dwHighDateTime) * 4294967296.0 + t.dwLowDateTime) / 10000.0;
  };
  return milliseconds(kernel) + milliseconds(user);
}

struct WindowCount {
  DWORD process;
  int count = 0;
};

BOOL CALLBACK countOne(HWND, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

BOOL CALLBACK countWindow(HWND window, LPARAM parameter) {
  auto& found = *reinterpret_cast<WindowCount*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != found.process) return TRUE;
  ++found.count;
  EnumChildWindows(window, &countOne, reinterpret_cast<LPARAM>(&found.count));
  return TRUE;
}

// Every window, hidden ones, children and message-only ones as well.
int windowCount(DWORD process) {
  WindowCount found{process};
  EnumWindows(&countWindow, reinterpret_cast<LPARAM>(&found));
  for (HWND w = FindWindowExW(HWND_MESSAGE, nullptr, nullptr, nullptr); w != nullptr;
       w = FindWindowExW(HWND_MESSAGE, w, nullptr, nullptr)) {
    countWindow(w, reinterpret_cast<LPARAM>(&found));
  }
  return found.count;
}

class Bench {
 public:
  Bench(int starts, int idleSeconds) : starts_(starts), idleSeconds_(idleSeconds) {
    folder_.writeAll(workspace(kOrdinary, false));
    // The peer covers what the program covers.
    const Started program(quoted(folder_.exe()));
    RECT r{};
    GetWindowRect(program.window(), &r);
    bare_ = quoted(bareExe());
    for (const LONG n : {r.left, r.top, r.right - r.left, r.bottom - r.top}) {
      bare_ += L" " + std::to_wstring(n);
    }
  }

  void starts() {
    compareStarts("first paint, 12 x 10 shortcuts", bare_, "a bare window", kStartAim);
    compareStarts("the same start", bare_ + L" libraries",
                  "a bare window with COM and the same DLLs", std::nullopt);
  }

  void largeStarts() {
    folder_.writeAll(workspace(kLarge, false));
    compareStarts("first paint, 40 x 250 shortcuts", bare_, "a bare window", std::nullopt);
    compareStarts("the same start",
                  bare_ + L" libraries " + quoted(folder_.path() + L"\\Containers"),
                  "a bare window with the DLLs that reads the files", std::nullopt);
  }

  // What the program holds once the icons are there. The small workspace is told
  // as well, so that it shows what a shortcut costs.
  void held() {
    folder_.writeAll(workspace(kOrdinary, false));
    removeContainersFrom(kOrdinary.containers);
    memory("private memory, 12 x 10", bare_, "a bare window", std::nullopt);
    memory("the same", bare_ + L" libraries", "a bare window with COM and the same DLLs",
           kMemoryAim);
    {
      const Started small(quoted(folder_.exe()));
      letTimePass(kSettle);
      windows("windows, 12 x 10", small);
    }
    folder_.writeAll(workspace(kLarge, false));
    memory("private memory, 40 x 250", bare_, "a bare window", std::nullopt);

    const Started bare(bare_);
    const Started program(quoted(folder_.exe()));
    letTimePass(kSettle);
    windows("windows, 40 x 250", program);
    resources("USER objects, 40 x 250", program, bare, GR_USEROBJECTS, kObjectsAim);
    resources("GDI objects, 40 x 250", program, bare, GR_GDIOBJECTS, std::nullopt);
  }

  void idle() {
    folder_.writeAll(workspace(kLarge, true));
    const Started bare(bare_);
    const Started program(quoted(folder_.exe()));
    const auto host = HostProcess::find(folder_.exe());
    const auto bareHost = HostProcess::find(bareExe());
    mouse::moveTo({GetSystemMetrics(SM_CXSCREEN) / 2, GetSystemMetrics(SM_CYSCREEN) / 2});
    letTimePass(kSettle);
    const double ours = processorTime(program.process(), host);
    const double peers = processorTime(bare.process(), bareHost);
    // Whoever does not count at all would pass every aim.
    if (ours <= 0) throw HarnessError(L"this system does not count processor time");
    const double began = now();
    letTimePass(static_cast<DWORD>(idleSeconds_) * 1000);
    const double passed = now() - began;
    const double share = 100 * (processorTime(program.process(), host) - ours) / passed;
    // A thread that has ended takes its time along.
    const double bareShare =
        100 * std::max(0.0, processorTime(bare.process(), bareHost) - peers) / passed;
    print({"processor, collapsed and idle, " + text("%.0f s", passed / 1000),
           text("%.3f %%", share), text("0.1 %% limit (a bare window: %.3f %%)", bareShare),
           share / kIdleAim, "under 0.1 %", share < kIdleAim});
  }

 private:
  // Alternates, so that what else the machine does meets both alike.
  void compareStarts(const std::string& name, const std::wstring& peer, const std::string& peerName,
                     std::optional<double> aim) {
    std::vector<double> ours;
    std::vector<double> peers;
    for (int i = -1; i < starts_; ++i) {
      const double one = Started(quoted(folder_.exe())).firstPaint();
      const double other = Started(peer).firstPaint();
      // The first pair fills the caches of the system.
      if (i < 0) continue;
      ours.push_back(one);
      peers.push_back(other);
    }
    const double ratio = quantile(ours, 0.5) / quantile(peers, 0.5);
    Row row{name, times(ours), times(peers) + " " + peerName, ratio};
    if (aim) {
      row.aim = "at most " + text("%.1f", *aim);
      row.ok = ratio <= *aim;
    }
    print(row);
    // What else a machine does can only add to a time.
    const double least = quantile(ours, 0);
    const double leastPeer = quantile(peers, 0);
    print({"  the fastest of " + std::to_string(starts_), text("%.1f ms", least),
           text("%.1f ms", leastPeer), least / leastPeer});
  }

  void removeContainersFrom(int first) const {
    for (int c = first; folder_.exists(L"Containers\\" + std::to_wstring(c) + L".con"); ++c) {
      folder_.remove(L"Containers\\" + std::to_wstring(c) + L".con");
    }
  }

  void memory(const std::string& name, const std::wstring& peer, const std::string& peerName,
              std::optional<double> aim) {
    const Started bare(peer);
    const Started program(quoted(folder_.exe()));
    letTimePass(kSettle);
    const double ours = privateMemory(program.process(), HostProcess::find(folder_.exe()));
    const double peers = privateMemory(bare.process(), HostProcess::find(bareExe()));
    Row row{name, text("%.1f MB", ours), text("%.1f MB ", peers) + peerName, ours / peers};
    if (aim) {
      row.aim = text("at most %.1f", *aim);
      row.ok = ours <= *aim * peers;
    }
    print(row);
  }

  static void windows(const std::string& name, const Started& program) {
    const int count = windowCount(program.id());
    print({name, std::to_string(count), text("%.0f limit", kObjectsAim), count / kObjectsAim,
           "under 100", count < kObjectsAim});
  }

  static std::wstring bareExe() { return ownFolder() + L"\\bare_window.exe"; }

  static std::string times(const std::vector<double>& values) {
    return text("%.1f ms", quantile(values, 0.5)) + text(" (%.1f", quantile(values, 0.25)) +
           text("..%.1f)", quantile(values, 0.75));
  }

  static void resources(const std::string& name, const Started& program, const Started& bare,
                        DWORD kind, std::optional<double> limit) {
    const DWORD ours = GetGuiResources(program.process(), kind);
    const DWORD peers = GetGuiResources(bare.process(), kind);
    if (ours == 0) {
      print({name, "not counted by this system", "-"});
      return;
    }
    Row row{name, std::to_string(ours), std::to_string(peers) + " a bare window"};
    if (peers > 0) row.ratio = 1.0 * ours / peers;
    if (limit) {
      row.aim = text("under %.0f", *limit);
      row.ok = ours < *limit;
    }
    print(row);
  }

  Ear ear_;
  ProgramFolder folder_;
  std::wstring bare_;
  int starts_;
  int idleSeconds_;
};

}  // namespace
}  // namespace varnowick::e2e

int wmain(int count, wchar_t** arguments) {
  const auto argument = [&](int index, int otherwise) {
    return count > index ? static_cast<int>(std::wcstol(arguments[index], nullptr, 10)) : otherwise;
  };
  try {
    varnowick::e2e::seeRealPixels();
    varnowick::e2e::Bench bench(std::max(argument(1, 21), 1), argument(2, 30));
    bench.starts();
    bench.largeStarts();
    bench.held();
    bench.idle();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "process_bench: %s\n", error.what());
    return 1;
  }
}
