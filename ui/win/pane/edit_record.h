// The properties of one record in a dialog: it changes a copy, and what the user
// confirms becomes one step that can be undone. Knows no kind of record.
#pragma once

#include <utility>

#include "core/document.h"
#include "ui/win/pane/desk.h"

namespace varnowick {

// False when nothing has been changed: the user thought better of it, or the record has
// gone while the dialog was open.
template <class Records, class Slot, class Ask>
bool editRecord(const Desk& desk, Records& records, Slot slot, Ask ask) {
  const auto* before = records.find(slot);
  if (before == nullptr) return false;
  auto edited = *before;
  {
    const ModalDepth::Scope scope(desk.modal);
    if (!ask(edited)) return false;
  }
  auto* record = records.find(slot);
  if (record == nullptr) return false;
  const UndoStep step(desk.document, L"properties");
  *record = std::move(edited);
  return true;
}

}  // namespace varnowick
