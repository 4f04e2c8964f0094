#include "ui/win/toolkit/accessible.h"

#include <algorithm>
#include <cstring>

#include "platform/win32/callback.h"
#include "platform/win32/handles.h"
#include "platform/win32/ole_session.h"
#include "ui/win/toolkit/accessible_list.h"
#include "ui/win/toolkit/accessible_object.h"

namespace varnowick {

namespace {

// Spelt out, because the import library's symbol of this name is not the
// identifier but a jump to it.
constexpr IID kAccessibleId = {
    0x618736E0, 0x3C3D, 0x11CF, {0x81, 0x0C, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
constexpr IID kDispatchId = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// Loaded when the first reader asks, and kept: most machines never need it, and
// objects handed out live in it.
const SystemLibrary& oleacc() {
  static const SystemLibrary library(L"oleacc.dll");
  return library;
}

HRESULT setChild(VARIANT* out, long child) {
  out->vt = VT_I4;
  out->lVal = child;
  return S_OK;
}

// An identifier that comes from another thread or process may stand at any address.
bool sameId(const IID* a, const IID& b) { return std::memcmp(a, &b, sizeof b) == 0; }

// Every method but those of IUnknown: nothing may be thrown at the caller.
template <class Step>
HRESULT guarded(Step&& step) {
  return guardedCallback(HRESULT{E_OUTOFMEMORY}, std::forward<Step>(step));
}

}  // namespace

LRESULT AccessibleServer::getObject(HWND window, WPARAM wParam, LPARAM lParam) {
  // Some senders sign-extend the identifier, some do not.
  if (static_cast<LONG>(lParam) != OBJID_CLIENT) return 0;
  decltype(&LresultFromObject) toResult = nullptr;
  if (!ensureOle() || !oleacc().bind("LresultFromObject", toResult)) return 0;
  if (object_ == nullptr) {
    auto link = std::make_shared<AccessibleLink>(AccessibleLink{window, &provider_});
    object_ = new AccessibleObject(std::move(link), kAccessibleWindow);
  }
  return toResult(kAccessibleId, wParam, object_);
}

void AccessibleServer::disconnect() {
  if (object_ == nullptr) return;
  AccessibleObject* object = std::exchange(object_, nullptr);
  object->disconnect();
  CoDisconnectObject(object, 0);
  object->Release();
}

void announce(HWND window, DWORD event, long item) {
  if (window != nullptr) NotifyWinEvent(event, window, OBJID_CLIENT, -item);
}

bool somebodyHears(DWORD event) {
  // Windows XP and later.
  static const auto installed =
      SystemLibrary(L"user32.dll").bind<BOOL(WINAPI*)(DWORD)>("IsWinEventHookInstalled");
  return installed == nullptr || installed(event) != FALSE;
}

HRESULT AccessibleObject::QueryInterface(REFIID id, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (!sameId(&id, kUnknownId) && !sameId(&id, kDispatchId) && !sameId(&id, kAccessibleId)) {
    return E_NOINTERFACE;
  }
  *out = static_cast<IAccessible*>(this);
  AddRef();
  return S_OK;
}

ULONG AccessibleObject::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG AccessibleObject::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT AccessibleObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT AccessibleObject::resolve(const VARIANT& child, long& item) {
  if (provider() == nullptr) return CO_E_OBJNOTCONNECTED;
  if (child.vt != VT_I4 || child.lVal == LONG_MIN) return E_INVALIDARG;
  item = self_;
  if (child.lVal < 0) item = -child.lVal;
  if (child.lVal <= 0) return S_OK;
  const std::vector<long> all = provider()->children(self_);
  if (static_cast<std::size_t>(child.lVal) > all.size()) return E_INVALIDARG;
  item = all[static_cast<std::size_t>(child.lVal) - 1];
  return S_OK;
}

HRESULT AccessibleObject::lookUp(const VARIANT& child, AccessibleInfo& info) {
  long item = 0;
  if (const HRESULT result = resolve(child, item); FAILED(result)) return result;
  if (provider()->info(item, info)) return S_OK;
  return item == self_ ? CO_E_OBJNOTCONNECTED : E_INVALIDARG;
}

HRESULT AccessibleObject::text(const VARIANT& child, std::wstring AccessibleInfo::*field,
                               BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return guarded([&]() -> HRESULT {
    AccessibleInfo info;
    if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
    const std::wstring& value = info.*field;
    if (value.empty()) return S_FALSE;
    *out = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
    return *out != nullptr ? S_OK : E_OUTOFMEMORY;
  });
}

HRESULT AccessibleObject::number(const VARIANT& child, long AccessibleInfo::*field, VARIANT* out) {
  if (out == nullptr) return E_POINTER;
  out->vt = VT_EMPTY;
  return guarded([&]() -> HRESULT {
    AccessibleInfo info;
    if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
    return setChild(out, info.*field);
  });
}

IDispatch* AccessibleObject::objectOf(long item) {
  if (item != self_) return new AccessibleObject(link_, item);
  AddRef();
  return this;
}

void AccessibleObject::putChild(long item, VARIANT* out) {
  const std::vector<long> all = provider()->children(self_);
  const auto at = std::find(all.begin(), all.end(), item);
  if (item == self_) {
    setChild(out, CHILDID_SELF);
  } else if (at != all.end() && provider()->children(item).empty()) {
    setChild(out, static_cast<long>(at - all.begin()) + 1);
  } else {
    out->pdispVal = objectOf(item);
    out->vt = VT_DISPATCH;
  }
}

bool AccessibleObject::putHolder(long item, VARIANT* out) {
  for (AccessibleInfo info; item != self_; item = info.parent) {
    info = {};
    if (item <= kAccessibleWindow || !provider()->info(item, info)) return false;
    if (info.parent == self_) break;
  }
  putChild(item, out);
  return true;
}

HRESULT AccessibleObject::get_accParent(IDispatch** parent) {
  if (parent == nullptr) return E_POINTER;
  *parent = nullptr;
  return guarded([&]() -> HRESULT {
    if (provider() == nullptr) return CO_E_OBJNOTCONNECTED;
    AccessibleInfo info;
    if (self_ != kAccessibleWindow) {
      if (!provider()->info(self_, info)) return CO_E_OBJNOTCONNECTED;
      *parent = objectOf(info.parent);
      return S_OK;
    }
    decltype(&AccessibleObjectFromWindow) fromWindow = nullptr;
    if (!oleacc().bind("AccessibleObjectFromWindow", fromWindow)) return S_FALSE;
    return fromWindow(link_->window, static_cast<DWORD>(OBJID_WINDOW), kDispatchId,
                      reinterpret_cast<void**>(parent));
  });
}

HRESULT AccessibleObject::get_accChildCount(LONG* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return guarded([&]() -> HRESULT {
    if (provider() == nullptr) return CO_E_OBJNOTCONNECTED;
    *count = static_cast<LONG>(provider()->children(self_).size());
    return S_OK;
  });
}

HRESULT AccessibleObject::get_accChild(VARIANT child, IDispatch** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  return guarded([&]() -> HRESULT {
    long item = 0;
    AccessibleInfo info;
    if (const HRESULT result = resolve(child, item); FAILED(result)) return result;
    if (!provider()->info(item, info)) return E_INVALIDARG;
    // What has no children has no object of its own.
    if (item == self_ || provider()->children(item).empty()) return S_FALSE;
    *object = objectOf(item);
    return S_OK;
  });
}

HRESULT AccessibleObject::get_accName(VARIANT child, BSTR* out) {
  return text(child, &AccessibleInfo::name, out);
}
HRESULT AccessibleObject::get_accValue(VARIANT child, BSTR* out) {
  return text(child, &AccessibleInfo::value, out);
}
HRESULT AccessibleObject::get_accDefaultAction(VARIANT child, BSTR* out) {
  return text(child, &AccessibleInfo::defaultAction, out);
}
HRESULT AccessibleObject::get_accKeyboardShortcut(VARIANT child, BSTR* out) {
  return text(child, &AccessibleInfo::shortcut, out);
}

HRESULT AccessibleObject::get_accDescription(VARIANT, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return S_FALSE;
}
HRESULT AccessibleObject::get_accHelp(VARIANT child, BSTR* out) {
  return get_accDescription(child, out);
}

HRESULT AccessibleObject::get_accRole(VARIANT child, VARIANT* role) {
  return number(child, &AccessibleInfo::role, role);
}
HRESULT AccessibleObject::get_accState(VARIANT child, VARIANT* state) {
  return number(child, &AccessibleInfo::states, state);
}

HRESULT AccessibleObject::get_accFocus(VARIANT* child) {
  if (child == nullptr) return E_POINTER;
  child->vt = VT_EMPTY;
  return guarded([&]() -> HRESULT {
    if (provider() == nullptr) return CO_E_OBJNOTCONNECTED;
    const long focused = provider()->focusedItem();
    return focused >= 0 && putHolder(focused, child) ? S_OK : S_FALSE;
  });
}

// Of the children of this object; those below them are told by their own objects.
std::vector<VARIANT> AccessibleObject::selectedChildren() {
  std::vector<VARIANT> found;
  for (const long item : provider()->children(self_)) {
    AccessibleInfo info;
    if (!provider()->info(item, info) || (info.states & STATE_SYSTEM_SELECTED) == 0) continue;
    found.emplace_back();
    putChild(item, &found.back());
  }
  return found;
}

HRESULT AccessibleObject::get_accSelection(VARIANT* children) {
  if (children == nullptr) return E_POINTER;
  children->vt = VT_EMPTY;
  return guarded([&]() -> HRESULT {
    if (provider() == nullptr) return CO_E_OBJNOTCONNECTED;
    std::vector<VARIANT> selected = selectedChildren();
    if (selected.empty()) return S_FALSE;
    if (selected.size() == 1) {
      *children = selected.front();
      return S_OK;
    }
    children->punkVal = new AccessibleList(std::move(selected));
    children->vt = VT_UNKNOWN;
    return S_OK;
  });
}

HRESULT AccessibleObject::accSelect(LONG flags, VARIANT child) {
  return guarded([&]() -> HRESULT {
    constexpr LONG kKnown =
        SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION | SELFLAG_REMOVESELECTION;
    constexpr LONG kBoth = SELFLAG_ADDSELECTION | SELFLAG_REMOVESELECTION;
    long item = 0;
    AccessibleInfo info;
    if (const HRESULT result = resolve(child, item); FAILED(result)) return result;
    if (flags == 0 || (flags & ~kKnown) != 0 || (flags & kBoth) == kBoth ||
        !provider()->info(item, info))
      return E_INVALIDARG;
    return provider()->select(item, flags) ? S_OK : DISP_E_MEMBERNOTFOUND;
  });
}

HRESULT AccessibleObject::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                      VARIANT child) {
  if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) return E_POINTER;
  *left = *top = *width = *height = 0;
  return guarded([&]() -> HRESULT {
    AccessibleInfo info;
    if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
    *left = info.screenRect.left.value;
    *top = info.screenRect.top.value;
    *width = info.screenRect.width.value;
    *height = info.screenRect.height.value;
    return S_OK;
  });
}

HRESULT AccessibleObject::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  if (end == nullptr) return E_POINTER;
  end->vt = VT_EMPTY;
  return guarded([&]() -> HRESULT {
    long item = 0;
    AccessibleInfo info;
    if (const HRESULT result = resolve(start, item); FAILED(result)) return result;
    if (!provider()->info(item, info)) return E_INVALIDARG;
    if (direction == NAVDIR_FIRSTCHILD || direction == NAVDIR_LASTCHILD) {
      const std::vector<long> all = provider()->children(item);
      if (all.empty()) return S_FALSE;
      putChild(direction == NAVDIR_FIRSTCHILD ? all.front() : all.back(), end);
      return S_OK;
    }
    if (item == kAccessibleWindow) return S_FALSE;
    const std::vector<long> all = provider()->children(info.parent);
    const auto at = std::find(all.begin(), all.end(), item);
    if (direction == NAVDIR_NEXT && at != all.end() && at + 1 != all.end()) {
      putChild(*(at + 1), end);
      return S_OK;
    }
    if (direction == NAVDIR_PREVIOUS && at != all.end() && at != all.begin()) {
      putChild(*(at - 1), end);
      return S_OK;
    }
    return S_FALSE;
  });
}

HRESULT AccessibleObject::accHitTest(LONG x, LONG y, VARIANT* child) {
  if (child == nullptr) return E_POINTER;
  child->vt = VT_EMPTY;
  return guarded([&]() -> HRESULT {
    if (provider() == nullptr) return CO_E_OBJNOTCONNECTED;
    RECT window{};
    if (!GetWindowRect(link_->window, &window) || !PtInRect(&window, POINT{x, y})) return S_FALSE;
    const long hit = provider()->itemAt({{static_cast<int>(x)}, {static_cast<int>(y)}});
    return putHolder(hit, child) ? S_OK : S_FALSE;
  });
}

HRESULT AccessibleObject::accDoDefaultAction(VARIANT child) {
  return guarded([&]() -> HRESULT {
    long item = 0;
    AccessibleInfo info;
    if (const HRESULT result = resolve(child, item); FAILED(result)) return result;
    if (!provider()->info(item, info)) return E_INVALIDARG;
    if (info.defaultAction.empty()) return DISP_E_MEMBERNOTFOUND;
    return provider()->doDefaultAction(item) ? S_OK : E_FAIL;
  });
}

}  // namespace varnowick
