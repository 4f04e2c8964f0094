// The peer that starts are measured against: a window of the program's kind and
// size that paints once, and then tells of it by the program's own event, from
// the same place.
//
//   bare_window.exe LEFT TOP WIDTH HEIGHT [libraries] [FOLDER]
//
// With "libraries" it also loads the system's DLLs that the program imports and
// starts COM; with a folder it also reads every file of it, before it shows: what
// a program of that kind can hardly do without. Imports nothing but user32, gdi32
// and the C library, or it would not be bare.

#include <windows.h>

#include <cstdlib>
#include <string>

#include "ui/win/toolkit/win_events.h"

namespace {

void paint(HWND window) {
  PAINTSTRUCT ps{};
  const HDC dc = BeginPaint(window, &ps);
  RECT client{};
  GetClientRect(window, &client);
  FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
  SetBkMode(dc, TRANSPARENT);
  DrawTextW(dc, L"Bare", -1, &client, DT_SINGLELINE | DT_CENTER);
  EndPaint(window, &ps);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paint(window);
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

void loadLibraries() {
  for (const wchar_t* name : {L"oleaut32.dll", L"shell32.dll", L"version.dll"}) {
    LoadLibraryW(name);
  }
  using OleInitializeFunction = HRESULT(WINAPI*)(void*);
  const auto initialize = reinterpret_cast<OleInitializeFunction>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"ole32.dll"), "OleInitialize")));
  if (initialize != nullptr) initialize(nullptr);
}

std::size_t readFile(const std::wstring& path) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return 0;
  std::string bytes(GetFileSize(file, nullptr), '\0');
  DWORD got = 0;
  ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr);
  CloseHandle(file);
  return got;
}

std::size_t readAll(const std::wstring& folder) {
  std::size_t bytes = 0;
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return 0;
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      bytes += readFile(folder + L"\\" + found.cFileName);
    }
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return bytes;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count < 5) return 2;
  int rect[4] = {};
  for (int i = 0; i < 4; ++i)
    rect[i] = static_cast<int>(std::wcstol(arguments[i + 1], nullptr, 10));
  for (int i = 5; i < count; ++i) {
    if (std::wstring(arguments[i]) == L"libraries") {
      loadLibraries();
    } else if (readAll(arguments[i]) == 0) {
      return 1;
    }
  }

  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = &procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  windowClass.lpszClassName = L"VarnowickBareWindow";
  RegisterClassExW(&windowClass);
  const HWND window =
      CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_LAYERED, windowClass.lpszClassName,
                      L"Bare", WS_POPUP | WS_CLIPCHILDREN, rect[0], rect[1], rect[2], rect[3],
                      nullptr, nullptr, windowClass.hInstance, nullptr);
  SetLayeredWindowAttributes(window, 0, 255, LWA_ALPHA);
  ShowWindow(window, SW_SHOWNA);
  UpdateWindow(window);
  NotifyWinEvent(varnowick::kEventShown, window, OBJID_CLIENT, CHILDID_SELF);
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}
