#include "ui/win/pane/folder_transfers.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace varnowick {

FolderTransfers::FolderTransfers(Doorbell& doorbell, HWND window, ModalDepth& modal,
                                 std::function<void()> news)
    : modal_(modal), operations_(doorbell, window, std::move(news)) {}

void FolderTransfers::start(FileOperation operation) { operations_.start(std::move(operation)); }

void FolderTransfers::start(std::vector<FileOperation> operations, Ended ended) {
  Group group;
  for (FileOperation& operation : operations)
    if (const int number = operations_.start(std::move(operation)); number != 0)
      group.running.push_back(number);
  if (group.running.empty()) return ended(true);
  group.ended = std::move(ended);
  groups_.push_back(std::move(group));
}

bool FolderTransfers::carryOut(std::vector<FileOperation> operations) {
  struct State {
    bool ended = false;
    bool complete = false;
  };
  // The operations may outlive the wait.
  const auto state = std::make_shared<State>();
  start(std::move(operations), [state](bool complete) { *state = {true, complete}; });
  // Nothing else may be begun while the source of the files waits.
  const ModalDepth::Scope scope(modal_);
  while (!state->ended) {
    MSG message{};
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
    if (got <= 0) return false;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return state->complete;
}

std::vector<FileOperationResult> FolderTransfers::take() {
  std::vector<FileOperationResult> results = operations_.take();
  std::vector<Group> ended;
  for (const FileOperationResult& result : results) {
    const auto group = std::find_if(groups_.begin(), groups_.end(), [&](Group& candidate) {
      return std::erase(candidate.running, result.number) != 0;
    });
    if (group == groups_.end()) continue;
    group->complete = group->complete && result.complete();
    if (!group->running.empty()) continue;
    ended.push_back(std::move(*group));
    groups_.erase(group);
  }
  for (const Group& group : ended) group.ended(group.complete);
  return results;
}

bool FolderTransfers::busy() {
  // What is just ending needs no question.
  constexpr DWORD kMoment = 20;  // ms
  for (int i = 0; i < 20 && operations_.busy(); ++i) Sleep(kMoment);
  return operations_.busy();
}

HWND FolderTransfers::question() {
  const HWND question = operations_.question();
  if (question == nullptr)
    asked_.reset();
  else if (!asked_)
    asked_.emplace(modal_);
  return question;
}

}  // namespace varnowick
