#include "platform/win32/win32_error.h"

namespace varnowick {

std::wstring systemErrorText(DWORD code) {
  wchar_t* buffer = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, code, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  std::wstring text;
  if (length != 0 && buffer != nullptr) text.assign(buffer, length);
  LocalFree(buffer);
  for (wchar_t& c : text) {
    if (c == L'\r' || c == L'\n') c = L' ';
  }
  while (!text.empty() && text.back() == L' ') text.pop_back();
  if (text.empty()) text = L"Error " + std::to_wstring(code);
  return text;
}

}  // namespace varnowick
