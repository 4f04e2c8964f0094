// Whatever a container file holds: it loads, and what is saved from it is the
// same again after the next load.
#include <cstdint>
#include <cstdlib>

#include "core/container_files.h"
#include "tests/fakes/fake_codec.h"

namespace {

std::string saveAfterLoading(std::string_view bytes, bool mustBeWhole) {
  using namespace varnowick;
  FakeCodec codec;
  Workspace workspace;
  LoadReport report;
  readContainerFile(bytes, L"fuzz", codec, {}, workspace, report);
  if (mustBeWhole && !report.empty()) std::abort();
  return renderContainerFiles(workspace, ContentsByPanel(workspace), codec).at(0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string saved = saveAfterLoading({reinterpret_cast<const char*>(data), size}, false);
  if (saveAfterLoading(saved, true) != saved) std::abort();
  return 0;
}
