// Everything that the data files hold, as one value, and what can be taken back.
#pragma once

#include <new>

#include "core/settings.h"
#include "core/undo_history.h"
#include "core/workspace.h"

namespace varnowick {

struct Document {
  Settings settings;
  Workspace workspace;
  UndoHistory history{};  // of the workspace; not saved
};

// Whatever is changed in the workspace while it lives is one step, which
// "Undo ..." names.
class UndoStep {
 public:
  UndoStep(Document& document, const wchar_t* name) : document_(document), name_(name) {
    document_.history.begin(document_.workspace);
  }
  ~UndoStep() {
    try {
      document_.history.end(document_.workspace, name_);
    } catch (const std::bad_alloc&) {
      // The change stands; it only cannot be taken back.
    }
  }
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;

 private:
  Document& document_;
  const wchar_t* name_;
};

}  // namespace varnowick
