// Owners of everything Windows counts: handles, keys, libraries, GDI objects and
// selections, device contexts, icons, menus, COM pointers. Each frees what it
// holds once, and says nothing of what it is used for. Nothing outside these
// types calls a closing function.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace varnowick {

// Traits name the type, the value that means none, and the closing function.
template <class Traits>
class UniqueHandle {
 public:
  using Type = typename Traits::Type;
  UniqueHandle() = default;
  explicit UniqueHandle(Type value) : value_(value) {}
  UniqueHandle(UniqueHandle&& other) noexcept : value_(other.release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
  }
  ~UniqueHandle() { reset(); }

  Type get() const { return value_; }
  explicit operator bool() const { return value_ != Traits::none(); }
  Type release() { return std::exchange(value_, Traits::none()); }
  void reset(Type value = Traits::none()) {
    if (value_ != Traits::none() && value_ != value) Traits::close(value_);
    value_ = value;
  }
  // For functions that return a handle through a pointer; frees the old one.
  Type* put() {
    reset();
    return &value_;
  }

 private:
  Type value_ = Traits::none();
};

struct KernelHandleTraits {
  using Type = HANDLE;
  static HANDLE none() { return nullptr; }
  static void close(HANDLE h) { CloseHandle(h); }
};
// Files and only files report failure as INVALID_HANDLE_VALUE.
struct FileHandleTraits {
  using Type = HANDLE;
  static HANDLE none() { return INVALID_HANDLE_VALUE; }
  static void close(HANDLE h) { CloseHandle(h); }
};
struct FindHandleTraits {
  using Type = HANDLE;
  static HANDLE none() { return INVALID_HANDLE_VALUE; }
  static void close(HANDLE h) { FindClose(h); }
};
struct KeyTraits {
  using Type = HKEY;
  static HKEY none() { return nullptr; }
  static void close(HKEY h) { RegCloseKey(h); }
};
struct ModuleTraits {
  using Type = HMODULE;
  static HMODULE none() { return nullptr; }
  static void close(HMODULE h) { FreeLibrary(h); }
};
template <class GdiType>
struct GdiTraits {
  using Type = GdiType;
  static GdiType none() { return nullptr; }
  static void close(GdiType h) { DeleteObject(h); }
};
struct MemoryDcTraits {
  using Type = HDC;
  static HDC none() { return nullptr; }
  static void close(HDC h) { DeleteDC(h); }
};
struct IconTraits {
  using Type = HICON;
  static HICON none() { return nullptr; }
  static void close(HICON h) { DestroyIcon(h); }
};
struct MenuTraits {
  using Type = HMENU;
  static HMENU none() { return nullptr; }
  static void close(HMENU h) { DestroyMenu(h); }
};
struct GlobalTraits {
  using Type = HGLOBAL;
  static HGLOBAL none() { return nullptr; }
  static void close(HGLOBAL h) { GlobalFree(h); }
};

using KernelHandle = UniqueHandle<KernelHandleTraits>;
using FileHandle = UniqueHandle<FileHandleTraits>;
using FindHandle = UniqueHandle<FindHandleTraits>;
using KeyHandle = UniqueHandle<KeyTraits>;
using ModuleHandle = UniqueHandle<ModuleTraits>;
using FontHandle = UniqueHandle<GdiTraits<HFONT>>;
using BitmapHandle = UniqueHandle<GdiTraits<HBITMAP>>;
using BrushHandle = UniqueHandle<GdiTraits<HBRUSH>>;
using PenHandle = UniqueHandle<GdiTraits<HPEN>>;
using RegionHandle = UniqueHandle<GdiTraits<HRGN>>;
using MemoryDc = UniqueHandle<MemoryDcTraits>;
using IconHandle = UniqueHandle<IconTraits>;
using MenuHandle = UniqueHandle<MenuTraits>;
using GlobalHandle = UniqueHandle<GlobalTraits>;

// The device context of a window (nullptr: of the screen), given back in time.
class WindowDc {
 public:
  explicit WindowDc(HWND window) : window_(window), dc_(GetDC(window)) {}
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  ~WindowDc() {
    if (dc_ != nullptr) ReleaseDC(window_, dc_);
  }
  HDC get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

// BeginPaint and EndPaint of one WM_PAINT.
class PaintDc {
 public:
  explicit PaintDc(HWND window) : window_(window), dc_(BeginPaint(window, &paint_)) {}
  PaintDc(const PaintDc&) = delete;
  PaintDc& operator=(const PaintDc&) = delete;
  ~PaintDc() { EndPaint(window_, &paint_); }
  HDC get() const { return dc_; }
  const RECT& dirty() const { return paint_.rcPaint; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
  HDC dc_;
};

// Selects an object for the guard's lifetime; the former one returns after it.
class SelectionGuard {
 public:
  SelectionGuard(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
  SelectionGuard(const SelectionGuard&) = delete;
  SelectionGuard& operator=(const SelectionGuard&) = delete;
  ~SelectionGuard() {
    if (former_ != nullptr && former_ != HGDI_ERROR) SelectObject(dc_, former_);
  }

 private:
  HDC dc_;
  HGDIOBJ former_;
};

template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(const ComPtr& other) : pointer_(other.pointer_) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPtr() { reset(); }

  // Takes over a reference that the caller owns already.
  static ComPtr adopt(T* pointer) {
    ComPtr owner;
    owner.pointer_ = pointer;
    return owner;
  }
  T* get() const { return pointer_; }
  T* operator->() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }
  void reset() {
    if (T* old = std::exchange(pointer_, nullptr); old != nullptr) old->Release();
  }
  T** put() {
    reset();
    return &pointer_;
  }
  void** putVoid() { return reinterpret_cast<void**>(put()); }

 private:
  T* pointer_ = nullptr;
};

// Text that COM allocated or is to free.
class ComString {
 public:
  explicit ComString(const std::wstring& text = {})
      : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  ComString(const ComString&) = delete;
  ComString& operator=(const ComString&) = delete;
  ~ComString() { SysFreeString(text_); }
  BSTR get() const { return text_; }
  BSTR* put() {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }
  std::wstring text() const {
    return text_ == nullptr ? std::wstring() : std::wstring(text_, SysStringLen(text_));
  }

 private:
  BSTR text_;
};

// One initialisation of COM for this thread.
class ComApartment {
 public:
  ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  bool ready() const { return SUCCEEDED(result_); }

 private:
  HRESULT result_;
};

// A library from the system folder, and nowhere else: a file of the same name
// beside the program or in the current folder is never loaded.
class SystemLibrary {
 public:
  SystemLibrary() = default;
  explicit SystemLibrary(const wchar_t* fileName) {
    wchar_t folder[MAX_PATH + 1] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return;
    module_.reset(LoadLibraryW((std::wstring(folder, length) + L"\\" + fileName).c_str()));
  }
  explicit operator bool() const { return static_cast<bool>(module_); }

  // Fetches a function; nullptr when the library or the function is missing.
  template <class Function>
  Function bind(const char* name) const {
    if (!module_) return nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_.get(), name)));
  }
  // The same into a variable, which tells the type. False when it is missing.
  template <class Function>
  bool bind(const char* name, Function& target) const {
    target = bind<Function>(name);
    return target != nullptr;
  }

 private:
  ModuleHandle module_;
};

}  // namespace varnowick
