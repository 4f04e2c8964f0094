#include "core/journal_places.h"

#include <algorithm>
#include <utility>

namespace varnowick {

JournalPlaces::JournalPlaces(PatientFiles& files, std::wstring dataFolder)
    : files_(files), dataFolder_(std::move(dataFolder)) {}

std::wstring JournalPlaces::path(std::size_t place) const {
  const std::wstring name = dataFolder_ + std::wstring(kJournalName);
  return place == 0 ? name : name + std::to_wstring(place + 1);
}

std::optional<SavedState> JournalPlaces::read() {
  std::optional<Journal> found;
  for (std::size_t place = 0; place < kPlaces; ++place) {
    const FileBytes bytes = files_.read(path(place));
    taken_[place] = bytes.status.kind != FileStatus::Kind::NotFound;
    if (taken_[place] && !bytes.status) unreadable_.push_back({path(place), bytes.status.reason});
    std::optional<Journal> journal = bytes.status ? parseJournal(bytes.bytes) : std::nullopt;
    if (!journal || (found && found->number > journal->number)) continue;
    found = std::move(journal);
    newest_ = place;
  }
  if (!found) return std::nullopt;
  lastNumber_ = found->number;
  return std::move(found->state);
}

FileStatus JournalPlaces::discardUnreadable(std::wstring& failedPath) {
  while (!unreadable_.empty()) {
    failedPath = unreadable_.back().path;
    if (FileStatus status = files_.discard(failedPath); !status) return status;
    unreadable_.pop_back();
  }
  return {};
}

std::vector<std::size_t> JournalPlaces::candidates() const {
  std::vector<std::size_t> places;
  for (const bool taken : {false, true})
    for (std::size_t place = 0; place < kPlaces; ++place)
      if (taken_[place] == taken && newest_ != place) places.push_back(place);
  return places;
}

FileStatus JournalPlaces::write(const SavedState& state, std::wstring& failedPath) {
  const std::string journal = renderJournal(state, ++lastNumber_);
  FileStatus first;
  for (const std::size_t place : candidates()) {
    const FileStatus status = files_.write(path(place), journal);
    if (status) {
      taken_[place] = true;
      newest_ = place;
      return {};
    }
    if (first) {
      first = status;
      failedPath = path(place);
    }
    // Whatever of it has been written.
    taken_[place] = !files_.discard(path(place));
    if (status.kind != FileStatus::Kind::Denied) break;
  }
  return first;
}

FileStatus JournalPlaces::drop() {
  // One that could not be read may be newer than the newest.
  if (!unreadable_.empty()) return {FileStatus::Kind::Denied, unreadable_.front().reason};
  FileStatus first;
  for (std::size_t place = 0; place < kPlaces; ++place) {
    if (!taken_[place] || newest_ == place) continue;
    const FileStatus status = files_.discard(path(place));
    taken_[place] = !status;
    if (first && !status) first = status;
  }
  if (!first || !newest_) return first;
  const FileStatus status = files_.discard(path(*newest_));
  if (!status) return status;
  taken_[*newest_] = false;
  newest_.reset();
  return {};
}

std::wstring JournalPlaces::held() const {
  const auto taken = std::find(taken_.begin(), taken_.end(), true);
  return taken == taken_.end()
             ? std::wstring()
             : path(static_cast<std::size_t>(std::distance(taken_.begin(), taken)));
}

}  // namespace varnowick
