// A fresh copy of the program in a folder of its own, with a data folder that
// the test writes byte for byte and reads back. Everything goes with the object.
#pragma once

#include <map>
#include <string>

namespace varnowick::e2e {

// File name relative to the data folder -> its bytes.
using DataFiles = std::map<std::wstring, std::string>;

enum class DataPlace {
  BesideProgram,  // portable: a file LOCATIONROOT stands beside the program
  AppData         // the user's application-data folder
};

class ProgramFolder {
 public:
  // Copies the folder that VARNOWICK_EXE_DIR names (or the build's own) into a
  // new one under the folder for temporary files. AppData throws when the user
  // has a data folder already: see appDataTaken().
  explicit ProgramFolder(DataPlace place = DataPlace::BesideProgram);
  ~ProgramFolder();
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  static std::wstring appDataFolder();
  static bool appDataTaken();

  // Without a backslash at the end.
  const std::wstring& path() const { return path_; }
  const std::wstring& dataPath() const { return data_; }
  std::wstring exe() const { return path_ + L"\\Varnowick.exe"; }
  std::wstring file(const std::wstring& name) const { return data_ + L"\\" + name; }

  // Names are relative to the data folder; folders in between are made.
  void write(const std::wstring& name, const std::string& bytes) const;
  std::string read(const std::wstring& name) const;
  bool exists(const std::wstring& name) const;
  void remove(const std::wstring& name) const;
  void writeAll(const DataFiles& files) const;
  // The settings file, the recovery copy and the container files, all that there
  // are: what makes up the saved state.
  DataFiles state() const;
  // Every file under \Backup\, by its name without folder.
  DataFiles backups() const;

  // Copies the helper program into a folder "Target <n>" beside the program's
  // and returns its path. It tells of its starts: see launch_probe.cpp.
  std::wstring addLaunchProbe();

 private:
  std::wstring root_;
  std::wstring path_;
  std::wstring data_;
  DataPlace place_;
  int probes_ = 0;
};

// One start of a launch probe.
struct Launch {
  std::wstring folder;       // its current folder
  std::wstring commandLine;  // whole
  std::wstring show;         // the SW_ value it was given, or "none"
};

// Waits until the probe has been started, and gives the last start.
Launch waitForLaunch(const std::wstring& probe);
bool launched(const std::wstring& probe);

std::string readFile(const std::wstring& path);
void writeFile(const std::wstring& path, const std::string& bytes);
bool fileExists(const std::wstring& path);

}  // namespace varnowick::e2e
