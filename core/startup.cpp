#include "core/startup.h"

namespace varnowick {
namespace {

constexpr std::size_t kRootFolderLength = 3;  // as in "C:\"
constexpr int kOldestMajorVersion = 5;        // Windows 2000

}  // namespace

StartDecision decideStart(Files& files, System& system, MsgBox& msgBox) {
  const std::wstring title = kProgramTitle;
  const std::wstring programFolder = system.programFolder();
  if (programFolder.size() == kRootFolderLength) {
    msgBox.show(title + L" cannot run from the root folder of the drive.",
                kMsgCritical | kMsgSystemModal, title);
    return {};
  }
  if (system.majorVersion() < kOldestMajorVersion) {
    msgBox.show(title + L" Requires Windows 2000 or above. Sorry.", kMsgCritical | kMsgSystemModal,
                title);
    return {};
  }
  const bool portable = files.exists(programFolder + L"\\LOCATIONROOT");
  if (portable) return {true, true, programFolder};
  const std::wstring applicationData = system.applicationDataFolder();
  if (applicationData.empty()) {
    msgBox.show(title + L" can't find the folder for its data.", kMsgCritical | kMsgSystemModal,
                title);
    return {};
  }
  return {true, false, applicationData + L"\\Varnowick"};
}

RestartDecision decideRestart(Files& files, System& system, MsgBox& msgBox) {
  const std::wstring restarter = system.programFolder() + L"\\Restarter.exe";
  if (!files.exists(restarter)) {
    msgBox.show(L"Can't find: " + restarter + L". Please reinstall the program.", kMsgExclamation,
                kProgramTitle);
    return {};
  }
  if (!msgBox.saysYes(L"Ignore all recent changes and restart the program?", kMsgExclamation,
                      kProgramTitle))
    return {};
  return {true, restarter};
}

bool confirmDefaultSettings(MsgBox& msgBox) {
  return msgBox.saysYes(L"Are you sure you want to load the default settings?", kMsgQuestion,
                        kProgramTitle);
}

}  // namespace varnowick
