// What a data object hands over as a block of memory, while it is read. Knows nothing
// of what the bytes mean.
#pragma once

#include <objidl.h>
#include <windows.h>

#include <cstddef>

namespace varnowick {

inline FORMATETC asMemory(UINT format) {
  return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

inline bool offersFormat(IDataObject& data, UINT format) {
  FORMATETC wanted = asMemory(format);
  return data.QueryGetData(&wanted) == S_OK;
}

// The block, locked; none when the object does not give it.
class DataMedium {
 public:
  DataMedium(IDataObject& data, UINT format) {
    FORMATETC wanted = asMemory(format);
    if (FAILED(data.GetData(&wanted, &medium_))) return;
    owned_ = true;
    if (medium_.tymed != TYMED_HGLOBAL) return;
    size_ = GlobalSize(medium_.hGlobal);
    memory_ = GlobalLock(medium_.hGlobal);
  }
  DataMedium(const DataMedium&) = delete;
  DataMedium& operator=(const DataMedium&) = delete;
  ~DataMedium() {
    if (memory_ != nullptr) GlobalUnlock(medium_.hGlobal);
    if (owned_) ReleaseStgMedium(&medium_);
  }
  const void* memory() const { return memory_; }
  std::size_t size() const { return memory_ == nullptr ? 0 : size_; }

 private:
  STGMEDIUM medium_{};
  void* memory_ = nullptr;
  std::size_t size_ = 0;
  bool owned_ = false;
};

}  // namespace varnowick
