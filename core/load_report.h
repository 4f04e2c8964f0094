// What could not be read from the data files. A file with an entry here has not
// been read whole, so its bytes must be kept before the file is written again.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace varnowick {

struct LoadProblem {
  std::wstring file;     // full path
  std::size_t line = 0;  // from 1; 0: the file as a whole
  std::wstring what;
};

class LoadReport {
 public:
  // Only the first problems of a file are kept in full; all of them count.
  void add(const std::wstring& file, std::size_t line, std::wstring what) {
    if (files_.empty() || files_.back() != file) {
      files_.push_back(file);
      ofLastFile_ = 0;
    }
    ++count_;
    if (++ofLastFile_ <= kKeptPerFile) problems_.push_back({file, line, std::move(what)});
  }

  bool empty() const { return count_ == 0; }
  std::size_t count() const { return count_; }
  const std::vector<LoadProblem>& problems() const { return problems_; }
  // Full paths, each once as long as a file's problems are added together.
  const std::vector<std::wstring>& filesNotReadWhole() const { return files_; }

 private:
  static constexpr std::size_t kKeptPerFile = 50;
  std::vector<LoadProblem> problems_;
  std::vector<std::wstring> files_;
  std::size_t ofLastFile_ = 0;
  std::size_t count_ = 0;
};

}  // namespace varnowick
