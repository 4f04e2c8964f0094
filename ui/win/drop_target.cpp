#include "ui/win/drop_target.h"

#include <ole2.h>
#include <shlobj.h>

#include <algorithm>
#include <array>

#include "platform/win32/handles.h"

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

FORMATETC asMemory(UINT format) {
  return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

bool offers(IDataObject& data, UINT format) {
  FORMATETC wanted = asMemory(format);
  return data.QueryGetData(&wanted) == S_OK;
}

std::wstring fromAnsi(const std::string& text) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0)),
      L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

// One medium of a data object, locked in memory.
class Medium {
 public:
  Medium(IDataObject& data, UINT format) {
    FORMATETC wanted = asMemory(format);
    if (FAILED(data.GetData(&wanted, &medium_))) return;
    owned_ = true;
    if (medium_.tymed != TYMED_HGLOBAL) return;
    size_ = GlobalSize(medium_.hGlobal);
    memory_ = GlobalLock(medium_.hGlobal);
  }
  Medium(const Medium&) = delete;
  Medium& operator=(const Medium&) = delete;
  ~Medium() {
    if (memory_ != nullptr) GlobalUnlock(medium_.hGlobal);
    if (owned_) ReleaseStgMedium(&medium_);
  }
  const void* memory() const { return memory_; }
  std::size_t size() const { return memory_ == nullptr ? 0 : size_; }

  // Up to the first NUL, the end of the memory or the limit.
  std::wstring wideText(std::size_t limit) const {
    const auto* begin = static_cast<const wchar_t*>(memory_);
    const auto* end = begin + std::min(size() / sizeof(wchar_t), limit);
    return {begin, std::find(begin, end, L'\0')};
  }
  std::wstring ansiText(std::size_t limit) const {
    const auto* begin = static_cast<const char*>(memory_);
    return fromAnsi({begin, std::find(begin, begin + std::min(size(), limit), '\0')});
  }

 private:
  STGMEDIUM medium_{};
  void* memory_ = nullptr;
  std::size_t size_ = 0;
  bool owned_ = false;
};

DroppedPath pathDropped(std::wstring path) {
  WIN32_FILE_ATTRIBUTE_DATA about{};
  GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &about);
  const std::uint64_t size =
      (static_cast<std::uint64_t>(about.nFileSizeHigh) << 32) | about.nFileSizeLow;
  return {std::move(path), (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0, size};
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

std::vector<std::wstring> pathsIn(IDataObject& data, std::size_t most) {
  const Medium medium(data, CF_HDROP);
  if (medium.size() < sizeof(DROPFILES)) return {};
  const auto* header = static_cast<const DROPFILES*>(medium.memory());
  const auto* begin = static_cast<const char*>(medium.memory());
  if (header->pFiles < sizeof(DROPFILES) || header->pFiles > medium.size()) return {};
  const char* from = begin + header->pFiles;
  const char* end = begin + medium.size();
  if (header->fWide) {
    if (header->pFiles % sizeof(wchar_t) != 0) return {};
    return namesIn<wchar_t>(from, end, most);
  }
  std::vector<std::wstring> paths;
  for (const std::string& name : namesIn<char>(from, end, most)) paths.push_back(fromAnsi(name));
  return paths;
}

// Browsers describe the link as a file, "Title of the page.url".
std::wstring titleOfLink(IDataObject& data) {
  const Medium medium(data, groupDescriptorFormat());
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
  return std::any_of(formats.begin(), formats.end(), [&](UINT f) { return offers(data, f); });
}

bool clipboardOffersDroppable() {
  const auto formats = droppableFormats();
  return std::any_of(formats.begin(), formats.end(),
                     [](UINT f) { return IsClipboardFormatAvailable(f) != FALSE; });
}

Dropped readDropped(IDataObject& data) {
  Dropped result;
  if (offers(data, CF_HDROP))
    for (std::wstring& path : pathsIn(data, kMaxDroppedPaths))
      result.paths.push_back(pathDropped(std::move(path)));
  if (!result.paths.empty()) return result;
  if (offers(data, urlFormat()))
    result.address = Medium(data, urlFormat()).wideText(kMostDroppedText);
  else if (offers(data, ansiUrlFormat()))
    result.address = Medium(data, ansiUrlFormat()).ansiText(kMostDroppedText);
  if (!result.address.empty()) result.title = titleOfLink(data);
  if (offers(data, CF_UNICODETEXT))
    result.text = Medium(data, CF_UNICODETEXT).wideText(kMostDroppedText);
  else if (offers(data, CF_TEXT))
    result.text = Medium(data, CF_TEXT).ansiText(kMostDroppedText);
  return result;
}

Dropped readClipboard() {
  ComPtr<IDataObject> data;
  if (FAILED(OleGetClipboard(data.put())) || !data) return Dropped{};
  return readDropped(*data.get());
}

std::vector<std::wstring> droppedPaths(IDataObject& data, std::size_t most) {
  return offers(data, CF_HDROP) ? pathsIn(data, most) : std::vector<std::wstring>();
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
    acceptable_ = data != nullptr && offersDroppable(*data);
    data_.reset();
    if (acceptable_) {
      data->AddRef();
      data_ = ComPtr<IDataObject>::adopt(data);
    }
    if (owner_ != nullptr) owner_->active_ = true;
    return DragOver(keys, at, effect);
  }
  HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL at, DWORD* effect) override {
    const bool welcome = acceptable_ && owner_ != nullptr && owner_->hooks_.over({at.x, at.y});
    special_ = false;
    if (welcome && owner_->hooks_.effect) {
      if (const auto own = owner_->hooks_.effect({at.x, at.y}, *data_.get(), keys, *effect)) {
        special_ = true;
        *effect &= *own;
        return S_OK;
      }
    }
    // A shortcut is a link to what was dropped; some sources offer copying only.
    *effect &= welcome ? ((*effect & DROPEFFECT_LINK) != 0 ? DROPEFFECT_LINK : DROPEFFECT_COPY)
                       : DROPEFFECT_NONE;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DragLeave() override {
    data_.reset();
    if (owner_ == nullptr) return S_OK;
    owner_->active_ = false;
    owner_->hooks_.leave();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL at, DWORD* effect) override {
    DragOver(keys, at, effect);
    if (owner_ == nullptr) return S_OK;
    owner_->active_ = false;
    owner_->hooks_.leave();
    data_.reset();
    if (*effect == DROPEFFECT_NONE) return S_OK;
    if (special_) {
      *effect = owner_->hooks_.take({at.x, at.y}, *data, *effect);
      return S_OK;
    }
    if (!owner_->hooks_.drop({at.x, at.y}, readDropped(*data))) *effect = DROPEFFECT_NONE;
    return S_OK;
  }

 private:
  DropTarget* owner_;
  LONG count_ = 1;
  ComPtr<IDataObject> data_;  // while it is over the window
  bool acceptable_ = false;
  bool special_ = false;  // the last effect came from the owner's hook
};

bool DropTarget::attach(HWND window) {
  object_ = new Object(*this);
  if (FAILED(RegisterDragDrop(window, object_))) {
    object_->Release();
    object_ = nullptr;
    return false;
  }
  window_ = window;
  return true;
}

void DropTarget::revoke() {
  if (object_ == nullptr) return;
  RevokeDragDrop(window_);
  object_->disconnect();
  object_->Release();
  object_ = nullptr;
}

}  // namespace varnowick
