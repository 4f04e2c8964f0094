// The settings file and the recovery copy, which have one format: the settings,
// then the pictures and shortcuts of the main panel. Works on bytes; where they
// come from and go to is desktop_store's business.
#pragma once

#include <string>
#include <string_view>

#include "core/document.h"
#include "core/load_report.h"
#include "core/object_records.h"
#include "platform/msg_box.h"
#include "platform/text_codec.h"

namespace varnowick {

// Applies the file's settings on top of those in the document and adds the main
// panel's records. Whatever cannot be read leaves things as they are and is
// reported under the path.
void readSettingsFile(std::string_view bytes, const std::wstring& path, TextCodec& codec,
                      MsgBox& msgBox, const Progress& progress, Document& document,
                      LoadReport& report);

std::string renderSettingsFile(const Settings& settings, const PanelContents& mainPanel,
                               TextCodec& codec);

}  // namespace varnowick
