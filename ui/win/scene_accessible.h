// Publishes a scene through an AccessibleServer: item i of the scene is child
// i + 1 of the window. It decides nothing about what an action means.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "ui/scene/accessibility.h"
#include "ui/scene/scene.h"
#include "ui/win/accessible.h"

namespace varnowick {

class SceneAccessible : public AccessibleProvider {
 public:
  // The action must post what is to be done and return at once; false when the
  // node takes none. The title names the window for readers.
  SceneAccessible(const Scene& scene, const InputState& input, std::wstring title,
                  std::function<bool(NodeId)> action)
      : scene_(scene), input_(input), title_(std::move(title)), action_(std::move(action)) {}
  void attach(HWND window) { window_ = window; }
  void setDensity(Density density) { density_ = density; }
  // The value of the window itself, for what has no place in the scene.
  void setWindowValue(std::wstring value) { windowValue_ = std::move(value); }

  // The child that stands for a node now, for announce(); 0 when there is none.
  int childOf(NodeId node) const;

  int childCount() override;
  bool info(int child, AccessibleInfo& out) override;
  bool doDefaultAction(int child) override;
  int childAt(Point<Pixels> screen) override;
  int focusedChild() override;

 private:
  // Readers ask for thousands of items one by one: the list is made anew only
  // when the scene or the input state may have changed.
  const std::vector<AccessibleItem>& items() const;
  POINT clientOrigin() const;

  const Scene& scene_;
  const InputState& input_;
  std::wstring title_, windowValue_;
  std::function<bool(NodeId)> action_;
  Density density_;
  HWND window_ = nullptr;
  mutable std::vector<AccessibleItem> items_;
  mutable std::uint64_t version_ = 0;  // of the scene the items were made from
  mutable NodeId focused_, pressed_;
};

}  // namespace varnowick
