// Several children at once, as get_accSelection hands them out.
#pragma once

#include <windows.h>
// This relies on it.
#include <oaidl.h>

#include <vector>

namespace varnowick {

class AccessibleList final : public IEnumVARIANT {
 public:
  // Takes the variants over.
  explicit AccessibleList(std::vector<VARIANT> all) : all_(std::move(all)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* out, ULONG* fetched) override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
  HRESULT STDMETHODCALLTYPE Reset() override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override;

 private:
  ~AccessibleList();

  volatile LONG references_ = 1;
  std::vector<VARIANT> all_;
  std::size_t next_ = 0;
};

}  // namespace varnowick
