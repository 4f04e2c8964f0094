// Publishes a scene through an AccessibleServer, each node under a number that
// follows from its name, and tells readers what has changed. It decides nothing
// about what an action means.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

#include "ui/scene/accessibility.h"
#include "ui/scene/scene.h"
#include "ui/win/toolkit/accessible.h"

namespace varnowick {

class SceneAccessible : public AccessibleProvider {
 public:
  // The action must post what is to be done and return at once; false when the
  // node takes none. The title names the window for readers.
  SceneAccessible(const Scene& scene, const InputState& input, std::wstring title,
                  std::function<bool(NodeId)> action,
                  std::function<bool(NodeId, long flags)> select = {})
      : scene_(scene),
        input_(input),
        title_(std::move(title)),
        action_(std::move(action)),
        select_(std::move(select)) {}
  void attach(HWND window) { window_ = window; }
  void setDensity(Density density) { density_ = density; }
  // The value of the window itself, for what has no place in the scene.
  void setWindowValue(std::wstring value) { windowValue_ = std::move(value); }

  // The item that stands for a node now, for announce(); the window when there is
  // none.
  long itemOf(NodeId node) const;
  // Tells of the focus, names, values, states and selections that have changed
  // since the last call, if anybody listens.
  void announceChanges();
  // The same once the window gets kMsgReaders. Enough once a painting, which should
  // not wait for it: with thousands of items it takes as long as the painting.
  void announceSoon();

  std::vector<long> children(long parent) override;
  bool info(long item, AccessibleInfo& out) override;
  bool doDefaultAction(long item) override;
  bool select(long item, long flags) override;
  long itemAt(Point<Pixels> screen) override;
  long focusedItem() override;

 private:
  // Readers ask for thousands of items one by one: the list is made anew only
  // when the scene or the input state may have changed.
  const std::vector<AccessibleItem>& items() const;
  const AccessibleItem* find(long item) const;
  POINT clientOrigin() const;

  const Scene& scene_;
  const InputState& input_;
  std::wstring title_, windowValue_;
  std::function<bool(NodeId)> action_;
  std::function<bool(NodeId, long)> select_;
  Density density_;
  HWND window_ = nullptr;
  mutable std::vector<AccessibleItem> items_;
  mutable std::unordered_map<long, std::size_t> places_;  // in items_, by number
  mutable unsigned made_ = 0;                             // how often items_ was made anew
  unsigned toldMade_ = 0;
  NodeId toldFocus_;
  std::vector<AccessibleItem> told_;
  bool listening_ = false;             // somebody was, at the last look
  bool posted_ = false;                // kMsgReaders is under way
  mutable std::uint64_t version_ = 0;  // of the scene the items were made from
  mutable NodeId focused_, pressed_;
};

}  // namespace varnowick
