// Copies of files that are about to be written or deleted although they were
// not read whole. Knows nothing of what is in them.
#pragma once

#include <string>
#include <vector>

#include "platform/files.h"

namespace varnowick {

struct BackupResult {
  FileStatus status;                  // of the first file that could not be kept
  std::wstring failedFile;            // the full path of what could not be made
  std::vector<std::wstring> written;  // names of new copies, without the folder
};

std::wstring backupFolder(const std::wstring& dataFolder);

// Copies each file (full paths) into the backup folder. A copy with the same
// name and bytes is not made again; one with other bytes gets a number, as in
// "2 (2).con". A file that cannot be read is moved there instead, and one that
// is gone is passed over. Stops at the first failure.
BackupResult backUpFiles(Files& files, const std::wstring& dataFolder,
                         const std::vector<std::wstring>& paths);

}  // namespace varnowick
