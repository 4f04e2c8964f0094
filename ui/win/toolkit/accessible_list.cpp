#include "ui/win/toolkit/accessible_list.h"

#include <algorithm>
#include <memory>

#include "platform/win32/callback.h"
#include "ui/win/toolkit/accessible_object.h"

namespace varnowick {

namespace {

constexpr IID kEnumVariantId = {0x00020404, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

}  // namespace

AccessibleList::~AccessibleList() {
  for (VARIANT& value : all_) VariantClear(&value);
}

HRESULT AccessibleList::QueryInterface(REFIID id, void** out) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  if (!IsEqualGUID(id, kUnknownId) && !IsEqualGUID(id, kEnumVariantId)) return E_NOINTERFACE;
  *out = static_cast<IEnumVARIANT*>(this);
  AddRef();
  return S_OK;
}

ULONG AccessibleList::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG AccessibleList::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

HRESULT AccessibleList::Next(ULONG count, VARIANT* out, ULONG* fetched) {
  if (fetched != nullptr) *fetched = 0;
  if (out == nullptr) return E_POINTER;
  ULONG given = 0;
  for (; given < count && next_ < all_.size(); ++given, ++next_) {
    out[given].vt = VT_EMPTY;
    if (FAILED(VariantCopy(&out[given], &all_[next_]))) break;
  }
  if (fetched != nullptr) *fetched = given;
  return given == count ? S_OK : S_FALSE;
}

HRESULT AccessibleList::Skip(ULONG count) {
  const std::size_t left = all_.size() - next_;
  next_ += std::min<std::size_t>(count, left);
  return count <= left ? S_OK : S_FALSE;
}

HRESULT AccessibleList::Reset() {
  next_ = 0;
  return S_OK;
}

HRESULT AccessibleList::Clone(IEnumVARIANT** out) {
  if (out == nullptr) return E_POINTER;
  *out = guardedCallback<IEnumVARIANT*>(nullptr, [&]() -> IEnumVARIANT* {
    auto* copy = new AccessibleList(std::vector<VARIANT>(all_.size()));
    for (std::size_t i = 0; i < all_.size(); ++i) VariantCopy(&copy->all_[i], &all_[i]);
    copy->next_ = next_;
    return copy;
  });
  return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

}  // namespace varnowick
