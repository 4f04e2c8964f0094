#include "ui/win/dialogs/frm_con_colors.h"

#include "ui/scene/metrics.h"
#include "ui/scene/object_scene.h"
#include "ui/scene/painter.h"
#include "ui/win/dialogs/browse.h"
#include "ui/win/toolkit/gdi_canvas.h"

namespace varnowick {
namespace {

using Id = frmConColors::Id;
constexpr int kStep = 10;  // percent that a button makes lighter or darker

std::vector<DialogRow> rows() {
  using enum DialogControl;
  return {
      {Label, -1, L"Background", 7, 9, 54, 8},
      {Swatch, Id::kBack, L"", 63, 7, 44, 14},
      {Button, Id::kChooseBack, L"&Choose...", 111, 7, 44, 14},
      {Button, Id::kLighterBack, L"&Lighter", 159, 7, 40, 14},
      {Button, Id::kDarkerBack, L"&Darker", 203, 7, 40, 14},
      {Label, -1, L"Text", 7, 29, 54, 8},
      {Swatch, Id::kFore, L"", 63, 27, 44, 14},
      {Button, Id::kChooseFore, L"C&hoose...", 111, 27, 44, 14},
      {Button, Id::kLighterFore, L"L&ighter", 159, 27, 40, 14},
      {Button, Id::kDarkerFore, L"D&arker", 203, 27, 40, 14},
      {Drawing, Id::kPreview, L"Preview", 7, 50, 236, 74},
      {Button, Id::kReset, L"&Reset", 7, 133, 50, 14},
      {DefaultButton, IDOK, L"OK", 139, 133, 50, 14},
      {Button, IDCANCEL, L"Cancel", 193, 133, 50, 14},
  };
}

COLORREF colourRef(Colour colour) { return static_cast<COLORREF>(colour.bgr); }

// A container with a shortcut, alone on a panel.
void buildPreview(Scene& scene, Size<Twips> size, const frmConColors::Subject& subject,
                  const std::optional<ContainerColours>& colours) {
  const ContainerSlot slot{0};
  scene.find(scene.root())->rect = {{}, {}, size.width, size.height};
  Node& panel = scene.create({ControlKind::picBack, 0}, scene.root());
  panel.rect = {{}, {}, size.width, size.height};
  const TwipsRect box = TwipsRect{{}, {}, size.width, size.height}.inset(kPad);
  Node& container = scene.create(containerNode(slot), {ControlKind::picBack, 0});
  container.rect = box;
  if (colours) {
    container.look.back = colours->back;
    container.look.fore = colours->fore;
  }
  const auto part = [&](ControlKind kind, NodeId parent, TwipsRect rect) -> Node& {
    Node& node = scene.create(containerPart(kind, slot), parent);
    node.rect = rect;
    return node;
  };
  const NodeId frame = containerPart(ControlKind::ContainerFrame, slot);
  part(ControlKind::ContainerFrame, containerNode(slot),
       {{}, kTitleStripHeight, box.width, box.height - kTitleStripHeight});
  part(ControlKind::ContainerLabel, containerNode(slot), {{}, {}, box.width, kTitleStripHeight})
      .text = subject.name;
  part(ControlKind::lblFoldUnfold, containerNode(slot),
       {box.width - kFoldBoxWidth, {}, kFoldBoxWidth, kTitleStripHeight})
      .text = L"-";
  Node& shortcut = scene.create(shortcutNode({0}), frame);
  shortcut.rect = {kPad, kPad, box.width - kPad * 2, {330}};
  shortcut.text = L"A shortcut in this container";
  shortcut.look.small = true;
  shortcut.look.points = 8;
}

}  // namespace

frmConColors::frmConColors(Subject subject, const Palette& palette, GdiFonts& fonts,
                           Density density, MsgBox& msgBox, Chooser chooser)
    : Dialog(L"Container colours", 250, 154, rows()),
      subject_(std::move(subject)),
      palette_(palette),
      fonts_(fonts),
      density_(density),
      msgBox_(msgBox),
      chooser_(chooser ? std::move(chooser) : &chooseColour) {}

std::optional<frmConColors::Choice> frmConColors::choose(HWND owner) {
  toAll_ = false;
  if (showModal(owner) != IDOK) return std::nullopt;
  return Choice{colours_, toAll_};
}

void frmConColors::initialise() { set(subject_.colours); }

void frmConColors::set(std::optional<ContainerColours> colours) {
  colours_ = colours;
  backBrush_.reset(CreateSolidBrush(colourRef(shown().back)));
  foreBrush_.reset(CreateSolidBrush(colourRef(shown().fore)));
  setText(kBack, colourText(colourRef(shown().back)));
  setText(kFore, colourText(colourRef(shown().fore)));
  for (const int id : {kBack, kFore, kPreview}) InvalidateRect(item(id), nullptr, TRUE);
  if (!colours_ && GetFocus() == item(kReset)) focus(kChooseBack);
  enable(kReset, colours_.has_value());
}

HBRUSH frmConColors::background(int id, HDC dc) {
  if (id != kBack && id != kFore) return nullptr;
  const Colour colour = id == kBack ? shown().back : shown().fore;
  SetTextColor(dc, colourRef(readable(colour, colour)));  // black or white
  SetBkColor(dc, colourRef(colour));
  return id == kBack ? backBrush_.get() : foreBrush_.get();
}

void frmConColors::draw(int id, const DRAWITEMSTRUCT& item) {
  if (id != kPreview) return;
  const PixelRect whole{
      {0}, {0}, {item.rcItem.right - item.rcItem.left}, {item.rcItem.bottom - item.rcItem.top}};
  BackBuffer buffer;
  buffer.resize(whole.size());
  if (!buffer.ready()) return;
  Scene scene;
  const TwipsRect twips = toTwips(whole, density_);
  buildPreview(scene, twips.size(), subject_, colours_);
  const InputState input(scene);
  {
    GdiCanvas canvas(buffer, fonts_, nullptr, density_);
    paintScene(scene, input, palette_, density_, whole, canvas);
  }
  buffer.blit(item.hDC, whole);
}

void frmConColors::chooseFor(bool back) {
  ContainerColours colours = shown();
  Colour& colour = back ? colours.back : colours.fore;
  const auto chosen = chooser_(handle(), colourRef(colour));
  if (!chosen) return;
  colour = {static_cast<int>(*chosen & 0xFFFFFF)};
  set(colours);
}

void frmConColors::shade(bool back, bool lighten) {
  ContainerColours colours = shown();
  Colour& colour = back ? colours.back : colours.fore;
  colour = lighten ? lighter(colour, kStep) : darker(colour, kStep);
  set(colours);
}

void frmConColors::confirm() {
  if (subject_.severalSelected)
    toAll_ =
        msgBox_.saysYes(L"Apply colors to all selected containers?", kMsgQuestion, kProgramTitle);
  end(IDOK);
}

void frmConColors::command(int id) {
  switch (id) {
    case IDOK:
      return confirm();
    case kChooseBack:
    case kChooseFore:
      return chooseFor(id == kChooseBack);
    case kLighterBack:
    case kLighterFore:
      return shade(id == kLighterBack, true);
    case kDarkerBack:
    case kDarkerFore:
      return shade(id == kDarkerBack, false);
    case kReset:
      // The spelling is deliberate: it is the one that users know.
      if (msgBox_.saysYes(L"Reset Container's colors to defualt values?", kMsgQuestion,
                          kProgramTitle))
        set(std::nullopt);
      return;
    default:
      return end(id);
  }
}

}  // namespace varnowick
