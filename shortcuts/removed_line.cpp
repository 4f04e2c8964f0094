#include "shortcuts/removed_line.h"

#include "shortcuts/selection.h"

namespace varnowick {
namespace {

std::wstring textFor(const UndoHistory::Removed& removed) {
  constexpr std::size_t kLongestName = 30;
  if (removed.count() == 0) return {};
  std::wstring what;
  if (removed.count() == 1 && !removed.names.empty() && !removed.names.front().empty()) {
    const std::wstring& name = removed.names.front();
    what = L"\"" + name.substr(0, kLongestName) + (name.size() > kLongestName ? L"...\"" : L"\"");
  } else {
    const auto add = [&](std::size_t count, const wchar_t* thing) {
      if (count == 0) return;
      if (!what.empty()) what += L", ";
      what += countOf(count, thing);
    };
    add(removed.containers, L"container");
    add(removed.shortcuts, L"shortcut");
    add(removed.pictures, L"picture");
  }
  return L"Removed " + what + L" \x00B7 Undo";
}

}  // namespace

bool RemovedLine::update(const UndoHistory& history) {
  if (history.version() == version_) return false;
  version_ = history.version();
  const std::wstring before = std::move(text_);
  text_ = textFor(history.removedLast());
  return !text_.empty() || !before.empty();
}

bool RemovedLine::end() {
  const bool was = !text_.empty();
  text_.clear();
  return was;
}

}  // namespace varnowick
