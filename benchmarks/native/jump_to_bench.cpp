// One key press in the jump-to box over 10 000 captions, against a plain search
// for the same text in the same captions.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "shortcuts/jump_to.h"

namespace varnowick {
namespace {

constexpr int kCaptions = 10'000;

std::vector<JumpEntry> captions() {
  const wchar_t* words[] = {L"Project", L"Report",  L"Mail",    L"Budget", L"Photo",
                            L"Server",  L"Console", L"Invoice", L"Backup", L"Music"};
  std::vector<JumpEntry> entries;
  std::uint32_t random = 1;
  const auto next = [&] {
    random = random * 1664525U + 1013904223U;
    return static_cast<int>(random >> 24U);
  };
  for (int i = 0; i < kCaptions; ++i) {
    std::wstring caption = words[next() % 10];
    caption += L' ';
    caption += words[next() % 10];
    caption += L' ' + std::to_wstring(i);
    entries.push_back({{i}, caption, next()});
  }
  return entries;
}

const wchar_t* const kQueries[] = {L"o", L"pr", L"mb", L"ice", L"prbud", L"rt9", L"xyz"};

void jumpTo(benchmark::State& state) {
  JumpTo box;
  box.setEntries(captions());
  const wchar_t* query = kQueries[state.range(0)];
  std::size_t found = 0;
  for (auto _ : state) benchmark::DoNotOptimize(found = box.find(query).size());
  state.counters["matches"] = static_cast<double>(found);
}
BENCHMARK(jumpTo)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);

void plainSearch(benchmark::State& state) {
  const std::vector<JumpEntry> entries = captions();
  for (auto _ : state)
    benchmark::DoNotOptimize(std::count_if(entries.begin(), entries.end(), [](const auto& e) {
      return e.caption.find(L"Bud") != std::wstring::npos;
    }));
}
BENCHMARK(plainSearch)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace varnowick
