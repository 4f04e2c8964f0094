// A journal is whole or dropped: what parses is rendered to the same bytes, and a
// start with it on the disk writes nothing outside the data folder.
#include <cstdint>
#include <cstdlib>

#include "core/desktop_store.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_flusher.h"
#include "tests/fakes/fake_msg_box.h"
#include "tests/fakes/memory_files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace varnowick;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  if (const std::optional<Journal> journal = parseJournal(bytes))
    if (parseJournal(renderJournal(journal->state, 1))->state != journal->state) std::abort();

  MemoryFiles files;
  FakeCodec codec;
  FakeMsgBox msgBox;
  FakeFlusher flusher(files);
  DesktopStore store({files, flusher, {}}, codec, msgBox, L"D:\\data");
  files.contents[L"D:\\data\\Varnowick.journal"] = bytes;
  Document document;
  store.LoadSettings(document);
  if (!store.SaveDesktop(document, false)) std::abort();
  for (const auto& [path, content] : files.contents)
    if (!path.starts_with(L"D:\\data\\") || path.find(L"..") != std::wstring::npos) std::abort();
  return 0;
}
