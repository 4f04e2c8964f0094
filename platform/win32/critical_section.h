// A lock between threads of this process, and its holder for a scope. What it
// guards is said where it stands.
#pragma once

#include <windows.h>

namespace varnowick {

class CriticalSection {
 public:
  CriticalSection() { InitializeCriticalSection(&section_); }
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;
  ~CriticalSection() { DeleteCriticalSection(&section_); }

 private:
  friend class Lock;
  CRITICAL_SECTION section_;
};

class Lock {
 public:
  explicit Lock(CriticalSection& section) : section_(section.section_) {
    EnterCriticalSection(&section_);
  }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  ~Lock() { LeaveCriticalSection(&section_); }

 private:
  CRITICAL_SECTION& section_;
};

}  // namespace varnowick
