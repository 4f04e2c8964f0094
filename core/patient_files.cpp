#include "core/patient_files.h"

#include <utility>

namespace varnowick {
namespace {

constexpr unsigned kPatience = 1000;  // ms
constexpr unsigned kStep = 50;
constexpr int kSparesTried = 3;
constexpr const wchar_t* kSpareStem = L"Varnowick.";
constexpr const wchar_t* kSpareExtension = L".discarded";

}  // namespace

PatientFiles::PatientFiles(Files& files, Pause pause, std::wstring spareFolder)
    : files_(files), pause_(std::move(pause)), spareFolder_(std::move(spareFolder)) {}

void PatientFiles::renewPatience() { patience_ = pause_ ? kPatience : 0; }

FileStatus PatientFiles::persist(const std::wstring& path,
                                 const std::function<FileStatus()>& attempt) {
  FileStatus status = attempt();
  const bool worthWaiting = patience_ > 0 && !hopeless_.contains(path);
  while (status.kind == FileStatus::Kind::Denied && worthWaiting && patience_ > 0) {
    pause_(kStep);
    patience_ -= kStep;
    status = attempt();
  }
  if (status.kind != FileStatus::Kind::Denied)
    hopeless_.erase(path);
  else if (worthWaiting)
    hopeless_.insert(path);
  return status;
}

FileStatus PatientFiles::discard(const std::wstring& path) {
  return persist(path, [&] { return discardOnce(path); });
}

FileStatus PatientFiles::discardOnce(const std::wstring& path) {
  FileStatus moved;
  // A spare name may be taken by what an earlier run could not remove either.
  for (int tries = 0; tries < kSparesTried; ++tries) {
    const std::wstring spare =
        spareFolder_ + L"\\" + kSpareStem + std::to_wstring(++spares_) + kSpareExtension;
    moved = files_.rename(path, spare);
    if (moved) {
      // What cannot go yet goes at the next start.
      files_.remove(spare);
      return {};
    }
    if (moved.kind != FileStatus::Kind::Denied) break;
  }
  return moved.kind == FileStatus::Kind::NotFound ? FileStatus{} : files_.remove(path);
}

void PatientFiles::removeDiscarded() {
  for (const FileInfo& info : files_.list(spareFolder_, kSpareExtension))
    if (!info.isFolder && info.name.starts_with(kSpareStem))
      files_.remove(spareFolder_ + L"\\" + info.name);
}

FileBytes PatientFiles::read(const std::wstring& path) {
  FileBytes result;
  persist(path, [&] {
    result = files_.read(path);
    return result.status;
  });
  return result;
}

FileStatus PatientFiles::write(const std::wstring& path, std::string_view bytes) {
  return persist(path, [&] { return files_.write(path, bytes); });
}

FileStatus PatientFiles::writeUnflushed(const std::wstring& path, std::string_view bytes) {
  return persist(path, [&] { return files_.writeUnflushed(path, bytes); });
}

FileStatus PatientFiles::remove(const std::wstring& path) {
  return persist(path, [&] { return files_.remove(path); });
}

FileStatus PatientFiles::rename(const std::wstring& from, const std::wstring& to) {
  return persist(from, [&] { return files_.rename(from, to); });
}

}  // namespace varnowick
