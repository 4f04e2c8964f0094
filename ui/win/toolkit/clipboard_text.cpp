#include "ui/win/toolkit/clipboard_text.h"

#include <algorithm>
#include <cstring>

namespace varnowick {
namespace {

class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) : opened_(OpenClipboard(owner) != FALSE) {}
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard() {
    if (opened_) CloseClipboard();
  }
  explicit operator bool() const { return opened_; }

 private:
  bool opened_;
};

}  // namespace

bool textIsOnClipboard() { return IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE; }

std::wstring textOnClipboard(HWND owner, std::size_t most) {
  const OpenedClipboard clipboard(owner);
  if (!clipboard) return {};
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  if (data == nullptr) return {};
  const auto* letters = static_cast<const wchar_t*>(GlobalLock(data));
  if (letters == nullptr) return {};
  const wchar_t* end = std::find(letters, letters + GlobalSize(data) / sizeof(wchar_t), L'\0');
  std::wstring text;
  if (static_cast<std::size_t>(end - letters) <= most) text.assign(letters, end);
  GlobalUnlock(data);
  return text;
}

bool putTextOnClipboard(HWND owner, std::wstring_view text) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  if (memory == nullptr) return false;
  auto* letters = static_cast<wchar_t*>(GlobalLock(memory));
  std::memcpy(letters, text.data(), text.size() * sizeof(wchar_t));
  letters[text.size()] = L'\0';
  GlobalUnlock(memory);
  const OpenedClipboard clipboard(owner);
  if (clipboard && EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory) != nullptr)
    return true;
  GlobalFree(memory);
  return false;
}

}  // namespace varnowick
