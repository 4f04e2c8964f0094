// Loading and saving a large desktop, beside plain reading and writing of the
// same bytes in the same files: what the formats and the journal cost.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>

#include "core/container_files.h"
#include "core/desktop_store.h"
#include "core/settings_file.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_flusher.h"
#include "tests/fakes/fake_msg_box.h"
#include "tests/support/posix_files.h"

namespace varnowick {
namespace {

constexpr int kContainers = 40;
constexpr int kShortcuts = 250;

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

// A folder of its own with the large desktop in it, gone afterwards.
class Disk {
 public:
  explicit Disk(bool flush = true)
      : files(flush), store({files, flusher, {}}, codec, msgBox, widen(name())) {
    std::filesystem::remove_all(name());
    store.SaveDesktop(document, false);
    for (int i = -1; i < kContainers; ++i) {
      const std::wstring path =
          i < 0 ? store.settingsPath() : store.containerPath(static_cast<std::size_t>(i));
      contents.emplace_back(path, files.read(path).bytes);
      bytes += static_cast<std::int64_t>(contents.back().second.size());
    }
  }
  ~Disk() { std::filesystem::remove_all(name()); }

  PosixFiles files;
  FakeCodec codec;
  FakeMsgBox msgBox;
  FakeFlusher flusher{files};
  DesktopStore store;
  Document document = largeDocument();
  std::vector<std::pair<std::wstring, std::string>> contents;
  std::int64_t bytes = 0;

 private:
  static std::string name() {
    return (std::filesystem::temp_directory_path() / ("varnowick-" + std::to_string(::getpid())))
        .string();
  }
};

void PlainRead(benchmark::State& state) {
  Disk disk;
  for (auto _ : state)
    for (const auto& [path, bytes] : disk.contents) benchmark::DoNotOptimize(disk.files.read(path));
  state.SetBytesProcessed(state.iterations() * disk.bytes);
}
BENCHMARK(PlainRead)->Unit(benchmark::kMicrosecond)->UseRealTime();

void Load(benchmark::State& state) {
  Disk disk;
  for (auto _ : state) {
    Document document;
    benchmark::DoNotOptimize(disk.store.LoadSettings(document));
    state.PauseTiming();
    document = {};
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * disk.bytes);
}
BENCHMARK(Load)->Unit(benchmark::kMicrosecond)->UseRealTime();

void PlainWrite(benchmark::State& state) {
  Disk disk(state.range(0) != 0);
  for (auto _ : state)
    for (const auto& [path, bytes] : disk.contents)
      benchmark::DoNotOptimize(disk.files.write(path, bytes));
  state.SetBytesProcessed(state.iterations() * disk.bytes);
}
BENCHMARK(PlainWrite)
    ->ArgName("flushed")
    ->Arg(1)
    ->Arg(0)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();

void Save(benchmark::State& state) {
  Disk disk(state.range(0) != 0);
  for (auto _ : state) benchmark::DoNotOptimize(disk.store.SaveDesktop(disk.document, false));
  state.SetBytesProcessed(state.iterations() * disk.bytes);
}
BENCHMARK(Save)->ArgName("flushed")->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond)->UseRealTime();

// Saving up to the point where the bytes are ready.
void Render(benchmark::State& state) {
  const Document document = largeDocument();
  FakeCodec codec;
  for (auto _ : state) {
    const ContentsByPanel contents(document.workspace);
    benchmark::DoNotOptimize(renderContainerFiles(document.workspace, contents, codec));
  }
}
BENCHMARK(Render)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace varnowick
