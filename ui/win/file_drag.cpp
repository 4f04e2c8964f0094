#include "ui/win/file_drag.h"

#include <ole2.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "ui/win/drop_target.h"

namespace varnowick {
namespace {

UINT preferredEffectFormat() {
  static const UINT format = RegisterClipboardFormatW(L"Preferred DropEffect");
  return format;
}
UINT performedEffectFormat() {
  static const UINT format = RegisterClipboardFormatW(L"Performed DropEffect");
  return format;
}
UINT logicalEffectFormat() {
  static const UINT format = RegisterClipboardFormatW(L"Logical Performed DropEffect");
  return format;
}

FORMATETC asMemory(UINT format) {
  return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

GlobalHandle memoryWith(const void* bytes, std::size_t size) {
  GlobalHandle memory(GlobalAlloc(GMEM_MOVEABLE, size));
  void* target = memory ? GlobalLock(memory.get()) : nullptr;
  if (target == nullptr) return GlobalHandle();
  std::memcpy(target, bytes, size);
  GlobalUnlock(memory.get());
  return memory;
}

GlobalHandle pathsAsMemory(const std::vector<std::wstring>& paths) {
  DROPFILES header{};
  header.pFiles = sizeof header;
  header.fWide = TRUE;
  std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
  for (const std::wstring& path : paths)
    bytes.append(reinterpret_cast<const char*>(path.c_str()), (path.size() + 1) * sizeof(wchar_t));
  bytes.append(sizeof(wchar_t), '\0');
  return memoryWith(bytes.data(), bytes.size());
}

// Counting and casting, the same for every object here.
template <class Interface, const IID& kId>
class Counted : public Interface {
 public:
  virtual ~Counted() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    *result = nullptr;
    // A call from another process may hand over an identifier at any address.
    IID wanted{};
    std::memcpy(&wanted, &id, sizeof wanted);
    if (wanted != IID_IUnknown && wanted != kId) return E_NOINTERFACE;
    *result = static_cast<Interface*>(this);
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

 private:
  LONG count_ = 1;
};

class FormatList final : public Counted<IEnumFORMATETC, IID_IEnumFORMATETC> {
 public:
  FormatList(std::vector<FORMATETC> formats, std::size_t at)
      : formats_(std::move(formats)), at_(at) {}
  HRESULT STDMETHODCALLTYPE Next(ULONG count, FORMATETC* result, ULONG* fetched) override {
    ULONG done = 0;
    for (; done < count && at_ < formats_.size(); ++done) result[done] = formats_[at_++];
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = formats_.size() - at_;
    at_ += std::min<std::size_t>(count, left);
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    at_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumFORMATETC** result) override {
    *result = new FormatList(formats_, at_);
    return S_OK;
  }

 private:
  std::vector<FORMATETC> formats_;
  std::size_t at_;
};

// Blocks of memory by format. What the target tells is kept beside what is offered.
class FileData final : public Counted<IDataObject, IID_IDataObject> {
 public:
  void put(UINT format, GlobalHandle memory) {
    std::erase_if(blocks_, [format](const Block& block) { return block.format == format; });
    if (memory) blocks_.push_back({format, std::move(memory)});
  }

  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* wanted, STGMEDIUM* result) override {
    if (result == nullptr) return E_INVALIDARG;
    *result = {};
    const Block* block = find(wanted);
    if (block == nullptr) return DV_E_FORMATETC;
    const std::size_t size = GlobalSize(block->memory.get());
    const void* bytes = GlobalLock(block->memory.get());
    GlobalHandle copy = bytes == nullptr ? GlobalHandle() : memoryWith(bytes, size);
    GlobalUnlock(block->memory.get());
    if (!copy) return E_OUTOFMEMORY;
    result->tymed = TYMED_HGLOBAL;
    result->hGlobal = copy.release();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* wanted) override {
    return find(wanted) == nullptr ? DV_E_FORMATETC : S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* result) override {
    if (result != nullptr) result->ptd = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) override {
    if (format == nullptr || medium == nullptr || medium->tymed != TYMED_HGLOBAL) return DV_E_TYMED;
    // Only effects are told this way; more than a few bytes are none of our concern.
    const std::size_t size = GlobalSize(medium->hGlobal);
    if (size == 0 || size > kMostTold || blocks_.size() > kMostBlocks) return E_INVALIDARG;
    const void* bytes = GlobalLock(medium->hGlobal);
    if (bytes == nullptr) return E_OUTOFMEMORY;
    GlobalHandle copy = memoryWith(bytes, size);
    GlobalUnlock(medium->hGlobal);
    if (!copy) return E_OUTOFMEMORY;
    put(format->cfFormat, std::move(copy));
    if (release) ReleaseStgMedium(medium);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** result) override {
    *result = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    std::vector<FORMATETC> formats;
    for (const Block& block : blocks_) formats.push_back(asMemory(block.format));
    *result = new FormatList(std::move(formats), 0);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
    return OLE_E_ADVISENOTSUPPORTED;
  }
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** result) override {
    if (result != nullptr) *result = nullptr;
    return OLE_E_ADVISENOTSUPPORTED;
  }

 private:
  static constexpr std::size_t kMostTold = 65536;
  static constexpr std::size_t kMostBlocks = 32;
  struct Block {
    UINT format = 0;
    GlobalHandle memory;
  };
  const Block* find(const FORMATETC* wanted) const {
    if (wanted == nullptr || (wanted->tymed & TYMED_HGLOBAL) == 0) return nullptr;
    for (const Block& block : blocks_)
      if (block.format == wanted->cfFormat) return &block;
    return nullptr;
  }
  std::vector<Block> blocks_;
};

class DragSource final : public Counted<IDropSource, IID_IDropSource> {
 public:
  HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
    if (escape) return DRAGDROP_S_CANCEL;
    return (keys & (MK_LBUTTON | MK_RBUTTON)) == 0 ? DRAGDROP_S_DROP : S_OK;
  }
  HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

void tell(IDataObject& data, UINT format, DWORD effect) {
  FORMATETC as = asMemory(format);
  STGMEDIUM medium{};
  medium.tymed = TYMED_HGLOBAL;
  medium.hGlobal = memoryWith(&effect, sizeof effect).release();
  if (medium.hGlobal == nullptr) return;
  if (FAILED(data.SetData(&as, &medium, TRUE))) ReleaseStgMedium(&medium);
}

DWORD effectIn(IDataObject& data, UINT format) {
  FORMATETC wanted = asMemory(format);
  STGMEDIUM medium{};
  if (FAILED(data.GetData(&wanted, &medium))) return 0;
  DWORD effect = 0;
  if (medium.tymed == TYMED_HGLOBAL && GlobalSize(medium.hGlobal) >= sizeof effect) {
    if (const void* bytes = GlobalLock(medium.hGlobal); bytes != nullptr) {
      std::memcpy(&effect, bytes, sizeof effect);
      GlobalUnlock(medium.hGlobal);
    }
  }
  ReleaseStgMedium(&medium);
  return effect;
}

}  // namespace

ComPtr<IDataObject> makeFileData(const std::vector<std::wstring>& paths, DWORD preferredEffect) {
  auto* data = new FileData;
  auto owner = ComPtr<IDataObject>::adopt(data);
  data->put(CF_HDROP, pathsAsMemory(paths));
  if (preferredEffect != 0)
    data->put(preferredEffectFormat(), memoryWith(&preferredEffect, sizeof preferredEffect));
  return owner;
}

void dragFiles(const std::vector<std::wstring>& paths, DWORD allowedEffects) {
  if (paths.empty()) return;
  const ComPtr<IDataObject> data = makeFileData(paths, 0);
  const auto source = ComPtr<IDropSource>::adopt(new DragSource);
  DWORD effect = DROPEFFECT_NONE;
  // Whatever the target has done: it has moved what it wanted to move.
  DoDragDrop(data.get(), source.get(), allowedEffects, &effect);
}

bool putFilesOnClipboard(const std::vector<std::wstring>& paths, bool cut) {
  if (paths.empty()) return false;
  const ComPtr<IDataObject> data =
      makeFileData(paths, cut ? DROPEFFECT_MOVE : DROPEFFECT_COPY | DROPEFFECT_LINK);
  // Rendered at once, so that it outlives the program.
  return SUCCEEDED(OleSetClipboard(data.get())) && SUCCEEDED(OleFlushClipboard());
}

bool offersFiles(IDataObject& data) {
  FORMATETC wanted = asMemory(CF_HDROP);
  return data.QueryGetData(&wanted) == S_OK;
}

OfferedFiles readFiles(IDataObject& data) {
  return {droppedPaths(data, kMostOfferedFiles), effectIn(data, preferredEffectFormat())};
}

OfferedFiles readClipboardFiles() {
  ComPtr<IDataObject> data;
  if (FAILED(OleGetClipboard(data.put())) || !data) return {};
  return readFiles(*data.get());
}

void tellMoved(IDataObject& data) {
  tell(data, performedEffectFormat(), DROPEFFECT_NONE);
  tell(data, logicalEffectFormat(), DROPEFFECT_MOVE);
}

void clearClipboard() { OleSetClipboard(nullptr); }

}  // namespace varnowick
