#include "ui/win/accessible.h"

#include <algorithm>

#include "platform/win32/handles.h"
#include "ui/win/accessible_object.h"

namespace varnowick {

namespace {

// Spelt out, because the import library's symbol of this name is not the
// identifier but a jump to it.
constexpr IID kAccessibleId = {
    0x618736E0, 0x3C3D, 0x11CF, {0x81, 0x0C, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};
constexpr IID kUnknownId = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
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

BOOL sameId(REFIID a, const IID& b) { return IsEqualGUID(a, b); }

}  // namespace

LRESULT AccessibleServer::getObject(HWND window, WPARAM wParam, LPARAM lParam) {
  // Some senders sign-extend the identifier, some do not.
  if (static_cast<LONG>(lParam) != OBJID_CLIENT) return 0;
  decltype(&LresultFromObject) toResult = nullptr;
  if (!oleacc().bind("LresultFromObject", toResult)) return 0;
  if (object_ == nullptr) object_ = new AccessibleObject(window, provider_);
  return toResult(kAccessibleId, wParam, object_);
}

void AccessibleServer::disconnect() {
  if (object_ == nullptr) return;
  AccessibleObject* object = std::exchange(object_, nullptr);
  object->disconnect();
  CoDisconnectObject(object, 0);
  object->Release();
}

void announce(HWND window, DWORD event, long child) {
  if (window != nullptr) NotifyWinEvent(event, window, OBJID_CLIENT, child);
}

HRESULT AccessibleObject::QueryInterface(REFIID id, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (!sameId(id, kUnknownId) && !sameId(id, kDispatchId) && !sameId(id, kAccessibleId)) {
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

HRESULT AccessibleObject::lookUp(const VARIANT& child, AccessibleInfo& info) {
  if (provider_ == nullptr) return CO_E_OBJNOTCONNECTED;
  if (child.vt != VT_I4 || child.lVal < 0) return E_INVALIDARG;
  return provider_->info(static_cast<int>(child.lVal), info) ? S_OK : E_INVALIDARG;
}

HRESULT AccessibleObject::text(const VARIANT& child, std::wstring AccessibleInfo::*field,
                               BSTR* out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  AccessibleInfo info;
  if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
  const std::wstring& value = info.*field;
  if (value.empty()) return S_FALSE;
  *out = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
  return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT AccessibleObject::get_accParent(IDispatch** parent) {
  if (parent == nullptr) return E_POINTER;
  *parent = nullptr;
  if (provider_ == nullptr) return CO_E_OBJNOTCONNECTED;
  decltype(&AccessibleObjectFromWindow) fromWindow = nullptr;
  if (!oleacc().bind("AccessibleObjectFromWindow", fromWindow)) return S_FALSE;
  return fromWindow(window_, static_cast<DWORD>(OBJID_WINDOW), kDispatchId,
                    reinterpret_cast<void**>(parent));
}

HRESULT AccessibleObject::get_accChildCount(LONG* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  if (provider_ == nullptr) return CO_E_OBJNOTCONNECTED;
  *count = provider_->childCount();
  return S_OK;
}

HRESULT AccessibleObject::get_accChild(VARIANT child, IDispatch** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  AccessibleInfo info;
  if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
  return S_FALSE;  // children have no objects of their own
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
  if (role == nullptr) return E_POINTER;
  role->vt = VT_EMPTY;
  AccessibleInfo info;
  if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
  return setChild(role, info.role);
}

HRESULT AccessibleObject::get_accState(VARIANT child, VARIANT* state) {
  if (state == nullptr) return E_POINTER;
  state->vt = VT_EMPTY;
  AccessibleInfo info;
  if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
  return setChild(state, info.states);
}

HRESULT AccessibleObject::get_accFocus(VARIANT* child) {
  if (child == nullptr) return E_POINTER;
  child->vt = VT_EMPTY;
  if (provider_ == nullptr) return CO_E_OBJNOTCONNECTED;
  const int focused = provider_->focusedChild();
  return focused < 0 ? S_FALSE : setChild(child, focused);
}

HRESULT AccessibleObject::get_accSelection(VARIANT* children) {
  if (children == nullptr) return E_POINTER;
  children->vt = VT_EMPTY;
  if (provider_ == nullptr) return CO_E_OBJNOTCONNECTED;
  // Several selected ones would need an enumerator; the first one is told.
  for (int i = 1; i <= provider_->childCount(); ++i) {
    AccessibleInfo info;
    if (provider_->info(i, info) && (info.states & STATE_SYSTEM_SELECTED) != 0) {
      return setChild(children, i);
    }
  }
  return S_FALSE;
}

HRESULT AccessibleObject::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                      VARIANT child) {
  if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) return E_POINTER;
  *left = *top = *width = *height = 0;
  AccessibleInfo info;
  if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
  *left = info.screenRect.left.value;
  *top = info.screenRect.top.value;
  *width = info.screenRect.width.value;
  *height = info.screenRect.height.value;
  return S_OK;
}

HRESULT AccessibleObject::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  if (end == nullptr) return E_POINTER;
  end->vt = VT_EMPTY;
  if (provider_ == nullptr) return CO_E_OBJNOTCONNECTED;
  if (start.vt != VT_I4) return E_INVALIDARG;
  const long count = provider_->childCount();
  long target = 0;
  if (start.lVal == CHILDID_SELF) {
    if (direction == NAVDIR_FIRSTCHILD) target = 1;
    if (direction == NAVDIR_LASTCHILD) target = count;
  } else {
    if (direction == NAVDIR_NEXT) target = start.lVal + 1;
    if (direction == NAVDIR_PREVIOUS) target = start.lVal - 1;
  }
  return target < 1 || target > count ? S_FALSE : setChild(end, target);
}

HRESULT AccessibleObject::accHitTest(LONG x, LONG y, VARIANT* child) {
  if (child == nullptr) return E_POINTER;
  child->vt = VT_EMPTY;
  if (provider_ == nullptr) return CO_E_OBJNOTCONNECTED;
  RECT window{};
  if (!GetWindowRect(window_, &window) || !PtInRect(&window, POINT{x, y})) return S_FALSE;
  const int hit = provider_->childAt({{static_cast<int>(x)}, {static_cast<int>(y)}});
  return setChild(child, std::max(0, hit));
}

HRESULT AccessibleObject::accDoDefaultAction(VARIANT child) {
  AccessibleInfo info;
  if (const HRESULT result = lookUp(child, info); FAILED(result)) return result;
  if (info.defaultAction.empty()) return DISP_E_MEMBERNOTFOUND;
  return provider_->doDefaultAction(static_cast<int>(child.lVal)) ? S_OK : E_FAIL;
}

}  // namespace varnowick
