// What an hour of use leaves, by seeds: the same ones each time, or those of
// VARNOWICK_SEED and VARNOWICK_STEPS in the environment.
#include "tests/ui/scene/random_hour.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "core/container_files.h"
#include "core/desktop_store.h"
#include "core/settings_file.h"
#include "shortcuts/tags.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_flusher.h"
#include "tests/fakes/fake_msg_box.h"
#include "tests/fakes/memory_files.h"

namespace varnowick {
namespace {

int fromEnvironment(const char* name, int otherwise) {
  const char* value = std::getenv(name);
  return value == nullptr ? otherwise : std::atoi(value);
}

// What the bar shows after the program has been ended and started again.
std::vector<std::string> shownAfterRestart(const Document& document, const FrameLayout& layout) {
  MemoryFiles files;
  FakeCodec codec;
  FakeMsgBox msgBox;
  FakeFlusher flusher(files);
  DesktopStore before({files, flusher, {}}, codec, msgBox, L"C:\\Data");
  EXPECT_TRUE(before.SaveDesktop(document, false));
  DesktopStore after({files, flusher, {}}, codec, msgBox, L"C:\\Data");
  Document loaded;
  EXPECT_TRUE(after.LoadSettings(loaded)->empty());
  EXPECT_TRUE(msgBox.shown.empty());
  applyTagFilters(loaded.workspace);
  FakeTextMeasure measure;
  WorkspaceScene scene(loaded.settings, loaded.workspace, &measure);
  scene.build(layout);
  return shownOn(scene.scene());
}

std::string saved(const Document& document) {
  FakeCodec codec;
  const ContentsByPanel contents(document.workspace);
  std::string all = renderSettingsFile(document.settings, contents.of(picBack), codec);
  for (const std::string& file : renderContainerFiles(document.workspace, contents, codec))
    all += file;
  return all;
}

class RandomHourTest : public testing::TestWithParam<int> {};

TEST_P(RandomHourTest, LeavesEverythingInOrder) {
  const int seed = fromEnvironment("VARNOWICK_SEED", GetParam());
  const int steps = fromEnvironment("VARNOWICK_STEPS", 12'000);
  RandomHour hour(static_cast<unsigned>(seed));
  for (int i = 0; i < steps; ++i) {
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << i);
    hour.step();
    ASSERT_EQ(hour.faultNow(), "");
    if (i % 500 != 499 && i + 1 < steps) continue;
    hour.settleDown();
    ASSERT_EQ(hour.faultNow(), "");
    ASSERT_EQ(hour.faultAgainstNewScene(), "");
    ASSERT_EQ(difference(shownAfterRestart(hour.document(), hour.view().layout()),
                         shownOn(hour.view().scene())),
              "");
    if (i % 2000 != 1999) continue;
    hour.takeAll(true);
    const std::string before = saved(hour.document());
    const int taken = hour.takeAll(false);
    EXPECT_GT(taken, 20);
    ASSERT_EQ(hour.faultNow(), "");
    ASSERT_EQ(hour.faultAgainstNewScene(), "");
    EXPECT_EQ(hour.takeAll(true), taken);
    EXPECT_TRUE(saved(hour.document()) == before) << "done again it is the same";
    ASSERT_EQ(hour.faultAgainstNewScene(), "");
  }
  if (std::getenv("VARNOWICK_SEED") != nullptr) return;
  for (const char* what :
       {"shrunk", "folded", "open", "undo", "redo", "unfolded upward", "containers removed",
        "click", "opened by a drag", "detached or attached", "moved in a window"})
    EXPECT_GT(hour.tally[what], 0) << what << ", seed " << seed;
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomHourTest, testing::Values(13, 15, 31));

}  // namespace
}  // namespace varnowick
