// Where the system looks for libraries that are asked for by their bare names: in
// its own folder, for this process and for whatever it loads (shell extensions,
// printer drivers, the system's own parts). Programs that are started from here
// look where they always do.
#pragma once

namespace varnowick {

// Once, before anything is loaded.
void keepLibrariesToTheSystem();

// Around each start of another program. Systems before Windows 8 (without an
// update of 2011) know only a setting that started programs inherit; it is taken
// back for that long.
class OwnDllPathForChildren {
 public:
  OwnDllPathForChildren();
  OwnDllPathForChildren(const OwnDllPathForChildren&) = delete;
  OwnDllPathForChildren& operator=(const OwnDllPathForChildren&) = delete;
  ~OwnDllPathForChildren();
};

}  // namespace varnowick
