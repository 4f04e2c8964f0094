#include "ui/win/toolkit/file_drag.h"

#include <ole2.h>
#include <shldisp.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "ui/win/toolkit/com_guard.h"
#include "ui/win/toolkit/data_medium.h"
#include "ui/win/toolkit/drop_target.h"

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
UINT pasteSucceededFormat() {
  static const UINT format = RegisterClipboardFormatW(L"Paste Succeeded");
  return format;
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
    *result = wanted == IID_IUnknown || wanted == kId ? static_cast<Interface*>(this)
                                                      : otherInterface(wanted);
    if (*result == nullptr) return E_NOINTERFACE;
    this->AddRef();
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

 protected:
  virtual void* otherInterface(const IID&) { return nullptr; }

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
    *result = nullptr;
    return comGuarded([&] {
      *result = new FormatList(formats_, at_);
      return S_OK;
    });
  }

 private:
  std::vector<FORMATETC> formats_;
  std::size_t at_;
};

// Blocks of memory by format. What the target tells is kept beside what is offered.
class FileData final : public Counted<IDataObject, IID_IDataObject> {
 public:
  FileData() : later_(*this) {}
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
    const HRESULT kept = comGuarded([&] {
      put(format->cfFormat, std::move(copy));
      return S_OK;
    });
    if (SUCCEEDED(kept) && release) ReleaseStgMedium(medium);
    return kept;
  }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** result) override {
    *result = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    return comGuarded([&] {
      std::vector<FORMATETC> formats;
      for (const Block& block : blocks_) formats.push_back(asMemory(block.format));
      *result = new FormatList(std::move(formats), 0);
      return S_OK;
    });
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

  // Lets a target finish after Drop has returned. Nothing waits for its end: the files
  // are the user's own and stay.
  class Later final : public IDataObjectAsyncCapability {
   public:
    explicit Later(FileData& data) : data_(data) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
      return data_.QueryInterface(id, result);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return data_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return data_.Release(); }
    HRESULT STDMETHODCALLTYPE SetAsyncMode(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetAsyncMode(BOOL* result) override {
      if (result == nullptr) return E_INVALIDARG;
      *result = TRUE;
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE StartOperation(IBindCtx*) override {
      running_ = TRUE;
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InOperation(BOOL* result) override {
      if (result == nullptr) return E_INVALIDARG;
      *result = running_;
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EndOperation(HRESULT, IBindCtx*, DWORD) override {
      running_ = FALSE;
      return S_OK;
    }

   private:
    FileData& data_;
    BOOL running_ = FALSE;
  };
  void* otherInterface(const IID& id) override {
    return id == __uuidof(IDataObjectAsyncCapability)
               ? static_cast<IDataObjectAsyncCapability*>(&later_)
               : nullptr;
  }

  std::vector<Block> blocks_;
  Later later_;
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
  const DataMedium medium(data, format);
  DWORD effect = 0;
  if (medium.size() >= sizeof effect) std::memcpy(&effect, medium.memory(), sizeof effect);
  return effect;
}

// OLE for this thread; the clipboard wants more than COM.
class OleApartment {
 public:
  OleApartment() : result_(OleInitialize(nullptr)) {}
  OleApartment(const OleApartment&) = delete;
  OleApartment& operator=(const OleApartment&) = delete;
  ~OleApartment() {
    if (ready()) OleUninitialize();
  }
  bool ready() const { return SUCCEEDED(result_); }

 private:
  HRESULT result_;
};

// The thread that tells a source of the end; it outlives whoever has started it.
struct Farewell : std::enable_shared_from_this<Farewell> {
  using Telling = void (Farewell::*)();
  ComPtr<IStream> source;  // holds the data object for the thread
  DWORD clipboard = 0;     // its sequence number
  TransferEnd end;
  Telling telling = nullptr;

  void start(TransferEnd ended, Telling how) {
    constexpr SIZE_T kFarewellStackBytes = 256 * 1024;
    end = ended;
    telling = how;
    auto held = std::make_unique<std::shared_ptr<Farewell>>(shared_from_this());
    const KernelHandle thread(
        CreateThread(nullptr, kFarewellStackBytes, &Farewell::run, held.get(), 0, nullptr));
    if (thread) held.release();
  }

  void toSource() {
    ComPtr<IDataObject> data;
    // The stream goes with it.
    IStream* stream = source.get();
    stream->AddRef();
    source.reset();
    if (FAILED(CoGetInterfaceAndReleaseStream(stream, IID_IDataObject, data.putVoid()))) return;
    const DWORD effect = tellEnd(*data.get(), end);
    ComPtr<IDataObjectAsyncCapability> later;
    if (SUCCEEDED(data->QueryInterface(__uuidof(IDataObjectAsyncCapability), later.putVoid())))
      later->EndOperation(end.complete ? S_OK : E_FAIL, nullptr, effect);
  }

  void toClipboard() {
    ComPtr<IDataObject> data;
    if (!isStillThere() || FAILED(OleGetClipboard(data.put())) || !data) return;
    tellEnd(*data.get(), end);
    tell(*data.get(), pasteSucceededFormat(), end.moved ? DROPEFFECT_MOVE : DROPEFFECT_COPY);
    data.reset();
    if (isStillThere()) OleSetClipboard(nullptr);
  }
  bool isStillThere() const { return clipboard == GetClipboardSequenceNumber(); }

  static DWORD WINAPI run(void* held) {
    const std::unique_ptr<std::shared_ptr<Farewell>> self(
        static_cast<std::shared_ptr<Farewell>*>(held));
    comGuarded([&] {
      const OleApartment ole;
      if (ole.ready()) ((**self).*(*self)->telling)();
      return S_OK;
    });
    return 0;
  }
};

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

bool offersFiles(IDataObject& data) { return offersFormat(data, CF_HDROP); }

OfferedFiles readFiles(IDataObject& data) {
  return {droppedPaths(data, kMostOfferedFiles), effectIn(data, preferredEffectFormat())};
}

OfferedFiles readClipboardFiles() {
  ComPtr<IDataObject> data;
  if (FAILED(OleGetClipboard(data.put())) || !data) return {};
  return readFiles(*data.get());
}

bool clipboardHasFiles() { return IsClipboardFormatAvailable(CF_HDROP) != FALSE; }

DWORD tellEnd(IDataObject& data, TransferEnd end) {
  const DWORD done = !end.complete ? DROPEFFECT_NONE
                     : end.moved   ? DROPEFFECT_MOVE
                                   : DROPEFFECT_COPY;
  const DWORD leftToSource = end.moved ? DROPEFFECT_NONE : done;
  tell(data, performedEffectFormat(), leftToSource);
  tell(data, logicalEffectFormat(), done);
  return leftToSource;
}

TellSource finishLater(IDataObject& data) {
  ComPtr<IDataObjectAsyncCapability> later;
  BOOL wanted = FALSE;
  if (FAILED(data.QueryInterface(__uuidof(IDataObjectAsyncCapability), later.putVoid())) ||
      FAILED(later->GetAsyncMode(&wanted)) || !wanted)
    return {};
  if (FAILED(later->StartOperation(nullptr))) return {};
  const auto farewell = std::make_shared<Farewell>();
  if (FAILED(
          CoMarshalInterThreadInterfaceInStream(IID_IDataObject, &data, farewell->source.put()))) {
    later->EndOperation(E_FAIL, nullptr, DROPEFFECT_NONE);
    return {};
  }
  return [farewell](TransferEnd end) { farewell->start(end, &Farewell::toSource); };
}

TellSource takeOffClipboard() {
  const auto farewell = std::make_shared<Farewell>();
  farewell->clipboard = GetClipboardSequenceNumber();
  return [farewell](TransferEnd end) {
    if (end.complete) farewell->start(end, &Farewell::toClipboard);
  };
}

}  // namespace varnowick
