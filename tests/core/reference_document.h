// The document of the golden files, with every saved field unlike its default.
#pragma once

#include "core/container_files.h"
#include "core/settings_file.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_msg_box.h"
#include "tests/support/golden_files.h"

namespace varnowick {

inline Document referenceDocument() {
  Document document;
  FakeCodec codec;
  FakeMsgBox msgBox;
  LoadReport report;
  readSettingsFile(goldenSettingsFile(), L"", codec, msgBox, {}, document, report);
  for (const std::string& file : goldenContainerFiles())
    readContainerFile(file, L"", codec, {}, document.workspace, report);
  // What the program itself would not leave as it is when it runs on these files.
  document.settings.windowState = 2;
  clsContainer& everything = document.workspace.containers[{0}];
  everything.DetachedUseTab = everything.DetachedAutoHide = true;
  return document;
}

}  // namespace varnowick
