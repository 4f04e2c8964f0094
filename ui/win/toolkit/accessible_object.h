// The COM objects behind AccessibleServer: the window, and items with children.
// See accessible.h.
#pragma once

#include <windows.h>
// This relies on it.
#include <oleacc.h>

#include <memory>
#include <vector>

#include "ui/win/toolkit/accessible.h"

namespace varnowick {

inline constexpr IID kUnknownId = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// Shared by all objects of a window; without a provider when that has gone.
struct AccessibleLink {
  HWND window = nullptr;
  AccessibleProvider* provider = nullptr;
};

class AccessibleObject final : public IAccessible {
 public:
  AccessibleObject(std::shared_ptr<AccessibleLink> link, long self)
      : link_(std::move(link)), self_(self) {}
  // From now on every call to any object of the window answers that it is gone.
  void disconnect() { link_->provider = nullptr; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // Scripts' way in is left out; every reader uses the interface itself.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }

  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
  HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR*, VARIANT, LONG*) override {
    return DISP_E_MEMBERNOTFOUND;
  }
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                        VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
  HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

 private:
  ~AccessibleObject() = default;
  AccessibleProvider* provider() const { return link_->provider; }
  // Which item a caller means by a child of this object.
  HRESULT resolve(const VARIANT& child, long& item);
  HRESULT lookUp(const VARIANT& child, AccessibleInfo& info);
  HRESULT text(const VARIANT& child, std::wstring AccessibleInfo::*field, BSTR* out);
  HRESULT number(const VARIANT& child, long AccessibleInfo::*field, VARIANT* out);
  IDispatch* objectOf(long item);
  // What stands for a child of this object: its place, or its own object.
  void putChild(long item, VARIANT* out);
  // The same for whatever lies below this object: the child that holds it. False
  // when it does not lie below.
  bool putHolder(long item, VARIANT* out);
  std::vector<VARIANT> selectedChildren();

  volatile LONG references_ = 1;
  std::shared_ptr<AccessibleLink> link_;
  const long self_;
};

}  // namespace varnowick
