// Whatever the settings file holds: it loads, and what is saved from it is the
// same again after the next load.
#include <cstdint>
#include <cstdlib>

#include "core/settings_file.h"
#include "core/settings_table.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_msg_box.h"

namespace {

std::string saveAfterLoading(std::string_view bytes, bool mustBeWhole) {
  using namespace varnowick;
  FakeCodec codec;
  FakeMsgBox msgBox;
  Document document;
  LoadReport report;
  InitDefaultSettings(document.settings);
  readSettingsFile(bytes, L"fuzz", codec, msgBox, {}, document, report);
  if (mustBeWhole && !report.empty()) std::abort();
  return renderSettingsFile(document.settings, ContentsByPanel(document.workspace).of(picBack),
                            codec);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string saved = saveAfterLoading({reinterpret_cast<const char*>(data), size}, false);
  if (saveAfterLoading(saved, true) != saved) std::abort();
  return 0;
}
