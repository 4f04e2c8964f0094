#include "platform/win32/instance_guard.h"

#include <cstdint>

namespace varnowick {

namespace {

struct Search {
  const std::wstring& property;
  HWND found = nullptr;
};

BOOL CALLBACK lookAt(HWND window, LPARAM target) {
  auto* search = reinterpret_cast<Search*>(target);
  if (GetPropW(window, search->property.c_str()) == nullptr) return TRUE;
  search->found = window;
  return FALSE;
}

std::wstring longForm(const std::wstring& path) {
  // "C:\DOCUME~1\..." and the long name are the same folder.
  wchar_t buffer[1024] = {};
  const DWORD length = GetLongPathNameW(path.c_str(), buffer, 1024);
  return length == 0 || length >= 1024 ? path : std::wstring(buffer, length);
}

std::wstring normalised(const std::wstring& folder) {
  wchar_t buffer[1024] = {};
  const DWORD length = GetFullPathNameW(folder.c_str(), 1024, buffer, nullptr);
  std::wstring path = length == 0 || length >= 1024 ? folder : std::wstring(buffer, length);
  while (!path.empty() && path.back() == L'\\') path.pop_back();
  // The folder itself may not be there yet at the first start, while the one
  // above it is; its name counts the same before and after.
  const std::size_t slash = path.find_last_of(L'\\');
  if (slash != std::wstring::npos && slash > 2) {
    const std::wstring whole = longForm(path);
    path = whole != path ? whole : longForm(path.substr(0, slash)) + path.substr(slash);
  }
  CharUpperBuffW(path.data(), static_cast<DWORD>(path.size()));
  return path;
}

KernelHandle makeMutex(const std::wstring& name, DWORD& error) {
  KernelHandle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
  error = GetLastError();
  return mutex;
}

}  // namespace

std::wstring instanceName(const std::wstring& dataFolder) {
  // FNV-1a. A name of an object may not hold backslashes or be as long as a path.
  std::uint64_t hash = 14695981039346656037ULL;
  for (const wchar_t c : normalised(dataFolder)) {
    hash = (hash ^ static_cast<std::uint64_t>(c)) * 1099511628211ULL;
  }
  wchar_t digits[17] = {};
  for (int i = 15; i >= 0; --i, hash >>= 4) digits[i] = L"0123456789abcdef"[hash & 15];
  return std::wstring(L"Varnowick-") + digits;
}

InstanceGuard::InstanceGuard(const std::wstring& dataFolder) : name_(instanceName(dataFolder)) {
  // All sessions of the machine: the same user may be logged on twice.
  DWORD error = 0;
  mutex_ = makeMutex(L"Global\\" + name_, error);
  if (!mutex_ && error != ERROR_ACCESS_DENIED) mutex_ = makeMutex(name_, error);
  // Denied: there is one, and it belongs to another user.
  first_ = error != ERROR_ALREADY_EXISTS && error != ERROR_ACCESS_DENIED;
}

void InstanceGuard::announceWindow(HWND mainWindow) const {
  SetPropW(mainWindow, name_.c_str(), reinterpret_cast<HANDLE>(1));
}

bool InstanceGuard::bringFirstForward(unsigned milliseconds) const {
  constexpr unsigned kStep = 50;
  Search search{name_, nullptr};
  for (unsigned waited = 0;; waited += kStep) {
    EnumWindows(lookAt, reinterpret_cast<LPARAM>(&search));
    if (search.found != nullptr) break;
    if (waited >= milliseconds) return false;
    Sleep(kStep);
  }
  DWORD process = 0;
  GetWindowThreadProcessId(search.found, &process);
  AllowSetForegroundWindow(process);
  return PostMessageW(search.found, message(), 0, 0) != 0;
}

UINT InstanceGuard::message() { return RegisterWindowMessageW(L"VarnowickComeForward"); }

bool forceForeground(HWND window) {
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  if (GetForegroundWindow() == window) return true;
  if (SetForegroundWindow(window) && GetForegroundWindow() == window) return true;
  // Sharing the input state of the program in front also shares its right. A
  // program that hangs must not take us with it, so it is asked first.
  const HWND front = GetForegroundWindow();
  if (front == nullptr) return SetForegroundWindow(window) != 0;
  DWORD_PTR ignored = 0;
  if (SendMessageTimeoutW(front, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 100, &ignored) == 0) return false;
  const DWORD theirs = GetWindowThreadProcessId(front, nullptr);
  const DWORD ours = GetCurrentThreadId();
  if (theirs == ours || !AttachThreadInput(ours, theirs, TRUE)) return false;
  BringWindowToTop(window);
  SetForegroundWindow(window);
  AttachThreadInput(ours, theirs, FALSE);
  return GetForegroundWindow() == window;
}

}  // namespace varnowick
