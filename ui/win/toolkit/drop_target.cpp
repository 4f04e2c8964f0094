#include "ui/win/toolkit/drop_target.h"

#include <ole2.h>
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <utility>

#include "platform/win32/handles.h"
#include "platform/win32/ole_session.h"
#include "ui/win/toolkit/com_guard.h"
#include "ui/win/toolkit/data_medium.h"
#include "ui/win/toolkit/file_drag.h"

namespace varnowick {
namespace {

// Registered names of the formats in which browsers hand over addresses.
UINT urlFormat() {
  static const UINT format = RegisterClipboardFormatW(L"UniformResourceLocatorW");
  return format;
}
UINT ansiUrlFormat() {
  static const UINT format = RegisterClipboardFormatW(L"UniformResourceLocator");
  return format;
}
UINT groupDescriptorFormat() {
  static const UINT format = RegisterClipboardFormatW(L"FileGroupDescriptorW");
  return format;
}

std::array<UINT, 5> droppableFormats() {
  return {CF_HDROP, urlFormat(), ansiUrlFormat(), CF_UNICODETEXT, CF_TEXT};
}

std::wstring fromAnsi(const std::string& text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0)),
      L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

// Up to the first NUL, the end of the memory or the limit.
std::wstring wideText(const DataMedium& medium, std::size_t limit) {
  const auto* begin = static_cast<const wchar_t*>(medium.memory());
  const auto* end = begin + std::min(medium.size() / sizeof(wchar_t), limit);
  return {begin, std::find(begin, end, L'\0')};
}
std::wstring ansiText(const DataMedium& medium, std::size_t limit) {
  const auto* begin = static_cast<const char*>(medium.memory());
  return fromAnsi({begin, std::find(begin, begin + std::min(medium.size(), limit), '\0')});
}

// The names behind a DROPFILES header, each ended by a NUL, the last by two. The
// system's own reader would trust the header of a foreign block.
template <class Character>
std::vector<std::basic_string<Character>> namesIn(const char* from, const char* end,
                                                  std::size_t most) {
  std::vector<std::basic_string<Character>> names;
  const auto* at = reinterpret_cast<const Character*>(from);
  const auto* last = at + static_cast<std::size_t>(end - from) / sizeof(Character);
  while (at < last && names.size() < most) {
    const auto* stop = std::find(at, last, Character{});
    if (stop == at || stop == last) break;
    names.emplace_back(at, stop);
    at = stop + 1;
  }
  return names;
}

std::vector<std::wstring> pathsIn(const void* memory, std::size_t size, std::size_t most) {
  if (memory == nullptr || size < sizeof(DROPFILES)) return {};
  const auto* header = static_cast<const DROPFILES*>(memory);
  const auto* begin = static_cast<const char*>(memory);
  if (header->pFiles < sizeof(DROPFILES) || header->pFiles > size) return {};
  const char* from = begin + header->pFiles;
  const char* end = begin + size;
  if (header->fWide) {
    if (header->pFiles % sizeof(wchar_t) != 0) return {};
    return namesIn<wchar_t>(from, end, most);
  }
  std::vector<std::wstring> paths;
  for (const std::string& name : namesIn<char>(from, end, most)) paths.push_back(fromAnsi(name));
  return paths;
}

std::vector<std::wstring> pathsIn(IDataObject& data, std::size_t most) {
  const DataMedium medium(data, CF_HDROP);
  return pathsIn(medium.memory(), medium.size(), most);
}

// The integrity level of a process; 0 before there were any.
DWORD integrityOf(HANDLE process) {
  constexpr auto kIntegrityLevel = static_cast<TOKEN_INFORMATION_CLASS>(25);
  KernelHandle token;
  alignas(TOKEN_GROUPS) std::array<char, 256> bytes{};
  DWORD size = 0;
  if (!OpenProcessToken(process, TOKEN_QUERY, token.put()) ||
      !GetTokenInformation(token.get(), kIntegrityLevel, bytes.data(),
                           static_cast<DWORD>(bytes.size()), &size))
    return 0;
  const auto* label = reinterpret_cast<const SID_AND_ATTRIBUTES*>(bytes.data());
  const auto* sid = static_cast<const SID*>(label->Sid);
  return sid->SubAuthorityCount == 0 ? 0 : sid->SubAuthority[sid->SubAuthorityCount - 1];
}

// The desktop's programs run with fewer rights than this one: then OLE does not let
// them drop anything here, and window messages only when they are let through.
bool isAboveTheDesktop() {
  constexpr DWORD kQueryLimited = 0x1000;  // newer than some headers, as are the levels
  DWORD id = 0;
  GetWindowThreadProcessId(GetShellWindow(), &id);
  const KernelHandle shell(id == 0 ? nullptr : OpenProcess(kQueryLimited, FALSE, id));
  if (!shell) return false;
  const DWORD level = integrityOf(shell.get());
  return level != 0 && level < integrityOf(GetCurrentProcess());
}

void letMessagesThrough(HWND window) {
  constexpr UINT kCopyGlobalData = 0x0049;  // in which the shell hands the names over
  constexpr DWORD kAllow = 1;
  // Windows 7 and later for one window, Vista for all.
  const SystemLibrary user(L"user32.dll");
  BOOL(WINAPI * filterOf)(HWND, UINT, DWORD, void*) = nullptr;
  BOOL(WINAPI * filter)(UINT, DWORD) = nullptr;
  const bool one = user.bind("ChangeWindowMessageFilterEx", filterOf);
  const bool all = !one && user.bind("ChangeWindowMessageFilter", filter);
  for (const UINT message :
       {static_cast<UINT>(WM_DROPFILES), static_cast<UINT>(WM_COPYDATA), kCopyGlobalData}) {
    if (one) filterOf(window, message, kAllow, nullptr);
    if (all) filter(message, kAllow);
  }
}

// Browsers describe the link as a file, "Title of the page.url".
std::wstring titleOfLink(IDataObject& data) {
  const DataMedium medium(data, groupDescriptorFormat());
  if (medium.size() < sizeof(FILEGROUPDESCRIPTORW)) return {};
  const auto* group = static_cast<const FILEGROUPDESCRIPTORW*>(medium.memory());
  if (group->cItems == 0) return {};
  const wchar_t* name = group->fgd[0].cFileName;
  std::wstring title(name, std::find(name, name + MAX_PATH, L'\0'));
  if (title.size() > 4 && title[title.size() - 4] == L'.') title.resize(title.size() - 4);
  return title;
}

}  // namespace

bool offersDroppable(IDataObject& data) {
  const auto formats = droppableFormats();
  return std::any_of(formats.begin(), formats.end(), [&](UINT f) { return offersFormat(data, f); });
}

bool clipboardOffersDroppable() {
  const auto formats = droppableFormats();
  return std::any_of(formats.begin(), formats.end(),
                     [](UINT f) { return IsClipboardFormatAvailable(f) != FALSE; });
}

Dropped readDropped(IDataObject& data) {
  Dropped result;
  if (offersFormat(data, CF_HDROP))
    for (std::wstring& path : pathsIn(data, kMaxDroppedPaths + 1))
      result.paths.push_back({std::move(path)});
  if (!result.paths.empty()) return result;
  if (offersFormat(data, urlFormat()))
    result.address = wideText(DataMedium(data, urlFormat()), kMostDroppedText);
  else if (offersFormat(data, ansiUrlFormat()))
    result.address = ansiText(DataMedium(data, ansiUrlFormat()), kMostDroppedText);
  if (!result.address.empty()) result.title = titleOfLink(data);
  if (offersFormat(data, CF_UNICODETEXT))
    result.text = wideText(DataMedium(data, CF_UNICODETEXT), kMostDroppedText + 1);
  else if (offersFormat(data, CF_TEXT))
    result.text = ansiText(DataMedium(data, CF_TEXT), kMostDroppedText + 1);
  return result;
}

Dropped readClipboard() {
  ComPtr<IDataObject> data;
  if (FAILED(OleGetClipboard(data.put())) || !data) return Dropped{};
  return readDropped(*data.get());
}

std::vector<std::wstring> droppedPaths(IDataObject& data, std::size_t most) {
  return offersFormat(data, CF_HDROP) ? pathsIn(data, most) : std::vector<std::wstring>();
}

class DropTarget::Object final : public IDropTarget {
 public:
  explicit Object(DropTarget& owner) : owner_(&owner) {}
  virtual ~Object() = default;
  void disconnect() { owner_ = nullptr; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (id != IID_IUnknown && id != IID_IDropTarget) {
      *result = nullptr;
      return E_NOINTERFACE;
    }
    *result = static_cast<IDropTarget*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&count_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&count_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL at,
                                      DWORD* effect) override {
    return guarded(effect, [&] {
      acceptable_ = data != nullptr && offersDroppable(*data);
      data_.reset();
      if (acceptable_) {
        data->AddRef();
        data_ = ComPtr<IDataObject>::adopt(data);
      }
      over(keys, at, effect);
    });
  }
  HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL at, DWORD* effect) override {
    return guarded(effect, [&] { over(keys, at, effect); });
  }
  HRESULT STDMETHODCALLTYPE DragLeave() override {
    return comGuarded([&] {
      data_.reset();
      if (owner_ != nullptr) owner_->ended();
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL at, DWORD* effect) override {
    return guarded(effect, [&] {
      over(keys, at, effect);
      data_.reset();
      if (owner_ == nullptr) return;
      owner_->ended();
      if (*effect == DROPEFFECT_NONE || data == nullptr) return;
      // What a drop does may wait and let messages through, and the window may go
      // meanwhile: then neither the owner nor its hooks are there any more.
      const POINT screen{at.x, at.y};
      if (special_) {
        const auto take = owner_->hooks_.take;
        *effect = take(screen, *data, *effect);
      } else {
        const auto drop = owner_->hooks_.drop;
        if (!drop(screen, readDropped(*data))) *effect = DROPEFFECT_NONE;
      }
    });
  }

 private:
  template <class Work>
  HRESULT guarded(DWORD* effect, Work&& work) {
    if (effect == nullptr) return E_INVALIDARG;
    const HRESULT result = comGuarded([&] {
      work();
      return S_OK;
    });
    if (FAILED(result)) *effect = DROPEFFECT_NONE;
    return result;
  }

  void over(DWORD keys, POINTL at, DWORD* effect) {
    if (owner_ != nullptr) owner_->begun();
    const bool welcome = acceptable_ && owner_ != nullptr && owner_->hooks_.over({at.x, at.y});
    special_ = false;
    if (welcome && owner_->hooks_.effect) {
      if (const auto own = owner_->hooks_.effect({at.x, at.y}, *data_.get(), keys, *effect)) {
        special_ = true;
        *effect &= *own;
        return;
      }
    }
    // A shortcut is a link to what was dropped; some sources offer copying only.
    *effect &= welcome ? ((*effect & DROPEFFECT_LINK) != 0 ? DROPEFFECT_LINK : DROPEFFECT_COPY)
                       : DROPEFFECT_NONE;
  }

  DropTarget* owner_;
  LONG count_ = 1;
  ComPtr<IDataObject> data_;  // while it is over the window
  bool acceptable_ = false;
  bool special_ = false;  // the last effect came from the owner's hook
};

bool DropTarget::attach(HWND window) {
  window_ = window;
  object_ = new Object(*this);
  byMessage_ = isAboveTheDesktop();
  if (byMessage_) {
    // OLE asks nobody else once a window is registered with it, and gets nowhere.
    if (hooks_.takesNothing) return true;
    letMessagesThrough(window);
    DragAcceptFiles(window, TRUE);
    return true;
  }
  return listen();
}

bool DropTarget::listen() { return ensureOle() && SUCCEEDED(RegisterDragDrop(window_, object_)); }

void DropTarget::expectOwnDrag(bool expected) {
  if (object_ == nullptr || !byMessage_) return;
  if (expected)
    listen();
  else
    RevokeDragDrop(window_);
}

// As a drop by OLE of a source that keeps its files.
void DropTarget::filesDropped(HDROP files) {
  POINT at{};
  DragQueryPoint(files, &at);
  ClientToScreen(window_, &at);
  const void* memory = GlobalLock(files);
  const std::vector<std::wstring> paths = pathsIn(memory, GlobalSize(files), kMostOfferedFiles);
  if (memory != nullptr) GlobalUnlock(files);
  DragFinish(files);
  if (paths.empty() || object_ == nullptr) return;
  const ComPtr<IDataObject> data = makeFileData(paths, 0);
  object_->AddRef();
  const auto target = ComPtr<IDropTarget>::adopt(object_);
  DWORD effect = DROPEFFECT_COPY | DROPEFFECT_LINK;
  target->DragEnter(data.get(), 0, {at.x, at.y}, &effect);
  effect = DROPEFFECT_COPY | DROPEFFECT_LINK;
  target->Drop(data.get(), 0, {at.x, at.y}, &effect);
}

void DropTarget::revoke() {
  if (object_ == nullptr) return;
  RevokeDragDrop(window_);
  object_->disconnect();
  object_->Release();
  object_ = nullptr;
}

void DropTarget::begun() {
  active_ = true;
  lastHeld_ = GetTickCount();
}

void DropTarget::ended() const {
  if (!std::exchange(active_, false)) return;
  hooks_.leave();
}

// A source that has died, or hangs, never says that its drag is over. What it offered
// is let go of with the next drag: a source that hangs would not answer to that.
bool DropTarget::dragActive() const {
  if (!active_) return false;
  for (const int button : {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON})
    if (GetAsyncKeyState(button) < 0) lastHeld_ = GetTickCount();
  if (GetTickCount() - lastHeld_ > kAfterRelease) ended();
  return active_;
}

}  // namespace varnowick
