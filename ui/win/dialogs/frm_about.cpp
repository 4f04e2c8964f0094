#include "ui/win/dialogs/frm_about.h"

#include <cstring>
#include <vector>

#include "platform/msg_box.h"
#include "ui/win/toolkit/resource.h"

namespace varnowick {
namespace {

using Id = frmAbout::Id;
constexpr WORD kVersionType = 16;  // RT_VERSION

std::vector<DialogRow> rows() {
  using enum DialogControl;
  return {
      {Icon, Id::kIcon, L"", 7, 7, 21, 20},
      {Text, Id::kName, L"", 38, 6, 215, 14},
      {Text, Id::kVersion, L"", 38, 21, 215, 8},
      {Text, Id::kWhat,
       L"A desktop organiser: shortcuts, notes, reminders and news at the edge of the screen.", 38,
       34, 215, 17},
      {Label, -1, L"&Data folder", 7, 59, 246, 8},
      {ReadOnlyEdit, Id::kDataFolder, L"", 7, 69, 246, 14},
      {Button, Id::kOpenDataFolder, L"&Open data folder", 7, 90, 80, 14},
      {DefaultButton, IDOK, L"OK", 203, 90, 50, 14},
  };
}

}  // namespace

std::wstring programVersion() {
  // Out of our own resource: the system's library for it is none of those that are
  // loaded from the system's folder alone.
  const HMODULE program = GetModuleHandleW(nullptr);
  const HRSRC resource =
      FindResourceW(program, MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(kVersionType));
  if (resource == nullptr) return {};
  const auto* block = static_cast<const char*>(LockResource(LoadResource(program, resource)));
  // Three words and the block's name stand before it.
  constexpr std::size_t kOffset = 40;
  VS_FIXEDFILEINFO info{};
  if (block == nullptr || SizeofResource(program, resource) < kOffset + sizeof info) return {};
  std::memcpy(&info, block + kOffset, sizeof info);
  if (info.dwSignature != VS_FFI_SIGNATURE) return {};
  std::wstring version;
  for (const DWORD part : {info.dwProductVersionMS, info.dwProductVersionLS})
    version += (version.empty() ? L"" : L".") + std::to_wstring(HIWORD(part)) + L"." +
               std::to_wstring(LOWORD(part));
  return version;
}

frmAbout::frmAbout(std::wstring dataFolder, std::function<void()> openDataFolder)
    : Dialog(std::wstring(L"About ") + kProgramTitle, 260, 111, rows()),
      dataFolder_(std::move(dataFolder)),
      openDataFolder_(std::move(openDataFolder)) {}

void frmAbout::initialise() {
  const HICON icon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_VARNOWICK));
  SendMessageW(item(kIcon), STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
  setText(kName, kProgramTitle);
  const std::wstring version = programVersion();
  if (!version.empty()) setText(kVersion, L"Version " + version);
  setText(kDataFolder, dataFolder_);
  enable(kOpenDataFolder, static_cast<bool>(openDataFolder_));

  LOGFONTW font{};
  const auto own = reinterpret_cast<HFONT>(SendMessageW(handle(), WM_GETFONT, 0, 0));
  if (own == nullptr || GetObjectW(own, sizeof font, &font) == 0) return;
  font.lfHeight = font.lfHeight * 3 / 2;
  font.lfWeight = FW_BOLD;
  nameFont_.reset(CreateFontIndirectW(&font));
  if (nameFont_)
    SendMessageW(item(kName), WM_SETFONT, reinterpret_cast<WPARAM>(nameFont_.get()), FALSE);
}

void frmAbout::command(int id) {
  if (id != kOpenDataFolder) return end(id);
  if (openDataFolder_) openDataFolder_();
}

}  // namespace varnowick
