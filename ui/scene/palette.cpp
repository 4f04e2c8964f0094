#include "ui/scene/palette.h"

#include <algorithm>
#include <cmath>

namespace varnowick {

namespace {

constexpr Colour kBlack = rgb(0, 0, 0);
constexpr Colour kWhite = rgb(255, 255, 255);

float luminance(Colour c) {
  const auto linear = [](int channel) {
    const float v = static_cast<float>(channel) / 255.0F;
    return v <= 0.03928F ? v / 12.92F : std::pow((v + 0.055F) / 1.055F, 2.4F);
  };
  return 0.2126F * linear(c.red()) + 0.7152F * linear(c.green()) + 0.0722F * linear(c.blue());
}

// Away from the ground: lighter on dark, darker on light.
Colour towardsText(Colour ground, float share) {
  return mix(ground, luminance(ground) < 0.35F ? kWhite : kBlack, share);
}

// Without the gradient a surface has its plain colour all over.
Colour lit(const Palette& p, Colour surface, float share) {
  return p.gradient ? mix(surface, kWhite, share) : surface;
}
Colour shaded(const Palette& p, Colour surface, float share) {
  return p.gradient ? mix(surface, kBlack, share) : surface;
}

Colour bodyTopOf(const Palette& p, Colour body) { return lit(p, body, 0.03F); }

void setBody(Palette& p, Colour body, Colour text) {
  p.bodyTop = bodyTopOf(p, body);
  p.bodyBottom = shaded(p, body, 0.08F);
  p.bodyText = readable(text, body);
}

void setTitle(Palette& p, Colour title, Colour text) {
  p.titleTop = lit(p, title, 0.06F);
  p.titleBottom = shaded(p, title, 0.12F);
  p.titleText = readable(text, title);
}

}  // namespace

Colour mix(Colour from, Colour to, float share) {
  const auto blend = [share](int a, int b) {
    const float value = static_cast<float>(a) + static_cast<float>(b - a) * share;
    return std::clamp(static_cast<int>(std::lround(value)), 0, 255);
  };
  return rgb(blend(from.red(), to.red()), blend(from.green(), to.green()),
             blend(from.blue(), to.blue()));
}

float contrast(Colour a, Colour b) {
  const float la = luminance(a);
  const float lb = luminance(b);
  return (std::max(la, lb) + 0.05F) / (std::min(la, lb) + 0.05F);
}

Colour readable(Colour text, Colour ground) {
  constexpr float kLeast = 2.5F;
  if (contrast(text, ground) >= kLeast) return text;
  return contrast(kWhite, ground) >= contrast(kBlack, ground) ? kWhite : kBlack;
}

Palette makePalette(const Settings& settings) {
  Palette p;
  const Colour back = settings.background;
  // Shades stay faint on light grounds, where they would look dirty.
  const float depth = luminance(back) < 0.35F ? 1.0F : 0.4F;
  p.gradient = settings.gradient;
  p.backTop = shaded(p, back, 0.14F * depth);
  p.backBottom = lit(p, back, 0.02F);
  p.barTop = mix(back, kBlack, 0.22F * depth);
  p.barBottom = mix(back, kBlack, 0.32F * depth);
  p.barEdge = mix(back, kBlack, 0.5F * depth);
  p.barHover = towardsText(p.barTop, 0.10F);
  p.barPressed = towardsText(p.barTop, 0.04F);
  p.text = readable(settings.foreground, back);
  p.barText = readable(mix(settings.foreground, p.barTop, 0.18F), p.barTop);
  p.mutedText = readable(mix(p.text, back, 0.38F), back);
  setBody(p, settings.containerFor, settings.foreground);
  setTitle(p, settings.containerLabel, settings.foreground);
  p.border = towardsText(settings.containerFor, 0.14F);
  p.pictureBorder = settings.pictureBorder;
  p.accent = contrast(settings.dockingColor, back) >= 1.6F ? settings.dockingColor
                                                           : towardsText(back, 0.5F);
  p.selectedText = p.text;
  p.noteBack = settings.containerTextBack;
  p.noteText = readable(settings.containerTextFor, settings.containerTextBack);
  p.dockStrip = settings.dockingColor;
  p.showDockStrip = settings.visibleBorderCollapsed;
  p.captionFace = settings.fontName;
  return p;
}

Palette makeHighContrastPalette(const Settings& settings, const SystemColours& system) {
  Palette p;
  p.highContrast = true;
  p.backTop = p.backBottom = p.bodyTop = p.bodyBottom = p.noteBack = system.window;
  p.text = p.bodyText = p.noteText = p.border = p.pictureBorder = system.windowText;
  p.barTop = p.barBottom = p.barHover = p.barPressed = system.buttonFace;
  p.barText = p.barEdge = system.buttonText;
  p.titleTop = p.titleBottom = system.buttonFace;
  p.titleText = system.buttonText;
  p.mutedText = readable(system.grayText, system.window);
  p.accent = p.dockStrip = system.highlight;
  p.selectedText = system.highlightText;
  p.showDockStrip = settings.visibleBorderCollapsed;
  p.captionFace = settings.fontName;
  return p;
}

Palette inContainer(const Palette& palette, const NodeLook& look) {
  Palette p = palette;
  if (!p.highContrast && look.back && look.fore) {
    setBody(p, *look.back, *look.fore);
    // A container in the usual colour keeps the usual title and border.
    if (bodyTopOf(palette, *look.back) == palette.bodyTop) {
      p.titleText = readable(*look.fore, p.titleTop);
    } else {
      setTitle(p, towardsText(*look.back, 0.12F), *look.fore);
      p.border = towardsText(*look.back, 0.2F);
    }
  }
  p.backTop = p.bodyTop;
  p.backBottom = p.bodyBottom;
  p.text = p.bodyText;
  if (!p.highContrast) {
    p.mutedText = readable(mix(p.bodyText, p.bodyTop, 0.38F), p.bodyTop);
    p.selectedText = p.bodyText;
  }
  return p;
}

}  // namespace varnowick
