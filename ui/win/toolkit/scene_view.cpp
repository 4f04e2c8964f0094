#include "ui/win/toolkit/scene_view.h"

#include <array>

#include "platform/win32/handles.h"
#include "ui/scene/painter.h"
#include "ui/win/toolkit/gdi_canvas.h"

namespace varnowick {
namespace {

// Frames and focus rings are drawn around a node.
constexpr Pixels kHalo{4};

}  // namespace

void SceneView::attach(HWND window, Density density) {
  window_ = window;
  density_ = density;
}

void SceneView::setPalette(Palette palette) {
  palette_ = std::move(palette);
  invalidate();
}

void SceneView::paint() {
  const PaintDc dc(window_);
  RECT client{};
  GetClientRect(window_, &client);
  const PixelRect whole{{0}, {0}, {client.right}, {client.bottom}};
  PixelRect dirty{{dc.dirty().left},
                  {dc.dirty().top},
                  {dc.dirty().right - dc.dirty().left},
                  {dc.dirty().bottom - dc.dirty().top}};
  if (buffer_.resize(whole.size())) dirty = whole;
  if (!buffer_.ready()) return;
  {
    GdiCanvas canvas(buffer_, fonts_, &images_, density_);
    canvas.pushClip(dirty);
    paintScene(scene_, input_, palette_, density_, dirty, canvas);
    canvas.popClip();
  }
  buffer_.blit(dc.get(), dirty);
}

// Of no window the system would take the whole screen.
void SceneView::invalidate() {
  if (window_ != nullptr) InvalidateRect(window_, nullptr, FALSE);
}

void SceneView::invalidate(NodeId node) {
  if (window_ == nullptr || !scene_.shown(node)) return;
  const PixelRect r = toClient(node).inset(-kHalo);
  const RECT rect{r.left.value, r.top.value, r.right().value, r.bottom().value};
  InvalidateRect(window_, &rect, FALSE);
}

Point<Twips> SceneView::toScene(POINT client) const {
  return {density_.toTwips(Pixels{client.x}), density_.toTwips(Pixels{client.y})};
}

PixelRect SceneView::toClient(NodeId node) const {
  return toPixels(scene_.windowRect(node), density_);
}

template <class Step>
auto SceneView::repainting(Step&& step) {
  const auto shown = [&] {
    return std::array{input_.hovered(), input_.pressed(), input_.focused(), input_.ringed()};
  };
  const auto before = shown();
  const auto result = step();
  const auto after = shown();
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i] == after[i]) continue;
    invalidate(before[i]);
    invalidate(after[i]);
  }
  return result;
}

void SceneView::mouseMoved(POINT client) {
  repainting([&] { return input_.mouseMoved(toScene(client)); });
}

void SceneView::mouseLeft() {
  repainting([&] { return input_.mouseLeft(); });
}

NodeId SceneView::mousePressed(POINT client) {
  repainting([&] { return input_.mousePressed(toScene(client)); });
  return input_.pressed();
}

NodeId SceneView::mouseReleased(POINT client) {
  return repainting([&] { return input_.mouseReleased(toScene(client)); });
}

void SceneView::captureLost() {
  repainting([&] {
    input_.captureLost();
    return 0;
  });
}

void SceneView::focusNext(bool backwards) {
  repainting([&] { return input_.focusNext(backwards); });
}

void SceneView::focusTowards(Point<int> direction) {
  repainting([&] { return input_.focusTowards(direction); });
}

void SceneView::keyUsed() {
  if (input_.keyUsed()) invalidate(input_.focused());
}

void SceneView::focus(NodeId node) {
  repainting([&] { return input_.focus(node); });
}

}  // namespace varnowick
