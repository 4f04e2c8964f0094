#include "shortcuts/launch.h"

#include <algorithm>
#include <array>

#include "platform/msg_box.h"
#include "platform/sound.h"
#include "shortcuts/outside_links.h"
#include "shortcuts/tags.h"

namespace varnowick {
namespace {

constexpr LaunchErrorHandling kBox = LaunchErrorHandling::MessageBox;
constexpr LaunchErrorHandling kProperties = LaunchErrorHandling::Properties;

// Passing conditions get a message box, lasting faults the properties dialog.
constexpr std::array<LaunchError, 11> kErrors{{
    {2, L"File not found", kProperties},
    {3, L"Path not found", kProperties},
    {5, L"Path/file access error", kProperties},
    {8, L"Out of memory", kBox},
    {11, L"The executable file is invalid or corrupt", kProperties},
    {26, L"A sharing violation occurred.", kBox},
    {27, L"This file type does not have a valid file association.", kProperties},
    {28, L"The file could not be opened due to time out. Please try again in a moment.", kBox},
    {29,
     L"The file could not be opened because the DDE transaction failed. Please try again in a "
     L"moment.",
     kBox},
    {30,
     L"The file could not be opened because the target application is busy. Please try again in a "
     L"moment.",
     kBox},
    {31, L"No application is associated with this file type.", kProperties},
}};
constexpr const wchar_t* kOtherError =
    L"An error occurred while trying to open or print the selected file.";

bool refusedAsScript(Platform& platform, const std::wstring& path) {
  if (!runsItsOwnText(path)) return false;
  platform.msgBox.show(
      L"This address would run its own text as a program and has not been opened:\r\n\r\n" +
          outsideLinkForDisplay(path),
      kMsgOkOnly | kMsgCritical, kLaunchErrorTitle);
  return true;
}

int execute(Platform& platform, LaunchHost& host, const std::wstring& parameters,
            const std::wstring& path, bool isCommand) {
  if (isCommand)
    return platform.shell.execute(host.ownerWindow(), L"", L"cmd.exe", L"/c " + parameters, L"");
  const std::wstring file = ResolveRelativePath(path, platform.system.programFolder());
  return platform.shell.execute(host.ownerWindow(), L"", host.pathForSystem(file), parameters,
                                FolderOfPath(file));
}

// A dialog shown for one shortcut may change the workspace, so every step looks
// its slot up again and works on a copy.
template <class Wanted>
void startEach(StartMany& start, Wanted&& wanted) {
  for (int i = 0; i < start.workspace.shortcuts.bound(); ++i) {
    const ShortcutSlot slot{i};
    const clsShortcut* found = start.workspace.shortcuts.find(slot);
    if (start.eachHost.ended()) return;
    if (found == nullptr || !wanted(*found)) continue;
    const clsShortcut shortcut = *found;
    const LaunchResult result = LaunchShortcut(start.platform, start.eachHost, shortcut);
    if (result.outcome == LaunchOutcome::FailedFaulty && start.openProperties)
      start.openProperties(slot, result.propertiesError);
  }
  if (const std::uintptr_t window = start.foreground.current(); window != 0)
    start.foreground.set(window);
}

}  // namespace

std::optional<LaunchError> launchError(int result) {
  if (result < 1 || result > 31) return std::nullopt;
  const auto row = std::find_if(kErrors.begin(), kErrors.end(),
                                [result](const LaunchError& e) { return e.code == result; });
  if (row != kErrors.end()) return *row;
  return LaunchError{result, kOtherError, kProperties};
}

LaunchResult LaunchShortcut(Platform& platform, LaunchHost& host, bool confirm,
                            const std::wstring& caption, const std::wstring& parameters,
                            const std::wstring& path, bool isCommand) {
  if (host.ended() || (host.isMainWindow() && host.launchSuppressed()))
    return {LaunchOutcome::Suppressed, {}};
  platform.sound.play(L"click.wav");
  if (!isCommand && refusedAsScript(platform, path)) return {LaunchOutcome::FailedReported, {}};
  if (confirm &&
      !platform.msgBox.saysYes(L"Start " + caption + L"?", kMsgExclamation, L"Launch Confirmation"))
    return {LaunchOutcome::Declined, {}};
  host.PreLaunch();
  const auto error = launchError(execute(platform, host, parameters, path, isCommand));
  if (!error) return {LaunchOutcome::Started, {}};
  if (error->handling == LaunchErrorHandling::Properties)
    return {LaunchOutcome::FailedFaulty, std::wstring(L"Error: ") + error->message};
  platform.msgBox.show(error->message, kMsgOkOnly | kMsgCritical, kLaunchErrorTitle);
  return {LaunchOutcome::FailedReported, {}};
}

LaunchResult LaunchShortcut(Platform& platform, LaunchHost& host, const clsShortcut& shortcut) {
  return LaunchShortcut(platform, host, shortcut.Confirm, shortcut.FullCaption, shortcut.Parameters,
                        shortcut.Path, shortcut.Command);
}

void OpenWith(Platform& platform, const LaunchHost& host, const clsShortcut& dragged,
              const clsShortcut& target) {
  const std::wstring question =
      L"Open: " + dragged.FullCaption + L" with: " + target.FullCaption + L"?";
  if (!platform.msgBox.saysYes(question, kMsgQuestion, kProgramTitle)) return;
  const std::wstring folder = platform.system.programFolder();
  const std::wstring file = ResolveRelativePath(target.Path, folder);
  std::wstring dropped = ResolveRelativePath(dragged.Path, folder);
  // No path holds a quotation mark; in an address it would end the argument.
  std::erase(dropped, L'"');
  if (refusedAsScript(platform, dropped)) return;
  const std::wstring argument = L'"' + dropped + L'"';
  platform.shell.execute({}, L"", host.pathForSystem(file), argument, FolderOfPath(file));
}

std::size_t shortcutsIn(const Workspace& workspace, ContainerSlot container) {
  return workspace.shortcutsOn(Panel{container});
}

std::wstring startAllCaption(const Workspace& workspace, ContainerSlot container) {
  return L"&Start all [" + std::to_wstring(shortcutsIn(workspace, container)) + L"]";
}

bool StartAll(StartMany& start, ContainerSlot container, bool confirmStartAll) {
  if (confirmStartAll &&
      !start.platform.msgBox.saysYes(
          L"Start all shortcuts in the current container?\r\n\r\nYou can disable the "
          L"confirmation from the Settings dialog.",
          kMsgExclamation, kProgramTitle))
    return false;
  start.host.PreLaunch();
  startEach(start, [&](const clsShortcut& s) { return s.parent.container == container; });
  return true;
}

std::vector<std::wstring> tagsOf(const clsShortcut& shortcut) {
  std::vector<std::wstring> tags;
  std::size_t from = 0;
  while (from <= shortcut.Tags.size()) {
    const std::size_t comma = std::min(shortcut.Tags.find(L',', from), shortcut.Tags.size());
    const std::size_t first = shortcut.Tags.find_first_not_of(L" \t", from);
    if (first < comma) {
      const std::size_t last = shortcut.Tags.find_last_not_of(L" \t", comma - 1);
      tags.push_back(shortcut.Tags.substr(first, last - first + 1));
    }
    from = comma + 1;
  }
  return tags;
}

void StartByTag(StartMany& start, const std::wstring& tag) {
  startEach(start, [&](const clsShortcut& s) { return carriesTag(s, tag); });
}

bool OpenFileLocation(Platform& platform, LaunchHost& mainWindow, const clsShortcut& shortcut,
                      bool useIcon) {
  const std::wstring path = EffectivePath(shortcut, useIcon, platform.system);
  if (shortcut.Command) return false;
  mainWindow.PreLaunch();
  platform.shell.run(L"explorer /select," + path);
  return true;
}

void OpenFolder(Platform& platform, LaunchHost& mainWindow, const std::wstring& folder) {
  platform.shell.execute(mainWindow.ownerWindow(), L"open", folder, L"", L"");
}

bool UseRelativePath(Platform& platform, Document& document,
                     std::span<const ShortcutSlot> selected) {
  if (!platform.msgBox.saysYes(
          L"Use a relative path for the selected shortcuts (Varnowick's working drive)?",
          kMsgQuestion, kProgramTitle))
    return false;
  const UndoStep step(document, L"relative path");
  bool changed = false;
  for (const ShortcutSlot slot : selected) {
    clsShortcut* s = document.workspace.shortcuts.find(slot);
    // A command keeps its text in Parameters, and a path without a drive letter
    // (a network share, a bare name) could not be resolved again.
    if (s == nullptr || s->Command || s->Path.size() < 2 || s->Path[1] != L':' ||
        s->ShortcutType != static_cast<int>(ShortcutKindCode::FileOrFolder))
      continue;
    std::wstring relative = MakeRelativePath(s->Path);
    changed = changed || relative != s->Path;
    s->Path = std::move(relative);
  }
  return changed;
}

}  // namespace varnowick
