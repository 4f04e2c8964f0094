// The files in which journals stand. There are several, so that a new journal never
// goes where the last one stands, and one that another program holds fast does not
// stop the saving. The one with the highest number counts. Knows nothing of the
// files that a journal is about.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/patient_files.h"
#include "core/save_journal.h"

namespace varnowick {

class JournalPlaces {
 public:
  JournalPlaces(PatientFiles& files, std::wstring dataFolder);

  // Looks at all of them, at the start; the state of the newest that is whole.
  std::optional<SavedState> read();
  struct Unreadable {
    std::wstring path;
    std::wstring reason;
  };
  // Those that could not be read, and so may not be written over.
  const std::vector<Unreadable>& unreadable() const { return unreadable_; }
  // Frees their names, once their bytes are safe elsewhere.
  FileStatus discardUnreadable(std::wstring& failedPath);

  // Writes the state, flushed, and leaves the last journal alone.
  FileStatus write(const SavedState& state, std::wstring& failedPath);
  // Removes all, the newest last and only when the others are gone: an old one must
  // never be the newest again.
  FileStatus drop();
  bool empty() const { return held().empty(); }
  // One that is still there; empty when there is none.
  std::wstring held() const;

 private:
  static constexpr std::size_t kPlaces = 3;
  // Empty places first, then those with old journals, and never the newest one's.
  std::vector<std::size_t> candidates() const;
  std::wstring path(std::size_t place) const;

  PatientFiles& files_;
  std::wstring dataFolder_;
  std::array<bool, kPlaces> taken_{};
  std::optional<std::size_t> newest_;
  std::uint64_t lastNumber_ = 0;
  std::vector<Unreadable> unreadable_;
};

}  // namespace varnowick
