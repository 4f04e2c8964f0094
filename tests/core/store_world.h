// Runs of the program on a disk in memory, for what the store does to the files.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/container_files.h"
#include "core/desktop_store.h"
#include "core/settings_file.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_flusher.h"
#include "tests/fakes/fake_msg_box.h"
#include "tests/fakes/memory_files.h"

namespace varnowick {

using Operation = MemoryFiles::Operation;
using Loss = MemoryFiles::Loss;
inline const std::wstring kFolder = L"C:\\Data\\Varnowick";
inline const std::wstring kMain = kFolder + L"\\Varnowick.ini";
inline const std::wstring kCopy = kFolder + L"\\Varnowick.REC";
inline const std::wstring kBackup = kFolder + L"\\Backup\\";
inline const FileStatus kDiskFull{FileStatus::Kind::DiskFull, L"There is not enough space."};

inline std::wstring container(int number) {
  return kFolder + L"\\Containers\\" + std::to_wstring(number) + L".con";
}

// Everything that is saved of a document, in one comparable text.
inline std::string stateOf(const Document& document) {
  FakeCodec codec;
  const ContentsByPanel contents(document.workspace);
  return renderJournal({false, renderSettingsFile(document.settings, contents.of(picBack), codec),
                        renderContainerFiles(document.workspace, contents, codec)},
                       0);
}

inline Document withContainers(const wchar_t* name, int containers) {
  Document d;
  d.settings.wallpaper = name;
  for (int i = 0; i < containers; ++i)
    d.workspace.containers[d.workspace.containers.add()].name = name + std::to_wstring(i);
  return d;
}

// One run of the program. Each pause is counted, and another program can do something
// in it.
struct Session {
  FakeCodec codec;
  FakeMsgBox msgBox;
  FakeFlusher flusher;
  int pauses = 0;
  std::function<void(int)> meanwhile;
  DesktopStore store;
  Document document;
  LoadReport report;

  explicit Session(MemoryFiles& files, std::vector<MsgAnswer> answers = {},
                   std::function<void(int)> pausing = {})
      : flusher(files),
        meanwhile(std::move(pausing)),
        store({files, flusher,
               [this](unsigned) {
                 ++pauses;
                 if (meanwhile) meanwhile(pauses);
               }},
              codec, msgBox, kFolder) {
    msgBox.answers = std::move(answers);
    report = store.LoadSettings(document).value_or(LoadReport{});
  }
  std::string state() const { return stateOf(document); }
  SaveResult save(const Document& d, bool recovery = false) {
    return store.SaveDesktop(d, recovery);
  }
};

using States = std::vector<const Document*>;

// What the next run finds.
inline void expectState(MemoryFiles files, const States& allowed, const std::string& where) {
  files.operationsUntilCut = -1;
  files.failure = nullptr;
  const std::string found = Session(files).state();
  EXPECT_TRUE(files.list(kFolder, L".discarded").empty()) << where;
  EXPECT_TRUE(std::any_of(allowed.begin(), allowed.end(), [&](const Document* d) {
    return found == stateOf(*d);
  })) << where;
}

inline MemoryFiles diskWith(const Document& document) {
  MemoryFiles files;
  Session session(files);
  EXPECT_TRUE(session.save(document) && session.store.finish(0));
  files.log.clear();
  return files;
}

}  // namespace varnowick
