// Started by the program in tests in place of a real target: appends its current
// folder, its whole command line and how it is to be shown to launches.txt beside
// itself, four UTF-8 lines a start, the last being "end".

#include <windows.h>

#include <string>

namespace {

std::string utf8(const std::wstring& text) {
  const int length = static_cast<int>(text.size());
  std::string bytes(text.size() * 3, '\0');
  const int used = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(),
                                       static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(used));
  return bytes;
}

std::wstring ownFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L'\\'));
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  std::wstring folder(32768, L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  STARTUPINFOW startup{};
  GetStartupInfoW(&startup);
  const bool told = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
  const std::wstring report = folder + L"\n" + GetCommandLineW() + L"\n" +
                              (told ? std::to_wstring(startup.wShowWindow) : L"none") + L"\nend\n";
  const std::string bytes = utf8(report);
  // In one write, so that a reader sees all of it or nothing.
  const HANDLE file = CreateFileW((ownFolder() + L"\\launches.txt").c_str(), FILE_APPEND_DATA,
                                  FILE_SHARE_READ, nullptr, OPEN_ALWAYS, 0, nullptr);
  DWORD written = 0;
  WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
  return 0;
}
