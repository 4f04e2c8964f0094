#include "tests/e2e/harness/drag_source.h"

#include <ole2.h>
#include <shldisp.h>
#include <shlobj.h>

#include <cstring>

#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {
namespace {

constexpr int kSize = 60;  // pixels

std::string bytesOf(const std::wstring& text) {
  // With the NUL at the end.
  return {reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * sizeof(wchar_t)};
}

FORMATETC asMemory(UINT format) {
  return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

HGLOBAL inMemory(const std::string& bytes) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  if (memory == nullptr) return nullptr;
  std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
  GlobalUnlock(memory);
  return memory;
}

}  // namespace

template <class Interface>
class Counted : public Interface {
 public:
  virtual ~Counted() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    *result = nullptr;
    // A call from another process may hand over an identifier at any address.
    IID wanted{};
    std::memcpy(&wanted, &id, sizeof wanted);
    *result = wanted == IID_IUnknown || wanted == __uuidof(Interface)
                  ? static_cast<Interface*>(this)
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

Offer offerFiles(const std::vector<std::wstring>& paths) {
  DROPFILES head{};
  head.pFiles = sizeof head;
  head.fWide = TRUE;
  std::string bytes(reinterpret_cast<const char*>(&head), sizeof head);
  for (const std::wstring& path : paths) bytes += bytesOf(path);
  bytes += bytesOf(L"");
  return {{CF_HDROP, bytes}};
}

Offer offerText(const std::wstring& text) { return {{CF_UNICODETEXT, bytesOf(text)}}; }

Offer offerAddress(const std::wstring& address, const std::wstring& title) {
  FILEGROUPDESCRIPTORW group{};
  group.cItems = 1;
  lstrcpynW(group.fgd[0].cFileName, (title + L".url").c_str(), MAX_PATH);
  return {{RegisterClipboardFormatW(L"UniformResourceLocatorW"), bytesOf(address)},
          {RegisterClipboardFormatW(L"FileGroupDescriptorW"),
           std::string(reinterpret_cast<const char*>(&group), sizeof group)},
          {CF_UNICODETEXT, bytesOf(address)}};
}

void putOnClipboard(const Offer& offer) {
  require(L"the clipboard", [] { return OpenClipboard(nullptr) != FALSE; });
  EmptyClipboard();
  bool done = true;
  for (const OfferedFormat& format : offer)
    done = SetClipboardData(format.format, inMemory(format.bytes)) != nullptr && done;
  CloseClipboard();
  if (!done) failWithLastError(L"SetClipboardData");
}

class DragSource::Data final : public Counted<IDataObject> {
 public:
  explicit Data(DragSource& source) : source_(source), later_(*this) {}
  bool busy() const { return later_.busy; }

  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* wanted, STGMEDIUM* medium) override {
    const OfferedFormat* found = find(wanted);
    if (found == nullptr) return DV_E_FORMATETC;
    *medium = {};
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = inMemory(found->bytes);
    return medium->hGlobal == nullptr ? E_OUTOFMEMORY : S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* wanted) override {
    return find(wanted) == nullptr ? DV_E_FORMATETC : S_OK;
  }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** result) override {
    if (direction != DATADIR_GET) return E_NOTIMPL;
    std::vector<FORMATETC> all;
    for (const OfferedFormat& format : source_.offer_) all.push_back(asMemory(format.format));
    return SHCreateStdEnumFmtEtc(static_cast<UINT>(all.size()), all.data(), result);
  }
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override {
    out->ptd = nullptr;
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
    return OLE_E_ADVISENOTSUPPORTED;
  }
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override {
    return OLE_E_ADVISENOTSUPPORTED;
  }

 private:
  const OfferedFormat* find(const FORMATETC* wanted) const {
    if ((wanted->tymed & TYMED_HGLOBAL) == 0) return nullptr;
    for (const OfferedFormat& format : source_.offer_)
      if (format.format == wanted->cfFormat) return &format;
    return nullptr;
  }
  // The asynchronous half of the same object.
  struct Later final : IDataObjectAsyncCapability {
    explicit Later(Data& whole) : data(whole) {}
    virtual ~Later() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
      return data.QueryInterface(id, result);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return data.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return data.Release(); }
    HRESULT STDMETHODCALLTYPE SetAsyncMode(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetAsyncMode(BOOL* result) override {
      *result = TRUE;
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE StartOperation(IBindCtx*) override {
      busy = true;
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InOperation(BOOL* result) override {
      *result = busy;
      return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EndOperation(HRESULT, IBindCtx*, DWORD) override {
      busy = false;
      data.source_.deleteTemporary();
      InterlockedExchange(&data.source_.told_, 1);
      return S_OK;
    }
    Data& data;
    bool busy = false;
  };
  void* otherInterface(const IID& id) override {
    const bool asked = id == __uuidof(IDataObjectAsyncCapability);
    return asked && source_.manners_.finishesLater
               ? static_cast<IDataObjectAsyncCapability*>(&later_)
               : nullptr;
  }
  DragSource& source_;
  Later later_;
};

class DragSource::Source final : public Counted<IDropSource> {
 public:
  explicit Source(DragSource& source) : source_(source) {}
  HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
    if (escape) return DRAGDROP_S_CANCEL;
    if (source_.manners_.hangs && (keys & MK_LBUTTON) == 0) {
      InterlockedExchange(&source_.ended_, 1);
      WaitForSingleObject(source_.goOn_.get(), INFINITE);
      return DRAGDROP_S_CANCEL;
    }
    return (keys & MK_LBUTTON) == 0 ? DRAGDROP_S_DROP : S_OK;
  }
  HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }

 private:
  DragSource& source_;
};

DragSource::DragSource(Offer offer, Manners manners)
    : offer_(std::move(offer)),
      manners_(std::move(manners)),
      goOn_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  *thread_.put() = CreateThread(nullptr, 0, &DragSource::run, this, 0, nullptr);
  require(L"the window to drag from", [this] { return ready_ != 0; });
}

DragSource::~DragSource() {
  SetEvent(goOn_.get());
  PostMessageW(window_, WM_CLOSE, 0, 0);
  WaitForSingleObject(thread_.get(), kPatience);
}

DWORD WINAPI DragSource::run(void* self) {
  auto& source = *static_cast<DragSource*>(self);
  OleInitialize(nullptr);
  WNDCLASSW type{};
  type.lpfnWndProc = &DragSource::procedure;
  type.lpszClassName = L"VarnowickTestDragSource";
  type.hInstance = GetModuleHandleW(nullptr);
  RegisterClassW(&type);
  source.window_ = CreateWindowExW(
      WS_EX_TOPMOST | WS_EX_TOOLWINDOW, type.lpszClassName, L"", WS_POPUP | WS_VISIBLE,
      GetSystemMetrics(SM_CXSCREEN) / 2 - kSize / 2, GetSystemMetrics(SM_CYSCREEN) / 2 - kSize / 2,
      kSize, kSize, nullptr, nullptr, type.hInstance, nullptr);
  SetWindowLongPtrW(source.window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  InterlockedExchange(&source.ready_, 1);
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  OleUninitialize();
  return 0;
}

LRESULT CALLBACK DragSource::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) PostQuitMessage(0);
  if (message == WM_LBUTTONDOWN) {
    reinterpret_cast<DragSource*>(GetWindowLongPtrW(window, GWLP_USERDATA))->doDrag();
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

void DragSource::deleteTemporary() const {
  for (const std::wstring& path : manners_.temporary) DeleteFileW(path.c_str());
}

void DragSource::doDrag() {
  auto* data = new Data(*this);
  auto* source = new Source(*this);
  InterlockedExchange(&begun_, 1);
  DWORD effect = DROPEFFECT_NONE;
  const HRESULT result = DoDragDrop(data, source, DROPEFFECT_COPY | DROPEFFECT_LINK, &effect);
  effect_ = result == DRAGDROP_S_DROP ? effect : DROPEFFECT_NONE;
  if (!data->busy()) deleteTemporary();
  source->Release();
  data->Release();
  InterlockedExchange(&ended_, 1);
}

DWORD DragSource::dragTo(POINT target) {
  constexpr int kSteps = 8;
  RECT rect{};
  GetWindowRect(window_, &rect);
  const POINT from = centreOf(rect);
  InterlockedExchange(&begun_, 0);
  InterlockedExchange(&ended_, 0);
  mouse::moveTo(from);
  require(L"the window to drag from to be in front",
          [&] { return WindowFromPoint(from) == window_; });
  mouse::press();
  require(L"the drag to begin", [this] { return begun_ != 0; });
  for (int step = 1; step <= kSteps; ++step) {
    mouse::moveTo({from.x + (target.x - from.x) * step / kSteps,
                   from.y + (target.y - from.y) * step / kSteps});
    letTimePass(20);
  }
  mouse::moveTo({target.x + 1, target.y});
  letTimePass(50);
  mouse::release();
  require(L"the drag to end", [this] { return ended_ != 0; });
  return effect_;
}

void writeShellLink(const std::wstring& link, const std::wstring& target,
                    const std::wstring& arguments) {
  ComPtr<IShellLinkW> shell;
  ComPtr<IPersistFile> file;
  HRESULT result = CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                    shell.putVoid());
  if (SUCCEEDED(result)) result = shell->SetPath(target.c_str());
  if (SUCCEEDED(result)) result = shell->SetArguments(arguments.c_str());
  if (SUCCEEDED(result)) result = shell->QueryInterface(IID_IPersistFile, file.putVoid());
  if (SUCCEEDED(result)) result = file->Save(link.c_str(), TRUE);
  if (FAILED(result)) throw HarnessError(L"the link could not be written: " + link);
}

}  // namespace varnowick::e2e
