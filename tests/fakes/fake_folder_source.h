// Folders that contain what a test says, and a record of what is watched.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/folder_source.h"

namespace varnowick {

class FakeFolderSource : public FolderSource {
 public:
  std::map<int, std::wstring> watched;
  std::vector<FolderNews> news;

  void watch(int id, const std::wstring& path) override { watched[id] = path; }
  void unwatch(int id) override { watched.erase(id); }
  std::vector<FolderNews> take() override { return std::exchange(news, {}); }
};

}  // namespace varnowick
